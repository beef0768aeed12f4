// Making and running plans.
#include "chain.h"

#include <algorithm>
#include <chrono>
#include <optional>

#include "errors.h"
#include "names.h"

namespace morvane::tool {

namespace {

// The library's words, without the name that the argument has there.
[[noreturn]] void refuse(const morvane::error& e) {
  const std::string argument = e.argument() + ' ';
  const std::string words = e.what();
  const std::string rest = words.starts_with(argument) ? words.substr(argument.size()) : words;
  const std::string option = e.argument().starts_with("options.") ? "--" + e.argument().substr(8) + ' ' : "";
  if (e.code() == MORVANE_NO_MEMORY) io_failure(option, rest);
  wrong_arguments(option, rest);
}

// Of the entry points with one name, the one that is between the formats or next to one of them.
const morvane_entry_point& nearest(const std::vector<morvane_entry_point>& all, morvane::format from,
                                   morvane::format to) {
  const auto distance = [&](const morvane_entry_point& e) { return (e.source != from) + (e.destination != to); };
  return *std::min_element(all.begin(), all.end(),
                           [&](const auto& a, const auto& b) { return distance(a) < distance(b); });
}

morvane::matrix first_matrix(const morvane_entry_point& e) {
  return static_cast<morvane::matrix>(e.matrices[0]);
}

bool has_matrix(const morvane_entry_point& e, morvane::matrix m) {
  const int number = m == morvane::matrix::unsaid ? MORVANE_BT709 : static_cast<int>(m);
  return e.matrices[0] == 0 || std::find(std::begin(e.matrices), std::end(e.matrices), number) != std::end(e.matrices);
}

}  // namespace

morvane::plan plan_between(const morvane::description& from, const morvane::description& to,
                           const morvane::options& how) {
  try {
    return morvane::plan(from, to, how);
  } catch (const morvane::error& e) {
    refuse(e);
  }
}

chain::chain(const morvane::description& source, const morvane::description& destination, const morvane::options& how) {
  if (how.via.empty())
    add(source, destination, how);
  else
    add_around_entry_point(source, destination, how);
}

void chain::add(const morvane::description& from, const morvane::description& to, const morvane::options& how) {
  links_.push_back({from, to, plan_between(from, to, how)});
}

void chain::add_around_entry_point(const morvane::description& source, const morvane::description& destination,
                                   const morvane::options& how) {
  const morvane_entry_point via = nearest(entry_points_named(how.via), source.format, destination.format);
  if (via.source == 0) wrong_arguments(via.name, " fills a picture and converts none");
  if (*via.irregular != '\0') {
    if (!how.allow_irregular)
      wrong_arguments(via.name, " is irregular: it ", via.irregular, "; --allow-irregular uses it");
    remark_ = text(via.name, " is irregular: it ", via.irregular);
  }
  morvane::description from = source;
  morvane::description to = destination;
  // An entry point that has one matrix only brings it along.
  for (morvane::description* end : {&from, &to})
    if (end->matrix == morvane::matrix::unsaid && !has_matrix(via, end->matrix)) end->matrix = first_matrix(via);
  morvane::description before = from;
  morvane::description behind = to;
  if (source.format != via.source)
    before = {.format = via.source, .width = from.width, .height = from.height, .matrix = from.matrix};
  if (destination.format != via.destination)
    behind = {.format = via.destination, .width = to.width, .height = to.height, .matrix = to.matrix};
  morvane::options rules = how;
  rules.via.clear();
  rules.rescale = rules.allow_irregular = false;
  // What lies between two plans is read at once.
  const auto read_next = [](morvane::options of) {
    of.stores = morvane::stores::cached;
    return of;
  };
  if (source.format != via.source) add(from, before, read_next(rules));
  add(before, behind, destination.format != via.destination ? read_next(how) : how);
  if (destination.format != via.destination) add(behind, to, rules);
}

std::int64_t chain::memory() const {
  std::int64_t bytes = 0;
  std::size_t scratch = 0;
  for (const link& l : links_) {
    if (&l != &links_.back()) bytes += image::bytes_of(info_of(l.to.format), {l.to.width, l.to.height});
    scratch = std::max(scratch, l.plan.scratch_bytes());
  }
  return bytes + static_cast<std::int64_t>(scratch);
}

void chain::allocate() {
  for (std::size_t i = between_.size(); i + 1 < links_.size(); ++i)
    between_.emplace_back(info_of(links_[i].to.format), extent{links_[i].to.width, links_[i].to.height});
  for (const link& l : links_) scratch_.resize(std::max(scratch_.size(), l.plan.scratch_bytes()));
}

void chain::run(const image& source, const image& destination, int times) {
  using clock = std::chrono::steady_clock;
  allocate();
  for (std::size_t i = 0; i < links_.size(); ++i)
    for (int n = 0; n < times; ++n) {
      const clock::time_point start = clock::now();
      run_once(i, i == 0 ? source : between_[i - 1], i + 1 == links_.size() ? destination : between_[i]);
      const double seconds = std::chrono::duration<double>(clock::now() - start).count();
      step_time& t = links_[i].time;
      t.best_seconds = t.runs == 0 ? seconds : std::min(t.best_seconds, seconds);
      t.total_seconds += seconds;
      ++t.runs;
    }
}

void chain::run_once(std::size_t i, const image& from, const image& to) {
  links_[i].plan.run(from.picture(), to.picture(), scratch_.data(), scratch_.size());
}

std::vector<std::string> chain::steps() const {
  std::vector<std::string> all;
  for (const link& l : links_)
    for (std::string& step : l.plan.steps()) all.push_back(std::move(step));
  return all;
}

std::vector<std::string> chain::losses() const {
  std::vector<std::string> all;
  for (const link& l : links_)
    for (std::string& loss : l.plan.losses()) all.push_back(std::move(loss));
  return all;
}

std::string chain::name(std::size_t i) const {
  return text(info_of(links_[i].from.format).name, " -> ", info_of(links_[i].to.format).name);
}

std::int64_t chain::bytes_moved(std::size_t i) const {
  const auto bytes = [](const morvane::description& d) {
    const morvane_layout layout = morvane::lay_out(d);
    std::int64_t sum = 0;
    for (int p = 0; p < layout.plane_count; ++p) sum += layout.planes[p].row_bytes * layout.planes[p].rows;
    return sum;
  };
  return bytes(links_[i].from) + bytes(links_[i].to);
}

}  // namespace morvane::tool
