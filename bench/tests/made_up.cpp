#include "made_up.h"

#include <algorithm>
#include <stdexcept>

namespace morvane::bench {

row row_named(std::string_view name) {
  for (const row& r : all_rows())
    if (r.name == name) return r;
  throw std::invalid_argument("no row " + std::string(name));
}

measurement made_up(const std::string& row_name, const std::string& runner, const place& where, double nanoseconds) {
  return {.row = row_name,
          .runner = runner,
          .where = where,
          .bytes = 6000,
          .pixels = 1000,
          .nanoseconds = nanoseconds,
          .copy_nanoseconds = 1000};
}

measurement made_up_peer(const std::string& row_name, const std::string& library, const place& where,
                         double nanoseconds) {
  measurement result = made_up(row_name, library, where, nanoseconds);
  result.is_peer = true;
  result.function = "Convert, twice";
  result.label = agreement::close;
  return result;
}

results made_up_results(std::vector<measurement> all) {
  return {all_rows(), made_up_backends, std::move(all)};
}

targets made_up_targets() {
  targets result;
  result.noise = 0.03;
  result.least_of_tight = 0.95;
  result.least_of_long_rows = 0.6;
  for (const kind k : kinds)
    result.kinds.push_back({.what = k, .title = std::string(name_of(k)), .share_of_memcpy = {0.5, 0.7, 0.9}});
  result.touch_next_to_nothing = {"uyvy::ya_uv"};
  result.within_noise = "noise";
  result.speed = {{.about = {}, .because = "speed"}};
  result.short_rows = {{.about = {}, .because = "short rows"}};
  return result;
}

}  // namespace morvane::bench
