// The same sum as OpenCV.
#include "Processing.Morvane.h"
#include "peers.h"

#if defined(MORVANE_WITH_OPENCV)
#include <opencv2/core.hpp>
#endif

namespace morvane::tests {

#if defined(MORVANE_WITH_OPENCV)

TEST(opencv_peer, sums_absolute_differences) {
  byte_plane a = noise(width, height, 1, 10), b = noise(width, height, 2, 38);
  const cv::Mat first(height, width, CV_8U, a.data(), static_cast<std::size_t>(a.stride));
  const cv::Mat second(height, width, CV_8U, b.data(), static_cast<std::size_t>(b.stride));
  const std::uint64_t sum =
      Processing::Morvane::sum_absolute_differences::difference(a.data(), a.stride, b.data(), b.stride, width, height);
  EXPECT_EQ(static_cast<double>(sum), cv::norm(first, second, cv::NORM_L1));
}

#else

TEST(opencv_peer, is_there) {
  GTEST_SKIP() << "OpenCV is not installed";
}

#endif

}  // namespace morvane::tests
