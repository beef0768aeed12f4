// FFmpeg's bytes, by its library swscale, wherever it rearranges samples as the checked interface does: between formats
// of one model, sampling and depth nothing is computed, and so nothing may differ.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/formats.h"
#include "morvane.hpp"
#include "rules/layout.h"

#if defined(MORVANE_WITH_SWSCALE)
extern "C" {
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}
#endif

namespace morvane::tests {
namespace {

#if defined(MORVANE_WITH_SWSCALE)

// The formats with a name in FFmpeg that some of its versions do not convert, and why.
struct missing {
  std::string_view ffmpeg;
  const char* reason;
};
constexpr missing may_be_missing[] = {
    {"v210", "is a codec and no pixel format, and has a test of its own"},
    {"r210", "is a codec and no pixel format, and has a test of its own"},
    {"r10k", "is a codec and no pixel format, and has a test of its own"},
    {"xv30le", "is younger than some versions"},
    {"y210le", "is read alone"},
    {"y212le", "is younger than some versions"},
    {"y216le", "is younger than some versions"},
    {"rgbaf16le", "is younger than some versions"},
    {"rgbf32le", "is younger than some versions"},
    {"rgbaf32le", "is younger than some versions"},
    {"nv16", "is known by name, and neither read nor written"},
    {"vuya", "is younger than some versions"},
    {"vuyx", "is younger than some versions"},
    {"ayuv", "is younger than some versions"},
    {"xv36le", "is younger than some versions"},
    {"p012le", "is younger than some versions"},
    {"p212le", "is younger than some versions"},
    {"p412le", "is younger than some versions"},
};

AVPixelFormat pixel_format_of(const catalogue::format& f) {
  return av_get_pix_fmt(std::string(f.ffmpeg).c_str());
}

bool is_converted_by_ffmpeg(const catalogue::format& f) {
  const AVPixelFormat p = f.ffmpeg.empty() ? AV_PIX_FMT_NONE : pixel_format_of(f);
  return p != AV_PIX_FMT_NONE && sws_isSupportedInput(p) > 0 && sws_isSupportedOutput(p) > 0;
}

// FFmpeg takes words of three samples, and floats, through a matrix and back.
bool is_computed_by_ffmpeg(const catalogue::format& f) {
  return f.planes[0].has_words_of_pixels() || catalogue::is_float(f.planes[0].sample);
}

bool is_rearranged(const catalogue::format& from, const catalogue::format& to) {
  const rules::format& a = rules::format_of(from.name);
  const rules::format& b = rules::format_of(to.name);
  return from.id != to.id && from.model == to.model && a.chroma == b.chroma && a.color_bits() == b.color_bits() &&
         !is_computed_by_ffmpeg(from) && !is_computed_by_ffmpeg(to);
}

// A picture whose rows begin at multiples of 64 bytes, as swscale's vectors like them.
struct stored {
  stored(const catalogue::format& f, int width, int height)
      : is{.format = f.id, .width = width, .height = height}, memory(is, 64), planes(memory.picture()) {}

  void fill_at_random(std::uint32_t seed) {
    std::generate_n(memory.data(), memory.bytes(), [&] {
      seed = seed * 1664525U + 1013904223U;
      return static_cast<std::uint8_t>(seed >> 24);
    });
  }
  // What is unused is zero, as FFmpeg expects it.
  void clear_unused_bits(const rules::format& f) {
    for (std::size_t i = 0; i < f.planes.size(); ++i) {
      const std::vector<std::uint8_t> bits = rules::bits_of_samples(f, i, is.width);
      for (int y = 0; y < rules::rows_of_plane(f, i, is.height); ++y)
        for (std::size_t x = 0; x < bits.size(); ++x) {
          std::uint8_t& byte = data()[i][y * planes.stride[i] + static_cast<std::ptrdiff_t>(x)];
          byte = static_cast<std::uint8_t>(byte & bits[x]);
        }
    }
  }
  std::array<std::uint8_t*, 4> data() const {
    std::array<std::uint8_t*, 4> all{};
    std::transform(std::begin(planes.data), std::end(planes.data), all.begin(),
                   [](void* plane) { return static_cast<std::uint8_t*>(plane); });
    return all;
  }
  std::array<int, 4> strides() const {
    std::array<int, 4> all{};
    std::transform(std::begin(planes.stride), std::end(planes.stride), all.begin(),
                   [](std::int64_t stride) { return static_cast<int>(stride); });
    return all;
  }

