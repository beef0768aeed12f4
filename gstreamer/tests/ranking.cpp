// Which caps are taken of several.
#include <gtest/gtest.h>

#include "caps.h"
#include "frames.h"
#include "harness.h"

namespace {

std::string text_of(GstCaps* caps, const char* field) {
  const gchar* value = gst_structure_get_string(gst_caps_get_structure(caps, 0), field);
  return value ? value : "";
}

GstCaps* best(const std::string& given, const std::string& choices, const bool makes_given) {
  GstCaps* caps = gst_caps_from_string(given.c_str());
  GstCaps* chosen = morvane::gstreamer::best_caps(caps, gst_caps_from_string(choices.c_str()), makes_given);
  gst_caps_unref(caps);
  return chosen;
}

std::string chosen(const std::string& format, const std::string& choices, const char* field = "format",
                   const bool makes_given = false) {
  GstCaps* caps = best(caps_of(format, 64, 32), caps_of(choices, 64, 32), makes_given);
  const std::string value = text_of(caps, field);
  gst_caps_unref(caps);
  return value;
}

}  // namespace

TEST(gstreamer_ranking, takes_the_same_format_first) {
  EXPECT_EQ(chosen("UYVY", "{ NV12, BGRA, YUY2, UYVY, v210 }"), "UYVY");
  EXPECT_EQ(chosen("AYUV64", "{ AYUV64, AYUV }"), "AYUV64");
}

TEST(gstreamer_ranking, loses_nothing_where_it_can) {
  EXPECT_EQ(chosen("UYVY", "{ NV12, BGRA, v210 }"), "v210");
  EXPECT_EQ(chosen("v210", "{ UYVY, BGRA, I422_10LE }"), "I422_10LE");
  EXPECT_EQ(chosen("BGRA", "{ RGB, BGRx, RGBA }"), "RGBA");
  EXPECT_EQ(chosen("I420", "{ GRAY8, RGB, Y444 }"), "Y444");
}

TEST(gstreamer_ranking, takes_the_cheapest_that_loses_nothing) {
  EXPECT_EQ(chosen("UYVY", "{ AYUV64, AYUV, Y444, Y42B, v210 }"), "Y42B");
  EXPECT_EQ(chosen("BGRx", "{ RGBA64_LE, RGBA, RGB }"), "RGB");
}

TEST(gstreamer_ranking, rather_loses_bits_than_chroma_alpha_or_colour) {
  EXPECT_EQ(chosen("v210", "{ P010_10LE, UYVY, GRAY16_LE }"), "UYVY");
  EXPECT_EQ(chosen("RGBA64_LE", "{ RGBA, GBR_16LE }"), "RGBA");
  EXPECT_EQ(chosen("Y444_12LE", "{ Y444_10LE, Y444, I422_12LE }"), "Y444_10LE");
  EXPECT_EQ(chosen("BGRA", "{ GRAY8, I420, A420 }"), "A420");
  EXPECT_EQ(chosen("BGRA", "{ GRAY8, I420, YUY2 }"), "YUY2");
}

TEST(gstreamer_ranking, takes_the_first_of_equals) {
  EXPECT_EQ(chosen("v210", "{ YUY2, UYVY }"), "YUY2");
  EXPECT_EQ(chosen("v210", "{ UYVY, YUY2 }"), "UYVY");
}

TEST(gstreamer_ranking, makes_a_format_of_what_has_enough) {
  EXPECT_EQ(chosen("v210", "{ UYVY, I422_10LE, GRAY8 }", "format", true), "UYVY");
  EXPECT_EQ(chosen("UYVY", "{ AYUV, NV12 }", "format", true), "NV12");
}

TEST(gstreamer_ranking, keeps_the_colours_that_the_caps_say) {
  const auto colours = [](const std::string& from, const std::string& more, const std::string& to,
                          const std::string& choice) {
    GstCaps* caps = best(caps_of(from, 64, 32, more), caps_of(to, 64, 32, choice), false);
    const std::string said = text_of(caps, "colorimetry") + " " + text_of(caps, "chroma-site");
    gst_caps_unref(caps);
    return said;
  };
  const std::string hd = "colorimetry=bt709,chroma-site=jpeg";
  EXPECT_EQ(colours("I420", hd, "{ NV12 }", ""), "bt709 jpeg");
  EXPECT_EQ(colours("I420", hd, "{ Y444 }", ""), "bt709 ");
  EXPECT_EQ(colours("I420", hd, "{ NV12 }", "colorimetry=bt601"), "bt601 jpeg");
  EXPECT_EQ(colours("I420", hd, "{ NV12 }", "colorimetry={ bt601, bt709 }"), "bt709 jpeg");
  EXPECT_EQ(colours("I420", hd, "{ RGB }", ""), "1:1:5:1 ");
  EXPECT_EQ(colours("I420", "", "{ RGB }", ""), " ");
}

TEST(gstreamer_ranking, decides_between_pads) {
  harness element;
  element.set_caps(caps_of("v210", 48, 4), "video/x-raw,format={ NV12, RGB, UYVY }");
  EXPECT_EQ(element.push(buffer_of(bytes(128 * 4))), GST_FLOW_OK);
  EXPECT_NE(element.caps_out().find("UYVY"), std::string::npos) << element.caps_out();
}
