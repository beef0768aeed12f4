// Every format to every other, beside one call of the library.
#include <gtest/gtest.h>

#include "converter.h"
#include "formats.h"
#include "harness.h"

using namespace morvane::gstreamer;

namespace {

// Every side says its colours, so that nothing is guessed.
std::string colours(const known_format& format) {
  const bool is_rgb = GST_VIDEO_FORMAT_INFO_IS_RGB(format.facts);
  return is_rgb ? "colorimetry=(string)1:1:5:1" : "colorimetry=(string)2:4:5:4";
}

std::string caps(const known_format& format, const int width, const int height) {
  return caps_of(gst_video_format_to_string(format.id), width, height, colours(format));
}

// Each format is made of the one before, of itself and of all others, one after the other by one element.
void expect_every_pair(const int width, const int height) {
  int refused = 0, compared = 0;
  for (const known_format& from : known_formats()) {
    harness element;
    const std::string caps_in = caps(from, width, height);
    const GstVideoInfo in = info_of(caps_in);
    const bytes frame = any_bytes(in.size, static_cast<uint32_t>(from.id));
    for (const known_format& to : known_formats()) {
      SCOPED_TRACE(std::string(from.info.name) + " to " + to.info.name);
      const std::string caps_out = caps(to, width, height);
      const GstVideoInfo out = info_of(caps_out);
      std::string refusal;
      const bytes expected = from.id == to.id ? frame : converted(frame, in, out, false, morvane_options{}, refusal);
      element.set_caps(caps_in, caps_out);
      if (refusal.empty()) {
        ASSERT_EQ(element.push(buffer_of(frame)), GST_FLOW_OK) << element.error();
        const bytes made = element.pull();
        ASSERT_TRUE(made == expected || difference(made, expected, out).empty()) << difference(made, expected, out);
        compared++;
      } else {
        ASSERT_EQ(element.push(buffer_of(frame)), GST_FLOW_ERROR);
        ASSERT_EQ(element.error(), refusal);
        refused++;
      }
    }
  }
  // At odd widths GStreamer's rows of some formats end before the last pair does.
  EXPECT_EQ(refused > 0, width % 2 == 1);
  EXPECT_GT(compared, 5 * refused);
}

void expect_spread(const int width, const int height, const int gap) {
  for (const known_format& from : known_formats())
    for (const known_format& to : known_formats()) {
      if ((from.id + to.id) % 7 && from.id != GST_VIDEO_FORMAT_YV12 && to.id != GST_VIDEO_FORMAT_YV12) continue;
      if (from.id == to.id) continue;
      SCOPED_TRACE(std::string(from.info.name) + " to " + to.info.name);
      const GstVideoInfo tight_in = info_of(caps(from, width, height)), tight_out = info_of(caps(to, width, height));
      const GstVideoInfo in = spread(tight_in, gap), out = spread(tight_out, gap + 3);
      const bytes frame = any_bytes(in.size, 7);
      std::string refusal;
      const bytes expected = converted(frame, in, out, false, morvane_options{}, refusal);
      ASSERT_EQ(refusal, "");

      converter conversion;
      ASSERT_EQ(conversion.prepare(tight_in, tight_out, settings{}), "");
      GstBuffer* source = buffer_of(frame, &in);
      const bytes before = any_bytes(out.size, 8);
      GstBuffer* destination = buffer_of(before, &out);
      ASSERT_EQ(conversion.run(source, destination), "");
      const bytes after = bytes_of(destination);
      ASSERT_EQ(difference(after, expected, out), "");
      // Before the first plane nothing is written.
      ASSERT_TRUE(std::equal(before.begin(), before.begin() + gap, after.begin()));
      gst_buffer_unref(source);
      gst_buffer_unref(destination);
    }
}

}  // namespace

TEST(gstreamer_pairs, have_the_bytes_of_the_library) {
  expect_every_pair(50, 6);
}
TEST(gstreamer_pairs, have_the_bytes_of_the_library_at_odd_sizes) {
  expect_every_pair(33, 7);
}
TEST(gstreamer_pairs, take_strides_and_offsets_of_the_meta) {
  expect_spread(70, 4, 10);
}
TEST(gstreamer_pairs, take_strides_and_offsets_of_the_meta_at_odd_sizes) {
  expect_spread(35, 5, 9);
}
