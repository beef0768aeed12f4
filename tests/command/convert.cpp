// morvane convert, on raw frames.
#include <sys/stat.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include "Processing.Morvane.h"
#include "catalogue/conversions.h"
#include "shell.h"

namespace morvane::tests {

namespace {

namespace fc = Processing::Morvane::format_conversion;

class convert : public command {};

// A frame in memory, with the same room behind every row of every plane.
class roomy_frame {
 public:
  roomy_frame(std::string_view format, int width, int height)
      : format_(*catalogue::find_format(format)), width_(width), height_(height) {
    for (std::size_t p = 0; p < format_.plane_count(); ++p)
      memory_.emplace_back(static_cast<std::size_t>(stride * format_.planes[p].rows(height)));
  }

  const catalogue::format& format() const { return format_; }

  void fill(const bytes& tight) {
    auto from = tight.begin();
    for_rows([&](std::uint8_t* row, std::ptrdiff_t count) {
      std::copy_n(from, count, row);
      from += count;
    });
  }
  bytes tight() {
    bytes result;
    for_rows([&](const std::uint8_t* row, std::ptrdiff_t count) { result.insert(result.end(), row, row + count); });
    return result;
  }

  catalogue::planes<std::uint8_t> planes() {
    catalogue::planes<std::uint8_t> result;
    for (std::size_t p = 0; p < memory_.size(); ++p) {
      result.data[p] = memory_[p].data();
      result.stride[p] = stride;
    }
    return result;
  }
  catalogue::planes<const std::uint8_t> read_only() {
    const catalogue::planes<std::uint8_t> all = planes();
    catalogue::planes<const std::uint8_t> result;
    std::copy(all.data.begin(), all.data.end(), result.data.begin());
    result.stride = all.stride;
    return result;
  }

 private:
  static constexpr int stride = 512;

  template <class Use>
  void for_rows(const Use& use) {
    for (std::size_t p = 0; p < memory_.size(); ++p)
      for (std::int64_t y = 0; y < format_.planes[p].rows(height_); ++y)
        use(memory_[p].data() + y * stride, static_cast<std::ptrdiff_t>(format_.planes[p].row_bytes(width_)));
  }

