// Reads bench/targets.json.
#include <algorithm>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "peers/peers.h"
#include "report/targets.h"

namespace morvane::bench {

namespace {

using nlohmann::json;

// A value, and the way that leads to it: "targets.json: reasons: speed: 3".
class node {
 public:
  node(const json& value, std::string way) : value_(value), way_(std::move(way)) {}

  [[noreturn]] void fail(const std::string& what) const { throw std::runtime_error(way_ + ": " + what); }

  bool has(const std::string& key) const { return object().contains(key); }

  node operator[](const std::string& key) const {
    if (!has(key)) fail("'" + key + "' is missing");
    return {value_.at(key), way_ + ": " + key};
  }

  void allow(const std::vector<std::string>& keys) const {
    for (const auto& [key, value] : object().items())
      if (std::find(keys.begin(), keys.end(), key) == keys.end()) fail("'" + key + "' has no meaning here");
  }

  std::vector<node> items() const {
    if (!value_.is_array()) fail("a list is wanted");
    std::vector<node> result;
    for (std::size_t i = 0; i < value_.size(); ++i)
      result.emplace_back(value_.at(i), way_ + ": " + std::to_string(i + 1));
    return result;
  }

  double number() const {
    if (!value_.is_number()) fail("a number is wanted");
    return value_.get<double>();
  }

  std::string text() const {
    if (!value_.is_string()) fail("a text is wanted");
    return value_.get<std::string>();
  }

 private:
  const json& value_;
  std::string way_;

