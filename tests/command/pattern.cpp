// morvane pattern: every pattern in every format, and where it goes.
#include <algorithm>
#include <array>
#include <cmath>
#include <csignal>
#include <numbers>
#include <optional>

#include "library.h"

namespace morvane::tests {

namespace {

constexpr int width = 17;
constexpr int height = 9;
constexpr std::size_t pixels = width * height;
const std::string size = " -s 17x9 ";

const std::array<std::string, 4> all_patterns = {"bars", "ramp", "zone", "key"};

// Blue, green, red and alpha.
using levels = std::array<int, 4>;

class pattern : public command {
 protected:
  // What the command writes for these words.
  bytes written(const std::string& words) const {
    quietly("morvane pattern " + words + " out");
    return read("out");
  }
  bytes written(const std::string& name, const std::string& format) const {
    return written(name + " -f " + format + size);
  }
  // The pixel of a column and a row of bgra64.
  static levels at(const bytes& frame, std::size_t x, std::size_t y, std::size_t of_width = width) {
    levels result{};
    for (std::size_t i = 0; i < 4; ++i) {
      const std::size_t place = 8 * (y * of_width + x) + 2 * i;
      result[i] = place + 1 < frame.size() ? frame[place] | frame[place + 1] << 8 : -1;
    }
    return result;
  }
};

TEST_F(pattern, bars_have_three_quarters_of_full_brightness) {
  const bytes frame = written("bars -f bgra64 -s 16x2");
  constexpr int on = 49151;
  const levels bars[] = {{on, on, on, 65535}, {0, on, on, 65535}, {on, on, 0, 65535}, {0, on, 0, 65535},
                         {on, 0, on, 65535},  {0, 0, on, 65535},  {on, 0, 0, 65535},  {0, 0, 0, 65535}};
  for (std::size_t x = 0; x < 16; ++x)
    for (std::size_t y = 0; y < 2; ++y) EXPECT_EQ(at(frame, x, y, 16), bars[x / 2]) << x;
  EXPECT_EQ(part(written("bars -f bgra -s 16x1"), 0, 12),
            (bytes{191, 191, 191, 255, 191, 191, 191, 255, 0, 191, 191, 255}));
}

// The values that are printed for bars of BT.709 in 8 and 10 bits.
TEST_F(pattern, bars_have_the_values_of_video) {
  const bytes frame = written("bars -f ycbcrx -s 8x1");
  const int expected[8][3] = {{180, 128, 128}, {168, 44, 136}, {145, 147, 44}, {133, 63, 52},
                              {63, 193, 204},  {51, 109, 212}, {28, 212, 120}, {16, 128, 128}};
  for (std::size_t bar = 0; bar < 8; ++bar)
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(frame[4 * bar + i], expected[bar][i]) << bar << ' ' << i;
  const bytes luma = written("bars -f y_10u16 -s 8x1");
  const int expected_luma[] = {721, 674, 581, 534, 251, 204, 111, 64};
  for (std::size_t bar = 0; bar < 8; ++bar) EXPECT_EQ(luma[2 * bar] | luma[2 * bar + 1] << 8, expected_luma[bar]);
}

TEST_F(pattern, a_ramp_goes_from_black_to_full_brightness) {
  const bytes frame = written("ramp -f bgra64 -s 5x6");
  const int steps[] = {0, 16384, 32768, 49151, 65535};
  for (std::size_t x = 0; x < 5; ++x) {
    const int level = steps[x];
    for (std::size_t y = 0; y < 3; ++y) EXPECT_EQ(at(frame, x, y, 5), (levels{level, level, level, 65535}));
    EXPECT_EQ(at(frame, x, 3, 5), (levels{0, 0, level, 65535}));
    EXPECT_EQ(at(frame, x, 4, 5), (levels{0, level, 0, 65535}));
    EXPECT_EQ(at(frame, x, 5, 5), (levels{level, 0, 0, 65535}));
  }
  EXPECT_EQ(written("ramp -f y -s 256x1 --range full")[200], 200);
}

TEST_F(pattern, a_zone_plate_has_rings_that_grow) {
  const bytes frames = written("zone -f bgra64 --frames 5" + size);
  ASSERT_EQ(frames.size(), 5 * 8 * pixels);
  EXPECT_EQ(at(frames, 8, 4), (levels{65535, 65535, 65535, 65535}));
  for (int f = 0; f < 5; ++f) {
    const bytes frame = part(frames, static_cast<std::size_t>(f) * 8 * pixels, 8 * pixels);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) {
        const double squared = std::pow(x - 8, 2) + std::pow(y - 4, 2);
        const double angle = std::numbers::pi * (squared / width - f / 16.0);
        const levels found = at(frame, static_cast<std::size_t>(x), static_cast<std::size_t>(y));
        EXPECT_NEAR(found[0], 32767.5 * (1 + std::cos(angle)), 4) << x << ' ' << y;
        EXPECT_EQ(found, (levels{found[0], found[0], found[0], 65535}));
      }
  }
}

TEST_F(pattern, a_key_is_a_disc_that_swings) {
  const bytes frames = written("key -f bgra64 --frames 65" + size);
  ASSERT_EQ(frames.size(), 65 * 8 * pixels);
  const auto frame = [&](std::size_t f) { return part(frames, f * 8 * pixels, 8 * pixels); };
  const auto orange = [](int alpha) { return levels{0, 32896, 65535, alpha}; };
  const levels blue = {65535, 0, 0, 0};
  EXPECT_EQ(at(frame(0), 8, 4), orange(65535));
  EXPECT_EQ(at(frame(0), 8, 3), orange(65535));
  EXPECT_EQ(at(frame(0), 8, 1), orange(43690));  // 3 of 4.5 pixels away: 2/3
  EXPECT_EQ(at(frame(0), 8, 0), orange(14563));  // 4 of 4.5: 2/9
  EXPECT_EQ(at(frame(0), 12, 4), orange(14563));
  EXPECT_EQ(at(frame(0), 0, 0), blue);
  EXPECT_EQ(at(frame(0), 16, 8), blue);
  // A quarter of the width to the right, and to the left.
  EXPECT_EQ(at(frame(16), 8, 4), orange(7282));  // 4.25 of 4.5: 1/9
  EXPECT_EQ(at(frame(16), 12, 4), orange(65535));
  EXPECT_EQ(at(frame(16), 3, 4), blue);
  EXPECT_EQ(at(frame(48), 4, 4), orange(65535));
  EXPECT_EQ(at(frame(48), 8, 4), orange(7282));
  EXPECT_EQ(frame(32), frame(0));
  EXPECT_EQ(frame(64), frame(0));
  for (std::size_t f = 0; f < 64; ++f) EXPECT_NE(frame(f), frame(f + 1)) << f;
}

// Alpha as red, green and blue.
bytes grey_of_alpha(const bytes& frame) {
  bytes result(frame.size(), 255);
  for (std::size_t i = 0; i + 8 <= frame.size(); i += 8)
    for (std::size_t byte = 0; byte < 6; ++byte) result[i + byte] = frame[i + 6 + byte % 2];
  return result;
}

bytes alpha_of(const bytes& frame) {
  bytes result;
  for (std::size_t i = 0; i + 8 <= frame.size(); i += 8) result = result + part(frame, i + 6, 2);
  return result;
}

// What a frame of bgra64 is in any format, by checked calls.
bytes expected(const bytes& frame, const description& to, const options& how = {}) {
  const description from = described("bgra64", to.width, to.height);
  if (name_of(to.format) == "uyvy_uyvy") {
    const description one = described("uyvy", to.width, to.height);
    return converted(frame, from, one, how) + converted(grey_of_alpha(frame), from, one);
  }
  const description alpha = described("alpha_u16", to.width, to.height);
  const description video = described("p216", to.width, to.height);
  switch (describe(to.format).model) {
    case MORVANE_ALPHA:
      return converted(alpha_of(frame), alpha, to);
    case MORVANE_CHROMA: {
      const auto luma = static_cast<std::size_t>(lay_out(video).planes[1].offset);
      const bytes all = converted(frame, from, video);
      return converted(part(all, luma, all.size() - luma), described("cbcr_16_422", to.width, to.height), to);
    }
    default:
      return converted(frame, from, to);
  }
}

// Whether the pattern moves in what the format has of it.
bool moves(const std::string& name, const morvane_format_info& f) {
  const bool has_luma = f.model != MORVANE_ALPHA && f.model != MORVANE_CHROMA;
  return name == "key" || (name == "zone" && has_luma);
}

TEST_F(pattern, has_in_every_format_what_that_can_hold) {
  for (const std::string& name : all_patterns) {
    const bytes rgb = written(name, "bgra64");
    for (const morvane::format f : formats()) {
      const std::string format(name_of(f));
      const bytes first = expected(rgb, described(format, width, height));
      const bytes frames = written(name + " --frames 9 -f " + format + size);
      ASSERT_EQ(frames.size(), 9 * first.size()) << name << ' ' << format;
      EXPECT_EQ(part(frames, 0, first.size()), first) << name << ' ' << format;
      EXPECT_EQ(part(frames, 8 * first.size(), first.size()) != first, moves(name, describe(f)))
          << name << ' ' << format;
    }
  }
}

TEST_F(pattern, has_any_size) {
  for (const morvane::format f : formats())
    for (const auto& [w, h] : {std::pair(1, 1), {67, 2}}) {
      const std::string format(name_of(f));
      const std::string words = format + " -s " + std::to_string(w) + "x" + std::to_string(h);
      const auto bytes_needed = static_cast<std::size_t>(lay_out(described(format, w, h)).bytes);
      EXPECT_EQ(written("key -f " + words).size(), bytes_needed) << words;
    }
}

TEST_F(pattern, takes_the_colours_of_the_result) {
  const bytes rgb = written("bars", "bgra64");
  const auto in_colour = [&](const std::string& format, matrix m, range r, const options& how = {}) {
    description to = described(format, width, height);
    to.matrix = m;
    to.range = r;
    return converted(rgb, described("bgra64", width, height), to, how);
  };
  const auto words = [&](const std::string& options) { return written("bars" + size + options); };
  EXPECT_EQ(words("-f uyvy --matrix 601"), in_colour("uyvy", matrix::bt601, range::unsaid));
  EXPECT_EQ(words("-f uyvy --range full"), in_colour("uyvy", matrix::unsaid, range::full));
  EXPECT_EQ(words("-f bgrx --rgb-range video"), in_colour("bgrx", matrix::unsaid, range::video));
  EXPECT_EQ(words("-f bgrx --range full --matrix 601"), in_colour("bgrx", matrix::unsaid, range::unsaid));
  EXPECT_EQ(words("-f nv12 --chroma nearest"), in_colour("y_uv_420", {}, {}, {.filter = filter::nearest}));
  EXPECT_EQ(words("-f nv12 --siting center"), in_colour("y_uv_420", {}, {}, {.siting = siting::center}));
  EXPECT_EQ(words("-f nv12 -j 3"), words("-f nv12"));
  const bytes key = written("key", "bgra64");
  const options over = {.background = color{9, 8, 7}};
  EXPECT_EQ(written("key -f uyvy_uyvy --background 9,8,7" + size),
            expected(key, described("uyvy_uyvy", width, height), over));
  EXPECT_EQ(written("key -f uyvy --background 9,8,7" + size),
            converted(key, described("bgra64", width, height), described("uyvy", width, height), over));
}

TEST_F(pattern, goes_where_converted_frames_go) {
  const bytes frames = written("key --frames 3 -f uyvy_a" + size);
  quietly("morvane pattern key --frames 3 -f uyvy_a" + size + "- > piped");
  EXPECT_EQ(read("piped"), frames);
  quietly("morvane pattern key -f uyvy_a" + size + "--planes fill,alpha");
  EXPECT_EQ(read("fill") + read("alpha"), part(frames, 0, frames.size() / 3));
  quietly("morvane pattern key -f bgra --stride 70" + size + "wide");
  EXPECT_EQ(read("wide").size(), 70U * height);
  EXPECT_EQ(part(read("wide"), 70, 68), part(written("key", "bgra"), 68, 68));

  quietly("morvane pattern key" + size + "key.png && morvane convert -t bgra key.png back");
  EXPECT_EQ(read("back"), written("key", "bgra"));
  quietly("morvane pattern key --background 255,0,0" + size + "over.png && morvane convert -t bgrx over.png back");
  EXPECT_EQ(read("back"), written("key -f bgrx --background 255,0,0" + size));

  const bytes video = written("zone -f y_u_v_420 --frames 2" + size);
  for (const char* line : {"morvane pattern zone --frames 2 -s 17x9 zone.y4m && morvane convert zone.y4m back -t i420",
                           "morvane pattern zone --frames 2 -s 17x9 --y4m - | morvane convert - back -t i420"}) {
    quietly(line);
    EXPECT_EQ(read("back"), video) << line;
  }
}

TEST_F(pattern, leaves_whole_frames_or_nothing) {
  std::vector<std::string> endless = {"pattern", "zone", "-f", "y", "-s", "64x64", "--frames", "100000", "out"};
  EXPECT_EQ(interrupted(endless, 1, SIGINT), SIGINT);
  EXPECT_TRUE(files().empty());
  endless.emplace_back("--keep");
  EXPECT_EQ(interrupted(endless, 1, SIGTERM), SIGTERM);
  EXPECT_EQ(read("out").size() % (64 * 64), 0U);
  EXPECT_EQ(run("morvane pattern zone -f y -s 64x64 --frames 9000000000 - | head -c 9 | wc -c").out, "9\n");
}

}  // namespace

}  // namespace morvane::tests
