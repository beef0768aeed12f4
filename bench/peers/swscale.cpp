// What swscale offers for the rows of the benchmark, with nearest samples, and for pairs of formats: accurate rounding,
// one thread.
#include "peers/swscale.h"

#include "peers/peers.h"

#if defined(MORVANE_WITH_SWSCALE)
extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>
#endif

namespace morvane::bench {

#if defined(MORVANE_WITH_SWSCALE)

namespace {

using enum agreement;

// Whether luma runs from 0 to 255 on both sides, or on one of them. The library changes the range of luma only where
// the row says so; swscale takes grey for full range unless the other side is, too.
enum class range { full, full_to_video, video_to_full, video };

struct setting {
  std::string_view rows{};
  AVPixelFormat from{};
  AVPixelFormat to{};
  agreement label{};
  int matrix = SWS_CS_ITU709;
  range luma = range::video;
};

constexpr std::string_view uyvy_709 = "bgrx::uyvy bgrx_709::uyvy";

constexpr setting table[] = {
    {"y::y", AV_PIX_FMT_GRAY8, AV_PIX_FMT_GRAY8, same_bytes},
    {"uyvy::uyvy", AV_PIX_FMT_UYVY422, AV_PIX_FMT_UYVY422, same_bytes},
    {"bgr::bgr bgr_601::bgr_601 bgr_709::bgr_709", AV_PIX_FMT_BGR24, AV_PIX_FMT_BGR24, same_bytes},
    {"bgrx::bgrx bgrx_601::bgrx_601 bgrx_709::bgrx_709", AV_PIX_FMT_BGR0, AV_PIX_FMT_BGR0, same_bytes},
    {"rgbx::rgbx rgbx_601::rgbx_601 rgbx_709::rgbx_709", AV_PIX_FMT_RGB0, AV_PIX_FMT_RGB0, same_bytes},
    {"bgra::bgra bgra_601::bgra_601 bgra_709::bgra_709", AV_PIX_FMT_BGRA, AV_PIX_FMT_BGRA, same_bytes},
    {"rgba::rgba rgba_601::rgba_601 rgba_709::rgba_709", AV_PIX_FMT_RGBA, AV_PIX_FMT_RGBA, same_bytes},
    {"y16::y16", AV_PIX_FMT_GRAY16LE, AV_PIX_FMT_GRAY16LE, same_bytes},
    {"uyvy::yuy2", AV_PIX_FMT_UYVY422, AV_PIX_FMT_YUYV422, same_bytes},
    {"yuy2::uyvy", AV_PIX_FMT_YUYV422, AV_PIX_FMT_UYVY422, same_bytes},
    {"uyvy::y_uv_420", AV_PIX_FMT_UYVY422, AV_PIX_FMT_NV12, other_algorithm},
    {"uyvy::y_u_v_422", AV_PIX_FMT_UYVY422, AV_PIX_FMT_YUV422P, same_bytes},
    {"uyvy::y_u_v_420", AV_PIX_FMT_UYVY422, AV_PIX_FMT_YUV420P, other_algorithm},
    {"uyvy::y", AV_PIX_FMT_UYVY422, AV_PIX_FMT_GRAY8, same_bytes, SWS_CS_ITU709, range::full},
    {"uyvy::y(rescale)", AV_PIX_FMT_UYVY422, AV_PIX_FMT_GRAY8, close, SWS_CS_ITU709, range::video_to_full},
    {"y::uyvy", AV_PIX_FMT_GRAY8, AV_PIX_FMT_UYVY422, same_bytes, SWS_CS_ITU709, range::full},
    {"y::uyvy(rescale)", AV_PIX_FMT_GRAY8, AV_PIX_FMT_UYVY422, close, SWS_CS_ITU709, range::full_to_video},
    {"y::y16", AV_PIX_FMT_GRAY8, AV_PIX_FMT_GRAY16LE, close},
    {"y_u_v::y_uv", AV_PIX_FMT_YUV420P, AV_PIX_FMT_NV12, same_bytes},
    {"L::bgra", AV_PIX_FMT_GRAY8, AV_PIX_FMT_BGRA, same_bytes, SWS_CS_ITU709, range::full},
    {uyvy_709, AV_PIX_FMT_BGR0, AV_PIX_FMT_UYVY422, other_algorithm},
    {"bgrx_601::uyvy", AV_PIX_FMT_BGR0, AV_PIX_FMT_UYVY422, other_algorithm, SWS_CS_ITU601},
    {"rgbx::uyvy rgbx_709::uyvy", AV_PIX_FMT_RGB0, AV_PIX_FMT_UYVY422, other_algorithm},
    {"rgbx_601::uyvy", AV_PIX_FMT_RGB0, AV_PIX_FMT_UYVY422, other_algorithm, SWS_CS_ITU601},
    {"bgr::uyvy", AV_PIX_FMT_BGR24, AV_PIX_FMT_UYVY422, other_algorithm},
    {"uyvy::bgr uyvy::bgr_709", AV_PIX_FMT_UYVY422, AV_PIX_FMT_BGR24, close},
    {"uyvy::bgr_601", AV_PIX_FMT_UYVY422, AV_PIX_FMT_BGR24, close, SWS_CS_ITU601},
    {"uyvy::bgra uyvy::bgra_709 uyvy::bgrx uyvy::bgrx_709", AV_PIX_FMT_UYVY422, AV_PIX_FMT_BGRA, close},
    {"uyvy::bgra_601 uyvy::bgrx_601", AV_PIX_FMT_UYVY422, AV_PIX_FMT_BGRA, close, SWS_CS_ITU601},
    {"uyvy::rgba uyvy::rgba_709 uyvy::rgbx uyvy::rgbx_709", AV_PIX_FMT_UYVY422, AV_PIX_FMT_RGBA, close},
    {"uyvy::rgba_601 uyvy::rgbx_601", AV_PIX_FMT_UYVY422, AV_PIX_FMT_RGBA, close, SWS_CS_ITU601},
    {"uyvy::r_g_b uyvy::r_g_b_709", AV_PIX_FMT_UYVY422, AV_PIX_FMT_GBRP, other_algorithm},
    {"uyvy::r_g_b_601", AV_PIX_FMT_UYVY422, AV_PIX_FMT_GBRP, close, SWS_CS_ITU601},
    {"uyvy::p216", AV_PIX_FMT_UYVY422, AV_PIX_FMT_P216LE, same_bytes},
    {"y_uv::p216", AV_PIX_FMT_NV12, AV_PIX_FMT_P216LE, same_bytes},
    {"p216::uyvy", AV_PIX_FMT_P216LE, AV_PIX_FMT_UYVY422, close},
    {"p216::p010", AV_PIX_FMT_P216LE, AV_PIX_FMT_P010LE, other_algorithm},
    {"p216::rgbx_2020", AV_PIX_FMT_P216LE, AV_PIX_FMT_RGB0, close, SWS_CS_BT2020},
    {"alpha::alpha_u16", AV_PIX_FMT_GRAY8, AV_PIX_FMT_GRAY16LE, same_bytes},
    {"alpha_u16::alpha", AV_PIX_FMT_GRAY16LE, AV_PIX_FMT_GRAY8, close},
    {"alpha_10u16::alpha_u16", AV_PIX_FMT_GRAY10LE, AV_PIX_FMT_GRAY16LE, same_bytes},
    {"alpha_12u16::alpha_u16", AV_PIX_FMT_GRAY12LE, AV_PIX_FMT_GRAY16LE, same_bytes},
    {"y_10u16::y", AV_PIX_FMT_GRAY10LE, AV_PIX_FMT_GRAY8, close},
};

using context = std::shared_ptr<SwsContext>;

context make_context(const setting& s, int width, int height, int chroma = SWS_POINT) {
  const context result(sws_alloc_context(), sws_freeContext);
  const auto set = [&result](const char* name, int value) { av_opt_set_int(result.get(), name, value, 0); };
  const int source_is_full = s.luma == range::full || s.luma == range::full_to_video;
  const int destination_is_full = s.luma == range::full || s.luma == range::video_to_full;
  set("srcw", width);
  set("srch", height);
  set("dstw", width);
  set("dsth", height);
  set("src_format", s.from);
  set("dst_format", s.to);
  set("src_range", source_is_full);
  set("dst_range", destination_is_full);
  set("sws_flags", chroma | SWS_ACCURATE_RND);
  const int* matrix = sws_getCoefficients(s.matrix);
  sws_setColorspaceDetails(result.get(), matrix, source_is_full, matrix, destination_is_full, 0, 1 << 16, 1 << 16);
  if (sws_init_context(result.get(), nullptr, nullptr) < 0) throw std::runtime_error("swscale refuses a conversion");
  return result;
}

catalogue::planes<std::uint8_t> destination_of(const setting& s, const catalogue::call& c) {
  catalogue::planes<std::uint8_t> result = c.destination;
  // Its planes are G, B and R.
  if (s.to == AV_PIX_FMT_GBRP) std::rotate(result.data.begin(), result.data.begin() + 1, result.data.begin() + 3);
  return result;
}

AVPixelFormat pixel_format(const catalogue::format& f) {
  return av_get_pix_fmt(std::string(f.ffmpeg).c_str());
}

// swscale would stretch grey of video range where the other side is of video range too.
range luma_between(const catalogue::format& from, const catalogue::format& to) {
  const auto is_grey = [](const catalogue::format& f) { return f.model == catalogue::color_model::luma; };
  return is_grey(from) || is_grey(to) ? range::full : range::video;
}

constexpr size trial{48, 2};

class trial_picture {
 public:
  trial_picture(const catalogue::format& f, std::uint8_t value) : format_(pixel_format(f)) {
    const int bytes =
        av_image_alloc(planes_.data.data(), planes_.stride.data(), trial.xres, trial.yres, format_, alignment);
    if (bytes < 0) throw std::bad_alloc();
    std::fill_n(planes_.data[0], bytes, value);
  }
  trial_picture(const trial_picture&) = delete;
  trial_picture& operator=(const trial_picture&) = delete;
  ~trial_picture() { av_freep(planes_.data.data()); }

