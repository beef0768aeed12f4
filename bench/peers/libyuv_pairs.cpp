// What libyuv offers for pairs of formats, with the matrix of BT.709 where it can be chosen, and both filters where
// there are two. Its ARGB is bgra, its ABGR rgba, its RAW rgb24 and its AR30 x2rgb10.
#include "peers/pair_peers.h"

#if defined(MORVANE_WITH_LIBYUV)
#include <libyuv.h>

#include <tuple>
#include <type_traits>
#include <utility>
#endif

namespace morvane::bench {

#if defined(MORVANE_WITH_LIBYUV)

namespace {

using catalogue::call;

// The first parameters of every function are planes, each followed by its stride: those of the source, then those of
// the destination.
template <class T>
constexpr bool is_plane = std::is_same_v<T, const std::uint8_t*> || std::is_same_v<T, const std::uint16_t*> ||
                          std::is_same_v<T, std::uint8_t*> || std::is_same_v<T, std::uint16_t*>;

template <class T>
constexpr bool is_source = is_plane<T>&& std::is_const_v<std::remove_pointer_t<T>>;

// A plane and its stride, which counts samples.
template <class Pointer, class Byte>
std::tuple<Pointer, int> plane_of(const catalogue::planes<Byte>& planes, std::size_t i) {
  return {reinterpret_cast<Pointer>(planes.data[i]),
          planes.stride[i] / static_cast<int>(sizeof(std::remove_pointer_t<Pointer>))};
}

template <class... P>
struct parameters {
  static constexpr std::size_t sources = (std::size_t{is_source<P>} + ...);

  template <class T, std::size_t i>
  static auto plane_at(const call& c) {
    if constexpr (!is_plane<T>)
      return std::tuple<>();
    else if constexpr (is_source<T>)
      return plane_of<T>(c.source, i / 2);
    else
      return plane_of<T>(c.destination, i / 2 - sources);
  }

