// What zimg offers for pairs of formats: those with a plane for each component and no alpha, with either filter of
// chroma.
#include "peers/pair_peers.h"

#if defined(MORVANE_WITH_ZIMG)
#include <zimg.h>

#include <memory>
#include <stdexcept>
#endif

namespace morvane::bench {

#if defined(MORVANE_WITH_ZIMG)

namespace {

using catalogue::color_model;
using catalogue::format;
using catalogue::sample_type;

// As its buffers must be aligned.
constexpr std::size_t alignment = 64;

bool has_whole_samples(const catalogue::plane& p) {
  const bool is_known = p.sample == sample_type::u8 || p.sample == sample_type::f32 || p.sample == sample_type::f16 ||
                        p.sample == sample_type::u16 || catalogue::low_bits(p.sample) > 0;
  return is_known && p.order == catalogue::byte_order::little_endian && p.upper_bits == 0;
}

bool is_planar(const format& f) {
  if (f.alpha || (f.model != color_model::ycbcr && f.model != color_model::rgb && f.model != color_model::luma))
    return false;
  for (std::size_t i = 0; i < f.plane_count(); ++i)
    if (f.planes[i].components.find(' ') != std::string_view::npos || !has_whole_samples(f.planes[i])) return false;
  return true;
}

zimg_pixel_type_e pixel_type(sample_type s) {
  if (s == sample_type::u8) return ZIMG_PIXEL_BYTE;
  if (s == sample_type::f32) return ZIMG_PIXEL_FLOAT;
  return s == sample_type::f16 ? ZIMG_PIXEL_HALF : ZIMG_PIXEL_WORD;
}

zimg_image_format describe(const format& f, const size& picture) {
  zimg_image_format result;
  zimg_image_format_default(&result, ZIMG_API_VERSION);
  const bool is_rgb = f.model == color_model::rgb;
  const catalogue::plane& chroma = f.planes[f.plane_count() - 1];
  result.width = static_cast<unsigned>(picture.xres);
  result.height = static_cast<unsigned>(picture.yres);
  result.pixel_type = pixel_type(f.planes[0].sample);
  result.subsample_w = chroma.group_pixels == 2;
  result.subsample_h = chroma.image_rows == 2;
  result.color_family = is_rgb ? ZIMG_COLOR_RGB : f.plane_count() == 1 ? ZIMG_COLOR_GREY : ZIMG_COLOR_YUV;
  result.matrix_coefficients = is_rgb ? ZIMG_MATRIX_RGB : ZIMG_MATRIX_BT709;
  result.depth = static_cast<unsigned>(f.planes[0].depth());
  result.pixel_range = is_rgb ? ZIMG_RANGE_FULL : ZIMG_RANGE_LIMITED;
  return result;
}

// Where zimg has the component of a plane.
std::size_t place_of(const catalogue::plane& p) {
  if (p.components == "G" || p.components == "Cb") return 1;
  return p.components == "B" || p.components == "Cr" ? 2 : 0;
}

template <class Buffer, class Byte>
Buffer buffer_of(const format& f, const catalogue::planes<Byte>& planes) {
  Buffer result{};
  result.version = ZIMG_API_VERSION;
  for (std::size_t i = 0; i < f.plane_count(); ++i) {
    auto& plane = result.plane[place_of(f.planes[i])];
    plane.data = planes.data[i];
    plane.stride = planes.stride[i];
    plane.mask = ZIMG_BUFFER_MAX;
  }
  return result;
}

// Its graph and the memory that it works in.
class graph {
 public:
  graph(const format& from, const format& to, const size& picture, zimg_resample_filter_e chroma)
      : from_(from), to_(to), graph_(build(from, to, picture, chroma), zimg_filter_graph_free) {
    std::size_t bytes = 0;
    if (graph_ == nullptr || zimg_filter_graph_get_tmp_size(graph_.get(), &bytes) != ZIMG_ERROR_SUCCESS)
      throw std::runtime_error("zimg refuses a conversion");
    scratch_.resize(bytes + alignment);
  }

  void run(const catalogue::call& c) {
    const auto in = buffer_of<zimg_image_buffer_const>(from_, c.source);
    const auto out = buffer_of<zimg_image_buffer>(to_, c.destination);
    void* scratch = scratch_.data();
    std::size_t room = scratch_.size();
    std::align(alignment, room - alignment, scratch, room);
    if (zimg_filter_graph_process(graph_.get(), &in, &out, scratch, nullptr, nullptr, nullptr, nullptr) !=
        ZIMG_ERROR_SUCCESS)
      throw std::runtime_error("zimg fails at a conversion");
  }

 private:
  const format& from_;
  const format& to_;
  std::unique_ptr<zimg_filter_graph, decltype(&zimg_filter_graph_free)> graph_;
  std::vector<std::uint8_t> scratch_{};

  static zimg_filter_graph* build(const format& from, const format& to, const size& picture,
                                  zimg_resample_filter_e chroma) {
    zimg_graph_builder_params how;
    zimg_graph_builder_params_default(&how, ZIMG_API_VERSION);
    how.resample_filter = how.resample_filter_uv = chroma;
    how.cpu_type = ZIMG_CPU_AUTO_64B;
    const zimg_image_format in = describe(from, picture);
    const zimg_image_format out = describe(to, picture);
    return zimg_filter_graph_build(&in, &out, &how);
  }
};

}  // namespace

std::vector<pair_peer> zimg_pair_peers(const format& from, const format& to) {
  if (!is_planar(from) || !is_planar(to)) return {};
  std::vector<pair_peer> result;
  for (const zimg_resample_filter_e chroma : {ZIMG_RESIZE_POINT, ZIMG_RESIZE_BILINEAR})
    result.push_back({"zimg", chroma == ZIMG_RESIZE_POINT ? "graph, point" : "graph, bilinear",
                      [&from, &to, chroma](const size& picture) -> pair_job {
                        const auto made = std::make_shared<graph>(from, to, picture, chroma);
                        return [made](const catalogue::call& c) { made->run(c); };
                      }});
  return result;
}

#else

std::vector<pair_peer> zimg_pair_peers(const catalogue::format&, const catalogue::format&) {
  return {};
}

#endif

}  // namespace morvane::bench
