// That a name means the same bytes on both sides: what GStreamer unpacks is what the library reads.
#include <gtest/gtest.h>

#include "formats.h"
#include "frames.h"

using morvane::gstreamer::known_format;
using morvane::gstreamer::known_formats;

namespace {

constexpr int width = 96;

struct unpacked {
  bytes row;
  int bits;  // of a sample

  explicit unpacked(const known_format& format, bytes& frame, const GstVideoInfo& info) : row(width * 8) {
    gpointer data[GST_VIDEO_MAX_PLANES] = {};
    for (guint p = 0; p < format.facts->n_planes; p++) data[p] = frame.data() + info.offset[p];
    format.facts->unpack_func(format.facts, GST_VIDEO_PACK_FLAG_NONE, row.data(), data, info.stride, 0, 0, width);
    bits = static_cast<int>(gst_video_format_get_info(format.facts->unpack_format)->depth[0]);
  }

  // As a word, of luma or red, Cb or green, Cr or blue, alpha: alpha comes first in the row.
  unsigned sample(const int x, const int component) const {
    const auto at = static_cast<std::size_t>(4 * x + (component + 1) % 4);
    return bits == 8 ? row[at] * 257u : row[2 * at] + 256u * row[2 * at + 1];
  }
};

void expect_same_samples(const known_format& format) {
  const GstVideoInfo info = info_of(caps_of(gst_video_format_to_string(format.id), width, 4));
  bytes frame = any_bytes(info.size, 1);
  const unpacked row(format, frame, info);

  morvane_description description{sizeof description, format.info.format, width, 4, 0, 0};
  morvane_picture picture{};
  picture.struct_size = sizeof picture;
  for (guint p = 0; p < format.facts->n_planes; p++) {
    picture.data[p] = frame.data() + info.offset[p];
    picture.stride[p] = info.stride[p];
    picture.bytes[p] = static_cast<int64_t>(info.size - info.offset[p]);
  }
  for (int32_t p = 0; p < format.info.plane_count; p++) {
    const morvane_plane_info& plane = format.info.planes[p];
    std::vector<std::vector<uint16_t>> lines(MORVANE_COMPONENTS, std::vector<uint16_t>(2 * width));
    uint16_t* const pointers[] = {lines[0].data(), lines[1].data(), lines[2].data(), lines[3].data(), lines[4].data()};
    morvane_error error{};
    ASSERT_EQ(morvane_read_row(&description, &picture, p, 0, pointers, 2 * width, &error), MORVANE_OK) << error.message;
    for (int c = 0; c < MORVANE_X; c++)
      for (int x = 0; plane.samples[c] > 0 && x < width; x += 2) {
        const int shift = 16 - static_cast<int>(format.facts->depth[c]);
        const auto word =
            lines[static_cast<std::size_t>(c)][static_cast<std::size_t>(x * plane.samples[c] / plane.group_pixels)];
        ASSERT_EQ(word >> shift, row.sample(x, c) >> shift) << "component " << c << ", pixel " << x;
      }
  }
}

}  // namespace

TEST(gstreamer_names, mean_the_same_bytes) {
  EXPECT_GE(known_formats().size(), 50u);
  for (const known_format& format : known_formats()) {
    SCOPED_TRACE(format.info.name);
    expect_same_samples(format);
  }
}
