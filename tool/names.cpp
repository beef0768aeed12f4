// Names of formats and conversions, looked up and corrected.
#include "names.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <iterator>
#include <numeric>
#include <system_error>
#include <utility>

#include "errors.h"

namespace morvane::tool {

namespace {

constexpr std::string_view v4l2_prefix = "V4L2_PIX_FMT_";

std::string lower(std::string_view word) {
  std::string result(word);
  for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return result;
}

std::string_view without_prefix(std::string_view v4l2) {
  return v4l2.starts_with(v4l2_prefix) ? v4l2.substr(v4l2_prefix.size()) : v4l2;
}

// Short FourCCs are filled up with blanks.
std::string_view without_blanks(std::string_view fourcc) {
  return fourcc.substr(0, fourcc.find_last_not_of(' ') + 1);
}

// The names that others use for a format, with repetitions and empty ones.
std::vector<std::string> names_elsewhere(const format_info& f) {
  std::vector<std::string> names = words_of(f.also);
  const std::string_view of_systems[] = {without_blanks(f.fourcc), f.ffmpeg, without_prefix(f.v4l2), f.gstreamer,
                                         f.apple};
  names.insert(names.begin(), std::begin(of_systems), std::end(of_systems));
  return names;
}

// Every lower-case name a format answers to, its own first.
std::vector<std::string> all_names(const format_info& f) {
  std::vector<std::string> names = {lower(f.name), lower(f.v4l2)};
  for (const std::string& name : names_elsewhere(f)) names.push_back(lower(name));
  names.erase(std::remove(names.begin(), names.end(), ""), names.end());
  return names;
}

std::size_t edit_distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

struct suggestion {
  std::size_t distance;
  std::string name;
};

std::string nearest(std::size_t limit, std::vector<suggestion> all) {
  constexpr std::size_t most = 3;
  std::stable_sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.distance < b.distance; });
  std::vector<std::string> names;
  for (const suggestion& s : all)
    if (s.distance <= limit && names.size() < most && std::find(names.begin(), names.end(), s.name) == names.end())
      names.push_back(s.name);
  return joined(names);
}

// What a name tells of a format that there is not.
struct traits {
  int model = 0;  // of morvane_model; 0 where it tells none
  bool has_alpha = false;
  int bits = 8;
};

bool holds_letters_of(std::string_view word, std::string_view letters) {
  return std::all_of(letters.begin(), letters.end(), [&](char c) { return word.find(c) != word.npos; });
}

traits traits_of(const std::string& word) {
  traits t;
  const std::string start = word.substr(0, word.find_first_of("0123456789"));
  if (holds_letters_of(start, "rgb"))
    t.model = MORVANE_RGB;
  else if (holds_letters_of(start, "yuv") || start.starts_with("nv") || start.starts_with("yuy"))
    t.model = MORVANE_YCBCR;
  else if (start.starts_with("gray") || start.starts_with("grey"))
    t.model = MORVANE_LUMA;
  t.has_alpha = t.model != 0 && t.model != MORVANE_LUMA && start.find('a') != start.npos;
  for (const auto& [digits, bits] : {std::pair("10", 10), {"12", 12}, {"16", 16}, {"48", 16}, {"64", 16}})
    if (word.find(digits, start.size()) != word.npos) t.bits = bits;
  return t;
}

// How little a format has of what a name tells: first its model, then its alpha, then its depth.
std::size_t unlikeness(const traits& t, const format_info& f) {
  return (f.model != t.model ? 100U : 0U) + ((f.has_alpha != 0) != t.has_alpha ? 10U : 0U) +
         (f.planes[0].bits != t.bits ? 5U : 0U);
}

std::size_t distance_to(const std::string& word, const format_info& f) {
  std::size_t best = word.size() + 1;
  for (const std::string& name : all_names(f)) best = std::min(best, edit_distance(word, name));
  return best;
}

std::string nearest_formats(const std::string& word) {
  const traits t = traits_of(word);
  std::vector<suggestion> all;
  for (const format_info& f : all_formats()) {
    const std::size_t distance = distance_to(word, f);
    // A slip of one letter tells more than what the name seems to mean.
    const bool is_kin = t.model != 0 && distance > 1;
    all.push_back({is_kin ? 2 + unlikeness(t, f) + distance : distance, f.name});
  }
  return nearest(t.model == 0 ? std::max<std::size_t>(2, word.size() / 3) : 17, std::move(all));
}

std::string nearest_conversions(const std::string& word) {
  std::vector<suggestion> all;
  for (const morvane_entry_point& e : morvane::entry_points())
    all.push_back({edit_distance(word, lower(e.name)), e.name});
  return nearest(std::max<std::size_t>(2, word.size() / 3), std::move(all));
}

std::string advice(const std::string& near, std::string_view listing) {
  return near.empty() ? text("'morvane ", listing, "' lists them") : "nearest: " + near;
}

