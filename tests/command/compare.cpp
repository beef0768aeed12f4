// morvane compare.
#include <algorithm>
#include <bit>
#include <cmath>
#include <initializer_list>
#include <nlohmann/json.hpp>

#include "shell.h"

namespace morvane::tests {

namespace {

using nlohmann::json;

class compare : public command {
 protected:
  outcome both(const bytes& a, const bytes& b, const std::string& arguments) const {
    write("a.raw", a);
    write("b.raw", b);
    return run("morvane compare a.raw b.raw " + arguments);
  }
  json measured(const bytes& a, const bytes& b, const std::string& arguments, int exit_code) const {
    const outcome o = both(a, b, arguments + " --json");
    EXPECT_EQ(o.exit_code, exit_code) << o.err;
    return json::parse(o.out);
  }
};

TEST_F(compare, identical_frames) {
  const bytes frames = noise(2 * 8 * 4 * 2);
  const outcome o = both(frames, frames, "-f uyvy -s 8x4");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(o.out.rfind("identical: 2 frames of uyvy 8x4 compared\n", 0), 0u) << o.out;
  const json j = measured(frames, frames, "-f uyvy -s 8x4", 0);
  EXPECT_EQ(j["identical"], true);
  EXPECT_TRUE(j["first_difference"].is_null());
  EXPECT_EQ(j["planes"][0]["psnr_db"], "inf");
  EXPECT_EQ(j["planes"][0]["sum_of_absolute_differences"], 0);
}

TEST_F(compare, the_first_difference_and_the_sums) {
  const bytes a(3 * 8 * 4 * 2, 100);
  bytes b = a;
  b[64 + 16 * 2 + 4 * 1 + 2] = 97;  // frame 1, row 2, Cr of the second pair
  b[64 + 16 * 3] = 110;
  const outcome o = both(a, b, "-f uyvy -s 8x4");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_NE(o.out.find("first difference: frame 1, plane uyvy, Cr at x 2, y 2: 100 and 97\n"), std::string::npos)
      << o.out;
  const json j = measured(a, b, "-f uyvy -s 8x4", 1);
  EXPECT_EQ(j["planes"][0]["max_difference"], 10);
  EXPECT_EQ(j["planes"][0]["sum_of_absolute_differences"], 13);
  EXPECT_NEAR(j["planes"][0]["psnr_db"].get<double>(), 10 * std::log10(255.0 * 255.0 * 192 / 109), 1e-9);
}

TEST_F(compare, ten_bit_samples) {
  const bytes a(128, 0);
  bytes b = a;
  b[5] = 4;     // word 1, bit 10: Cb of the second pair is 1
  b[19] = 192;  // bits 30 and 31 carry nothing
  const json j = measured(a, b, "-f v210 -s 12x1", 1);
  EXPECT_EQ(j["first_difference"]["component"], "Cb");
  EXPECT_EQ(j["first_difference"]["x"], 2);
  EXPECT_EQ(j["first_difference"]["values"], json({0, 1}));
  EXPECT_NEAR(j["planes"][0]["psnr_db"].get<double>(), 10 * std::log10(1023.0 * 1023.0 * 24), 1e-9);
}

TEST_F(compare, sixteen_bit_samples) {
  const json j = measured({0, 1, 2, 3}, {0, 1, 2, 4}, "-f alpha_u16 -s 2x1", 1);
  EXPECT_EQ(j["first_difference"]["values"], json({0x0302, 0x0402}));
  EXPECT_EQ(j["planes"][0]["max_difference"], 256);
  EXPECT_NEAR(j["planes"][0]["psnr_db"].get<double>(), 10 * std::log10(65535.0 * 65535.0 * 2 / 65536.0), 1e-9);
}

TEST_F(compare, ten_bit_samples_of_cards) {
  const bytes packed(80, 0);  // two groups of sixteen pixels
  bytes other = packed;
  other[40 + 32 + 1] = 0x30;  // the lower bits of the second luma sample of the second pair
  const json low = measured(packed, other, "-f yuyv_matrox_10 -s 20x1", 1);
  EXPECT_EQ(low["first_difference"]["component"], "Y");
  EXPECT_EQ(low["first_difference"]["x"], 19);
  EXPECT_EQ(low["first_difference"]["values"], json({0, 3}));
  other[40 + 7] = 1;  // the upper bits of its Cr
  const json high = measured(packed, other, "-f yuyv_matrox_10 -s 20x1", 1);
  EXPECT_EQ(high["planes"][0]["max_difference"], 4);
  EXPECT_EQ(high["planes"][0]["sum_of_absolute_differences"], 7);
  EXPECT_EQ(both(packed, other, "-f yuyv_matrox_10 -s 18x1").exit_code, 0);

  const bytes words(16, 0);
  bytes keyed = words;
  keyed[3] = 0xc0;      // bits 30 and 31 carry nothing
  keyed[4 + 2] = 0x30;  // the lowest bits of the second pixel's alpha
  const json key = measured(words, keyed, "-f yua_yva_matrox_10 -s 4x1", 1);
  EXPECT_EQ(key["first_difference"]["component"], "A");
  EXPECT_EQ(key["first_difference"]["x"], 1);
  EXPECT_EQ(key["first_difference"]["values"], json({0, 3}));
}

TEST_F(compare, bits_that_carry_nothing_do_not_count) {
  EXPECT_EQ(both({255, 3, 0, 0}, {255, 7, 0, 128}, "-f y_10u16 -s 2x1").exit_code, 0);
  EXPECT_EQ(both({255, 3, 0, 0}, {255, 2, 0, 128}, "-f y_10u16 -s 2x1").exit_code, 1);
  EXPECT_EQ(
      both({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, {63, 1, 2, 3, 4, 5, 6, 7, 8, 9, 21, 11}, "-f p010 -s 2x2").exit_code,
      0);
  const json j = measured({255, 3, 0, 0}, {255, 1, 0, 0}, "-f y_10u16 -s 2x1", 1);
  EXPECT_EQ(j["first_difference"]["values"], json({1023, 511}));
  EXPECT_NEAR(j["planes"][0]["psnr_db"].get<double>(), 10 * std::log10(1023.0 * 1023.0 * 2 / (512.0 * 512.0)), 1e-9);
}

// A pixel of vuya_f32.
bytes pixel_of(std::initializer_list<float> samples) {
  bytes result;
  for (const float sample : samples) {
    const auto bits = std::bit_cast<std::uint32_t>(sample);
    for (int shift = 0; shift < 32; shift += 8) result.push_back(static_cast<std::uint8_t>(bits >> shift));
  }
  return result;
}

TEST_F(compare, floats_by_the_samples_of_16_bits_that_they_stand_for) {
  const bytes a = pixel_of({0, 0, 0.25f, 1});
  const bytes b = pixel_of({0, 0, 0.5f, 1});
  const json luma = measured(a, b, "-f vuya_f32 -s 1x1", 1);
  EXPECT_EQ(luma["first_difference"]["component"], "Y");
  EXPECT_EQ(luma["first_difference"]["values"], json({0.25, 0.5}));
  EXPECT_EQ(luma["planes"][0]["max_difference"], 56064 / 4);
  EXPECT_NEAR(luma["planes"][0]["psnr_db"].get<double>(), 10 * std::log10(65535.0 * 65535.0 * 4 / (14016.0 * 14016.0)),
              1e-9);
  const json chroma = measured(pixel_of({-0.5f, 0, 0, 0}), pixel_of({0.5f, 0, 0, 0}), "-f vuya_f32 -s 1x1", 1);
  EXPECT_EQ(chroma["first_difference"]["component"], "Cr");
  EXPECT_EQ(chroma["planes"][0]["max_difference"], 57344);
  const json alpha = measured(pixel_of({0, 0, 0, 0}), pixel_of({0, 0, 0, 7}), "-f vuya_f32 -s 1x1", 1);
  EXPECT_EQ(alpha["planes"][0]["max_difference"], 65535);
}

TEST_F(compare, floats_that_differ_in_any_bit) {
  const bytes half = pixel_of({0, 0, 0.5f, 1});
  const outcome next = both(half, pixel_of({0, 0, std::nextafter(0.5f, 1.0f), 1}), "-f vuya_f32 -s 1x1");
  EXPECT_EQ(next.exit_code, 1);
  EXPECT_NE(next.out.find("Y at x 0, y 0: 0.5 and 0.50000006\n"), std::string::npos) << next.out;
  EXPECT_NE(next.out.find("vuya   Y          0               inf "), std::string::npos) << next.out;
  EXPECT_EQ(both(pixel_of({0, 0, 0, 0}), pixel_of({0, -0.0f, 0, 0}), "-f vuya_f32 -s 1x1").exit_code, 1);
  const bytes none = pixel_of({0, 0, std::nanf(""), 1});
  EXPECT_EQ(both(none, none, "-f vuya_f32 -s 1x1").exit_code, 0);
  const json j = measured(none, half, "-f vuya_f32 -s 1x1", 1);
  EXPECT_EQ(j["first_difference"]["values"], json({"nan", 0.5}));
  EXPECT_EQ(j["planes"][0]["max_difference"], 56064 / 2);
}

TEST_F(compare, unused_bytes_and_samples_beyond_the_width_do_not_count) {
  EXPECT_EQ(both({1, 2, 3, 4}, {1, 2, 3, 5}, "-f bgrx -s 1x1").exit_code, 0);
  EXPECT_EQ(both({1, 2, 3, 4}, {1, 2, 3, 5}, "-f bgra -s 1x1").exit_code, 1);
  bytes a(128, 0);
  bytes b = a;
  b[15] = 63;  // Y of the sixth pixel
  EXPECT_EQ(both(a, b, "-f v210 -s 4x1").exit_code, 0);
  EXPECT_EQ(both(a, b, "-f v210 -s 6x1").exit_code, 1);
}

TEST_F(compare, planes_have_their_own_sums_and_places_in_the_image) {
  const bytes a(2 * 48, 100);  // frames of 32 bytes of luma and 8 of each chroma
  bytes b = a;
  b[48 + 32 + 8 + 5] = 200;  // frame 1, Cr, second row, second sample
  b[48 + 32 + 8 + 6] = 90;
  const json j = measured(a, b, "-f y_u_v_420 -s 8x4", 1);
  EXPECT_EQ(j["first_difference"],
            json({{"frame", 1}, {"plane", "cr"}, {"component", "Cr"}, {"x", 2}, {"y", 2}, {"values", {100, 200}}}));
  EXPECT_EQ(j["planes"][0]["sum_of_absolute_differences"], 0);
  EXPECT_EQ(j["planes"][1]["psnr_db"], "inf");
  EXPECT_EQ(j["planes"][2]["sum_of_absolute_differences"], 110);
  EXPECT_NEAR(j["planes"][2]["psnr_db"].get<double>(), 10 * std::log10(255.0 * 255.0 * 16 / 10100), 1e-9);
}

TEST_F(compare, every_component_has_sums_and_so_have_all_together) {
  const bytes a(8 * 4 * 2, 100);
  bytes b = a;
  b[1] = 103;  // Y
  b[2] = 96;   // Cr
  const json j = measured(a, b, "-f uyvy -s 8x4", 1);
  const json& components = j["planes"][0]["components"];
  ASSERT_EQ(components.size(), 3u);
  EXPECT_EQ(components[0],
            json({{"name", "Cb"}, {"max_difference", 0}, {"psnr_db", "inf"}, {"sum_of_absolute_differences", 0}}));
  EXPECT_EQ(components[1]["name"], "Y");
  EXPECT_EQ(components[1]["max_difference"], 3);
  EXPECT_NEAR(components[1]["psnr_db"].get<double>(), 10 * std::log10(255.0 * 255.0 * 32 / 9), 1e-9);
  EXPECT_EQ(components[2]["name"], "Cr");
  EXPECT_NEAR(components[2]["psnr_db"].get<double>(), 10 * std::log10(255.0 * 255.0 * 16 / 16), 1e-9);
  EXPECT_NEAR(j["overall"]["psnr_db"].get<double>(), 10 * std::log10(255.0 * 255.0 * 64 / 25), 1e-9);
  EXPECT_EQ(j["overall"]["sum_of_absolute_differences"], 7);
  EXPECT_EQ(both(a, b, "-f uyvy -s 8x4").out,
            "different: 1 frame of uyvy 8x4 compared\n"
            "first difference: frame 0, plane uyvy, Y at x 0, y 0: 100 and 103\n"
            "PLANE  COMPONENT  MAX DIFFERENCE  PSNR      SUM OF ABSOLUTE DIFFERENCES\n"
            "uyvy   Cb         0               inf       0\n"
            "uyvy   Y          3               53.64 dB  3\n"
            "uyvy   Cr         4               48.13 dB  4\n"
            "all               4               52.21 dB  7\n");
}

// Two rows of eight bytes, or of more.
bytes with_rows(std::size_t stride, const bytes& tight) {
  bytes result = noise(2 * stride);
  std::copy(tight.begin(), tight.begin() + 8, result.begin());
  std::copy(tight.begin() + 8, tight.begin() + 16, result.begin() + static_cast<std::ptrdiff_t>(stride));
  return result;
}

TEST_F(compare, strides_of_both_and_of_each) {
  const bytes tight = noise(16, 2);
  const std::string what = "-f uyvy -s 4x2 ";
  EXPECT_EQ(both(with_rows(11, tight), with_rows(11, tight), what + "--stride 11").exit_code, 0);
  EXPECT_EQ(both(with_rows(11, tight), tight, what + "--stride 11 --stride 8").exit_code, 0);
  EXPECT_EQ(both(with_rows(11, tight), with_rows(12, tight), what + "--stride 11 --stride 12").exit_code, 0);
  EXPECT_EQ(both(with_rows(11, tight), with_rows(12, tight), what + "--stride 12 --stride 11").exit_code, 2);
  EXPECT_EQ(both(tight, tight, what + "--stride 7").err,
            "morvane: stride 7 is too small: a row of uyvy 4x2 has 8 bytes\n");
  EXPECT_EQ(both(tight, tight, what + "--stride 8,wide").err,
            "morvane: --stride: wide is not a number of bytes; see --help\n");
  EXPECT_EQ(both(tight, tight, what + "--stride 8 --stride 8 --stride 8").err,
            "morvane: --stride is given 3 times, for two files\n");
}

TEST_F(compare, frames_are_chosen_by_skip_and_frames) {
  const bytes frames = noise(5 * 8);
  const bytes last(frames.begin() + 16, frames.end());
  const std::string what = "-f y -s 4x2 ";
  EXPECT_EQ(both(frames, last, what + "--skip 2 --skip 0").exit_code, 0);
  EXPECT_EQ(both(last, frames, what + "--skip 0 --skip 2").exit_code, 0);
  EXPECT_EQ(both(frames, frames, what + "--skip 4").out.rfind("identical: 1 frame of y 4x2", 0), 0u);
  EXPECT_EQ(both(frames, last, what + "--skip 1 --frames 1").exit_code, 1);
  EXPECT_EQ(both(frames, last, what + "--skip 3 --skip 1 --frames 1").out.rfind("identical: 1 frame of", 0), 0u);
  EXPECT_EQ(run("head -c 80 /dev/zero > a.raw && morvane compare a.raw /dev/zero --frames 7 " + what).exit_code, 0);
  EXPECT_EQ(both(frames, last, what + "--skip 5 --skip 0").exit_code, 2);
}

TEST_F(compare, a_picture_with_a_frame_of_a_file) {
  write("in.raw", noise(2 * 3 * 24));
  quietly("morvane convert -f bgr -t bgr -s 5x3 --src-stride 24 --skip 1 in.raw a.png");
  EXPECT_EQ(run("morvane compare a.png in.raw -f bgr -s 5x3 --skip 1 --stride 24").exit_code, 0);
  EXPECT_EQ(run("morvane compare in.raw a.png -f bgr -s 5x3 --skip 1 --stride 24").exit_code, 0);
  EXPECT_EQ(run("morvane compare a.png a.png --skip 1").exit_code, 2);
}

TEST_F(compare, what_cannot_be_compared_is_neither_the_same_nor_different) {
  write("a.raw", noise(8));
  EXPECT_EQ(run("morvane compare a.raw nothing -f y -s 4x2").exit_code, 2);
  EXPECT_EQ(run("morvane compare a.raw a.raw -f y -s 4x3").exit_code, 2);
  EXPECT_EQ(run("morvane compare a.raw").exit_code, 2);
  EXPECT_EQ(run("morvane compare a.raw a.raw -f y -s 4x2 --no-such-option").exit_code, 2);
  EXPECT_EQ(run("morvane compare a.raw a.raw -f y -s 1048576x1048576").exit_code, 2);
  EXPECT_EQ(run("morvane compare a.raw a.raw -f y -s 4x2 > /dev/full").exit_code, 2);
}

TEST_F(compare, sums_of_bytes_beyond_32_bits_of_one_frame) {
  quietly("head -c 25165824 /dev/zero > a.raw && tr '\\0' '\\377' < a.raw > b.raw");
  const outcome o = run("morvane compare a.raw b.raw -f y -s 6144x4096 --json");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(json::parse(o.out)["planes"][0]["sum_of_absolute_differences"], 25165824ull * 255);
}

TEST_F(compare, a_missing_frame_is_a_difference) {
  const outcome o = both(bytes(16), bytes(8), "-f y -s 4x2");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_NE(o.out.find("frame counts differ: 2 and 1\n"), std::string::npos) << o.out;
}

TEST_F(compare, pictures_with_and_without_a_format) {
  write("a.raw", noise(5 * 3 * 4));
  quietly("morvane convert -f bgra -t bgra -s 5x3 a.raw a.png && morvane convert -f bgrx -t bgrx -s 5x3 a.raw x.png");
  EXPECT_EQ(run("morvane compare a.png a.png").exit_code, 0);
  EXPECT_EQ(run("morvane compare a.png x.png").exit_code, 1);
  EXPECT_EQ(run("morvane compare a.png x.png -f bgr").exit_code, 0);
  EXPECT_EQ(run("morvane compare a.png a.raw -f bgra -s 5x3").exit_code, 0);
  EXPECT_EQ(run("cat a.raw | morvane compare - a.png -f bgra -s 5x3").exit_code, 0);
}

TEST_F(compare, pictures_of_different_size) {
  write("a.raw", noise(60));
  quietly("morvane convert -f bgr -t bgr -s 5x4 a.raw a.png && morvane convert -f bgr -t bgr -s 4x5 a.raw b.png");
  const outcome o = run("morvane compare a.png b.png");
  EXPECT_EQ(o.exit_code, 2);
  EXPECT_EQ(o.err, "morvane: pictures of different size: a.png is 5x4, b.png is 4x5\n");
}

}  // namespace

}  // namespace morvane::tests