  const json& object() const {
    if (!value_.is_object()) fail("an object is wanted");
    return value_;
  }
};

// The value that has the name, among `values`.
template <class Values, class NameOf>
auto named(const node& n, const Values& values, NameOf name, const std::string& what) {
  const std::string wanted = n.text();
  const auto found = std::find_if(std::begin(values), std::end(values),
                                  [&](const auto& value) { return std::invoke(name, value) == wanted; });
  if (found == std::end(values)) n.fail("there is no " + what + " '" + wanted + "'");
  return *found;
}

template <class Values, class NameOf>
std::vector<std::string> names(const node& list, const Values& values, NameOf name, const std::string& what) {
  std::vector<std::string> result;
  for (const node& n : list.items()) result.emplace_back(std::invoke(name, named(n, values, name, what)));
  return result;
}

std::vector<std::string> row_names(const node& list) {
  static const std::vector<row> rows = all_rows();
  return names(list, rows, &row::name, "row");
}

std::vector<std::string> format_names(const node& list) {
  return names(list, catalogue::formats, &catalogue::format::name, "format");
}

kind read_kind(const node& n) {
  return named(n, kinds, static_cast<std::string_view (*)(kind)>(name_of), "kind");
}

traffic read_traffic(const node& n) {
  const std::string text = n.text();
  if (text == "writes_only") return traffic::writes_only;
  if (text == "writes_most") return traffic::writes_most;
  n.fail("there is no traffic '" + text + "'");
}

// What a selector names; `others` are the keys of the entry that it is part of.
selector read_selector(const node& n, std::vector<std::string> others) {
  others.insert(others.end(), {"rows", "kind", "source", "destination", "traffic"});
  n.allow(others);
  selector result;
  if (n.has("rows")) result.rows = row_names(n["rows"]);
  if (n.has("kind")) result.what = read_kind(n["kind"]);
  if (n.has("source")) result.source = format_names(n["source"]);
  if (n.has("destination")) result.destination = format_names(n["destination"]);
  if (n.has("traffic")) result.moved = read_traffic(n["traffic"]);
  return result;
}

kind_target read_kind_target(kind what, const node& n) {
  n.allow({"title", "share_of_memcpy"});
  const node shares = n["share_of_memcpy"];
  std::vector<std::string> known;
  kind_target result{.what = what, .title = n["title"].text()};
  for (std::size_t s = 0; s < sizes.size(); ++s) {
    known.push_back(name_of(sizes[s]));
    result.share_of_memcpy[s] = shares[known.back()].number();
  }
  shares.allow(known);
  return result;
}

std::vector<kind_target> read_kinds(const node& n) {
  std::vector<std::string> known;
  std::vector<kind_target> result;
  for (const kind k : kinds) {
    known.emplace_back(name_of(k));
    result.push_back(read_kind_target(k, n[known.back()]));
  }
  n.allow(known);
  return result;
}

library_target read_library_target(const node& n) {
  return {.about = read_selector(n, {"title", "library", "size", "least"}),
          .title = n["title"].text(),
          .library = std::string(named(n["library"], library_names, std::identity(), "library")),
          .nominal = named(n["size"], sizes, static_cast<std::string (*)(const size&)>(name_of), "size"),
          .least = n["least"].number()};
}

std::vector<reason> read_reasons(const node& list) {
  std::vector<reason> result;
  for (const node& n : list.items()) result.push_back({read_selector(n, {"because"}), n["because"].text()});
  return result;
}

format_pair read_pair(const node& n) {
  const std::string name = n.text();
  try {
    if (const std::vector<format_pair> found = pairs_named(name); found.size() == 1) return found.front();
  } catch (const std::runtime_error& error) {
    n.fail(error.what());
  }
  n.fail("'" + name + "' is more than one pair");
}

const catalogue::format* read_format(const node& n) {
  const catalogue::format* found = format_called(n.text());
  if (found == nullptr) n.fail("there is no format '" + n.text() + "'");
  return found;
}

// Every source to every destination but itself.
void read_product(const node& n, std::vector<format_pair>& pairs) {
  n.allow({"from", "to"});
  for (const node& from : n["from"].items())
    for (const node& to : n["to"].items())
      if (const format_pair p{read_format(from), read_format(to)};
          p.source != p.destination && std::find(pairs.begin(), pairs.end(), p) == pairs.end()) {
        if (!has_way(p)) n.fail("there is no way for " + p.name());
        pairs.push_back(p);
      }
}

used_targets read_used_targets(const node& n) {
  n.allow({"share_of_memcpy", "pairs"});
  const node shares = n["share_of_memcpy"];
  std::vector<std::string> known;
  used_targets result;
  for (std::size_t s = 0; s < sizes.size(); ++s) {
    known.push_back(name_of(sizes[s]));
    if (shares.has(known.back())) result.share_of_memcpy[s] = shares[known.back()].number();
  }
  shares.allow(known);
  for (const node& list : n["pairs"].items()) read_product(list, result.pairs);
  return result;
}

pair_targets read_pair_targets(const node& n) {
  n.allow({"share_of_memcpy", "median_share_of_memcpy", "median_of_swscale", "times_tiny_picture", "two_threads",
           "on_threads", "used", "reasons"});
  pair_targets result{.share_of_memcpy = n["share_of_memcpy"].number(),
                      .median_share_of_memcpy = n["median_share_of_memcpy"].number(),
                      .median_of_swscale = n["median_of_swscale"].number(),
                      .times_tiny_picture = n["times_tiny_picture"].number(),
                      .two_threads = n["two_threads"].number()};
  for (const node& entry : n["on_threads"].items()) result.on_threads.push_back(read_pair(entry));
  result.used = read_used_targets(n["used"]);
  for (const node& entry : n["reasons"].items()) {
    entry.allow({"source", "destination", "because"});
    result.reasons.push_back({read_selector(entry, {"because"}), entry["because"].text()});
  }
  return result;
}

targets read_all(const node& n) {
  n.allow({"about", "library_megabytes", "noise", "least_of_tight", "least_of_long_rows", "kinds", "libraries",
           "touch_next_to_nothing", "reasons", "examples", "pairs"});
  const node reasons = n["reasons"];
  reasons.allow({"within_noise", "speed", "short_rows"});
  targets result;
  result.library_megabytes = n["library_megabytes"].number();
  result.noise = n["noise"].number();
  result.least_of_tight = n["least_of_tight"].number();
  result.least_of_long_rows = n["least_of_long_rows"].number();
  result.kinds = read_kinds(n["kinds"]);
  for (const node& entry : n["libraries"].items()) result.libraries.push_back(read_library_target(entry));
  result.touch_next_to_nothing = row_names(n["touch_next_to_nothing"]);
  result.within_noise = reasons["within_noise"].text();
  result.speed = read_reasons(reasons["speed"]);
  result.short_rows = read_reasons(reasons["short_rows"]);
  result.examples = row_names(n["examples"]);
  result.pairs = read_pair_targets(n["pairs"]);
  return result;
}

}  // namespace

targets read_targets(std::istream& in, const std::string& name_of_file) {
  json parsed;
  try {
    parsed = json::parse(in);
  } catch (const json::parse_error& error) {
    throw std::runtime_error(name_of_file + " is no JSON: " + error.what());
  }
  return read_all({parsed, name_of_file});
}

targets read_targets(const std::filesystem::path& file) {
  std::ifstream in(file);
  if (!in) throw std::runtime_error("cannot read " + file.string());
  return read_targets(in, file.string());
}

}  // namespace morvane::bench
