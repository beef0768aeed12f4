// What the element does with caps, metas and properties.
#include <gtest/gtest.h>

#include "harness.h"

namespace {

struct job {
  std::string from, to;
  GstVideoInfo in = info_of(from), out = info_of(to);
  bytes frame = any_bytes(in.size, 3);

  bytes expected(const bool by_fields = false, const morvane_options& options = {}) const {
    std::string refusal;
    bytes made = converted(frame, in, out, by_fields, options, refusal);
    EXPECT_EQ(refusal, "");
    return made;
  }
};

// Pushes the frame through an element and compares what comes out.
std::string difference_of(const job& j, const bytes& expected, const std::string& properties = "") {
  harness element(properties);
  element.set_caps(j.from, j.to);
  if (element.push(buffer_of(j.frame)) != GST_FLOW_OK) return element.error();
  return difference(element.pull(), expected, j.out);
}

// What is said of a buffer that does not suit its caps.
std::string refusal_of(const job& j, GstBuffer* buffer) {
  harness element;
  element.set_caps(j.from, j.to);
  EXPECT_EQ(element.push(buffer), GST_FLOW_ERROR);
  EXPECT_EQ(element.pull_buffer(), nullptr);
  return element.error();
}

const std::string interlaced = "interlace-mode=interleaved";

}  // namespace

TEST(gstreamer_element, converts_fields_where_rows_share_chroma) {
  for (const char* format : {"UYVY", "BGRA", "I420", "P010_10LE"})
    for (const int height : {16, 15, 6, 2, 1}) {
      SCOPED_TRACE(format + std::to_string(height));
      // GStreamer leaves no room for the last row of chroma of the second field.
      if (format == std::string("P010_10LE") && height % 4 > 0 && height % 4 < 3 && height > 1) continue;
      const job to{caps_of("NV12", 32, height, interlaced + ",colorimetry=bt601"),
                   caps_of(format, 32, height, interlaced + ",colorimetry=" + (format[0] == 'B' ? "sRGB" : "bt709"))};
      EXPECT_EQ(difference_of(to, to.expected(true)), "");
      const job from{to.to, to.from};
      EXPECT_EQ(difference_of(from, from.expected(true)), "");
      if (height > 2) {
        EXPECT_NE(difference_of(from, from.expected(false)), "");
      }
    }
}

TEST(gstreamer_element, looks_at_each_buffer_of_mixed_caps) {
  const std::string mixed = "interlace-mode=mixed";
  const job j{caps_of("NV12", 32, 16, mixed), caps_of("UYVY", 32, 16, mixed)};
  harness element;
  element.set_caps(j.from, j.to);
  GstBuffer* buffer = buffer_of(j.frame);
  ASSERT_EQ(element.push(buffer), GST_FLOW_OK);
  EXPECT_EQ(difference(element.pull(), j.expected(false), j.out), "");
  buffer = buffer_of(j.frame);
  GST_BUFFER_FLAG_SET(buffer, GST_VIDEO_BUFFER_FLAG_INTERLACED);
  ASSERT_EQ(element.push(buffer), GST_FLOW_OK);
  EXPECT_EQ(difference(element.pull(), j.expected(true), j.out), "");
}

TEST(gstreamer_element, converts_colours_alone) {
  const job matrix{caps_of("UYVY", 32, 4, "colorimetry=bt601"), caps_of("UYVY", 32, 4, "colorimetry=bt709")};
  const job range{caps_of("NV12", 32, 4, "colorimetry=bt709"), caps_of("NV12", 32, 4, "colorimetry=(string)1:3:5:1")};
  for (const job& j : {matrix, range}) {
    EXPECT_EQ(difference_of(j, j.expected()), "");
    EXPECT_NE(difference_of(j, j.frame), "");
  }
}

