// What OpenCV offers for the rows of the benchmark, on one thread.
#include "peers/peers.h"

#if defined(MORVANE_WITH_OPENCV)
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace morvane::bench {

#if defined(MORVANE_WITH_OPENCV)

namespace {

using catalogue::call;
using enum agreement;

// It takes the memory of a source for its own to write, and does not.
cv::Mat source(const call& c, int type, std::size_t p = 0) {
  return {c.yres, c.xres, type, const_cast<std::uint8_t*>(c.source.data[p]),
          static_cast<std::size_t>(c.source.stride[p])};
}

cv::Mat destination(const call& c, int type, std::size_t p = 0) {
  return {c.yres, c.xres, type, c.destination.data[p], static_cast<std::size_t>(c.destination.stride[p])};
}

template <int type>
void copy(const call& c) {
  source(c, type).copyTo(destination(c, type));
}

void black_uyvy(const call& c) {
  destination(c, CV_8UC2).setTo(cv::Scalar(128, 16));
}

template <int type>
void fill(const call& c) {
  destination(c, type).setTo(cv::Scalar(c.argument));
}

template <int source_type, int destination_type, int code>
void convert_colors(const call& c) {
  const cv::Mat to = destination(c, destination_type);
  cv::cvtColor(source(c, source_type), to, code);
}

template <int destination_type, int code>
void convert_colors_and_alpha(const call& c) {
  convert_colors<CV_8UC2, destination_type, code>(c);
  cv::Mat to = destination(c, destination_type);
  cv::insertChannel(source(c, CV_8UC1, 1), to, 3);
}

void split(const call& c) {
  cv::Mat planes[] = {destination(c, CV_8UC1, 1), destination(c, CV_8UC1)};
  cv::split(source(c, CV_8UC2), planes);
}

void merge(const call& c) {
  const cv::Mat planes[] = {source(c, CV_16UC1), source(c, CV_16UC1, 1)};
  cv::Mat to = destination(c, CV_16UC2);
  cv::merge(planes, 2, to);
}

// v * numerator / denominator + offset / denominator
template <int source_type, int destination_type, int numerator, int denominator = 1, int offset = 0>
void scale(const call& c) {
  const cv::Mat to = destination(c, destination_type);
  source(c, source_type).convertTo(to, destination_type, double{numerator} / denominator, double{offset} / denominator);
}

void widen_chroma_twice(const call& c) {
  for (int odd = 0; odd < 2; ++odd) {
    const cv::Mat to(c.yres, c.xres, CV_16UC1, c.destination.data[0] + odd * c.destination.stride[0],
                     2 * static_cast<std::size_t>(c.destination.stride[0]));
    source(c, CV_8UC1).convertTo(to, CV_16UC1, 256);
  }
}

void take_alpha(const call& c) {
  const cv::Mat to = destination(c, CV_16UC1);
  cv::extractChannel(source(c, CV_16UC4), to, 3);
}

// The planes of `uyvy_uyvy` are rows of bytes.
void sum_differences(const call& c) {
  [[maybe_unused]] volatile double sum = cv::norm(source(c, CV_8UC2), source(c, CV_8UC2, 1), cv::NORM_L1);
}

// Its matrix of video is BT.601.
constexpr stateless_peer table[] = {
    {"black::uyvy", "setTo", same_bytes, black_uyvy},
    {"black::alpha(alpha)", "setTo", same_bytes, fill<CV_8UC1>},
    {"black::alpha(alpha_u16)", "setTo", same_bytes, fill<CV_16UC1>},
    {"y::y", "copyTo", same_bytes, copy<CV_8UC1>},
    {"uyvy::uyvy", "copyTo", same_bytes, copy<CV_8UC2>},
    {"bgr::bgr bgr_601::bgr_601 bgr_709::bgr_709", "copyTo", same_bytes, copy<CV_8UC3>},
    {copies_of_four_bytes, "copyTo", same_bytes, copy<CV_8UC4>},
    {"y16::y16", "copyTo", same_bytes, copy<CV_16UC1>},
    {"uyvy::y_uv_422", "split", same_bytes, split},
    {"uyvy::y", "cvtColor", same_bytes, convert_colors<CV_8UC2, CV_8UC1, cv::COLOR_YUV2GRAY_UYVY>},
    {"y::y16", "convertTo", same_bytes, scale<CV_8UC1, CV_16UC1, 256>},
    {"y16::y16(rescale)", "convertTo", close, scale<CV_16UC1, CV_16UC1, 1197, 1024, -4902912>},
    {"cb_cr_16_422::cbcr_16_422", "merge", same_bytes, merge},
    {"cbcr_8_420::cbcr_16_422", "convertTo, twice", same_bytes, widen_chroma_twice},
    {"L::bgra", "cvtColor", same_bytes, convert_colors<CV_8UC1, CV_8UC4, cv::COLOR_GRAY2BGRA>},
    {"uyvy::bgr_601", "cvtColor", close, convert_colors<CV_8UC2, CV_8UC3, cv::COLOR_YUV2BGR_UYVY>},
    {"uyvy::bgr uyvy::bgr_709", "cvtColor", other_algorithm, convert_colors<CV_8UC2, CV_8UC3, cv::COLOR_YUV2BGR_UYVY>},
    {"uyvy::bgra_601 uyvy::bgrx_601", "cvtColor", close, convert_colors<CV_8UC2, CV_8UC4, cv::COLOR_YUV2BGRA_UYVY>},
    {"uyvy::bgra uyvy::bgra_709 uyvy::bgrx uyvy::bgrx_709", "cvtColor", other_algorithm,
     convert_colors<CV_8UC2, CV_8UC4, cv::COLOR_YUV2BGRA_UYVY>},
    {"uyvy::rgba_601 uyvy::rgbx_601", "cvtColor", close, convert_colors<CV_8UC2, CV_8UC4, cv::COLOR_YUV2RGBA_UYVY>},
    {"uyvy::rgba uyvy::rgba_709 uyvy::rgbx uyvy::rgbx_709", "cvtColor", other_algorithm,
     convert_colors<CV_8UC2, CV_8UC4, cv::COLOR_YUV2RGBA_UYVY>},
    {"uyvy_a::bgra_601", "cvtColor, insertChannel", close, convert_colors_and_alpha<CV_8UC4, cv::COLOR_YUV2BGRA_UYVY>},
    {"uyvy_a::bgra uyvy_a::bgra_709", "cvtColor, insertChannel", other_algorithm,
     convert_colors_and_alpha<CV_8UC4, cv::COLOR_YUV2BGRA_UYVY>},
    {"uyvy_a::rgba_601", "cvtColor, insertChannel", close, convert_colors_and_alpha<CV_8UC4, cv::COLOR_YUV2RGBA_UYVY>},
    {"uyvy_a::rgba uyvy_a::rgba_709", "cvtColor, insertChannel", other_algorithm,
     convert_colors_and_alpha<CV_8UC4, cv::COLOR_YUV2RGBA_UYVY>},
    {"sum_absolute_differences::difference", "norm", same_bytes, sum_differences},
    {"alpha::alpha_u16", "convertTo", same_bytes, scale<CV_8UC1, CV_16UC1, 257>},
    {"alpha_u16::alpha", "convertTo", close, scale<CV_16UC1, CV_8UC1, 1, 256>},
    {"alpha_10u16::alpha_u16", "convertTo", close, scale<CV_16UC1, CV_16UC1, 1025, 16>},
    {"alpha_12u16::alpha_u16", "convertTo", close, scale<CV_16UC1, CV_16UC1, 4097, 256>},
    {"y_10u16::y", "convertTo", close, scale<CV_16UC1, CV_8UC1, 1, 4>},
    {"bgra64::alpha16", "extractChannel", same_bytes, take_alpha},
};

}  // namespace

std::vector<peer> opencv_peers() {
  cv::setNumThreads(1);
  return peers_of("OpenCV", table);
}

#else

std::vector<peer> opencv_peers() {
  return {};
}

#endif

}  // namespace morvane::bench
