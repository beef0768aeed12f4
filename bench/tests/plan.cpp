// The list of what is measured.
#include "measure/plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "made_up.h"

namespace morvane::bench {
namespace {

std::vector<row> rows_named(std::initializer_list<std::string_view> names) {
  std::vector<row> result;
  for (const std::string_view name : names) result.push_back(row_named(name));
  return result;
}

peer peer_for(std::string_view rows) {
  return {.rows = rows, .library = "libyuv", .function = "Copy", .prepare = [](const catalogue::call& c) {
            return job([c] { std::memcpy(c.destination.data[0], c.source.data[0], 1); });
          }};
}

std::vector<planned> plan_of(std::initializer_list<std::string_view> names, const std::vector<peer>& peers = {},
                             const request& wanted = {}) {
  return make_plan(rows_named(names), peers, wanted);
}

std::ptrdiff_t count(const std::vector<planned>& plan, const std::function<bool(const measurement&)>& test) {
  return std::count_if(plan.begin(), plan.end(), [&](const planned& entry) { return test(entry.what); });
}

TEST(plan, has_every_backend_in_every_place) {
  const std::vector<planned> plan = plan_of({"y::y"});
  for (const std::string& backend : backend_names())
    for (const place& where : all_places())
      EXPECT_EQ(count(plan,
                      [&](const measurement& m) {
                        return m.runner == backend && m.where.nominal == where.nominal &&
                               m.where.memory == where.memory && m.threads == 1;
                      }),
                1)
          << backend << ' ' << name_of(where.nominal) << ' ' << name_of(where.memory);
}

TEST(plan, has_the_library_s_choice_on_two_threads) {
  const std::vector<planned> plan = plan_of({"y::y"});
  EXPECT_EQ(count(plan, [](const measurement& m) { return m.threads == 2; }), 1);
  EXPECT_EQ(count(plan, [](const measurement& m) { return m.threads == 2 && m.runner == backend_names().back(); }), 1);
}

TEST(plan, has_other_libraries_for_the_rows_that_they_serve) {
  const std::vector<planned> plan = plan_of({"y::y", "uyvy::yuy2"}, {peer_for("y::y y16::y16")});
  EXPECT_EQ(count(plan, [](const measurement& m) { return m.is_peer; }), 3);
  EXPECT_EQ(count(plan, [](const measurement& m) { return m.is_peer && m.row == "y::y" && m.runner == "libyuv"; }), 3);
}

TEST(plan, of_backends_alone_has_neither_libraries_nor_threads) {
  const std::vector<planned> plan = plan_of({"y::y"}, {peer_for("y::y")}, {.backends_alone = true});
  EXPECT_EQ(plan.size(), all_places().size() * backend_names().size());
}

TEST(plan, has_what_every_filter_is_found_in) {
  const request wanted{.filters = {std::regex("^y::"), std::regex("1080/(odd|padded)")}};
  for (const planned& entry : plan_of({"y::y", "uyvy::yuy2"}, {}, wanted)) {
    EXPECT_EQ(entry.what.row, "y::y");
    EXPECT_EQ(entry.what.where.nominal, full_hd);
  }
  EXPECT_EQ(plan_of({"y::y", "uyvy::yuy2"}, {}, wanted).size(), 2 * backend_names().size());
}

TEST(plan, counts_bytes_and_pixels_of_the_odd_shape) {
  const request wanted{.filters = {std::regex("1920x16/odd")}};
  const measurement m = plan_of({"uyvy::bgra"}, {}, wanted).front().what;
  EXPECT_EQ(m.pixels, 1919 * 16);
  EXPECT_EQ(m.bytes, (1920 * 2 + 1919 * 4) * 16);
}

// What a planned job leaves in the destination of a picture of y_uv_422.
std::vector<std::uint8_t> result_of(const planned& entry, const arena& memory) {
  const catalogue::call c = memory.prepare(entry.load);
  const auto bytes = static_cast<std::size_t>(entry.load.bytes_written) / 2;
  for (std::size_t p = 0; p < 2; ++p) std::memset(c.destination.data[p], 0, bytes);
  entry.set_up(memory)();
  std::vector<std::uint8_t> result(c.destination.data[0], c.destination.data[0] + bytes);
  result.insert(result.end(), c.destination.data[1], c.destination.data[1] + bytes);
  return result;
}

TEST(plan, does_the_same_on_two_threads_as_on_one) {
  const request wanted{.filters = {std::regex("3840x2160/tight/" + backend_names().back())}};
  const std::vector<planned> plan = plan_of({"y_uv::y_uv_to422"}, {}, wanted);
  ASSERT_EQ(plan.size(), 2);
  const arena memory({plan.front().load});
  EXPECT_EQ(plan.back().what.threads, 2);
  EXPECT_TRUE(result_of(plan.front(), memory) == result_of(plan.back(), memory));
}

}  // namespace
}  // namespace morvane::bench