TEST(gstreamer_element, takes_the_siting_of_the_caps) {
  const job left{caps_of("NV12", 32, 4, "chroma-site=mpeg2"), caps_of("BGRA", 32, 4)};
  const job center{caps_of("NV12", 32, 4, "chroma-site=jpeg"), caps_of("BGRA", 32, 4)};
  morvane_options options{};
  EXPECT_EQ(difference_of(left, left.expected(false, options)), "");
  options.siting = MORVANE_CENTER;
  EXPECT_EQ(difference_of(center, center.expected(false, options)), "");
  EXPECT_NE(difference_of(left, left.expected(false, options)), "");
  const job down{center.to, center.from};
  EXPECT_EQ(difference_of(down, down.expected(false, options)), "");
}

TEST(gstreamer_element, passes_frames_that_need_no_change) {
  const std::string caps = caps_of("NV12", 32, 4, "colorimetry=bt709");
  for (const std::string& to : {caps, caps_of("NV12", 32, 4, "colorimetry=(string)2:3:7:1,chroma-site=jpeg")}) {
    harness element;
    element.set_caps(caps, to);
    GstBuffer* buffer = buffer_of(bytes(32 * 6));
    ASSERT_EQ(element.push(buffer), GST_FLOW_OK);
    GstBuffer* passed = element.pull_buffer();
    EXPECT_EQ(passed, buffer);
    gst_buffer_unref(passed);
  }
}

TEST(gstreamer_element, follows_caps_in_mid_stream) {
  harness element;
  const std::string any = "video/x-raw,format=BGRA";
  for (const int width : {32, 31, 64})
    for (const char* format : {"UYVY", "v210", "BGRA", "I420"}) {
      const std::string caps = caps_of(format, width, 8);
      element.set_caps(caps, any);
      const GstVideoInfo in = info_of(caps), out = info_of(caps_of("BGRA", width, 8));
      const bytes frame = any_bytes(in.size, 5);
      std::string refusal;
      const bytes expected =
          format == std::string("BGRA") ? frame : converted(frame, in, out, false, morvane_options{}, refusal);
      for (int i = 0; i < 3; i++) {
        ASSERT_EQ(element.push(buffer_of(frame)), GST_FLOW_OK) << element.error();
        EXPECT_EQ(difference(element.pull(), expected, out), "") << format << " " << width;
      }
    }
}

TEST(gstreamer_element, has_the_options_of_the_library_as_properties) {
  const job j{caps_of("BGRA", 64, 16), caps_of("NV12", 64, 16)};
  morvane_options options{};
  EXPECT_EQ(difference_of(j, j.expected(false, options), "threads=3"), "");
  EXPECT_EQ(difference_of(j, j.expected(false, options), "threads=0"), "");
  options.filter = MORVANE_NEAREST;
  EXPECT_EQ(difference_of(j, j.expected(false, options), "chroma=nearest"), "");
  EXPECT_NE(difference_of(j, j.expected(false, options)), "");
  options = {};
  options.has_background = 1;
  options.background[0] = 0x10;
  options.background[1] = 0x80;
  options.background[2] = 0xf0;
  EXPECT_EQ(difference_of(j, j.expected(false, options), "background=0x1080f0"), "");
}

TEST(gstreamer_element, takes_properties_in_mid_stream) {
  const job j{caps_of("BGRA", 64, 16), caps_of("NV12", 64, 16)};
  harness element;
  element.set_caps(j.from, j.to);
  ASSERT_EQ(element.push(buffer_of(j.frame)), GST_FLOW_OK);
  EXPECT_EQ(difference(element.pull(), j.expected(), j.out), "");
  g_object_set(element.converter(), "chroma", MORVANE_NEAREST, nullptr);
  ASSERT_EQ(element.push(buffer_of(j.frame)), GST_FLOW_OK);
  morvane_options options{};
  options.filter = MORVANE_NEAREST;
  EXPECT_EQ(difference(element.pull(), j.expected(false, options), j.out), "");
}

TEST(gstreamer_element, runs_for_hundreds_of_frames) {
  const job j{caps_of("v210", 50, 6, interlaced), caps_of("I420", 50, 6, interlaced)};
  const bytes expected = j.expected(true);
  harness element("threads=2");
  element.set_caps(j.from, j.to);
  for (int i = 0; i < 300; i++) {
    ASSERT_EQ(element.push(buffer_of(j.frame)), GST_FLOW_OK);
    ASSERT_EQ(difference(element.pull(), expected, j.out), "");
  }
}

