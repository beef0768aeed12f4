// What a row reads and writes in a place, and the memory in which it does so.
#include "measure/workload.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "made_up.h"

namespace morvane::bench {
namespace {

workload load_of(std::string_view row_name, const place& where) {
  return make_workload(row_named(row_name), where);
}

TEST(workload, counts_bytes_read_and_bytes_written) {
  const workload w = load_of("uyvy::bgra", {in_cache});
  EXPECT_EQ(w.bytes_read, 1920 * 16 * 2);
  EXPECT_EQ(w.bytes_written, 1920 * 16 * 4);
  EXPECT_EQ(w.bytes(), 1920 * 16 * 6);
}

TEST(workload, a_fill_reads_nothing_and_a_difference_writes_nothing) {
  EXPECT_EQ(load_of("black::uyvy", {in_cache}).bytes(), 1920 * 16 * 2);
  EXPECT_EQ(load_of("sum_absolute_differences::difference", {in_cache}).bytes(), 1920 * 16 * 4);
}

TEST(workload, reads_as_many_rows_of_chroma_as_it_writes) {
  EXPECT_EQ(load_of("p216::p010", {in_cache}).bytes(), 2 * (1920 * 16 * 2 + 1920 * 8 * 2));
}

TEST(workload, padding_is_not_counted) {
  EXPECT_EQ(load_of("y::y", {in_cache, shape::padded}).bytes(), load_of("y::y", {in_cache}).bytes());
}

TEST(workload, the_odd_shape_has_a_pixel_less_in_every_row) {
  EXPECT_EQ(load_of("y::y", {in_cache}).pixels(), 1920 * 16);
  EXPECT_EQ(load_of("y::y", {in_cache, shape::odd}).pixels(), 1919 * 16);
  EXPECT_EQ(load_of("y::y", {in_cache, shape::odd}).bytes(), 2 * 1919 * 16);
}

TEST(workload, short_rows_have_as_many_pixels_as_a_picture_in_cache) {
  EXPECT_EQ(short_rows.xres * short_rows.yres, in_cache.xres * in_cache.yres);
}

TEST(places, are_every_size_in_every_shape_and_the_short_rows) {
  const std::vector<place> places = all_places();
  EXPECT_EQ(places.size(), 3 * 4 + 1);
  for (const shape memory : {shape::tight, shape::padded, shape::odd, shape::unaligned})
    EXPECT_EQ(std::count_if(places.begin(), places.end(),
                            [&](const place& p) { return p.memory == memory && p.nominal != short_rows; }),
              3);
  EXPECT_EQ(places.back().nominal, short_rows);
  EXPECT_EQ(places.back().memory, shape::padded);
}

TEST(call, counts_what_the_conversion_counts) {
  const catalogue::call c = make_call(*row_named("cb_cr_8_420::cbcr_16_422").conversion, false, {640, 360});
  EXPECT_EQ(c.xres, 320);
  EXPECT_EQ(c.yres, 180);
}

TEST(call, has_the_argument_of_its_row) {
  EXPECT_EQ(make_call(*row_named("uyvy::bgra").conversion, false, in_cache).argument, 709);
  EXPECT_EQ(make_call(*row_named("uyvy::y").conversion, false, in_cache).argument, 0);
  EXPECT_EQ(make_call(*row_named("uyvy::y(rescale)").conversion, true, in_cache).argument, 1);
}

TEST(job, asks_for_the_opacity) {
  static bool* asked_for = nullptr;
  catalogue::conversion c;
  c.entry.convert = [](const catalogue::call& call) { asked_for = call.opaque; };
  const job work = make_job(c, {});
  work();
  EXPECT_NE(asked_for, nullptr);
}

TEST(arena, copies_half_of_the_bytes_that_are_moved) {
  const workload w = load_of("y::y", {in_cache});
  const arena memory({w});
  const catalogue::call c = memory.prepare(w);
  const std::uint8_t* from = c.source.data[0];
  std::uint8_t* to = c.destination.data[0];
  std::fill(to, to + 1000, std::uint8_t{0});
  memory.copy(1000);
  EXPECT_TRUE(std::equal(from, from + 500, to));
  EXPECT_TRUE(std::all_of(to + 500, to + 1000, [](std::uint8_t byte) { return byte == 0; }));
}

TEST(arena, lays_rows_out_as_the_shape_says) {
  const workload tight = load_of("y::y", {in_cache});
  const workload padded = load_of("y::y", {in_cache, shape::padded});
  const workload odd = load_of("y::y", {in_cache, shape::odd});
  const arena memory({tight, padded, odd});
  EXPECT_EQ(memory.prepare(tight).source.stride[0], 1920);
  EXPECT_EQ(memory.prepare(padded).source.stride[0], 1920 + 64);
  EXPECT_EQ(memory.prepare(odd).source.stride[0], 1919);
}

bool is_aligned(const void* address, std::uintptr_t bytes) {
  return reinterpret_cast<std::uintptr_t>(address) % bytes == 0;
}

TEST(arena, aligns_all_planes_but_the_unaligned_ones) {
  const workload tight = load_of("uyvy::y_u_v_420", {in_cache});
  const workload unaligned = load_of("uyvy::y_u_v_420", {in_cache, shape::unaligned});
  const arena memory({tight, unaligned});
  for (std::size_t p = 0; p < 3; ++p) {
    EXPECT_TRUE(is_aligned(memory.prepare(tight).destination.data[p], 64)) << p;
    EXPECT_FALSE(is_aligned(memory.prepare(unaligned).destination.data[p], 4)) << p;
  }
  EXPECT_FALSE(is_aligned(memory.prepare(unaligned).source.data[0], 4));
}

TEST(arena, keeps_planes_of_words_at_even_addresses) {
  const workload w = load_of("p216::uyvy", {in_cache, shape::unaligned});
  const arena memory({w});
  EXPECT_EQ(is_aligned(memory.prepare(w).source.data[0], 2), w.conversion->entry.takes_words);
}

}  // namespace
}  // namespace morvane::bench
