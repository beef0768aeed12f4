// The other libraries that do the same job as a row.
#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "measure/workload.h"
#include "peers/agreement.h"

namespace morvane::bench {

inline constexpr std::array<std::string_view, 3> library_names = {"libyuv", "swscale", "OpenCV"};

struct peer {
  std::string_view rows{};  // names of rows, separated by blanks
  std::string_view library{};
  std::string_view function{};
  agreement label{};  // with the versions of Debian 12
  // Sets up what the library wants to keep from call to call, and answers what is measured.
  std::function<job(const catalogue::call&)> prepare{};

  std::vector<std::string> row_names() const;
  bool serves(std::string_view row_name) const;
};

// A function that keeps nothing from call to call.
struct stateless_peer {
  std::string_view rows;
  std::string_view function;
  agreement label;
  catalogue::thunk convert;
};

// The rows that copy pixels of four bytes.
inline constexpr std::string_view copies_of_four_bytes =
    "bgrx::bgrx bgrx_601::bgrx_601 bgrx_709::bgrx_709 rgbx::rgbx rgbx_601::rgbx_601 rgbx_709::rgbx_709 "
    "ycbcrx::ycbcrx vuyx::vuyx bgra::bgra bgra_601::bgra_601 bgra_709::bgra_709 rgba::rgba rgba_601::rgba_601 "
    "rgba_709::rgba_709 ycbcra::ycbcra vuya::vuya";

std::vector<peer> peers_of(std::string_view library, std::span<const stateless_peer> functions);

// Empty where the library was not there when this was built.
std::vector<peer> libyuv_peers();
std::vector<peer> swscale_peers();
std::vector<peer> opencv_peers();

std::vector<peer> all_peers();

// What the results of the library and of a peer on one image say. Where there is no image to compare, as for a sum, it
// is what the label says.
agreement observed_agreement(const row& r, const peer& p);

// A line for each peer whose label is not what the results say, and for each name that no row has.
std::vector<std::string> wrong_labels(const std::vector<row>& rows, const std::vector<peer>& peers);

}  // namespace morvane::bench
