// Which other libraries have a pair of formats, and how near their results are to those of plans.
#include "peers/pair_peers.h"

#include <gtest/gtest.h>

#include "measure/beside_peers.h"
#include "report/targets.h"

namespace morvane::bench {
namespace {

const catalogue::format& format_of(const std::string& name) {
  return *format_called(name);
}

bool has(const std::vector<pair_peer>& peers, const std::string& library, const std::string& function) {
  return std::any_of(peers.begin(), peers.end(),
                     [&](const pair_peer& p) { return p.library == library && p.function == function; });
}

bool is_there(const std::string& library) {
  const auto has_some = [&](const char* from, const char* to) {
    const std::vector<pair_peer> peers = pair_peers(format_of(from), format_of(to));
    return std::any_of(peers.begin(), peers.end(), [&](const pair_peer& p) { return p.library == library; });
  };
  return has_some("i420", "bgra") || has_some("i420", "yuv444p");
}

likeness likeness_of_function(const std::string& pair, const std::string& function) {
  const format_pair p = pairs_named(pair).front();
  const arena memory(ring::bytes_for(p, in_cache));
  for (const pair_peer& other : pair_peers(*p.source, *p.destination))
    if (other.function == function) return likeness_of(memory, p, other);
  throw std::invalid_argument("no library has " + function + " for " + pair);
}

void expect_likeness(const std::string& pair, const std::string& function, agreement label, filter chroma) {
  const likeness found = likeness_of_function(pair, function);
  EXPECT_EQ(name_of(found.label), name_of(label)) << pair << ' ' << function;
  EXPECT_EQ(found.chroma, chroma) << pair << ' ' << function;
}

TEST(pair_peers, have_functions_of_their_tables) {
  const std::vector<pair_peer> peers = pair_peers(format_of("i420"), format_of("bgrx"));
  if (is_there("libyuv")) {
    EXPECT_TRUE(has(peers, "libyuv", "H420ToARGB"));
    EXPECT_TRUE(has(peers, "libyuv", "I420ToARGBMatrixFilter"));
    EXPECT_FALSE(has(peers, "libyuv", "H420ToABGR"));
  }
  EXPECT_EQ(has(peers, "OpenCV", "cvtColor"), is_there("OpenCV"));
  EXPECT_EQ(has(peers, "swscale", "sws_scale, bilinear"), is_there("swscale"));
  EXPECT_FALSE(has(peers, "zimg", "graph, point"));
}

TEST(pair_peers, of_zimg_have_planes_of_one_component_and_no_alpha) {
  if (!is_there("zimg")) GTEST_SKIP() << "built without zimg";
  const auto count = [](const char* from, const char* to) {
    return zimg_pair_peers(format_of(from), format_of(to)).size();
  };
  EXPECT_EQ(count("yuv420p10", "gbrp"), 2);
  EXPECT_EQ(count("gbrpf32", "yuv422p"), 2);
  EXPECT_EQ(count("nv12", "gbrp"), 0);
  EXPECT_EQ(count("i420", "bgra"), 0);
  EXPECT_EQ(count("yuva422p10", "gbrp"), 0);
}

TEST(pair_peers, refuse_a_table_with_a_name_that_no_format_has) {
  const stateless_pair_peer wrong[] = {{"uyvy", "bgra nothing", "Convert", [](const catalogue::call&) {}}};
  EXPECT_THROW(peers_of_pair("library", wrong, format_of("uyvy"), format_of("y")), std::invalid_argument);
}

// With red and blue or both kinds of chroma in each other's place, nothing would be close.
TEST(likeness, of_functions_that_do_the_same) {
  if (is_there("libyuv")) {
    expect_likeness("i420:nv12", "I420ToNV12", agreement::same_bytes, filter::nearest);
    expect_likeness("yuv420p10:p010", "I010ToP010", agreement::same_bytes, filter::nearest);
    expect_likeness("uyvy:bgra", "UYVYToARGB", agreement::close, filter::nearest);
    expect_likeness("rgb24:i420", "RAWToI420", agreement::close, filter::linear);
  }
  if (is_there("OpenCV")) {
    for (const char* pair : {"yv12:rgb24", "i420:bgra"})
      expect_likeness(pair, "cvtColor", agreement::close, filter::nearest);
    expect_likeness("nv21:rgba", "cvtColorTwoPlane", agreement::close, filter::nearest);
    expect_likeness("rgb24:rgbf32", "convertTo", agreement::close, filter::nearest);
  }
  if (is_there("zimg")) {
    expect_likeness("yuv422p10:gbrp10", "graph, bilinear", agreement::close, filter::linear);
    expect_likeness("gbrp:yuv422p", "graph, bilinear", agreement::close, filter::linear);
  }
}

// The mean difference of pictures of noise that nobody's function has who does the same job: swscale and zimg take
// nearest chroma from other places; with components in each other's place it is more than either.
double too_much(const pair_peer& other) {
  return other.library == "swscale" || other.library == "zimg" ? 16 : 3;
}

TEST(likeness, every_function_for_the_pairs_that_people_use_does_their_job) {
  const std::vector<format_pair> pairs = read_targets(std::filesystem::path(MORVANE_TARGETS)).pairs.used.pairs;
  std::size_t most = 0;
  for (const format_pair& p : pairs) most = std::max(most, ring::bytes_for(p, in_cache));
  const arena memory(most);
  for (const format_pair& p : pairs)
    for (const pair_peer& other : pair_peers(*p.source, *p.destination))
      EXPECT_LT(likeness_of(memory, p, other).mean_difference, too_much(other))
          << p.name() << ' ' << other.library << ' ' << other.function;
}

TEST(likeness, sees_another_job) {
  const format_pair p = pairs_named("i420:nv12").front();
  const arena memory(ring::bytes_for(p, in_cache));
  const pair_peer nothing{"library", "nothing", [](const size&) -> pair_job { return [](const catalogue::call&) {}; }};
  EXPECT_EQ(likeness_of(memory, p, nothing).label, agreement::other_algorithm);
  EXPECT_GT(likeness_of(memory, p, nothing).mean_difference, 16);
  const pair_peer off_by_one{"library", "off by one", [&p](const size& picture) -> pair_job {
                               return [&p, picture](const catalogue::call& c) {
                                 const plan way(
                                     {.format = p.source->id, .width = picture.xres, .height = picture.yres},
                                     {.format = p.destination->id, .width = picture.xres, .height = picture.yres});
                                 morvane_picture in{};
                                 in.struct_size = sizeof in;
                                 morvane_picture out = in;
                                 for (std::size_t i = 0; i < 3; ++i) {
                                   in.data[i] = const_cast<std::uint8_t*>(c.source.data[i]);
                                   in.stride[i] = c.source.stride[i];
                                   out.data[i] = c.destination.data[i];
                                   out.stride[i] = c.destination.stride[i];
                                   in.bytes[i] = out.bytes[i] = std::int64_t{picture.xres} * picture.yres;
                                 }
                                 way.run(in, out);
                                 c.destination.data[0][7] ^= 1;
                               };
                             }};
  EXPECT_EQ(likeness_of(memory, p, off_by_one).label, agreement::close);
}

TEST(measure_beside_peers, gives_every_figure) {
  const std::vector<pair_beside_peers> all =
      measure_beside_peers({.pairs = pairs_named("i420:bgra,uyvy:v210"),
                            .pictures = {size{128, 16}, size{128, 32}, size{256, 16}},
                            .bytes_of_ring = 1 << 18},
                           {});
  ASSERT_EQ(all.size(), 2);
  EXPECT_EQ(all[0].name(), "uyvy:v210");
  EXPECT_EQ(all[1].name(), "y_u_v_420:bgra");
  EXPECT_FALSE(all[1].steps.empty());
  EXPECT_EQ(all[1].peers.size(), pair_peers(format_of("i420"), format_of("bgra")).size());
  for (const pair_beside_peers& m : all)
    for (std::size_t s = 0; s < sizes.size(); ++s) {
      EXPECT_GT(m.nanoseconds[s], 0);
      EXPECT_GT(m.nearest_nanoseconds[s], 0);
      EXPECT_GT(m.copy_nanoseconds[s], 0);
      for (const peer_of_pair& p : m.peers) EXPECT_GT(p.nanoseconds[s], 0) << p.function;
    }
}

TEST(pair_beside_peers, compares_with_the_filter_of_the_other_library) {
  const pair_beside_peers m{
      .nanoseconds = {200, 100, 400}, .nearest_nanoseconds = {50, 40, 80}, .copy_nanoseconds = {100, 90, 300}};
  const peer_of_pair near{"a", "b", {agreement::close, filter::nearest}, {100, 60, 40}};
  peer_of_pair linear = near;
  linear.like.chroma = filter::linear;
  EXPECT_DOUBLE_EQ(m.share_of_memcpy(1), 0.9);
  EXPECT_DOUBLE_EQ(m.times(near, 0), 2);
  EXPECT_DOUBLE_EQ(m.times(near, 2), 0.5);
  EXPECT_DOUBLE_EQ(m.times(linear, 0), 0.5);
}

}  // namespace
}  // namespace morvane::bench
