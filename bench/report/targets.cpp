#include "report/targets.h"

#include <algorithm>

namespace morvane::bench {

namespace {

bool lists(const std::vector<std::string>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

bool lists_or_is_empty(const std::vector<std::string>& names, std::string_view name) {
  return names.empty() || lists(names, name);
}

std::int64_t frame_bytes(std::string_view format_name) {
  constexpr int side = 64;
  return format_name.empty() ? 0 : catalogue::find_format(format_name)->frame_bytes(side, side);
}

bool moves(const catalogue::conversion& c, traffic t) {
  if (t == traffic::writes_only) return c.source.empty();
  return 2 * frame_bytes(c.destination) >= 3 * frame_bytes(c.source);
}

std::string_view first_for(const std::vector<reason>& reasons, const row& r) {
  for (const reason& e : reasons)
    if (e.about.selects(r)) return e.because;
  return {};
}

}  // namespace

bool selector::selects(const row& r) const {
  const catalogue::conversion& c = *r.conversion;
  return lists_or_is_empty(rows, r.name) && (!what || *what == r.what) && lists_or_is_empty(source, c.source) &&
         lists_or_is_empty(destination, c.destination) && (!moved || moves(c, *moved));
}

const kind_target* targets::of(const row& r) const {
  if (lists(touch_next_to_nothing, r.name)) return nullptr;
  const auto found = std::find_if(kinds.begin(), kinds.end(), [&r](const kind_target& t) { return t.what == r.what; });
  return found == kinds.end() ? nullptr : &*found;
}

double targets::least_beside(const row& r, std::string_view library, const size& nominal) const {
  for (const library_target& t : libraries)
    if (t.library == library && t.nominal == nominal && t.about.selects(r)) return t.least;
  return never_slower();
}

std::string_view pair_targets::why(std::string_view source, std::string_view destination) const {
  for (const reason& e : reasons)
    if (lists_or_is_empty(e.about.source, source) && lists_or_is_empty(e.about.destination, destination))
      return e.because;
  return {};
}

std::string_view targets::why(const row& r) const {
  return first_for(speed, r);
}

std::string_view targets::why_in_short_rows(const row& r) const {
  return first_for(short_rows, r);
}

}  // namespace morvane::bench
