#include "peers/pair_peers.h"

#include <map>
#include <stdexcept>

#include "morvane.hpp"
#include "peers/swscale.h"

namespace morvane::bench {

namespace {

// All pairs of formats ask for the same few names.
const std::vector<format>& called(std::string_view name) {
  static std::map<std::string_view, std::vector<format>> known;
  const auto [found, is_new] = known.try_emplace(name);
  if (is_new) found->second = formats_called(std::string(name));
  if (found->second.empty()) throw std::invalid_argument("no format is called " + std::string(name));
  return found->second;
}

bool has_name(std::string_view names, const catalogue::format& f) {
  bool result = false;
  catalogue::each_word(names, [&](std::string_view word) {
    const std::vector<format>& found = called(word);
    result = result || word == f.name || (found.size() == 1 && found.front() == f.id);
  });
  return result;
}

// It takes the planes of a source for its own to write, and does not.
swscale_planes writable(const catalogue::planes<const std::uint8_t>& p) {
  swscale_planes result;
  for (std::size_t i = 0; i < p.data.size(); ++i) {
    result.data[i] = const_cast<std::uint8_t*>(p.data[i]);
    result.stride[i] = p.stride[i];
  }
  return result;
}

}  // namespace

std::vector<pair_peer> peers_of_pair(std::string_view library, std::span<const stateless_pair_peer> functions,
                                     const catalogue::format& from, const catalogue::format& to) {
  std::vector<pair_peer> result;
  for (const stateless_pair_peer& f : functions)
    if (has_name(f.sources, from) && has_name(f.destinations, to))
      result.push_back({library, std::string(f.function), [convert = f.convert](const size&) { return convert; }});
  return result;
}

std::vector<pair_peer> swscale_pair_peers(const catalogue::format& from, const catalogue::format& to) {
  if (!swscale_has(from, to)) return {};
  std::vector<pair_peer> result;
  for (const resampling chroma : {resampling::nearest, resampling::bilinear})
    result.push_back({"swscale", chroma == resampling::nearest ? "sws_scale, nearest" : "sws_scale, bilinear",
                      [&from, &to, chroma](const size& picture) -> pair_job {
                        return [convert = swscale_between(from, to, picture, chroma)](const catalogue::call& c) {
                          convert(writable(c.source), c.destination);
                        };
                      }});
  return result;
}

std::vector<pair_peer> pair_peers(const catalogue::format& from, const catalogue::format& to) {
  std::vector<pair_peer> result;
  for (const auto& peers : {libyuv_pair_peers(from, to), swscale_pair_peers(from, to), opencv_pair_peers(from, to),
                            zimg_pair_peers(from, to)})
    result.insert(result.end(), peers.begin(), peers.end());
  return result;
}

}  // namespace morvane::bench