  description is;
  image memory;
  morvane_picture planes;
};

void convert_by_ffmpeg(const catalogue::format& from, const stored& source, const catalogue::format& to,
                       const stored& destination) {
  const int width = source.is.width, height = source.is.height;
  SwsContext* context = sws_getContext(width, height, pixel_format_of(from), width, height, pixel_format_of(to),
                                       SWS_POINT | SWS_ACCURATE_RND, nullptr, nullptr, nullptr);
  ASSERT_NE(context, nullptr);
  sws_scale(context, source.data().data(), source.strides().data(), 0, height, destination.data().data(),
            destination.strides().data());
  sws_freeContext(context);
}

// What is behind the last column of a row FFmpeg leaves undefined, and an unused byte too.
// What is behind the last column of a row FFmpeg leaves undefined, and an unused byte too.
void expect_same_bits(const catalogue::format& to, const stored& made, const stored& by_ffmpeg) {
  const rules::format& f = rules::format_of(to.name);
  for (std::size_t i = 0; i < f.planes.size(); ++i) {
    const std::vector<std::uint8_t> bits = rules::bits_of_samples(f, i, made.is.width);
    for (int y = 0; y < rules::rows_of_plane(f, i, made.is.height); ++y)
      for (std::size_t x = 0; x < bits.size(); ++x) {
        const std::ptrdiff_t at = y * made.planes.stride[i] + static_cast<std::ptrdiff_t>(x);
        ASSERT_EQ(made.data()[i][at] & bits[x], by_ffmpeg.data()[i][at] & bits[x])
            << to.name << ", " << made.is.width << "x" << made.is.height << ", plane " << i << ", row " << y
            << ", byte " << x;
      }
  }
}

// FFmpeg sends some RGB through YCbCr of fewer bits, and alpha of bytes that becomes a plane through its scaler.
bool is_scaled_by_ffmpeg(const catalogue::format& from, const catalogue::format& to) {
  if (from.model != catalogue::color_model::rgb) return false;
  const bool from_planes = from.plane_count() > 1, to_planes = to.plane_count() > 1;
  if (from.planes[0].depth() > 8) return from_planes == to_planes;
  return !from_planes && to_planes && from.alpha && to.alpha;
}

// So near that no two components are exchanged, and none is a bit off its place.
void expect_near(const catalogue::format& to, const stored& made, const stored& by_ffmpeg) {
  const rules::format& f = rules::format_of(to.name);
  for (std::size_t i = 0; i < f.planes.size(); ++i)
    for (int y = 0; y < rules::rows_of_plane(f, i, made.is.height); ++y)
      for (int x = 0; x < rules::groups_in_row(f, i, made.is.width); ++x)
        for (const rules::field& sample : f.planes[i].fields) {
          const std::ptrdiff_t at = y * made.planes.stride[i] + std::ptrdiff_t{x} * f.planes[i].bytes;
          const double steps = 1 << sample.bits();
          ASSERT_NEAR(rules::get(f.planes[i], sample, made.data()[i] + at) / steps,
                      rules::get(f.planes[i], sample, by_ffmpeg.data()[i] + at) / steps, 0.01)
              << to.name << ", plane " << i << ", row " << y << ", group " << x;
        }
}

void expect_same(const catalogue::format& from, const catalogue::format& to, int width, int height) {
  SCOPED_TRACE(from.name);
  stored source(from, width, height), made(to, width, height), by_ffmpeg(to, width, height);
  source.fill_at_random(static_cast<std::uint32_t>(from.id * 64 + to.id));
  source.clear_unused_bits(rules::format_of(from.name));
  convert(source.is, source.planes, made.is, made.planes);
  convert_by_ffmpeg(from, source, to, by_ffmpeg);
  if (is_scaled_by_ffmpeg(from, to))
    expect_near(to, made, by_ffmpeg);
  else
    expect_same_bits(to, made, by_ffmpeg);
}

// FFmpeg leaves out the last sample of chroma where the width is odd.
bool loses_last_chroma(const catalogue::format&, const catalogue::format& to) {
  return to.ffmpeg == "p010le" || to.ffmpeg == "p016le";
}

TEST(ffmpeg, rearranges_samples_alike) {
  int compared = 0;
  for (const catalogue::format& from : catalogue::formats)
    for (const catalogue::format& to : catalogue::formats) {
      if (!is_converted_by_ffmpeg(from) || !is_converted_by_ffmpeg(to) || !is_rearranged(from, to)) continue;
      expect_same(from, to, 70, 6);
      if (!loses_last_chroma(from, to)) expect_same(from, to, 37, 5);
      ++compared;
    }
  EXPECT_GE(compared, 220);
}

TEST(ffmpeg, makes_nearly_the_same_floats) {
  const catalogue::format& words = *catalogue::find_format("rgb48");
  const catalogue::format& floats = *catalogue::find_format("g_b_r_f32");
  if (!is_converted_by_ffmpeg(floats)) GTEST_SKIP() << "FFmpeg does not convert floats";
  stored source(words, 70, 6), made(floats, 70, 6), by_ffmpeg(floats, 70, 6);
  source.fill_at_random(5);
  convert(source.is, source.planes, made.is, made.planes);
  convert_by_ffmpeg(words, source, floats, by_ffmpeg);
  const auto float_at = [](const stored& p, std::size_t plane, std::ptrdiff_t y, std::ptrdiff_t x) {
    float value = 0;
    std::memcpy(&value, p.data()[plane] + y * p.planes.stride[plane] + 4 * x, 4);
    return value;
  };
  for (std::size_t plane = 0; plane < 3; ++plane)
    for (std::ptrdiff_t y = 0; y < 6; ++y)
      for (std::ptrdiff_t x = 0; x < 70; ++x)
        ASSERT_NEAR(float_at(made, plane, y, x), float_at(by_ffmpeg, plane, y, x), 0.0005)
            << plane << " " << y << " " << x;
}

TEST(ffmpeg, converts_all_formats_but_those_on_the_list) {
  for (const catalogue::format& f : catalogue::formats) {
    if (f.ffmpeg.empty() || is_converted_by_ffmpeg(f)) continue;
    const auto listed = std::find_if(std::begin(may_be_missing), std::end(may_be_missing),
                                     [&](const missing& m) { return m.ffmpeg == f.ffmpeg; });
    ASSERT_NE(listed, std::end(may_be_missing)) << f.ffmpeg;
    std::printf("left out: %s %s\n", std::string(listed->ffmpeg).c_str(), listed->reason);
  }
}

#else

TEST(ffmpeg, is_there) {
  GTEST_SKIP() << "swscale is not installed";
}

#endif

}  // namespace
}  // namespace morvane::tests