int parse_length(std::string_view digits) {
  constexpr int longest = 1 << 20;
  int value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return error == std::errc() && end == digits.data() + digits.size() && value <= longest ? value : 0;
}

}  // namespace

std::vector<format_info> formats_named(const std::string& name) {
  std::vector<format_info> found;
  for (const morvane::format f : morvane::formats_called(name)) found.push_back(info_of(f));
  if (!found.empty()) return found;
  if (lower(name).starts_with("y4m") || lower(name).starts_with("yuv4mpeg"))
    wrong_arguments(name, " is no pixel format: YUV4MPEG2 says its own, and 'morvane convert --y4m' writes it");
  wrong_arguments("unknown format ", name, "; ", advice(nearest_formats(lower(name)), "formats"));
}

const format_info& format_named(const std::string& name) {
  const std::vector<format_info> found = formats_named(name);
  if (found.size() == 1) return info_of(found.front().format);
  std::vector<std::string> candidates;
  for (const format_info& f : found) candidates.emplace_back(f.name);
  wrong_arguments("format ", name, " may mean ", joined(candidates, " or "));
}

std::vector<morvane_entry_point> entry_points_named(const std::string& name) {
  std::vector<morvane_entry_point> found;
  for (const morvane_entry_point& e : morvane::entry_points())
    if (e.name == name) found.push_back(e);
  if (found.empty())
    wrong_arguments("unknown conversion ", name, "; ", advice(nearest_conversions(lower(name)), "conversions"));
  return found;
}

std::vector<std::string> other_names(const format_info& f) {
  std::vector<std::string> result;
  for (const std::string& name : names_elsewhere(f)) {
    const auto same = [&](const std::string& other) { return lower(other) == lower(name); };
    if (!name.empty() && name != f.name && std::none_of(result.begin(), result.end(), same)) result.emplace_back(name);
  }
  return result;
}

morvane::matrix parse_matrix(const char* option, const std::string& word) {
  std::string number = lower(word);
  for (const std::string_view prefix : {"bt.", "bt"})
    if (number.starts_with(prefix)) number.erase(0, prefix.size());
  if (number.empty() && word.empty()) return morvane::matrix::unsaid;
  if (number == "601") return morvane::matrix::bt601;
  if (number == "709") return morvane::matrix::bt709;
  if (number == "2020") return morvane::matrix::bt2020;
  wrong_arguments(option, " ", word, " is none of bt601, bt709 and bt2020");
}

morvane::range parse_range(const char* option, const std::string& word) {
  const std::string range = lower(word);
  if (range.empty()) return morvane::range::unsaid;
  if (range == "video" || range == "limited" || range == "tv") return morvane::range::video;
  if (range == "full" || range == "pc") return morvane::range::full;
  wrong_arguments(option, " ", word, " is neither video (also limited, tv) nor full (also pc)");
}

morvane::stores parse_stores(const char* option, const std::string& word) {
  const std::string stores = lower(word);
  if (stores.empty() || stores == "cached") return morvane::stores::cached;
  if (stores == "streaming") return morvane::stores::streaming;
  if (stores == "by-size") return morvane::stores::by_size;
  wrong_arguments(option, " ", word, " is neither cached nor streaming nor by-size");
}

morvane::color parse_color(const char* option, const std::string& words) {
  const std::vector<std::string> parts = parse_list(words);
  std::vector<std::uint8_t> levels;
  for (const std::string& part : parts) {
    std::uint8_t level = 0;
    const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), level);
    if (error == std::errc() && end == part.data() + part.size()) levels.push_back(level);
  }
  if (parts.size() != 3 || levels.size() != 3)
    wrong_arguments(option, " ", words, " is not RED,GREEN,BLUE, each from 0 to 255");
  return {levels[0], levels[1], levels[2]};
}

extent parse_size(const std::string& words) {
  const std::size_t cross = words.find_first_of("xX");
  const std::string_view all = words;
  const extent size = cross == std::string::npos
                          ? extent{}
                          : extent{parse_length(all.substr(0, cross)), parse_length(all.substr(cross + 1))};
  if (size.width < 1 || size.height < 1)
    wrong_arguments("size ", words, " is not WIDTHxHEIGHT in pixels, such as 1920x1080");
  return size;
}

std::vector<std::string> parse_list(const std::string& words) {
  std::vector<std::string> result;
  std::size_t start = 0;
  for (std::size_t comma = words.find(','); comma != std::string::npos; comma = words.find(',', start)) {
    result.push_back(words.substr(start, comma - start));
    start = comma + 1;
  }
  result.push_back(words.substr(start));
  return result;
}

bool has_extension(const std::string& path, std::string_view extension) {
  return path.size() >= extension.size() && lower(path.substr(path.size() - extension.size())) == extension;
}

std::string joined(const std::vector<std::string>& words, std::string_view separator) {
  std::string result;
  for (const std::string& word : words) {
    if (!result.empty()) result += separator;
    result += word;
  }
  return result;
}

}  // namespace morvane::tool
