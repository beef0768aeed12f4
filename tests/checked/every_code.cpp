// Every sample that a format can store, read, and every working sample, written, against what the rules say.
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>

#include "checked/variants.h"
#include "checker/checker.h"
#include "options.h"
#include "rules/convert.h"
#include "rules/layout.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;

// All words, in an order that differs between the components of a pixel.
constexpr int side = 256;
std::uint32_t word_at(int x, int y, std::size_t component) {
  const auto number = static_cast<std::uint32_t>(y * side + x);
  return (number * (2 * static_cast<std::uint32_t>(component) + 1) + 7777 * static_cast<std::uint32_t>(component)) &
         65535;
}

// Floats are too many; theirs lie halfway between working samples, and beyond all of these.
std::uint32_t code_of(const rules::field& f, std::uint32_t word) {
  if (!f.is_float || f.bits() != 32) return word;
  using limits = std::numeric_limits<float>;
  constexpr float others[] = {limits::quiet_NaN(),
                              limits::infinity(),
                              -limits::infinity(),
                              limits::denorm_min(),
                              -0.0F,
                              -1.0F,
                              1.0F,
                              1.0F + limits::epsilon(),
                              limits::max(),
                              limits::lowest(),
                              limits::min(),
                              1.0F - limits::epsilon() / 2};
  const float halfway = (static_cast<float>(word) - 20.5F) / 65535.0F;
  return std::bit_cast<std::uint32_t>(word < std::size(others) ? others[word] : halfway);
}

// The words as the samples of a picture, each in as many of its bits as it has.
void put_all_codes(const rules::picture& p) {
  const rules::format& f = rules::format_of(p.format);
  for (std::size_t plane = 0; plane < f.planes.size(); ++plane) {
    const rules::group& g = f.planes[plane];
    for (int y = 0; y < p.height; ++y)
      for (int k = 0; k < rules::groups_in_row(f, plane, p.width); ++k) {
        std::uint8_t* group = p.data[plane] + p.stride[plane] * y + std::ptrdiff_t{k} * g.bytes;
        for (std::size_t i = 0; i < g.fields.size(); ++i)
          rules::put(g, g.fields[i], group, code_of(g.fields[i], word_at(k, y, i + plane)));
      }
  }
}

void expect_as_the_rules_say(rules::stored_picture& source, std::string_view to) {
  const rules::picture& from = source.of();
  rules::stored_picture expected(to, from.width, from.height);
  expected.of().in = from.in;
  rules::convert(from, expected.of(), {.chroma_filter = rules::filter::nearest});
  on_every_backend([&](backend::kind k) {
    rules::stored_picture made(to, from.width, from.height);
    made.of().in = from.in;
    const morvane_description from_is = described(from), to_is = described(made.of());
    const morvane_picture source_planes = planes_of(source), planes = planes_of(made);
    const morvane_options how = options_of({.chroma_filter = rules::filter::nearest});
    ASSERT_EQ(morvane_convert(&from_is, &source_planes, &to_is, &planes, &how, nullptr), MORVANE_OK);
    for (std::size_t i = 0; i < rules::format_of(to).planes.size(); ++i)
      EXPECT_TRUE(made.plane(i) == expected.plane(i)) << from.format << " to " << to << " on " << backend::name(k);
  });
}

struct format_and_deep {
  const char* format;
  const char* deep;  // a format of the same model with 16 bits
};
constexpr format_and_deep formats[] = {
    {"x2rgb10", "bgra64"}, {"x2bgr10", "bgra64"}, {"r210", "bgra64"},        {"R10k", "bgra64"},
    {"R10l", "bgra64"},    {"xv30", "vuya_16"},   {"y410", "vuya_16"},       {"y210", "p216"},
    {"y212", "p216"},      {"y216", "p216"},      {"rgb48", "bgra64"},       {"bgr48", "bgra64"},
    {"rgbf32", "bgra64"},  {"rgbaf32", "bgra64"}, {"g_b_r_f32", "bgra64"},   {"r_g_b_f32", "bgra64"},
    {"rgbaf16", "bgra64"}, {"R12L", "bgra64"},    {"st2110_422_10", "p216"}, {"st2110_422_12", "p216"},
};

class every_code : public testing::TestWithParam<format_and_deep> {
 protected:
  static void expect(const char* from, const char* to) {
    for (const rules::range in : {rules::range::full, rules::range::video}) {
      rules::stored_picture source(from, side, thin() ? 16 : side);
      source.of().in = in;
      put_all_codes(source.of());
      expect_as_the_rules_say(source, to);
    }
  }
};

TEST_P(every_code, is_read) {
  expect(GetParam().format, GetParam().deep);
}

TEST_P(every_code, is_written) {
  expect(GetParam().deep, GetParam().format);
}

INSTANTIATE_TEST_SUITE_P(formats, every_code, testing::ValuesIn(formats),
                         [](const auto& pair) { return std::string(pair.param.format); });

}  // namespace
}  // namespace morvane::tests