  const catalogue::format& format_;
  int width_;
  int height_;
  std::vector<bytes> memory_;
};

// The expectation: the same conversion, one row a call.
template <class Call>
bytes by_rows(const bytes& source, int source_row, int destination_row, const Call& call) {
  const auto rows = static_cast<int>(source.size()) / source_row;
  bytes result(static_cast<std::size_t>(rows * destination_row));
  for (int y = 0; y < rows; ++y) call(source.data() + y * source_row, result.data() + y * destination_row);
  return result;
}

bytes to_bgra(const bytes& uyvy, int width, Processing::Morvane::e_ycbcr_color_space matrix) {
  return by_rows(uyvy, 2 * width, 4 * width, [&](const std::uint8_t* from, std::uint8_t* to) {
    fc::uyvy::bgra(from, 2 * width, to, 4 * width, width, 1, matrix);
  });
}

bytes part(const bytes& all, std::size_t from, std::size_t count) {
  const auto start = all.begin() + static_cast<std::ptrdiff_t>(from);
  return {start, start + static_cast<std::ptrdiff_t>(count)};
}

// The upper eight bits of every sample of a v210 picture, whose rows are whole groups, cut to the width.
bytes unpacked(const bytes& v210, int width) {
  const int groups = (width + 5) / 6;
  bytes result;
  for (std::size_t row = 0; row < v210.size(); row += static_cast<std::size_t>(16 * groups))
    for (int i = 0; i < 2 * width; ++i) {
      const std::size_t word = row + static_cast<std::size_t>(i / 3 * 4);
      const auto value = static_cast<std::uint32_t>(v210[word] | v210[word + 1] << 8 | v210[word + 2] << 16 |
                                                    (v210[word + 3] & 63) << 24);
      result.push_back(static_cast<std::uint8_t>(value >> (i % 3 * 10) >> 2));
    }
  return result;
}

TEST_F(convert, a_frame_becomes_what_the_library_makes_of_it) {
  const bytes frame = noise(64 * 7 * 2);
  write("in.raw", frame);
  quietly("morvane convert -f uyvy -t bgra -s 64x7 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), to_bgra(frame, 64, Processing::Morvane::ccir_709));
  quietly("morvane convert -f uyvy -t bgra -s 64x7 --matrix 601 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), to_bgra(frame, 64, Processing::Morvane::ccir_601));
}

TEST_F(convert, frames_are_chosen_by_skip_and_frames) {
  const std::size_t frame = 16 * 4 * 2;
  const bytes all = noise(5 * frame);
  const bytes expected = to_bgra(all, 16, Processing::Morvane::ccir_709);
  write("in.raw", all);
  quietly("morvane convert -f uyvy -t bgra -s 16x4 in.raw all.raw");
  EXPECT_EQ(read("all.raw"), expected);
  quietly("morvane convert -f uyvy -t bgra -s 16x4 --skip 1 --frames 2 in.raw two.raw");
  EXPECT_EQ(read("two.raw"), part(expected, 2 * frame, 4 * frame));
  quietly("cat in.raw | morvane convert -f uyvy -t bgra -s 16x4 --skip 3 --frames 7 - - > last.raw");
  EXPECT_EQ(read("last.raw"), part(expected, 6 * frame, 4 * frame));
}

TEST_F(convert, pipes_carry_the_same_bytes_as_files) {
  write("in.raw", noise(3 * 320 * 180 * 2));
  quietly("morvane convert -f uyvy -t bgr -s 320x180 in.raw file.raw");
  quietly("cat in.raw | morvane convert -f uyvy -t bgr -s 320x180 - - | cat > pipe.raw");
  quietly("morvane convert -f uyvy -t bgr -s 320x180 - redirected.raw < in.raw");
  EXPECT_EQ(read("pipe.raw"), read("file.raw"));
  EXPECT_EQ(read("redirected.raw"), read("file.raw"));
}

TEST_F(convert, threads_make_no_difference) {
  for (const char* size : {"96x1", "96x2", "96x3", "96x37"}) {
    const int height = std::stoi(std::string(size).substr(3));
    write("in.raw", noise(static_cast<std::size_t>(3 * 256 * height)));
    const std::string line = std::string("morvane convert -f v210 -t bgr -s ") + size + " in.raw ";
    quietly(line + "1.raw -j 1");
    for (const char* threads : {"2", "3", "4"}) {
      quietly(line + "n.raw -j " + threads);
      EXPECT_EQ(read("n.raw"), read("1.raw")) << size << ' ' << threads;
    }
  }
}

TEST_F(convert, v210_pictures_are_whole) {
  for (const int width : {2, 4, 6, 8, 12, 14, 48, 50}) {
    const int rows = 5;
    const bytes frame = noise(static_cast<std::size_t>((width + 5) / 6 * 16 * rows));
    write("in.raw", frame);
    quietly("morvane convert -f v210 -t uyvy -s " + std::to_string(width) + "x5 in.raw out.raw");
    EXPECT_EQ(read("out.raw"), unpacked(frame, width)) << width;
  }
}

TEST_F(convert, yuyv_matrox_10_pictures_are_whole) {
  for (const int width : {2, 4, 14, 16, 18, 30, 32, 34, 48}) {
    const int rows = 5;
    const int row = (width + 15) / 16 * 40;
    const bytes frame = noise(static_cast<std::size_t>(row * rows));
    write("in.raw", frame);
    quietly("morvane convert -f yuyv_matrox_10 -t yuy2 -s " + std::to_string(width) + "x5 in.raw out.raw");
    bytes expected;
    for (int y = 0; y < rows; ++y)
      for (int i = 0; i < 2 * width; ++i)
        expected.push_back(frame[static_cast<std::size_t>(y * row + i / 32 * 40 + i % 32)]);
    EXPECT_EQ(read("out.raw"), expected) << width;
    quietly("morvane convert -f yuy2 -t yuyv_matrox_10 -s " + std::to_string(width) + "x5 out.raw back.raw");
    EXPECT_EQ(read("back.raw").size(), frame.size());
    quietly("morvane convert -f yuyv_matrox_10 -t yuy2 -s " + std::to_string(width) + "x5 back.raw again.raw");
    EXPECT_EQ(read("again.raw"), expected) << width;
  }
}

TEST_F(convert, one_stride_is_that_of_the_first_plane) {
  const bytes tight = noise(10 * 3 * 2);
  write("tight.raw", tight);
  quietly("morvane convert -f uyvy -t uyvy -s 10x3 --dst-stride 27 tight.raw padded.raw");
  const bytes padded = read("padded.raw");
  ASSERT_EQ(padded.size(), 3u * 27u);
  EXPECT_EQ(part(padded, 27, 20), part(tight, 20, 20));
  EXPECT_EQ(part(padded, 47, 7), bytes(7));
  quietly("morvane convert -f uyvy -t uyvy -s 10x3 --src-stride 27 padded.raw back.raw");
  EXPECT_EQ(read("back.raw"), tight);
}

// With this stride the library would take the image for one line.
TEST_F(convert, bgr_rows_stay_rows_at_a_stride_of_four_bytes_a_pixel) {
  write("in.raw", noise(16 * 4 * 2));
  quietly("morvane convert -f uyvy -t bgr -s 16x4 in.raw tight.raw");
  quietly("morvane convert -f uyvy -t bgr -s 16x4 --dst-stride 64 in.raw padded.raw");
  quietly("morvane convert -f bgr -t bgr -s 16x4 --src-stride 64 padded.raw back.raw");
  EXPECT_EQ(read("back.raw"), read("tight.raw"));
}

TEST_F(convert, a_chain_is_named_on_request) {
  const bytes frame = noise(2 * 16 * 4);
  write("in.raw", frame);
  const outcome o = run("morvane convert -v -f v210 -t yuy2 -s 12x4 in.raw out.raw");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(o.err, "morvane: v210 -> uyvy by v210::uyvy, uyvy -> yuy2 by uyvy::yuy2\n");
  bytes expected = unpacked(frame, 12);
  for (std::size_t i = 0; i < expected.size(); i += 2) std::swap(expected[i], expected[i + 1]);
  EXPECT_EQ(read("out.raw"), expected);
}

TEST_F(convert, a_format_to_itself_is_a_copy) {
  const bytes frame = noise(7 * 3 * 4);
  write("in.raw", frame);
  EXPECT_EQ(run("morvane convert -v -f rgba -t rgba -s 7x3 in.raw out.raw").err,
            "morvane: rgba -> rgba by rgba::rgba\n");
  EXPECT_EQ(read("out.raw"), frame);
  EXPECT_EQ(run("morvane convert -v -f bgr -t bgr -s 7x4 in.raw out.raw").err,
            "morvane: bgr as it is, without a conversion\n");
  EXPECT_EQ(read("out.raw"), frame);
}

TEST_F(convert, an_irregular_conversion_says_what_it_does) {
  const bytes frame = noise(8 * 4 * 4);
  write("in.raw", frame);
  const bytes expected = by_rows(
      frame, 32, 16, [](const std::uint8_t* from, std::uint8_t* to) { fc::bgra::uyvy(from, 32, to, 16, 8, 1); });
  const outcome named = run("morvane convert -f bgra -t uyvy -s 8x4 in.raw out.raw --via bgra::uyvy");
  EXPECT_EQ(named.exit_code, 0);
  EXPECT_EQ(named.err.rfind("morvane: bgra::uyvy is irregular: it composites over black", 0), 0u) << named.err;
  EXPECT_EQ(std::count(named.err.begin(), named.err.end(), '\n'), 1);
  EXPECT_EQ(read("out.raw"), expected);

  const outcome copied = run("morvane convert -f bgr -t bgr -s 8x4 --src-stride 32 in.raw out.raw --via bgr::bgr");
  EXPECT_EQ(copied.exit_code, 0);
  EXPECT_EQ(copied.err.rfind("morvane: bgr::bgr is irregular: it copies four bytes", 0), 0u) << copied.err;
}

TEST_F(convert, an_irregular_conversion_is_used_on_request_where_no_other_leads_on) {
  const bytes frame = noise(8 * 4 * 4);
  write("in.raw", frame);
  const outcome o = run("morvane convert --allow-irregular -f bgrx -t crcbyx -s 8x4 in.raw out.raw");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(o.err.rfind("morvane: bgrx::crcbyx is irregular: it stores luma and Cr", 0), 0u) << o.err;
  EXPECT_EQ(read("out.raw"), by_rows(frame, 32, 32, [](const std::uint8_t* from, std::uint8_t* to) {
              fc::bgrx::crcbyx(from, 32, to, 32, 8, 1);
            }));
}

TEST_F(convert, regular_conversions_are_preferred_where_both_lead_on) {
  write("in.raw", noise(8 * 4 * 4));
  EXPECT_EQ(run("morvane convert -v --allow-irregular -f bgrx -t yuy2 -s 8x4 in.raw out.raw").err,
            "morvane: bgrx -> uyvy by bgrx::uyvy with BT.709, uyvy -> yuy2 by uyvy::yuy2\n");
  EXPECT_EQ(run("morvane convert -v --allow-irregular -f bgra -t uyvy -s 8x4 in.raw out.raw").err,
            "morvane: bgra -> uyvy_a by bgra::uyvy_a with BT.709, uyvy_a -> uyvy by uyvy_a::uyvy\n");
}

TEST_F(convert, alpha_is_kept_where_a_way_keeps_it) {
  write("in.raw", noise(8 * 4 * 4));
  EXPECT_EQ(run("morvane convert -v -f ycbcra -t rgba -s 8x4 in.raw out.raw").err,
            "morvane: ycbcra -> uyvy_a by ycbcra::uyvy_a, uyvy_a -> rgba by uyvy_a::rgba with BT.709\n");
  EXPECT_EQ(run("morvane convert -v -f vuya -s 8x4 in.raw out.png").err,
            "morvane: vuya -> uyvy_a by vuya::uyvy_a, uyvy_a -> bgra by uyvy_a::bgra with BT.709\n");
}

// Every conversion by its own name gives what a call of it gives, also on threads.
TEST_F(convert, every_conversion_of_the_catalogue) {
  constexpr int width = 24;
  constexpr int height = 8;
  std::set<std::string_view> done;
  for (const catalogue::conversion& c : catalogue::conversions) {
    if (c.source.empty() || c.margin_pixels != 0 || !done.insert(c.name).second) continue;
    roomy_frame source(c.source, width, height);
    source.fill(noise(static_cast<std::size_t>(source.format().frame_bytes(width, height))));
    roomy_frame destination(c.destination, width, height);
    catalogue::call call;
    call.source = source.read_only();
    call.destination = destination.planes();
    call.xres = width / c.pixels_per_xres;
    call.yres = height / c.rows_per_yres;
    if (c.extra == catalogue::argument::color_space) call.argument = 709;
    c.convert(call);

    write("in.raw", source.tight());
    const outcome o = run("morvane convert -j 3 -s 24x8 in.raw out.raw -f " + std::string(c.source) + " -t " +
                          std::string(c.destination) + " --via " + std::string(c.name));
    EXPECT_EQ(o.exit_code, 0) << o.err;
    EXPECT_EQ(o.err.empty(), c.irregular.empty()) << o.err;
    EXPECT_EQ(read("out.raw"), destination.tight()) << c.name;
  }
}

TEST_F(convert, via_brings_its_own_matrix) {
  write("in.raw", noise(8 * 4 * 2));
  EXPECT_EQ(run("morvane convert -v -f yuy2 -t rgbx -s 8x4 --via uyvy::rgbx_601 in.raw out.raw").err,
            "morvane: yuy2 -> uyvy by yuy2::uyvy, uyvy -> rgbx by uyvy::rgbx_601 with BT.601\n");
  quietly("morvane convert -f yuy2 -t rgbx -s 8x4 --matrix 601 in.raw same.raw");
  EXPECT_EQ(read("out.raw"), read("same.raw"));
}

TEST_F(convert, bt2020_leads_from_p216_to_rgbx) {
  const bytes frame = noise(8 * 4 * 4);
  write("in.raw", frame);
  EXPECT_EQ(run("morvane convert -v -f p216 -t rgbx -s 8x4 --matrix 2020 in.raw out.raw").err,
            "morvane: p216 -> rgbx by p216::rgbx_2020 with BT.2020\n");
  bytes expected(8 * 4 * 4);
  fc::p216::rgbx_2020(frame.data(), 16, frame.data() + 64, 16, expected.data(), 32, 8, 4);
  EXPECT_EQ(read("out.raw"), expected);
  EXPECT_EQ(run("morvane convert -v -f p216 -t rgbx -s 8x4 in.raw other.raw").err,
            "morvane: p216 -> uyvy by p216::uyvy, uyvy -> rgbx by uyvy::rgbx with BT.709\n");
  EXPECT_NE(read("other.raw"), expected);
  quietly("morvane convert -f p216 -s 8x4 --matrix 2020 in.raw out.png");
  quietly("morvane compare -f rgbx -s 8x4 out.png out.raw > compared");
  EXPECT_EQ(run("morvane convert -v -f pa16 -t rgbx -s 8x2 --matrix 2020 --frames 1 /dev/zero out.raw").err,
            "morvane: pa16 -> p216 by pa16::p216, p216 -> rgbx by p216::rgbx_2020 with BT.2020\n");
  EXPECT_EQ(run("morvane convert -v -f p216 -t rgbx -s 8x4 --via p216::rgbx_2020 in.raw out.raw").err,
            "morvane: p216 -> rgbx by p216::rgbx_2020 with BT.2020\n");
}

TEST_F(convert, via_may_lead_a_longer_way) {
  write("in.raw", noise(8 * 4 * 2));
  EXPECT_EQ(run("morvane convert -v -f uyvy -t uyvy -s 8x4 --via uyvy::yuy2 in.raw out.raw").err,
            "morvane: uyvy -> yuy2 by uyvy::yuy2, yuy2 -> uyvy by yuy2::uyvy\n");
  EXPECT_EQ(read("out.raw"), read("in.raw"));
}

TEST_F(convert, time_prints_a_line_for_every_step) {
  write("in.raw", noise(2 * 16 * 4));
  const outcome o = run("morvane convert --time -f v210 -t bgra -s 12x4 in.raw out.raw");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(std::count(o.err.begin(), o.err.end(), '\n'), 3);
  EXPECT_NE(o.err.find("v210::uyvy"), std::string::npos);
  EXPECT_NE(o.err.find(" GB/s\n"), std::string::npos);
  quietly("morvane convert -f v210 -t bgra -s 12x4 in.raw same.raw");
  EXPECT_EQ(read("out.raw"), read("same.raw"));
}

TEST_F(convert, the_output_may_be_the_input) {
  const bytes frame = noise(3 * 8 * 4 * 2);
  write("frames.raw", frame);
  quietly("morvane convert -f uyvy -t bgra -s 8x4 frames.raw frames.raw");
  EXPECT_EQ(read("frames.raw"), to_bgra(frame, 8, Processing::Morvane::ccir_709));
  EXPECT_EQ(files(), std::vector<std::string>{"frames.raw"});
}

TEST_F(convert, a_replaced_file_keeps_its_mode_and_its_links) {
  write("in.raw", noise(8 * 4 * 2));
  quietly("touch target && chmod 640 target && ln -s target link");
  quietly("morvane convert -f uyvy -t yuy2 -s 8x4 in.raw link");
  EXPECT_EQ(read("target").size(), 64u);
  struct stat found {};
  ASSERT_EQ(::lstat((directory() + "/link").c_str(), &found), 0);
  EXPECT_TRUE(S_ISLNK(found.st_mode));
  ASSERT_EQ(::stat((directory() + "/target").c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 0777u, 0640u);
}

TEST_F(convert, the_names_of_other_programs_are_understood) {
  write("in.raw", noise(8 * 4 * 2));
  quietly("morvane convert -f uyvy -t bgrx -s 8x4 in.raw own.raw");
  quietly("morvane convert -f UYVY422 -t v4l2_pix_fmt_xbgr32 -s 8X4 in.raw theirs.raw");
  EXPECT_EQ(read("theirs.raw"), read("own.raw"));
}

}  // namespace

}  // namespace morvane::tests
