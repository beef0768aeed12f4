// morvane convert, on raw frames.
#include <sys/stat.h>

#include <algorithm>
#include <set>
#include <string>

#include "library.h"

namespace morvane::tests {

namespace {

class convert : public command {};

TEST_F(convert, a_frame_becomes_what_the_library_makes_of_it) {
  const bytes frame = noise(64 * 7 * 2);
  write("in.raw", frame);
  quietly("morvane convert -f uyvy -t bgra -s 64x7 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), converted(frame, "uyvy", "bgra", 64, 7));
}

struct choice {
  const char* words;
  description from;
  description to;
  options how;
};

// All of them change something, but for what is the default and what both sides have alike.
TEST_F(convert, colours_and_chroma_as_they_are_chosen) {
  const auto video = [](matrix m, range r) {
    description d = described("uyvy", 9, 5);
    d.matrix = m;
    d.range = r;
    return d;
  };
  const auto rgb = [](range r) {
    description d = described("bgra", 9, 5);
    d.range = r;
    return d;
  };
  const auto small = [](matrix m, range r) {
    description d = described("y_uv_420", 9, 5);
    d.matrix = m;
    d.range = r;
    return d;
  };
  const description plain = video(matrix::unsaid, range::unsaid);
  const description full_rgb = rgb(range::unsaid);
  const choice choices[] = {
      {"-f uyvy -t bgra --matrix 601", video(matrix::bt601, range::unsaid), full_rgb, {}},
      {"-f uyvy -t bgra --matrix BT.2020", video(matrix::bt2020, range::unsaid), full_rgb, {}},
      {"-f uyvy -t bgra --range full", video(matrix::unsaid, range::full), full_rgb, {}},
      {"-f uyvy -t bgra --range pc --rgb-range tv", video(matrix::unsaid, range::full), rgb(range::video), {}},
      {"-f bgra -t uyvy --matrix bt601 --range full", full_rgb, video(matrix::bt601, range::full), {}},
      {"-f bgra -t uyvy --rgb-range limited", rgb(range::video), plain, {}},
      {"-f uyvy -t NV12 --matrix 601 --range full",
       video(matrix::bt601, range::full),
       small(matrix::bt601, range::full),
       {}},
      {"-f uyvy -t NV12 --matrix 601 --to-matrix bt709",
       video(matrix::bt601, range::unsaid),
       small(matrix::bt709, range::unsaid),
       {}},
      {"-f uyvy -t NV12 --to-range full", plain, small(matrix::unsaid, range::full), {}},
      {"-f uyvy -t bgra --chroma nearest", plain, full_rgb, {.filter = filter::nearest}},
      {"-f uyvy -t bgra --siting center", plain, full_rgb, {.siting = siting::center}},
      {"-f uyvy -t bgra --chroma linear --siting left", plain, full_rgb, {}},
      {"-f bgra -t uyvy --background 255,128,0", full_rgb, plain, {.background = color{255, 128, 0}}},
  };
  for (const choice& c : choices) {
    const bytes frame = noise_of(c.from);
    write("in.raw", frame);
    quietly(std::string("morvane convert -s 9x5 in.raw out.raw ") + c.words);
    EXPECT_EQ(read("out.raw"), converted(frame, c.from, c.to, c.how)) << c.words;
    const std::string words = c.words;
    const bool changes =
        words.find("--siting left") == words.npos && words.find("NV12 --matrix 601 --range") == words.npos;
    const description usual_to = described(std::string(name_of(c.to.format)), 9, 5);
    const description usual_from = described(std::string(name_of(c.from.format)), 9, 5);
    EXPECT_EQ(read("out.raw") != converted(frame, usual_from, usual_to), changes) << c.words;
  }
}

TEST_F(convert, any_size) {
  for (const auto& [width, height] : {std::pair(1, 1), std::pair(1, 2), std::pair(3, 1), std::pair(7, 5)})
    for (const char* from : {"uyvy", "I420", "v210", "bgr"})
      for (const char* to : {"NV12", "p216", "rgba", "v210"}) {
        const std::string own(name_of(formats_called(from).front()));
        const std::string other(name_of(formats_called(to).front()));
        const bytes frame = noise_of(described(own, width, height));
        write("in.raw", frame);
        quietly(std::string("morvane convert in.raw out.raw -f ") + from + " -t " + to + " -s " +
                std::to_string(width) + "x" + std::to_string(height));
        EXPECT_EQ(read("out.raw"), converted(frame, own, other, width, height)) << from << ' ' << to;
      }
}

TEST_F(convert, frames_are_chosen_by_skip_and_frames) {
  const std::size_t frame = 16 * 4 * 2;
  const bytes all = noise(5 * frame);
  const bytes expected = converted(all, "uyvy", "bgra", 16, 4);
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

// Rows of 3456 bytes, which are more than the 3424 of its groups.
TEST_F(convert, v210_of_720_lines_as_cards_and_ffmpeg_write_it) {
  const bytes frame = noise(std::size_t{3456} * 720);
  write("in.raw", frame);
  quietly("morvane convert -f v210 -t uyvy -s 1280x720 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), converted(frame, "v210", "uyvy", 1280, 720));
  quietly("morvane convert -f uyvy -t v210 -s 1280x720 out.raw back.raw");
  EXPECT_EQ(read("back.raw").size(), frame.size());
  EXPECT_EQ(part(read("back.raw"), 3424, 32), bytes(32));
}

TEST_F(convert, rows_without_gaps_where_their_stride_says_so) {
  const bytes padded = noise(std::size_t{128} * 3);
  write("padded.raw", padded);
  write("tight.raw", part(padded, 0, 32) + part(padded, 128, 32) + part(padded, 256, 32));
  quietly("morvane convert -f v210 -t p216 -s 8x3 padded.raw expected.raw");
  quietly("morvane convert -f v210 -t p216 -s 8x3 --src-stride 32 tight.raw out.raw");
  EXPECT_EQ(read("out.raw"), read("expected.raw"));
}

TEST_F(convert, yuyv_matrox_10_pictures_are_whole) {
  for (const int width : {1, 2, 4, 14, 16, 18, 30, 32, 34, 48}) {
    const std::string size = std::to_string(width) + "x5";
    const bytes frame = noise_of(described("yuyv_matrox_10", width, 5));
    write("in.raw", frame);
    quietly("morvane convert -f yuyv_matrox_10 -t yuy2 -s " + size + " in.raw out.raw");
    EXPECT_EQ(read("out.raw"), converted(frame, "yuyv_matrox_10", "yuy2", width, 5)) << width;
    quietly("morvane convert -f yuy2 -t yuyv_matrox_10 -s " + size + " out.raw back.raw");
    EXPECT_EQ(read("back.raw").size(), frame.size());
    quietly("morvane convert -f yuyv_matrox_10 -t yuy2 -s " + size + " back.raw again.raw");
    EXPECT_EQ(read("again.raw"), read("out.raw")) << width;
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

TEST_F(convert, steps_and_losses_are_named_on_request) {
  write("in.raw", noise(8 * 2 * 6));
  EXPECT_EQ(run("morvane convert -v -f pa16 -t I420 -s 8x2 in.raw out.raw").err,
            "morvane: steps: read pa16, chroma 4:2:2 to 4:2:0, write y_u_v_420\n"
            "morvane: losses: 16 to 8 bits, chroma 4:2:2 to 4:2:0, alpha dropped\n");
  EXPECT_EQ(run("morvane convert -v -f rgba -t bgra -s 8x2 --frames 1 in.raw out.raw --src-stride 48").err,
            "morvane: steps: rearrange rgba as bgra\nmorvane: losses: none\n");
}

TEST_F(convert, what_formats_force_is_no_fault) {
  write("in.raw", noise(8 * 2 * 6));
  quietly("morvane convert -f pa16 -t I420 -s 8x2 in.raw out.raw");
  quietly("morvane convert -f pa16 -t y -s 8x2 in.raw out.raw");
}

TEST_F(convert, rearrangements_lose_nothing) {
  const bytes frame = noise(7 * 3 * 4);
  write("in.raw", frame);
  quietly(
      "morvane convert -f bgra -t rgba -s 7x3 in.raw there.raw && "
      "morvane convert -f rgba -t bgra -s 7x3 there.raw back.raw");
  EXPECT_EQ(read("back.raw"), frame);
  EXPECT_NE(read("there.raw"), frame);
  quietly("morvane convert -f rgba -t rgba -s 7x3 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), frame);
}

TEST_F(convert, ten_bits_stay_ten_bits) {
  const bytes frame = noise(std::size_t{128} * 4);
  write("in.raw", frame);
  quietly("morvane convert -f v210 -t p010 -s 48x4 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), converted(frame, "v210", "p010", 48, 4));
  const bytes luma = part(read("out.raw"), 0, 2 * 48 * 4);
  int lower = 0;
  for (std::size_t i = 0; i < luma.size(); i += 2) lower |= luma[i];
  EXPECT_EQ(lower, 0xc0);
}

TEST_F(convert, an_irregular_conversion_needs_consent_and_says_what_it_does) {
  const bytes frame = noise(8 * 4 * 4);
  write("in.raw", frame);
  const outcome named = run("morvane convert -f bgra -t uyvy -s 8x4 in.raw out.raw --via bgra::uyvy --allow-irregular");
  EXPECT_EQ(named.exit_code, 0);
  EXPECT_EQ(named.err.rfind("morvane: bgra::uyvy is irregular: it composites over black", 0), 0u) << named.err;
  EXPECT_EQ(std::count(named.err.begin(), named.err.end(), '\n'), 1);
  EXPECT_EQ(read("out.raw"), converted(frame, "bgra", "uyvy", 8, 4, {.via = "bgra::uyvy", .allow_irregular = true}));
  EXPECT_NE(read("out.raw"), converted(frame, "bgra", "uyvy", 8, 4));
}

// Every conversion by its own name gives what a call of it gives, also on threads.
TEST_F(convert, every_conversion_by_its_name) {
  std::set<std::string> done;
  for (const morvane_entry_point& e : entry_points()) {
    if (e.source == 0 || !done.insert(e.name).second) continue;
    const bool irregular = *e.irregular != '\0';
    const std::string from(name_of(e.source));
    const std::string to(name_of(e.destination));
    options how = {.via = e.name, .allow_irregular = irregular};
    description source = described(from, 24, 8);
    description destination = described(to, 24, 8);
    const int* last = std::find(std::begin(e.matrices), std::end(e.matrices), 0);
    if (last != e.matrices && std::find(std::begin(e.matrices), last, 709) == last)
      source.matrix = destination.matrix = static_cast<matrix>(e.matrices[0]);

    const bytes frame = noise_of(source);
    write("in.raw", frame);
    const outcome o = run("rm -f out.raw; morvane convert -j 3 -s 24x8 in.raw out.raw -f " + from + " -t " + to +
                          " --via " + e.name + (irregular ? " --allow-irregular" : ""));
    EXPECT_EQ(o.exit_code, 0) << o.err;
    EXPECT_EQ(o.err.empty(), !irregular) << o.err;
    EXPECT_EQ(read("out.raw"), converted(frame, source, destination, how)) << e.name;
  }
}

TEST_F(convert, via_is_reached_by_the_rules) {
  const bytes frame = noise(8 * 4 * 2);
  write("in.raw", frame);
  EXPECT_EQ(run("morvane convert -v -f yuy2 -t bgra -s 8x4 --via uyvy::rgbx_601 in.raw out.raw").err,
            "morvane: steps: yuy2 to uyvy by yuy2::uyvy, uyvy to rgbx by uyvy::rgbx_601, rearrange rgbx as bgra\n"
            "morvane: losses: none\n");
  const description from = {.format = format_named("uyvy"), .width = 8, .height = 4, .matrix = matrix::bt601};
  const bytes uyvy = converted(frame, "yuy2", "uyvy", 8, 4);
  const bytes rgbx = converted(uyvy, from, described("rgbx", 8, 4), {.via = "uyvy::rgbx_601"});
  EXPECT_EQ(read("out.raw"), converted(rgbx, "rgbx", "bgra", 8, 4));
  quietly("morvane convert -f uyvy -t uyvy -s 8x4 --via uyvy::yuy2 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), frame);
}

TEST_F(convert, stores_past_the_caches_on_request) {
  const bytes frame = noise(200 * 50 * 2);
  write("in.raw", frame);
  const bytes expected = converted(frame, "yuy2", "bgra", 200, 50);
  const auto steps = [&](const std::string& how) {
    const std::string said = run("morvane convert -v -f yuy2 -t bgra -s 200x50 in.raw out.raw " + how).err;
    EXPECT_EQ(read("out.raw"), expected) << how;
    return said.substr(0, said.find('\n'));
  };
  const std::string through = steps("");
  EXPECT_EQ(steps("--stores cached"), through);
  EXPECT_EQ(steps("--stores by-size"), through);
  EXPECT_EQ(steps("--stores streaming"), through + ", store past the caches");
}

// What lies between two plans is read at once.
TEST_F(convert, stores_past_the_caches_behind_the_last_plan_alone) {
  write("in.raw", noise(8 * 4 * 2));
  EXPECT_EQ(run("morvane convert -v --stores streaming -f yuy2 -t bgra -s 8x4 --via uyvy::rgbx_601 in.raw out.raw").err,
            "morvane: steps: yuy2 to uyvy by yuy2::uyvy, uyvy to rgbx by uyvy::rgbx_601, rearrange rgbx as bgra, store "
            "past the caches\n"
            "morvane: losses: none\n");
}

TEST_F(convert, time_prints_a_line_for_every_plan) {
  write("in.raw", noise(128 * 4));
  const outcome o = run("morvane convert --time -f v210 -t bgra -s 12x4 in.raw out.raw");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(std::count(o.err.begin(), o.err.end(), '\n'), 2);
  EXPECT_NE(o.err.find("\nv210 -> bgra  20 "), std::string::npos) << o.err;
  EXPECT_NE(o.err.find(" GB/s\n"), std::string::npos);
  quietly("morvane convert -f v210 -t bgra -s 12x4 in.raw same.raw");
  EXPECT_EQ(read("out.raw"), read("same.raw"));
  const outcome two =
      run("morvane convert --time -f yuy2 -t rgbx -s 12x4 --via uyvy::rgbx --frames 1 /dev/zero out.raw");
  EXPECT_EQ(std::count(two.err.begin(), two.err.end(), '\n'), 3) << two.err;
}

TEST_F(convert, crop_writes_the_top_left) {
  const bytes frame = noise(8 * 4 * 2);
  write("in.raw", frame);
  quietly("morvane convert -f uyvy -t bgr -s 8x4 in.raw whole.raw");
  quietly("morvane convert -f uyvy -t bgr -s 8x4 --crop 5x3 in.raw out.raw");
  const bytes whole = read("whole.raw");
  EXPECT_EQ(read("out.raw"), part(whole, 0, 15) + part(whole, 24, 15) + part(whole, 48, 15));
  quietly("morvane convert -f uyvy -t bgr -s 8x4 --crop 5x3 --dst-stride 16 in.raw wide.raw");
  EXPECT_EQ(part(read("wide.raw"), 14, 3), (bytes{whole[14], 0, whole[24]}));
}

TEST_F(convert, the_output_may_be_the_input) {
  const bytes frame = noise(3 * 8 * 4 * 2);
  write("frames.raw", frame);
  quietly("morvane convert -f uyvy -t bgra -s 8x4 frames.raw frames.raw");
  EXPECT_EQ(read("frames.raw"), converted(frame, "uyvy", "bgra", 8, 4));
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
