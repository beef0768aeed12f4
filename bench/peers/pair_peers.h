// The other libraries that convert a picture of one format to one of another.
#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/formats.h"
#include "measure/workload.h"

namespace morvane::bench {

using pair_job = std::function<void(const catalogue::call&)>;

inline constexpr std::array<std::string_view, 4> libraries_of_pairs = {"libyuv", "swscale", "OpenCV", "zimg"};

struct pair_peer {
  std::string_view library{};  // one of these
  std::string function{};
  // Sets up what the library wants to keep from picture to picture.
  std::function<pair_job(const size&)> prepare{};
};

// A function that keeps nothing from picture to picture. Its formats have any of their names, separated by blanks; it
// takes each source to each destination.
struct stateless_pair_peer {
  std::string_view sources;
  std::string_view destinations;
  std::string_view function;
  catalogue::thunk convert;
};

std::vector<pair_peer> pair_peers(const catalogue::format& from, const catalogue::format& to);

// Those of one library; empty where it was not there when this was built.
std::vector<pair_peer> libyuv_pair_peers(const catalogue::format& from, const catalogue::format& to);
std::vector<pair_peer> swscale_pair_peers(const catalogue::format& from, const catalogue::format& to);
std::vector<pair_peer> opencv_pair_peers(const catalogue::format& from, const catalogue::format& to);
std::vector<pair_peer> zimg_pair_peers(const catalogue::format& from, const catalogue::format& to);

// The functions of a table that have the pair. Throws where the table names no format.
std::vector<pair_peer> peers_of_pair(std::string_view library, std::span<const stateless_pair_peer> functions,
                                     const catalogue::format& from, const catalogue::format& to);

}  // namespace morvane::bench
