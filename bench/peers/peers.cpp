#include "peers/peers.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace morvane::bench {

std::vector<std::string> peer::row_names() const {
  std::istringstream names{std::string(rows)};
  return {std::istream_iterator<std::string>(names), {}};
}

bool peer::serves(std::string_view row_name) const {
  const std::vector<std::string> names = row_names();
  return std::find(names.begin(), names.end(), row_name) != names.end();
}

std::vector<peer> peers_of(std::string_view library, std::span<const stateless_peer> functions) {
  std::vector<peer> result;
  for (const stateless_peer& f : functions)
    result.push_back({f.rows, library, f.function, f.label,
                      [convert = f.convert](const catalogue::call& c) { return [convert, c] { convert(c); }; }});
  return result;
}

std::vector<peer> all_peers() {
  std::vector<peer> result = libyuv_peers();
  for (const auto& more : {swscale_peers(), opencv_peers()}) result.insert(result.end(), more.begin(), more.end());
  return result;
}

}  // namespace morvane::bench
