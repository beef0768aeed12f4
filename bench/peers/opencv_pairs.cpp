// What OpenCV offers for pairs of formats, on one thread. Its matrix of video is BT.601, and chroma is nearest.
#include "peers/pair_peers.h"

#if defined(MORVANE_WITH_OPENCV)
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <stdexcept>
#endif

namespace morvane::bench {

#if defined(MORVANE_WITH_OPENCV)

namespace {

using catalogue::call;

// It takes the memory of a source for its own to write, and does not.
cv::Mat source(const call& c, int type, std::size_t p = 0, int divisor = 1) {
  return {c.yres / divisor, c.xres / divisor, type, const_cast<std::uint8_t*>(c.source.data[p]),
          static_cast<std::size_t>(c.source.stride[p])};
}

cv::Mat destination(const call& c, int type) {
  return {c.yres, c.xres, type, c.destination.data[0], static_cast<std::size_t>(c.destination.stride[0])};
}

// It knows three planes of 4:2:0 as one image whose rows all follow each other.
template <class Byte>
void demand_that_planes_follow(const call& c, const catalogue::planes<Byte>& planes) {
  const auto luma = std::ptrdiff_t{c.xres} * c.yres;
  if (planes.stride[0] != c.xres || planes.stride[1] != c.xres / 2 || planes.stride[2] != c.xres / 2 ||
      planes.data[1] != planes.data[0] + luma || planes.data[2] != planes.data[1] + luma / 4)
    throw std::runtime_error("OpenCV takes 4:2:0 without gaps between rows and planes");
}

template <class Byte>
cv::Mat all_planes(const call& c, const catalogue::planes<Byte>& planes) {
  demand_that_planes_follow(c, planes);
  return {c.yres * 3 / 2, c.xres, CV_8UC1, const_cast<std::uint8_t*>(planes.data[0])};
}

template <int destination_type, int code>
void from_packed(const call& c) {
  const cv::Mat to = destination(c, destination_type);
  cv::cvtColor(source(c, CV_8UC2), to, code);
}

template <int destination_type, int code>
void from_two_planes(const call& c) {
  const cv::Mat to = destination(c, destination_type);
  cv::cvtColorTwoPlane(source(c, CV_8UC1), source(c, CV_8UC2, 1, 2), to, code);
}

template <int destination_type, int code>
void from_three_planes(const call& c) {
  const cv::Mat to = destination(c, destination_type);
  cv::cvtColor(all_planes(c, c.source), to, code);
}

template <int source_type, int code>
void to_three_planes(const call& c) {
  const cv::Mat to = all_planes(c, c.destination);
  cv::cvtColor(source(c, source_type), to, code);
}

void bytes_to_floats(const call& c) {
  const cv::Mat to = destination(c, CV_32FC3);
  source(c, CV_8UC3).convertTo(to, CV_32FC3, 1.0 / 255);
}

constexpr stateless_pair_peer table[] = {
    {"nv12", "bgra bgrx", "cvtColorTwoPlane", from_two_planes<CV_8UC4, cv::COLOR_YUV2BGRA_NV12>},
    {"nv12", "rgba rgbx", "cvtColorTwoPlane", from_two_planes<CV_8UC4, cv::COLOR_YUV2RGBA_NV12>},
    {"nv12", "bgr24", "cvtColorTwoPlane", from_two_planes<CV_8UC3, cv::COLOR_YUV2BGR_NV12>},
    {"nv12", "rgb24", "cvtColorTwoPlane", from_two_planes<CV_8UC3, cv::COLOR_YUV2RGB_NV12>},
    {"nv21", "bgra bgrx", "cvtColorTwoPlane", from_two_planes<CV_8UC4, cv::COLOR_YUV2BGRA_NV21>},
    {"nv21", "rgba rgbx", "cvtColorTwoPlane", from_two_planes<CV_8UC4, cv::COLOR_YUV2RGBA_NV21>},
    {"nv21", "bgr24", "cvtColorTwoPlane", from_two_planes<CV_8UC3, cv::COLOR_YUV2BGR_NV21>},
    {"nv21", "rgb24", "cvtColorTwoPlane", from_two_planes<CV_8UC3, cv::COLOR_YUV2RGB_NV21>},
    {"i420", "bgra bgrx", "cvtColor", from_three_planes<CV_8UC4, cv::COLOR_YUV2BGRA_I420>},
    {"i420", "rgba rgbx", "cvtColor", from_three_planes<CV_8UC4, cv::COLOR_YUV2RGBA_I420>},
    {"i420", "bgr24", "cvtColor", from_three_planes<CV_8UC3, cv::COLOR_YUV2BGR_I420>},
    {"i420", "rgb24", "cvtColor", from_three_planes<CV_8UC3, cv::COLOR_YUV2RGB_I420>},
    {"yv12", "bgra bgrx", "cvtColor", from_three_planes<CV_8UC4, cv::COLOR_YUV2BGRA_YV12>},
    {"yv12", "rgba rgbx", "cvtColor", from_three_planes<CV_8UC4, cv::COLOR_YUV2RGBA_YV12>},
    {"yv12", "bgr24", "cvtColor", from_three_planes<CV_8UC3, cv::COLOR_YUV2BGR_YV12>},
    {"yv12", "rgb24", "cvtColor", from_three_planes<CV_8UC3, cv::COLOR_YUV2RGB_YV12>},
    {"uyvy", "bgra bgrx", "cvtColor", from_packed<CV_8UC4, cv::COLOR_YUV2BGRA_UYVY>},
    {"uyvy", "rgba rgbx", "cvtColor", from_packed<CV_8UC4, cv::COLOR_YUV2RGBA_UYVY>},
    {"uyvy", "bgr24", "cvtColor", from_packed<CV_8UC3, cv::COLOR_YUV2BGR_UYVY>},
    {"uyvy", "rgb24", "cvtColor", from_packed<CV_8UC3, cv::COLOR_YUV2RGB_UYVY>},
    {"yuy2", "bgra bgrx", "cvtColor", from_packed<CV_8UC4, cv::COLOR_YUV2BGRA_YUY2>},
    {"yuy2", "rgba rgbx", "cvtColor", from_packed<CV_8UC4, cv::COLOR_YUV2RGBA_YUY2>},
    {"yuy2", "bgr24", "cvtColor", from_packed<CV_8UC3, cv::COLOR_YUV2BGR_YUY2>},
    {"yuy2", "rgb24", "cvtColor", from_packed<CV_8UC3, cv::COLOR_YUV2RGB_YUY2>},
    {"bgra bgrx", "i420", "cvtColor", to_three_planes<CV_8UC4, cv::COLOR_BGRA2YUV_I420>},
    {"rgba rgbx", "i420", "cvtColor", to_three_planes<CV_8UC4, cv::COLOR_RGBA2YUV_I420>},
    {"bgr24", "i420", "cvtColor", to_three_planes<CV_8UC3, cv::COLOR_BGR2YUV_I420>},
    {"rgb24", "i420", "cvtColor", to_three_planes<CV_8UC3, cv::COLOR_RGB2YUV_I420>},
    {"rgb24", "rgbf32", "convertTo", bytes_to_floats},
};

}  // namespace

std::vector<pair_peer> opencv_pair_peers(const catalogue::format& from, const catalogue::format& to) {
  cv::setNumThreads(1);
  return peers_of_pair("OpenCV", table, from, to);
}

#else

std::vector<pair_peer> opencv_pair_peers(const catalogue::format&, const catalogue::format&) {
  return {};
}

#endif

}  // namespace morvane::bench
