// Memory that nobody has written decides nothing: the padding of a source, the whole of a destination and scratch
// memory come as they are. The bytes show it where they differ; valgrind, which runs these tests too, shows each use of
// such a byte.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "backend/choice.h"
#include "checked/variants.h"
#include "checker/checker.h"
#include "rules/convert.h"
#include "rules/layout.h"
#include "rules/promises/pictures.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;

constexpr int width = 21;
constexpr int height = 5;
constexpr std::ptrdiff_t padding = 7;

// As new leaves it.
struct raw_memory {
  explicit raw_memory(std::ptrdiff_t bytes) : data(new std::uint8_t[static_cast<std::size_t>(bytes)]) {}
  std::unique_ptr<std::uint8_t[]> data;
};

class raw_picture {
 public:
  explicit raw_picture(rules::stored_picture& of) : format_(rules::format_of(of.of().format)) {
    is_.struct_size = sizeof is_;
    for (std::size_t i = 0; i < format_.planes.size(); ++i) {
      const std::ptrdiff_t stride = row_bytes(i) + padding;
      memory_[i] = std::make_unique<raw_memory>(stride * rows(i));
      is_.data[i] = memory_[i]->data.get();
      is_.stride[i] = stride;
      is_.bytes[i] = stride * rows(i);
    }
  }

  // Calls take(row, row of the other one, bytes) for each row of each plane.
  template <class Take>
  void each_row(rules::stored_picture& other, Take take) const {
    for (std::size_t i = 0; i < format_.planes.size(); ++i)
      for (std::ptrdiff_t y = 0; y < rows(i); ++y)
        take(memory_[i]->data.get() + is_.stride[i] * y, other.of().data[i] + other.of().stride[i] * y, row_bytes(i));
  }
  const morvane_picture& is() const { return is_; }

 private:
  const rules::format& format_;
  std::array<std::unique_ptr<raw_memory>, 4> memory_{};
  morvane_picture is_{};

  std::ptrdiff_t row_bytes(std::size_t i) const { return rules::row_bytes(format_, i, width); }
  std::ptrdiff_t rows(std::size_t i) const { return rules::rows_of_plane(format_, i, height); }
};

void expect_rows(rules::stored_picture& source, rules::stored_picture& expected, const variant& v) {
  raw_picture read(source);
  read.each_row(source, [](std::uint8_t* row, const std::uint8_t* content, std::ptrdiff_t bytes) {
    std::memcpy(row, content, static_cast<std::size_t>(bytes));
  });
  const morvane_description from = described(source.of()), to = described(expected.of());
  const morvane_options how = options_of(v.how);
  morvane_plan* plan = morvane_plan_create(&from, &to, &how, nullptr);
  ASSERT_NE(plan, nullptr);
  const std::int64_t bytes = morvane_plan_scratch_bytes(plan);
  on_every_backend([&](backend::kind k) {
    raw_picture made(expected);
    const raw_memory scratch(bytes);
    morvane_error e;
    ASSERT_EQ(morvane_plan_run(plan, &read.is(), &made.is(), scratch.data.get(), bytes, &e), MORVANE_OK) << e.message;
    made.each_row(expected, [&](const std::uint8_t* row, const std::uint8_t* wanted, std::ptrdiff_t count) {
      ASSERT_EQ(std::memcmp(row, wanted, static_cast<std::size_t>(count)), 0)
          << source.of().format << " to " << expected.of().format << " on " << backend::name(k);
    });
  });
  morvane_plan_destroy(plan);
}

// A quarter of all pairs: each format as the source and as the destination of many.
TEST(checked_uninitialised, memory_decides_nothing) {
  std::uint32_t number = 0;
  for (const std::string_view from : rules::format_names())
    for (const std::string_view to : rules::format_names()) {
      if (!rules::convertible(from, to)) continue;
      if (++number % 4 != 0) continue;
      const variant& v = variants()[number / 4 % variants().size()];
      rules::stored_picture source(from, width, height), expected(to, width, height);
      source.fill_at_random(number);
      source.of().of = v.source.of;
      source.of().in = v.source.in;
      expected.of().of = v.destination.of;
      expected.of().in = v.destination.in;
      rules::convert(source.of(), expected.of(), v.how);
      expect_rows(source, expected, v);
      if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace morvane::tests