  template <std::size_t... i>
  static auto planes(const call& c, std::index_sequence<i...>) {
    return std::tuple_cat(plane_at<P, i>(c)...);
  }
};

// `before` and `after` stand before and behind the size of the picture.
template <class... P, class... Before, class... After>
void run(int (*function)(P...), const call& c, const std::tuple<Before...>& before, const std::tuple<After...>& after) {
  const auto planes = parameters<P...>::planes(c, std::index_sequence_for<P...>());
  std::apply(function, std::tuple_cat(planes, before, std::tuple(c.xres, c.yres), after));
}

constexpr std::tuple<> nothing;

const std::tuple colors{&libyuv::kYuvH709Constants};
// For red and blue in each other's place, with chroma in each other's place too.
const std::tuple mirrored_colors{&libyuv::kYvuH709Constants};
const std::tuple bilinear{libyuv::kFilterBilinear};
const std::tuple without_premultiplying{0};

call with_chroma_exchanged(call c) {
  std::swap(c.source.data[1], c.source.data[2]);
  std::swap(c.source.stride[1], c.source.stride[2]);
  return c;
}

template <auto function>
void convert(const call& c) {
  run(function, c, nothing, nothing);
}

template <auto function>
void by_709(const call& c) {
  run(function, c, colors, nothing);
}

// Of a format with a plane of chroma, by the function for the other order of chroma.
template <auto function>
void by_709_mirrored(const call& c) {
  run(function, c, mirrored_colors, nothing);
}

template <auto function>
void bilinear_by_709(const call& c) {
  run(function, c, colors, bilinear);
}

// Of a format with two planes of chroma.
template <auto function>
void bilinear_by_709_mirrored(const call& c) {
  run(function, with_chroma_exchanged(c), mirrored_colors, bilinear);
}

// By the function for the other order of two planes of chroma.
template <catalogue::thunk of_i420>
void yv12(const call& c) {
  of_i420(with_chroma_exchanged(c));
}

void argb_to_uyvy_and_alpha(const call& c) {
  convert<libyuv::ARGBToUYVY>(c);
  libyuv::ARGBExtractAlpha(c.source.data[0], c.source.stride[0], c.destination.data[1], c.destination.stride[1], c.xres,
                           c.yres);
}

void uyvy_and_alpha_to_argb(const call& c) {
  convert<libyuv::UYVYToARGB>(c);
  libyuv::ARGBCopyYToAlpha(c.source.data[1], c.source.stride[1], c.destination.data[0], c.destination.stride[0], c.xres,
                           c.yres);
}

void i210_alpha_to_argb(const call& c) {
  run(libyuv::I210AlphaToARGBMatrix, c, colors, without_premultiplying);
}

constexpr stateless_pair_peer table[] = {
    {"nv12", "bgra bgrx", "NV12ToARGBMatrix", by_709<libyuv::NV12ToARGBMatrix>},
    {"nv12", "rgba rgbx", "NV12ToABGRMatrix", by_709_mirrored<libyuv::NV21ToARGBMatrix>},
    {"nv12", "bgr24", "NV12ToRGB24Matrix", by_709<libyuv::NV12ToRGB24Matrix>},
    {"nv12", "rgb24", "NV12ToRAWMatrix", by_709_mirrored<libyuv::NV21ToRGB24Matrix>},
    {"nv21", "bgra bgrx", "NV21ToARGBMatrix", by_709<libyuv::NV21ToARGBMatrix>},
    {"nv21", "rgba rgbx", "NV21ToABGRMatrix", by_709_mirrored<libyuv::NV12ToARGBMatrix>},
    {"nv21", "bgr24", "NV21ToRGB24Matrix", by_709<libyuv::NV21ToRGB24Matrix>},
    {"nv21", "rgb24", "NV21ToRAWMatrix", by_709_mirrored<libyuv::NV12ToRGB24Matrix>},
    {"i420", "bgra bgrx", "H420ToARGB", convert<libyuv::H420ToARGB>},
    {"i420", "rgba rgbx", "H420ToABGR", convert<libyuv::H420ToABGR>},
    {"i420", "argb", "I420ToBGRA", convert<libyuv::I420ToBGRA>},
    {"i420", "bgr24", "H420ToRGB24", convert<libyuv::H420ToRGB24>},
    {"i420", "rgb24", "H420ToRAW", convert<libyuv::H420ToRAW>},
    {"i420", "bgra bgrx", "I420ToARGBMatrixFilter", bilinear_by_709<libyuv::I420ToARGBMatrixFilter>},
    {"i420", "rgba rgbx", "I420ToABGRMatrixFilter", bilinear_by_709_mirrored<libyuv::I420ToARGBMatrixFilter>},
    {"i420", "bgr24", "I420ToRGB24MatrixFilter", bilinear_by_709<libyuv::I420ToRGB24MatrixFilter>},
    {"i420", "rgb24", "I420ToRAWMatrixFilter", bilinear_by_709_mirrored<libyuv::I420ToRGB24MatrixFilter>},
    {"yv12", "bgra bgrx", "H420ToARGB", yv12<convert<libyuv::H420ToARGB>>},
    {"yv12", "rgba rgbx", "H420ToABGR", yv12<convert<libyuv::H420ToABGR>>},
    {"yv12", "argb", "I420ToBGRA", yv12<convert<libyuv::I420ToBGRA>>},
    {"yv12", "bgr24", "H420ToRGB24", yv12<convert<libyuv::H420ToRGB24>>},
    {"yv12", "rgb24", "H420ToRAW", yv12<convert<libyuv::H420ToRAW>>},
    {"yv12", "bgra bgrx", "I420ToARGBMatrixFilter", yv12<bilinear_by_709<libyuv::I420ToARGBMatrixFilter>>},
    {"yv12", "rgba rgbx", "I420ToABGRMatrixFilter", yv12<bilinear_by_709_mirrored<libyuv::I420ToARGBMatrixFilter>>},
    {"yv12", "bgr24", "I420ToRGB24MatrixFilter", yv12<bilinear_by_709<libyuv::I420ToRGB24MatrixFilter>>},
    {"yv12", "rgb24", "I420ToRAWMatrixFilter", yv12<bilinear_by_709_mirrored<libyuv::I420ToRGB24MatrixFilter>>},
    {"yuv422p", "bgra bgrx", "H422ToARGB", convert<libyuv::H422ToARGB>},
    {"yuv422p", "rgba rgbx", "H422ToABGR", convert<libyuv::H422ToABGR>},
    {"yuv422p", "argb", "I422ToBGRA", convert<libyuv::I422ToBGRA>},
    {"yuv422p", "bgr24", "I422ToRGB24Matrix", by_709<libyuv::I422ToRGB24Matrix>},
    {"yuv422p", "rgb24", "I422ToRAW", convert<libyuv::I422ToRAW>},
    {"yuv422p", "bgra bgrx", "I422ToARGBMatrixFilter", bilinear_by_709<libyuv::I422ToARGBMatrixFilter>},
    {"yuv422p", "rgba rgbx", "I422ToABGRMatrixFilter", bilinear_by_709_mirrored<libyuv::I422ToARGBMatrixFilter>},
    {"yuv422p", "bgr24", "I422ToRGB24MatrixFilter", bilinear_by_709<libyuv::I422ToRGB24MatrixFilter>},
    {"yuv422p", "rgb24", "I422ToRAWMatrixFilter", bilinear_by_709_mirrored<libyuv::I422ToRGB24MatrixFilter>},
    {"uyvy", "bgra bgrx", "UYVYToARGB", convert<libyuv::UYVYToARGB>},
    {"yuy2", "bgra bgrx", "YUY2ToARGB", convert<libyuv::YUY2ToARGB>},
    {"p010", "bgra bgrx", "P010ToARGBMatrix", by_709<libyuv::P010ToARGBMatrix>},
    {"p010", "bgra bgrx", "P010ToARGBMatrixFilter", bilinear_by_709<libyuv::P010ToARGBMatrixFilter>},
    {"p010", "x2rgb10", "P010ToAR30Matrix", by_709<libyuv::P010ToAR30Matrix>},
    {"p010", "x2rgb10", "P010ToAR30MatrixFilter", bilinear_by_709<libyuv::P010ToAR30MatrixFilter>},
    {"p210 p216", "bgra bgrx", "P210ToARGBMatrix", by_709<libyuv::P210ToARGBMatrix>},
    {"p210 p216", "bgra bgrx", "P210ToARGBMatrixFilter", bilinear_by_709<libyuv::P210ToARGBMatrixFilter>},
    {"p210 p216", "x2rgb10", "P210ToAR30Matrix", by_709<libyuv::P210ToAR30Matrix>},
    {"p210 p216", "x2rgb10", "P210ToAR30MatrixFilter", bilinear_by_709<libyuv::P210ToAR30MatrixFilter>},
    {"yuv420p10", "bgra bgrx", "H010ToARGB", convert<libyuv::H010ToARGB>},
    {"yuv420p10", "rgba rgbx", "H010ToABGR", convert<libyuv::H010ToABGR>},
    {"yuv420p10", "x2rgb10", "H010ToAR30", convert<libyuv::H010ToAR30>},
    {"yuv420p10", "bgra bgrx", "I010ToARGBMatrixFilter", bilinear_by_709<libyuv::I010ToARGBMatrixFilter>},
    {"yuv420p10", "rgba rgbx", "I010ToABGRMatrixFilter", bilinear_by_709_mirrored<libyuv::I010ToARGBMatrixFilter>},
    {"yuv420p10", "x2rgb10", "I010ToAR30MatrixFilter", bilinear_by_709<libyuv::I010ToAR30MatrixFilter>},
    {"yuv422p10", "bgra bgrx", "H210ToARGB", convert<libyuv::H210ToARGB>},
    {"yuv422p10", "rgba rgbx", "H210ToABGR", convert<libyuv::H210ToABGR>},
    {"yuv422p10", "x2rgb10", "H210ToAR30", convert<libyuv::H210ToAR30>},
    {"yuv422p10", "bgra bgrx", "I210ToARGBMatrixFilter", bilinear_by_709<libyuv::I210ToARGBMatrixFilter>},
    {"yuv422p10", "rgba rgbx", "I210ToABGRMatrixFilter", bilinear_by_709_mirrored<libyuv::I210ToARGBMatrixFilter>},
    {"yuv422p10", "x2rgb10", "I210ToAR30MatrixFilter", bilinear_by_709<libyuv::I210ToAR30MatrixFilter>},
    {"bgra bgrx", "uyvy", "ARGBToUYVY", convert<libyuv::ARGBToUYVY>},
    {"bgra bgrx", "yuy2", "ARGBToYUY2", convert<libyuv::ARGBToYUY2>},
    {"bgra bgrx", "nv12", "ARGBToNV12", convert<libyuv::ARGBToNV12>},
    {"bgra bgrx", "i420", "ARGBToI420", convert<libyuv::ARGBToI420>},
    {"bgra bgrx", "yuv422p", "ARGBToI422", convert<libyuv::ARGBToI422>},
    {"rgba rgbx", "nv12", "ABGRToNV12", convert<libyuv::ABGRToNV12>},
    {"rgba rgbx", "i420", "ABGRToI420", convert<libyuv::ABGRToI420>},
    {"bgr24", "i420", "RGB24ToI420", convert<libyuv::RGB24ToI420>},
    {"rgb24", "i420", "RAWToI420", convert<libyuv::RAWToI420>},
    {"uyvy", "nv12", "UYVYToNV12", convert<libyuv::UYVYToNV12>},
    {"uyvy", "i420", "UYVYToI420", convert<libyuv::UYVYToI420>},
    {"uyvy", "yuv422p", "UYVYToI422", convert<libyuv::UYVYToI422>},
    {"yuy2", "nv12", "YUY2ToNV12", convert<libyuv::YUY2ToNV12>},
    {"yuy2", "i420", "YUY2ToI420", convert<libyuv::YUY2ToI420>},
    {"yuy2", "yuv422p", "YUY2ToI422", convert<libyuv::YUY2ToI422>},
    {"i420", "uyvy", "I420ToUYVY", convert<libyuv::I420ToUYVY>},
    {"i420", "yuy2", "I420ToYUY2", convert<libyuv::I420ToYUY2>},
    {"yuv422p", "uyvy", "I422ToUYVY", convert<libyuv::I422ToUYVY>},
    {"yuv422p", "yuy2", "I422ToYUY2", convert<libyuv::I422ToYUY2>},
    {"nv12", "i420", "NV12ToI420", convert<libyuv::NV12ToI420>},
    {"i420", "nv12", "I420ToNV12", convert<libyuv::I420ToNV12>},
    {"p010", "yuv420p10", "P010ToI010", convert<libyuv::P010ToI010>},
    {"yuv420p10", "p010", "I010ToP010", convert<libyuv::I010ToP010>},
    {"uyvy_a", "bgra", "UYVYToARGB, ARGBCopyYToAlpha", uyvy_and_alpha_to_argb},
    {"bgra", "uyvy_a", "ARGBToUYVY, ARGBExtractAlpha", argb_to_uyvy_and_alpha},
    {"yuva422p10", "bgra", "I210AlphaToARGBMatrix", i210_alpha_to_argb},
};

}  // namespace

std::vector<pair_peer> libyuv_pair_peers(const catalogue::format& from, const catalogue::format& to) {
  return peers_of_pair("libyuv", table, from, to);
}

#else

std::vector<pair_peer> libyuv_pair_peers(const catalogue::format&, const catalogue::format&) {
  return {};
}

#endif

}  // namespace morvane::bench
