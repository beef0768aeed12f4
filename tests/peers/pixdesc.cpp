// The layouts of the formats that libavutil describes under the names of the catalogue.
#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/formats.h"

#if defined(MORVANE_WITH_SWSCALE)
extern "C" {
#include <libavutil/pixdesc.h>
}
#endif

namespace morvane::tests {
namespace {

#if defined(MORVANE_WITH_SWSCALE)

using catalogue::format;
using catalogue::plane;

// Where the samples of one component lie: of which plane, at which byte first, how many bytes apart, and below which
// bit of their bytes or words.
struct component_place {
  int plane = -1, offset = 0, step = 0, below_bit = 0;
  bool every_second_row = false;

  bool operator==(const component_place&) const = default;
};

void PrintTo(const component_place& c, std::ostream* out) {
  *out << "plane " << c.plane << " offset " << c.offset << " step " << c.step << " below bit " << c.below_bit
       << (c.every_second_row ? " 4:2:0" : "");
}

// From the byte on that the sample's lowest bit lies in.
component_place place_in_word(int sample, const plane& p, int index_of_plane) {
  const int bit = 10 * sample + p.unused_low_bits;
  return {index_of_plane, bit / 8, p.group_bytes, bit % 8 + 10};
}

component_place place_of(std::string_view component, const plane& p, int index_of_plane) {
  std::istringstream components{std::string(p.components)};
  const std::vector<std::string> all{std::istream_iterator<std::string>(components), {}};
  const auto bytes_of_sample = p.group_bytes / static_cast<int>(all.size());
  component_place place;
  int count = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i] != component) continue;
    if (p.has_words_of_pixels()) return place_in_word(static_cast<int>(i), p, index_of_plane);
    if (count++ == 0) place.offset = static_cast<int>(i) * bytes_of_sample;
  }
  if (count == 0) return {};
  place.plane = index_of_plane;
  place.step = p.group_bytes / count;
  place.below_bit = low_bits(p.sample) != 0 ? low_bits(p.sample) : 8 * bytes_of_sample;
  place.every_second_row = p.image_rows == 2;
  return place;
}

component_place place_of(std::string_view component, const format& f) {
  for (std::size_t i = 0; i < f.plane_count(); ++i)
    if (const component_place place = place_of(component, f.planes[i], static_cast<int>(i)); place.plane >= 0)
      return place;
  return {};
}

// libavutil numbers components: luma, Cb, Cr or red, green, blue, and then alpha.
std::vector<std::string_view> components_of(const format& f) {
  std::vector<std::string_view> components;
  if (f.model == catalogue::color_model::rgb)
    components = {"R", "G", "B"};
  else if (f.model == catalogue::color_model::luma)
    components = {"Y"};
  else
    components = {"Y", "Cb", "Cr"};
  if (f.alpha) components.push_back("A");
  return components;
}

component_place place_by_peer(const AVPixFmtDescriptor& d, std::size_t index) {
  const AVComponentDescriptor& c = d.comp[index];
  const bool is_chroma = (d.flags & AV_PIX_FMT_FLAG_RGB) == 0 && (index == 1 || index == 2);
  return {c.plane, c.offset, c.step, c.shift + c.depth, is_chroma && d.log2_chroma_h == 1};
}

void expect_layout(const format& f, const AVPixFmtDescriptor& d) {
  const std::vector<std::string_view> components = components_of(f);
  ASSERT_GE(static_cast<std::size_t>(d.nb_components), components.size()) << f.name;
  for (std::size_t i = 0; i < components.size(); ++i)
    EXPECT_EQ(place_of(components[i], f), place_by_peer(d, i)) << f.name << ", " << components[i];
  EXPECT_EQ(static_cast<std::size_t>(av_pix_fmt_count_planes(av_pix_fmt_desc_get_id(&d))), f.plane_count()) << f.name;
  constexpr int size = 16;  // whole groups of every format that is described
  EXPECT_EQ(av_get_padded_bits_per_pixel(&d) * size * size, 8 * f.frame_bytes(size, size)) << f.name;
  EXPECT_EQ((d.flags & AV_PIX_FMT_FLAG_RGB) != 0, f.model == catalogue::color_model::rgb) << f.name;
  EXPECT_EQ((d.flags & AV_PIX_FMT_FLAG_ALPHA) != 0, f.alpha) << f.name;
  EXPECT_EQ(d.flags & AV_PIX_FMT_FLAG_BE, 0U) << f.name;
  EXPECT_EQ(1 << d.log2_chroma_w, f.model == catalogue::color_model::ycbcr ? f.width_multiple : 1) << f.name;
  EXPECT_EQ(1 << d.log2_chroma_h, f.height_multiple) << f.name;
}

// Names of codecs, and those that are younger than some versions.
const std::set<std::string_view> names_that_may_be_missing = {
    "v210",   "r210",   "r10k",   "vuya",   "vuyx",   "ayuv",     "xv30le",    "xv36le",
    "p012le", "p212le", "p412le", "y212le", "y216le", "rgbf32le", "rgbaf32le", "rgbaf16le",
};

TEST(pixdesc_peer, describes_the_formats_alike) {
  int described = 0;
  for (const format& f : catalogue::formats) {
    if (f.ffmpeg.empty()) continue;
    const AVPixFmtDescriptor* d = av_pix_fmt_desc_get(av_get_pix_fmt(std::string(f.ffmpeg).c_str()));
    EXPECT_TRUE(d != nullptr || names_that_may_be_missing.contains(f.ffmpeg)) << f.name << ": " << f.ffmpeg;
    if (d == nullptr) continue;
    EXPECT_EQ(d->name, f.ffmpeg);
    expect_layout(f, *d);
    ++described;
  }
  EXPECT_GE(described, 55);
}

#else

TEST(pixdesc_peer, is_there) {
  GTEST_SKIP() << "libavutil is not installed";
}

#endif

}  // namespace
}  // namespace morvane::tests