TEST(gstreamer_element, reads_planes_of_several_memories) {
  const job j{caps_of("NV12", 32, 8), caps_of("BGRA", 32, 8)};
  const auto chroma = static_cast<std::ptrdiff_t>(j.in.offset[1]);
  GstBuffer* buffer = buffer_of(bytes(j.frame.begin(), j.frame.begin() + chroma), &j.in);
  GstBuffer* rest = buffer_of(bytes(j.frame.begin() + chroma, j.frame.end()));
  buffer = gst_buffer_append(buffer, rest);
  ASSERT_EQ(gst_buffer_n_memory(buffer), 2u);
  harness element;
  element.set_caps(j.from, j.to);
  ASSERT_EQ(element.push(buffer), GST_FLOW_OK) << element.error();
  EXPECT_EQ(difference(element.pull(), j.expected(), j.out), "");
}

TEST(gstreamer_element, refuses_a_meta_of_another_picture) {
  const job j{caps_of("UYVY", 32, 8), caps_of("BGRA", 32, 8)};
  const GstVideoInfo low = info_of(caps_of("UYVY", 32, 4)), other = info_of(caps_of("YUY2", 32, 8));
  EXPECT_EQ(refusal_of(j, buffer_of(j.frame, &low)),
            "the video meta of the buffer says 32x4 UYVY with 1 planes, where the caps say 32x8 UYVY with 1");
  EXPECT_EQ(refusal_of(j, buffer_of(j.frame, &other)),
            "the video meta of the buffer says 32x8 YUY2 with 1 planes, where the caps say 32x8 UYVY with 1");
}

TEST(gstreamer_element, refuses_a_meta_that_leads_beyond_memory) {
  const job j{caps_of("NV12", 32, 8), caps_of("BGRA", 32, 8)};
  GstVideoInfo meta = j.in;
  meta.offset[1] = 100000;
  EXPECT_EQ(refusal_of(j, buffer_of(j.frame, &meta)),
            "the video meta of the buffer leads beyond its memory, or the memory cannot be mapped");
  meta = j.in;
  meta.stride[0] = 60;
  EXPECT_EQ(refusal_of(j, buffer_of(j.frame, &meta)), "source.bytes[0] is 384, and 8 rows need 452 bytes");
  meta = j.in;
  meta.stride[0] = 31;
  EXPECT_EQ(refusal_of(j, buffer_of(j.frame, &meta)), "source.stride[0] is 31, shorter than a row of 32 bytes");
  meta = j.in;
  meta.stride[0] = -32;
  EXPECT_EQ(refusal_of(j, buffer_of(j.frame, &meta)), "source.bytes[0] is 0, and 8 rows need 256 bytes");
  meta = j.in;
  meta.stride[1] = G_MAXINT;
  EXPECT_EQ(refusal_of(j, buffer_of(j.frame, &meta)), "source.bytes[1] is 128, and 4 rows need 6442450973 bytes");
}

TEST(gstreamer_element, refuses_a_buffer_that_is_too_short) {
  const job j{caps_of("UYVY", 32, 8), caps_of("BGRA", 32, 8)};
  EXPECT_EQ(refusal_of(j, buffer_of(bytes(511))), "the buffer has 511 bytes, where its caps need 512");
}

TEST(gstreamer_element, says_which_matrix_it_lacks) {
  const job j{caps_of("UYVY", 32, 8, "colorimetry=smpte240m"), caps_of("BGRA", 32, 8)};
  harness element;
  element.set_caps(j.from, j.to);
  EXPECT_EQ(element.push(buffer_of(j.frame)), GST_FLOW_NOT_NEGOTIATED);
  EXPECT_EQ(element.error(),
            "there is no way for the matrix of the colorimetry smpte240m: bt601, bt709 and bt2020 have one");
  const job same{j.from, caps_of("v210", 32, 8, "colorimetry=smpte240m")};
  EXPECT_EQ(difference_of(same, same.expected()), "");
}
