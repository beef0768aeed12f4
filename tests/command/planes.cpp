// Formats of several planes: in one file and in many, rows of 4:2:0, keys and their luma.
#include <string>

#include "library.h"

namespace morvane::tests {

namespace {

class planes : public command {
 protected:
  // A frame of uyvy and the planes that it has in 4:2:0.
  static constexpr int width = 8;
  static constexpr int height = 6;
  const bytes uyvy = noise(width * height * 2);
  bytes y = bytes(width * height);
  bytes cb = bytes(width * height / 4);
  bytes cr = bytes(width * height / 4);

  void SetUp() override {
    command::SetUp();
    const bytes all = converted(uyvy, "uyvy", "y_u_v_420", width, height);
    y = part(all, 0, y.size());
    cb = part(all, y.size(), cb.size());
    cr = part(all, y.size() + cb.size(), cr.size());
  }
};

TEST_F(planes, stand_in_one_file_in_the_order_of_the_format) {
  write("in.raw", uyvy);
  quietly("morvane convert -f uyvy -t y_u_v_420 -s 8x6 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), y + cb + cr);
}

TEST_F(planes, stand_each_in_a_file_of_its_own) {
  write("in.raw", uyvy);
  quietly("morvane convert -f uyvy -t y_u_v_420 -s 8x6 in.raw --dst-planes y,cb,cr");
  EXPECT_EQ(read("y"), y);
  EXPECT_EQ(read("cb"), cb);
  EXPECT_EQ(read("cr"), cr);
  write("all.raw", y + cb + cr);
  quietly("morvane convert -f I420 -t NV12 -s 8x6 --planes y,cb,cr joined");
  quietly("morvane convert -f I420 -t NV12 -s 8x6 --src-planes y,cb,cr --dst-planes luma,chroma");
  quietly("morvane convert -f I420 -t NV12 -s 8x6 all.raw expected && rm all.raw");
  EXPECT_EQ(read("joined"), read("expected"));
  EXPECT_EQ(read("luma") + read("chroma"), read("expected"));
  EXPECT_EQ(files(), (std::vector<std::string>{"cb", "chroma", "cr", "expected", "in.raw", "joined", "luma", "y"}));
}

TEST_F(planes, many_frames_of_them) {
  write("in.raw", noise(5 * 96));
  quietly("morvane convert -f uyvy -t y_uv_420 -s 8x6 in.raw --dst-planes y,cbcr");
  EXPECT_EQ(read("y").size(), 5u * 48);
  EXPECT_EQ(read("cbcr").size(), 5u * 24);
  quietly("morvane convert -f y_uv_420 -t y_uv_420 -s 8x6 --planes y,cbcr --skip 1 --frames 2 two");
  quietly("morvane convert -f uyvy -t y_uv_420 -s 8x6 --skip 1 --frames 2 in.raw expected");
  EXPECT_EQ(read("two"), read("expected"));
  quietly("cat cbcr | morvane convert -f y_uv_420 -t y_uv_420 -s 8x6 --planes y,- --skip 1 --frames 2 - > piped");
  EXPECT_EQ(read("piped"), read("expected"));
}

TEST_F(planes, strides_of_their_own) {
  write("in.raw", uyvy);
  quietly("morvane convert -f uyvy -t y_u_v_420 -s 8x6 in.raw out.raw --dst-stride 11,5,6");
  const bytes padded = read("out.raw");
  ASSERT_EQ(padded.size(), 11u * 6 + 5u * 3 + 6u * 3);
  EXPECT_EQ(part(padded, 11, 8), part(y, 8, 8));
  EXPECT_EQ(part(padded, 66 + 5, 4), part(cb, 4, 4));
  EXPECT_EQ(part(padded, 66 + 15 + 6, 4), part(cr, 4, 4));
  quietly("morvane convert -f y_u_v_420 -t y_uv_420 -s 8x6 out.raw --src-stride 11,5,6 back.raw");
  quietly("morvane convert -f uyvy -t y_uv_420 -s 8x6 in.raw expected.raw");
  EXPECT_EQ(read("back.raw"), read("expected.raw"));
}

TEST_F(planes, threads_share_rows_of_420_in_pairs) {
  for (const int rows : {1, 2, 3, 4, 6, 38}) {
    write("in.raw", noise(static_cast<std::size_t>(96 * 2 * rows)));
    const std::string size = " -s 96x" + std::to_string(rows);
    for (const char* route : {"-f uyvy -t y_u_v_420", "-f yuy2 -t y_uv_422 --matrix 601"}) {
      const std::string line = std::string("morvane convert ") + route + size + " in.raw ";
      quietly(line + "1.raw");
      quietly(line + "3.raw -j 3");
      EXPECT_EQ(read("3.raw"), read("1.raw")) << line;
    }
  }
}

TEST_F(planes, chroma_without_luma) {
  const bytes chroma = cb + cr;
  write("in.raw", chroma);
  quietly("morvane convert -f cb_cr_8_420 -t cbcr_16_422 -s 8x6 -j 2 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), converted(chroma, "cb_cr_8_420", "cbcr_16_422", 8, 6));
  write("in.raw", {1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 16, 17, 18});
  quietly("morvane convert -f cb_cr_16_422 -t cbcr_16_422 -s 4x2 -j 2 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), (bytes{1, 2, 11, 12, 3, 4, 13, 14, 5, 6, 15, 16, 7, 8, 17, 18}));
}

TEST_F(planes, of_rgb) {
  write("in.raw", uyvy);
  quietly("morvane convert -f uyvy -t r_g_b -s 8x6 -j 2 in.raw out.raw");
  EXPECT_EQ(read("out.raw"), converted(uyvy, "uyvy", "r_g_b", 8, 6));
}

TEST_F(planes, are_cropped_each_to_its_own_rows) {
  write("in.raw", y + cb + cr);
  quietly("morvane convert -f I420 -t y_uv_420 -s 8x6 --crop 4x2 in.raw out.raw");
  const bytes chroma = {cb[0], cr[0], cb[1], cr[1]};
  EXPECT_EQ(read("out.raw"), part(y, 0, 4) + part(y, 8, 4) + chroma);
}

TEST_F(planes, of_16_bits) {
  const bytes words = noise(8 * 6 * 2 * 3);
  const bytes luma = part(words, 0, 96);
  const bytes chroma = part(words, 96, 96);
  const bytes alpha = part(words, 192, 96);
  write("in.raw", words);
  quietly("morvane convert -f pa16 -t ya_uv_16 -s 8x6 -j 3 in.raw --dst-planes ya,cbcr");
  bytes expected;
  for (std::size_t i = 0; i < luma.size(); i += 2) expected = expected + part(luma, i, 2) + part(alpha, i, 2);
  EXPECT_EQ(read("ya"), expected);
  EXPECT_EQ(read("cbcr"), chroma);

  write("y", luma);
  write("cbcr", chroma);
  quietly("morvane convert -f P216 -t P010 -s 8x6 -j 2 --planes y,cbcr p010.raw --dst-stride 20,18");
  const bytes p010 = read("p010.raw");
  const bytes tight = converted(luma + chroma, "p216", "p010", 8, 6);
  ASSERT_EQ(p010.size(), 6u * 20 + 3u * 18);
  for (std::size_t row = 0; row < 6; ++row) EXPECT_EQ(part(p010, row * 20, 16), part(tight, row * 16, 16));
  for (std::size_t row = 0; row < 3; ++row) EXPECT_EQ(part(p010, 120 + row * 18, 16), part(tight, 96 + row * 16, 16));
  quietly("morvane show p010.raw stride.png -f p010 -s 8x6 --stride 20,18");
  quietly("morvane convert -f p010 -t p010 -s 8x6 p010.raw tight.raw --src-stride 20,18");
  quietly("morvane show tight.raw tight.png -f p010 -s 8x6 && cmp stride.png tight.png");
}

TEST_F(planes, luma_is_rescaled_on_request) {
  const bytes luma = {0, 16, 17, 100, 128, 233, 234, 255};
  write("in.raw", luma);
  quietly("morvane convert -f y -t uyvy -s 8x1 in.raw grey.raw");
  quietly("morvane convert -f uyvy -t y -s 8x1 --via uyvy::y --rescale grey.raw key.raw");
  EXPECT_EQ(read("key.raw"), (bytes{0, 0, 0, 97, 130, 253, 255, 255}));
  quietly("morvane convert -f uyvy -t y -s 8x1 grey.raw same.raw");
  EXPECT_EQ(read("same.raw"), luma);
  quietly("morvane convert -f y -t uyvy -s 8x1 --via y::uyvy --rescale in.raw video.raw");
  EXPECT_EQ(read("video.raw"), (bytes{128, 16, 128, 29, 128, 30, 128, 101, 128, 126, 128, 216, 128, 217, 128, 235}));
  write("key16.raw", {0, 0x10, 1, 0x10, 0, 0x80, 0xff, 0xea});  // 4096, 4097, 32768, 60159
  quietly("morvane convert -f y16 -t y16 -s 4x1 --via y16::y16 --rescale key16.raw full.raw");
  EXPECT_EQ(read("full.raw"), (bytes{0, 0, 1, 0, 0xec, 0x82, 0xfe, 0xff}));
}

TEST_F(planes, fill_and_key) {
  write("fill.raw", {10, 20, 30, 40, 11, 21, 31, 41});
  write("key.raw", {1, 100, 2, 101, 3, 235, 4, 16});
  const std::string line =
      "morvane convert -f uyvy_uyvy -t ya_uv -s 2x2 --via uyvy::ya_uv --allow-irregular --planes fill.raw,key.raw ";
  const outcome o = run(line + "out.raw");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(
      o.err,
      "morvane: uyvy::ya_uv is irregular: it converts the first pair of each line and leaves the rest unwritten\n");
  EXPECT_EQ(read("out.raw"), (bytes{20, 100, 40, 101, 21, 235, 41, 16, 10, 30, 11, 31}));
  run(line + "--rescale key_full.raw");
  EXPECT_EQ(read("key_full.raw"), (bytes{20, 97, 40, 98, 21, 255, 41, 0, 10, 30, 11, 31}));
}

TEST_F(planes, are_shown_and_compared_from_files_of_their_own) {
  write("in.raw", uyvy);
  write("alpha.raw", noise(48, 2));
  write("both.raw", uyvy + noise(48, 2));
  quietly("morvane show -f uyvy_a -s 8x6 --planes in.raw,alpha.raw a.png");
  quietly("morvane show -f uyvy_a -s 8x6 both.raw b.png && cmp a.png b.png");
  EXPECT_EQ(run("morvane compare -f uyvy_a -s 8x6 --planes in.raw,alpha.raw both.raw").exit_code, 0);
  EXPECT_EQ(run("morvane compare -f uyvy_a -s 8x6 --planes in.raw,alpha.raw in.raw").exit_code, 2);
  EXPECT_EQ(run("morvane compare -f uyvy_a -s 8x6 --planes in.raw,alpha.raw --planes in.raw,alpha.raw").exit_code, 0);
  write("alpha2.raw", noise(48, 3));
  const outcome o = run("morvane compare -f uyvy_a -s 8x6 --planes in.raw,alpha.raw --planes in.raw,alpha2.raw");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_NE(o.out.find("first difference: frame 0, plane alpha, A at x 0, y 0"), std::string::npos) << o.out;
}

}  // namespace

}  // namespace morvane::tests