  const swscale_planes& planes() const { return planes_; }
  std::vector<std::uint8_t> bytes_of_rows() const {
    const int bytes = av_image_get_buffer_size(format_, trial.xres, trial.yres, 1);
    std::vector<std::uint8_t> result(static_cast<std::size_t>(bytes));
    av_image_copy_to_buffer(result.data(), bytes, planes_.data.data(), planes_.stride.data(), format_, trial.xres,
                            trial.yres, 1);
    return result;
  }

 private:
  static constexpr int alignment = 64;
  AVPixelFormat format_;
  swscale_planes planes_{};
};

// The version 5.1 leaves chroma unwritten where it converts formats with pairs of Cb and Cr to themselves, or grey to
// them.
bool writes_all(const catalogue::format& from, const catalogue::format& to) {
  const swscale_conversion convert = swscale_between(from, to, trial, resampling::nearest);
  const trial_picture source(from, 0), over_zeros(to, 0), over_ones(to, 255);
  convert(source.planes(), over_zeros.planes());
  convert(source.planes(), over_ones.planes());
  return over_zeros.bytes_of_rows() == over_ones.bytes_of_rows();
}

}  // namespace

bool swscale_has(const catalogue::format& from, const catalogue::format& to) {
  return sws_isSupportedInput(pixel_format(from)) > 0 && sws_isSupportedOutput(pixel_format(to)) > 0 &&
         writes_all(from, to);
}

swscale_conversion swscale_between(const catalogue::format& from, const catalogue::format& to, const size& picture,
                                   resampling chroma) {
  av_log_set_level(AV_LOG_ERROR);
  const setting s{.from = pixel_format(from), .to = pixel_format(to), .luma = luma_between(from, to)};
  const context sws =
      make_context(s, picture.xres, picture.yres, chroma == resampling::nearest ? SWS_POINT : SWS_BILINEAR);
  return [sws, height = picture.yres](const swscale_planes& in, const swscale_planes& out) {
    sws_scale(sws.get(), in.data.data(), in.stride.data(), 0, height, out.data.data(), out.stride.data());
  };
}

std::vector<peer> swscale_peers() {
  std::vector<peer> result;
  for (const setting& s : table)
    result.push_back(
        {s.rows, "swscale", "sws_scale", s.label, [&s](const catalogue::call& c) {
           return [sws = make_context(s, c.xres, c.yres), from = c.source, to = destination_of(s, c), height = c.yres] {
             sws_scale(sws.get(), from.data.data(), from.stride.data(), 0, height, to.data.data(), to.stride.data());
           };
         }});
  return result;
}

#else

bool swscale_has(const catalogue::format&, const catalogue::format&) {
  return false;
}

swscale_conversion swscale_between(const catalogue::format&, const catalogue::format&, const size&, resampling) {
  return {};
}

std::vector<peer> swscale_peers() {
  return {};
}

#endif

}  // namespace morvane::bench
