// Lists of pairs of formats, what each of them moves, and the jobs that are measured.
#include "measure/pairs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "measure/pair_jobs.h"

namespace morvane::bench {
namespace {

constexpr size small{66, 18};

std::string names_of(std::string_view list) {
  std::string result;
  for (const format_pair& p : pairs_named(list)) result.append(result.empty() ? "" : " ").append(p.name());
  return result;
}

std::string complaint_of(std::string_view list) {
  try {
    pairs_named(list);
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return {};
}

format_pair pair_named(std::string_view name) {
  return pairs_named(name).front();
}

TEST(pairs, are_all_that_have_a_way) {
  const std::vector<format_pair> all = all_pairs();
  const auto has = [&all](std::string_view source, std::string_view destination) {
    return std::count(all.begin(), all.end(),
                      format_pair{catalogue::find_format(source), catalogue::find_format(destination)});
  };
  EXPECT_EQ(has("uyvy", "bgra"), 1);
  EXPECT_EQ(has("bgra", "bgra"), 1);
  EXPECT_EQ(has("alpha", "alpha_u16"), 1);
  EXPECT_EQ(has("alpha", "uyvy"), 0);
  EXPECT_EQ(has("uyvy_uyvy", "uyvy"), 0);
  EXPECT_EQ(has("cbcr_8_420", "y"), 0);
}

TEST(pairs, are_named_in_a_list) {
  EXPECT_EQ(names_of("uyvy:bgra"), "uyvy:bgra");
  EXPECT_EQ(names_of("uyvy:bgra,bgra:uyvy,uyvy:bgra"), "uyvy:bgra bgra:uyvy");
}

TEST(pairs, an_asterisk_stands_for_all_formats_that_there_is_a_way_from_or_to) {
  EXPECT_EQ(names_of("*:alpha"), "alpha:alpha alpha_10u16:alpha alpha_12u16:alpha alpha_u16:alpha");
  EXPECT_EQ(names_of("alpha:*,*:alpha"),
            "alpha:alpha alpha:alpha_10u16 alpha:alpha_12u16 alpha:alpha_u16 alpha_10u16:alpha alpha_12u16:alpha "
            "alpha_u16:alpha");
  EXPECT_EQ(pairs_named("*:*"), all_pairs());
}

TEST(pairs, formats_have_any_of_their_names) {
  EXPECT_EQ(names_of("nv12:BGRA,NV12:rgb24"), "y_uv_420:bgra y_uv_420:rgb");
  EXPECT_EQ(format_called("y_uv_420"), format_called("NV12"));
  EXPECT_EQ(format_called("nothing"), nullptr);
}

TEST(pairs, what_is_none_is_refused) {
  EXPECT_EQ(complaint_of("uyvy"), "'uyvy' is no pair of formats, as uyvy:bgra is");
  EXPECT_EQ(complaint_of("uyvy:bgra,"), "'' is no pair of formats, as uyvy:bgra is");
  EXPECT_EQ(complaint_of("uyvy:bgraa"), "there is no format 'bgraa' (uyvy:bgraa)");
  EXPECT_EQ(complaint_of("uyvy:XYZW"), "there is no format 'XYZW' (uyvy:XYZW)");
  EXPECT_EQ(complaint_of(":bgra"), "there is no format '' (:bgra)");
  EXPECT_EQ(complaint_of("alpha:uyvy"), "there is no way for alpha:uyvy");
  EXPECT_EQ(complaint_of("uyvy_uyvy:*"), "there is no way for uyvy_uyvy:*");
}

TEST(pairs, move_what_they_read_and_write) {
  EXPECT_EQ(bytes_moved(pair_named("uyvy:bgra"), {10, 10}), 100 * (2 + 4));
  EXPECT_EQ(bytes_moved(pair_named("v210:uyvy"), {12, 10}), 10 * (2 * 16 + 24));
}

TEST(pairs, read_no_plane_that_the_destination_does_not_keep) {
  EXPECT_EQ(bytes_moved(pair_named("y_u_v_420:y"), {10, 10}), 100 * (1 + 1));
  EXPECT_EQ(bytes_moved(pair_named("y_u_v_420:L"), {10, 10}), 150 + 100);
  EXPECT_EQ(bytes_moved(pair_named("y_u_v_420:bgra"), {10, 10}), 150 + 400);
  EXPECT_EQ(bytes_moved(pair_named("uyvy_a:uyvy"), {10, 10}), 200 + 200);
  EXPECT_EQ(bytes_moved(pair_named("uyvy_a:bgra"), {10, 10}), 300 + 400);
  EXPECT_EQ(bytes_moved(pair_named("uyvy:y"), {10, 10}), 200 + 100);
}

// For the pair of the largest formats as well.
arena memory_for(int count) {
  std::size_t most = 0;
  for (const format_pair& p : all_pairs()) most = std::max(most, ring::bytes_for(p, small, count));
  return arena(most);
}

ring filled(const arena& memory, const format_pair& p, const size& each, int count = 1) {
  const ring result(memory, p, each, count);
  noise().fill_sources(result);
  return result;
}

std::vector<std::uint8_t> bytes_of(const morvane_picture& p) {
  std::vector<std::uint8_t> result;
  for (int i = 0; i < MORVANE_MAX_PLANES; ++i) {
    const auto* data = static_cast<const std::uint8_t*>(p.data[i]);
    if (data != nullptr) result.insert(result.end(), data, data + p.bytes[i]);
  }
  return result;
}

// What a ring's destinations, which held another value, hold after the work was done once for each of them.
std::vector<std::uint8_t> results_after(const job& work, const ring& frames, int before = 0) {
  for (int i = 0; i < frames.count(); ++i)
    for (int p = 0; p < MORVANE_MAX_PLANES; ++p)
      if (void* data = frames.destination(i).data[p])
        std::memset(data, before, static_cast<std::size_t>(frames.destination(i).bytes[p]));
  for (int i = 0; i < frames.count(); ++i) work();
  std::vector<std::uint8_t> result;
  for (int i = 0; i < frames.count(); ++i) {
    const std::vector<std::uint8_t> bytes = bytes_of(frames.destination(i));
    result.insert(result.end(), bytes.begin(), bytes.end());
  }
  return result;
}

TEST(pair_jobs, convert_every_frame_of_a_ring_in_turn) {
  const arena memory = memory_for(3);
  for (const format_pair& p : pairs_named("uyvy:bgra,p010:y_u_v_420,vuya_f32:pa16")) {
    ring frames = filled(memory, p, small, 3);
    const auto expected = results_after(
        [&frames, i = 0]() mutable {
          convert(frames.from(), frames.source(i), frames.to(), frames.destination(i));
          ++i;
        },
        frames);
    EXPECT_TRUE(results_after(convert_next(frames), frames) == expected) << p.name();
    EXPECT_TRUE(results_after(convert_next(frames, {.threads = 2}), frames) == expected) << p.name();
  }
}

TEST(pair_jobs, take_turns_on_one_ring) {
  const arena memory = memory_for(4);
  ring frames = filled(memory, pair_named("uyvy:y"), small, 4);
  const auto is_touched = [&frames](int i) {
    const std::vector<std::uint8_t> bytes = bytes_of(frames.destination(i));
    return std::any_of(bytes.begin(), bytes.end(), [](std::uint8_t b) { return b != 0; });
  };
  results_after([] {}, frames);  // clears them
  convert_next(frames)();
  EXPECT_TRUE(is_touched(0));
  EXPECT_FALSE(is_touched(1));
  copy_next(frames)();
  EXPECT_TRUE(is_touched(1));
  EXPECT_FALSE(is_touched(2));
  if (swscale_has(*frames.formats().source, *frames.formats().destination)) {
    convert_next_by_swscale(frames, resampling::nearest)();
    EXPECT_TRUE(is_touched(2));
    EXPECT_FALSE(is_touched(3));
  }
}

TEST(pair_jobs, convert_with_the_filter_that_is_asked_for) {
  const arena memory = memory_for(1);
  ring one = filled(memory, pair_named("uyvy:vuya"), small);
  EXPECT_TRUE(results_after(convert_next(one, {.filter = filter::nearest}), one) !=
              results_after(convert_next(one), one));
}

TEST(pair_jobs, a_tiny_picture_has_whole_groups_of_every_format) {
  for (const catalogue::format& f : catalogue::formats)
    for (std::size_t i = 0; i < f.plane_count(); ++i) {
      EXPECT_EQ(tiny.xres % f.planes[i].group_pixels, 0) << f.name;
      EXPECT_EQ(tiny.yres % f.planes[i].image_rows, 0) << f.name;
    }
}

TEST(pair_jobs, exist_for_every_pair) {
  const arena memory = memory_for(2);
  for (const format_pair& p : all_pairs()) {
    ring frames(memory, p, small, 2);
    EXPECT_NO_THROW(noise().fill_sources(frames)) << p.name();
    EXPECT_NO_THROW(convert_next(frames)()) << p.name();
    EXPECT_NO_THROW(copy_next(frames)()) << p.name();
    EXPECT_NO_THROW(convert_tiny_picture(p)()) << p.name();
  }
}

TEST(swscale, has_no_format_without_a_name_there) {
  EXPECT_FALSE(swscale_has(*catalogue::find_format("uyvy"), *catalogue::find_format("ycbcra")));
  EXPECT_FALSE(swscale_has(*catalogue::find_format("alpha"), *catalogue::find_format("alpha")));
}

TEST(swscale, writes_the_whole_picture_of_every_pair_that_it_has) {
  if (!swscale_has(*catalogue::find_format("uyvy"), *catalogue::find_format("bgra"))) GTEST_SKIP() << "no swscale";
  constexpr size without_padding{128, 18};
  const arena memory = memory_for(2);
  for (const format_pair& p : all_pairs()) {
    if (!swscale_has(*p.source, *p.destination)) continue;
    ring one = filled(memory, p, without_padding);
    for (const resampling chroma : {resampling::nearest, resampling::bilinear}) {
      const job work = convert_next_by_swscale(one, chroma);
      EXPECT_TRUE(results_after(work, one, 0) == results_after(work, one, 255)) << p.name();
    }
  }
}

}  // namespace
}  // namespace morvane::bench
