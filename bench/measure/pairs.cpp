#include "measure/pairs.h"

#include <algorithm>
#include <stdexcept>

#include "morvane.hpp"

namespace morvane::bench {

namespace {

using catalogue::format;

constexpr std::string_view any = "*";

bool stores(const format& f, std::string_view component) {
  bool result = false;
  for (std::size_t i = 0; i < f.plane_count(); ++i)
    f.planes[i].each_component([&](std::string_view c) { result = result || c == component; });
  return result;
}

bool needs(const format& destination, std::string_view component) {
  if (component == "A") return destination.alpha;
  const bool is_chroma = component == "Cb" || component == "Cr";
  return !is_chroma || !stores(destination, "Y") || stores(destination, "Cb");
}

bool needs(const format& destination, const catalogue::plane& p) {
  bool result = false;
  p.each_component([&](std::string_view c) { result = result || needs(destination, c); });
  return result;
}

// One side of a pair as a list has it.
class side {
 public:
  side(std::string_view text, std::string_view pair) : is_any_(text == any) {
    if (is_any_) return;
    format_ = format_called(std::string(text));
    if (format_ == nullptr)
      throw std::runtime_error("there is no format '" + std::string(text) + "' (" + std::string(pair) + ")");
  }
  bool takes(const format& f) const { return is_any_ || format_ == &f; }

 private:
  bool is_any_;
  const format* format_ = nullptr;
};

// Adds the pairs that `text` means to `found`.
void take_pairs(std::string_view text, const std::vector<format_pair>& all, std::vector<format_pair>& found) {
  const std::size_t colon = text.find(':');
  if (colon == text.npos)
    throw std::runtime_error("'" + std::string(text) + "' is no pair of formats, as uyvy:bgra is");
  const side source(text.substr(0, colon), text);
  const side destination(text.substr(colon + 1), text);
  const std::size_t before = found.size();
  for (const format_pair& p : all)
    if (source.takes(*p.source) && destination.takes(*p.destination)) found.push_back(p);
  if (found.size() == before) throw std::runtime_error("there is no way for " + std::string(text));
}

}  // namespace

std::string format_pair::name() const {
  return std::string(source->name).append(":").append(destination->name);
}

const format* format_called(const std::string& name) {
  if (const format* own = catalogue::find_format(name)) return own;
  const std::vector<morvane::format> called = formats_called(name);
  return called.size() == 1 ? catalogue::find_format(morvane::name_of(called.front())) : nullptr;
}

bool has_way(const format_pair& p) {
  try {
    const plan found({.format = p.source->id, .width = 16, .height = 16},
                     {.format = p.destination->id, .width = 16, .height = 16});
    return true;
  } catch (const error& e) {
    if (e.code() == MORVANE_NO_WAY) return false;
    throw;
  }
}

std::vector<format_pair> all_pairs() {
  std::vector<format_pair> result;
  for (const format& source : catalogue::formats)
    for (const format& destination : catalogue::formats)
      if (const format_pair p{&source, &destination}; has_way(p)) result.push_back(p);
  return result;
}

std::vector<format_pair> pairs_named(std::string_view list) {
  std::vector<format_pair> all = all_pairs();
  std::vector<format_pair> found;
  for (std::size_t at = 0; at <= list.size();) {
    const std::size_t end = std::min(list.find(',', at), list.size());
    take_pairs(list.substr(at, end - at), all, found);
    at = end + 1;
  }
  std::erase_if(all,
                [&found](const format_pair& p) { return std::find(found.begin(), found.end(), p) == found.end(); });
  return all;
}

std::int64_t bytes_moved(const format_pair& p, const size& picture) {
  std::int64_t bytes = p.destination->frame_bytes(picture.xres, picture.yres);
  for (std::size_t i = 0; i < p.source->plane_count(); ++i)
    if (const catalogue::plane& plane = p.source->planes[i]; needs(*p.destination, plane))
      bytes += plane.row_bytes(picture.xres) * plane.rows(picture.yres);
  return bytes;
}

}  // namespace morvane::bench
