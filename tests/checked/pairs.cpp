// Every format to every other through the checked interface, against what the rules say: all filters, sitings, ranges
// and matrices, backgrounds, odd sizes and padded rows, on every backend.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "backend/choice.h"
#include "catalogue/formats.h"
#include "morvane.h"
#include "rules/convert.h"
#include "rules/promises/pictures.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;

struct colour {
  rules::matrix of;
  std::optional<rules::range> in;
};

struct variant {
  colour source;
  colour destination;
  rules::options how;
};

using rules::filter;
using rules::matrix;
using rules::range;
using rules::siting;

const variant variants[] = {
    {{matrix::bt709, {}}, {matrix::bt709, {}}, {}},
    {{matrix::bt709, {}}, {matrix::bt709, {}}, {filter::nearest, siting::left, {}}},
    {{matrix::bt601, {}}, {matrix::bt601, {}}, {filter::linear, siting::center, rules::rgb8{200, 100, 50}}},
    {{matrix::bt601, range::full}, {matrix::bt709, range::video}, {filter::linear, siting::left, {}}},
    {{matrix::bt2020, range::video}, {matrix::bt2020, range::full}, {filter::linear, siting::center, {}}},
    {{matrix::bt709, range::full}, {matrix::bt709, range::full}, {filter::nearest, siting::center, {}}},
    {{matrix::bt709, range::video},
     {matrix::bt709, range::video},
     {filter::linear, siting::left, rules::rgb8{1, 254, 77}}},
};

struct size {
  int width;
  int height;
};
constexpr size sizes[] = {{1, 1}, {2, 2}, {3, 3}, {7, 4}, {18, 5}, {49, 6}, {100, 3}};

int32_t number_of(matrix m) {
  return m == matrix::bt601 ? MORVANE_BT601 : m == matrix::bt2020 ? MORVANE_BT2020 : MORVANE_BT709;
}

morvane_description described(const rules::picture& p) {
  morvane_description d{sizeof d,        morvane_format_named(std::string(p.format).c_str()),
                        p.width,         p.height,
                        number_of(p.of), MORVANE_RANGE_DEFAULT};
  if (p.in) d.range = *p.in == range::full ? MORVANE_FULL : MORVANE_VIDEO;
  return d;
}

morvane_picture planes_of(rules::stored_picture& stored) {
  morvane_picture result{};
  result.struct_size = sizeof result;
  for (std::size_t i = 0; i < 4; ++i) {
    result.data[i] = stored.of().data[i];
    result.stride[i] = stored.of().stride[i];
    result.bytes[i] = static_cast<int64_t>(stored.plane(i).size());
  }
  return result;
}

morvane_options options_of(const rules::options& how) {
  morvane_options o{};
  o.struct_size = sizeof o;
  o.filter = how.chroma_filter == filter::nearest ? MORVANE_NEAREST : MORVANE_LINEAR;
  o.siting = how.chroma_siting == siting::center ? MORVANE_CENTER : MORVANE_LEFT;
  if (how.background) {
    o.has_background = 1;
    o.background[0] = how.background->r;
    o.background[1] = how.background->g;
    o.background[2] = how.background->b;
  }
  return o;
}

// What the bytes of all planes are, one plane after the other.
std::vector<std::uint8_t> all_bytes(rules::stored_picture& stored) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < 4; ++i) bytes.insert(bytes.end(), stored.plane(i).begin(), stored.plane(i).end());
  return bytes;
}

std::string first_difference(const std::vector<std::uint8_t>& expected, const std::vector<std::uint8_t>& got) {
  for (std::size_t i = 0; i < expected.size(); ++i)
    if (expected[i] != got[i])
      return "byte " + std::to_string(i) + " is " + std::to_string(got[i]) + ", not " + std::to_string(expected[i]);
  return {};
}

class checked_pairs : public testing::TestWithParam<const catalogue::format*> {
 protected:
  // Floats get numbers, some of them out of range, because no bits at random would be near.
  static void fill(rules::stored_picture& picture, const catalogue::format& f, std::uint32_t seed) {
    picture.fill_at_random(seed);
    if (f.planes[0].sample != catalogue::sample_type::f32) return;
    std::vector<std::uint8_t>& bytes = picture.plane(0);
    for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) {
      const float value = static_cast<float>(bytes[i] + 256 * bytes[i + 1]) / 40000.0F - 0.6F;
      std::memcpy(&bytes[i], &value, 4);
    }
  }

  static void compare(const catalogue::format& from, const catalogue::format& to, const variant& v, const size& s,
                      int number) {
    rules::stored_picture source(from.name, s.width, s.height, 0, 4 * (number % 3));
    fill(source, from, static_cast<std::uint32_t>(number * 77 + s.width));
    rules::stored_picture expected(to.name, s.width, s.height, 0xa5, 8 * (number % 2));
    source.of().of = v.source.of;
    source.of().in = v.source.in;
    expected.of().of = v.destination.of;
    expected.of().in = v.destination.in;
    rules::convert(source.of(), expected.of(), v.how);
    const morvane_description source_is = described(source.of());
    const morvane_description destination_is = described(expected.of());
    const morvane_options how = options_of(v.how);
    for (const backend::kind k : backend::available()) {
      backend::choose(k);
      rules::stored_picture made(to.name, s.width, s.height, 0xa5, 8 * (number % 2));
      const morvane_picture in = planes_of(source);
      const morvane_picture out = planes_of(made);
      morvane_error error;
      ASSERT_EQ(morvane_convert(&source_is, &in, &destination_is, &out, &how, &error), MORVANE_OK) << error.message;
      ASSERT_EQ(first_difference(all_bytes(expected), all_bytes(made)), "")
          << from.name << " to " << to.name << ", " << s.width << "x" << s.height << ", variant " << (&v - variants)
          << ", " << backend::name(k);
    }
  }
  void TearDown() override { backend::choose(backend::available().back()); }
};

TEST_P(checked_pairs, are_as_the_rules_say) {
  int number = 0;
  for (const catalogue::format& to : catalogue::formats) {
    if (!rules::convertible(GetParam()->name, to.name)) continue;
    for (const variant& v : variants)
      for (const size& s : sizes) {
        compare(*GetParam(), to, v, s, ++number);
        if (HasFatalFailure()) return;
      }
  }
}

TEST_P(checked_pairs, are_refused_where_the_rules_have_none) {
  for (const catalogue::format& to : catalogue::formats) {
    const morvane_description from_is{sizeof from_is, GetParam()->id, 4, 4, 0, 0};
    const morvane_description to_is{sizeof to_is, to.id, 4, 4, 0, 0};
    morvane_error error;
    morvane_plan* plan = morvane_plan_create(&from_is, &to_is, nullptr, &error);
    EXPECT_EQ(plan != nullptr, rules::convertible(GetParam()->name, to.name)) << to.name;
    if (plan == nullptr) {
      EXPECT_EQ(error.code, MORVANE_NO_WAY);
      EXPECT_STREQ(error.argument, "destination.format");
    }
    morvane_plan_destroy(plan);
  }
}

std::vector<const catalogue::format*> all_formats() {
  std::vector<const catalogue::format*> all;
  for (const catalogue::format& f : catalogue::formats) all.push_back(&f);
  return all;
}

INSTANTIATE_TEST_SUITE_P(catalogue, checked_pairs, testing::ValuesIn(all_formats()),
                         [](const auto& format) { return std::string(format.param->name); });

}  // namespace
}  // namespace morvane::tests
