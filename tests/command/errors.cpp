// Everything that can go wrong: one line, the right exit code, and no file left behind.
#include <algorithm>
#include <ostream>

#include "shell.h"

namespace morvane::tests {

namespace {

struct mistake {
  const char* line;
  int exit_code;
  const char* message;
};

void PrintTo(const mistake& m, std::ostream* out) {
  *out << m.line;
}

class errors : public command, public testing::WithParamInterface<mistake> {
 protected:
  void SetUp() override {
    command::SetUp();
    write("four.uyvy", noise(4 * 8 * 4 * 2));
    write("bytes", noise(100));
    quietly("morvane convert -f uyvy -s 8x4 --frames 1 four.uyvy video.png");
    write("in.bgra", noise(7 * 2 * 4));
    quietly("morvane convert -f bgra -t bgra -s 7x2 in.bgra alpha.png");
    quietly("printf kept > kept; mkdir directory");
  }
};

TEST_P(errors, are_one_line_and_leave_nothing_behind) {
  const std::vector<std::string> before = files();
  const outcome o = run(GetParam().line);
  EXPECT_EQ(o.exit_code, GetParam().exit_code);
  EXPECT_EQ(o.err, std::string("morvane: ") + GetParam().message + "\n");
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(files(), before);
  EXPECT_EQ(read("kept"), (bytes{'k', 'e', 'p', 't'}));
}

constexpr mistake wrong_arguments[] = {
    {"morvane", 2, "A subcommand is required; see --help"},
    {"morvane transmogrify", 2, "unknown command transmogrify; see --help"},
    {"morvane info -s 8x4", 2, "--format is required; see --help"},
    {"morvane formats --yaml", 2, "The following argument was not expected: --yaml; see --help"},
    {"morvane info -f uyyv -s 8x4", 2, "unknown format uyyv; nearest: uyvy, yuy2, y_u_v_420"},
    {"morvane info -f AYUV -s 8x4", 2, "format AYUV may mean vuya or ayuv"},
    {"morvane info -f rgb565 -s 8x4", 2, "unknown format rgb565; nearest: rgbx, rgb, r_g_b"},
    {"morvane info -f gbrap14 -s 8x4", 2, "unknown format gbrap14; nearest: g_b_r_a, argb, abgr"},
    {"morvane info -f yuv422p14le -s 8x4", 2,
     "unknown format yuv422p14le; nearest: y_u_v_422_10u16, y_u_v_422_12u16, y_u_v_422_u16"},
    {"morvane info four.uyvy", 2,
     "taking four.uyvy for uyvy, by its name\nmorvane: the size of four.uyvy is missing; give it with -s WIDTHxHEIGHT"},
    {"morvane info bytes", 2, "the format of bytes is missing; give it with -f"},
    {"morvane info -f quicktime -s 8x4", 2, "unknown format quicktime; 'morvane formats' lists them"},
    {"morvane info -f uyvy -s 8", 2, "size 8 is not WIDTHxHEIGHT in pixels, such as 1920x1080"},
    {"morvane info -f uyvy -s 8x0", 2, "size 8x0 is not WIDTHxHEIGHT in pixels, such as 1920x1080"},
    {"morvane info -f uyvy -s 1048578x4", 2, "size 1048578x4 is not WIDTHxHEIGHT in pixels, such as 1920x1080"},
    {"morvane info -f uyvy -s 8x4294967300", 2, "size 8x4294967300 is not WIDTHxHEIGHT in pixels, such as 1920x1080"},
    {"morvane info -f uyvy -s 8x4x2", 2, "size 8x4x2 is not WIDTHxHEIGHT in pixels, such as 1920x1080"},
    {"morvane convert -t bgra -s 8x4 four.uyvy out", 2, "the format of four.uyvy is missing; give it with -f"},
    {"morvane convert -f uyvy -s 8x4 four.uyvy out", 2, "the format of out is missing; give it with -t"},
    {"morvane convert -f uyvy -t bgra four.uyvy out", 2,
     "the size of four.uyvy is missing; give it with -s WIDTHxHEIGHT"},
    {"morvane convert -f bgr -t rgbx -s 5x5 bytes out", 1,
     "bytes is not a whole number of frames: expected a multiple of 75 bytes, one frame of bgr 5x5, got 100 bytes; "
     "with a stride of 20 it has 1 frame"},
    {"morvane convert -f alpha -t bgra -s 8x4 four.uyvy out", 2, "bgra cannot be made of alpha"},
    {"morvane convert -f uyvy_uyvy -t bgra -s 8x4 four.uyvy out", 2, "bgra cannot be made of uyvy_uyvy"},
    {"morvane convert -f bgrx -t crcbyx -s 5x5 bytes out --via bgrx::crcbyx", 2,
     "bgrx::crcbyx is irregular: it stores luma and Cr of each line's last pixel alone, in the line's first pixel; "
     "--allow-irregular uses it"},
    {"morvane convert -f uyvy -t yuy2 -s 8x4 --allow-irregular four.uyvy out", 2,
     "--allow-irregular is for a conversion that --via names"},
    {"morvane convert -f uyvy -t yuy2 -s 8x4 --rescale four.uyvy out", 2,
     "--rescale is for a conversion that --via names"},
    {"morvane convert -f uyvy -t yuy2 -s 8x4 --rescale --via uyvy::yuy2 four.uyvy out", 2,
     "--rescale is set, and uyvy::yuy2 does not stretch luma"},
    {"morvane convert -f uyvy -t yuy2 -s 7x4 --via uyvy::yuy2 four.uyvy out", 2,
     "--via is \"uyvy::yuy2\", which needs a width that is a multiple of 2, not 7"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --via uyvy::brga four.uyvy out", 2,
     "unknown conversion uyvy::brga; nearest: uyvy::bgr, uyvy::bgra, uyvy::rgba"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --via black::uyvy four.uyvy out", 2,
     "black::uyvy fills a picture and converts none"},
    {"morvane convert -f alpha -t uyvy -s 8x4 --via v210::uyvy four.uyvy out", 2, "v210 cannot be made of alpha"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --via uyvy::bgra_601 --matrix 709 four.uyvy out", 2,
     "--via is \"uyvy::bgra_601\", which does not have the matrix BT.709"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --matrix 2021 four.uyvy out", 2,
     "--matrix 2021 is none of bt601, bt709 and bt2020"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --to-matrix bt four.uyvy out", 2,
     "--to-matrix bt is none of bt601, bt709 and bt2020"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --range wide four.uyvy out", 2,
     "--range wide is neither video (also limited, tv) nor full (also pc)"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --rgb-range wide four.uyvy out", 2,
     "--rgb-range wide is neither video (also limited, tv) nor full (also pc)"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --to-range wide four.uyvy out", 2,
     "--to-range wide is neither video (also limited, tv) nor full (also pc)"},
    {"morvane convert -f bgra -t uyvy -s 8x4 --background 1,2 four.uyvy out", 2,
     "--background 1,2 is not RED,GREEN,BLUE, each from 0 to 255"},
    {"morvane convert -f bgra -t uyvy -s 8x4 --background 1,2,256 four.uyvy out", 2,
     "--background 1,2,256 is not RED,GREEN,BLUE, each from 0 to 255"},
    {"morvane convert -f bgra -t uyvy -s 8x4 --background 1,2,3x four.uyvy out", 2,
     "--background 1,2,3x is not RED,GREEN,BLUE, each from 0 to 255"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --chroma cubic four.uyvy out", 2,
     "--chroma: cubic is neither linear nor nearest; see --help"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --siting top four.uyvy out", 2,
     "--siting: top is neither left nor center; see --help"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --stores uncached four.uyvy out", 2,
     "--stores uncached is neither cached nor streaming nor by-size"},
    {"morvane convert -f uyvy -t rgbx -s 8x4 --via uyvy::rgbx --matrix 2020 four.uyvy out", 2,
     "--via is \"uyvy::rgbx\", which does not have the matrix BT.2020"},
    {"morvane convert -f p216 -t rgbx -s 8x2 --via p216::rgbx_2020 --matrix 709 four.uyvy out", 2,
     "--via is \"p216::rgbx_2020\", which does not have the matrix BT.709"},
    {"morvane convert -f p010 -t rgbx -s 14x6 four.uyvy out", 1,
     "four.uyvy is not a whole number of frames: expected a multiple of 252 bytes, one frame of p010 14x6, got 256 "
     "bytes"},
    {"morvane convert -f uyvy -t bgra -s 8x4 -j 0 four.uyvy out", 2,
     "--threads: Value 0 not in range 1 to 256; see --help"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --frames 0 four.uyvy out", 2,
     "--frames: 0 is not a number of 1 or more; see --help"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --skip 4 four.uyvy out", 2,
     "four.uyvy has no frame 4: it has 4, numbered from 0"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --src-stride 15 four.uyvy out", 2,
     "stride 15 is too small: a row of uyvy 8x4 has 16 bytes"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --dst-stride 31 four.uyvy out", 2,
     "stride 31 is too small: a row of bgra 8x4 has 32 bytes"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --src-stride wide four.uyvy out", 2,
     "Could not convert: --src-stride = wide; see --help"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --src-stride 16,16 four.uyvy out", 2,
     "uyvy has 1 plane, uyvy; there are 2 strides"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 --dst-stride 8 four.uyvy out", 2,
     "y_uv_420 has 2 planes, y, cbcr; there is 1 stride"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --src-stride 4611686018427387904 four.uyvy out", 2,
     "stride 4611686018427387904 is too large: no file holds 4 rows so far apart"},
    {"morvane show -f uyvy -s 8x4 --stride 4611686018427387904 four.uyvy out.png", 2,
     "stride 4611686018427387904 is too large: no file holds 4 rows so far apart"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --src-stride 9223372036854775807 --skip 1 four.uyvy out", 2,
     "stride 9223372036854775807 is too large: no file holds 4 rows so far apart"},
    {"morvane convert -f uyvy -t bgra -s 8x1 --src-stride 9223372036854775807 four.uyvy out", 1,
     "four.uyvy is not a whole number of frames: expected a multiple of 9223372036854775807 bytes, one frame of uyvy "
     "8x1, got 256 bytes"},
    {"morvane convert -f y_uv_420 -t uyvy -s 8x2 --src-stride 4611686018427387904,8 four.uyvy out", 2,
     "stride 4611686018427387904 is too large: no file holds 2 rows so far apart"},
    {"morvane convert -f y_uv_420 -t uyvy -s 8x1 --src-stride 9223372036854775807,8 four.uyvy out", 2,
     "stride 8 is too large: no file holds 1 row so far apart"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 --dst-stride 8,7 four.uyvy out", 2,
     "stride 7 is too small: a row of plane cbcr of y_uv_420 8x4 has 8 bytes"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 four.uyvy --dst-planes y,cb,cr", 2,
     "y_uv_420 has 2 planes, y, cbcr; there are 3 files"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 four.uyvy --dst-planes y,", 2, "a file in y, has no name"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 four.uyvy --dst-planes y,y", 2,
     "two planes cannot be written to one file, y"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 four.uyvy --dst-planes y,./y", 2,
     "two planes cannot be written to one file, y and ./y"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 four.uyvy --dst-planes kept,directory/../kept", 2,
     "two planes cannot be written to one file, kept and directory/../kept"},
    {"ln kept link; morvane convert -f uyvy -t y_uv_420 -s 8x4 four.uyvy --dst-planes kept,link; code=$?; rm link; "
     "exit $code",
     2, "two planes cannot be written to one file, kept and link"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 four.uyvy --dst-planes -,-", 2,
     "two planes cannot be written to one file, -"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 four.uyvy --dst-planes y.png,uv.png", 2,
     "y.png is a PNG, which holds a picture and not one of its planes"},
    {"morvane convert -f uyvy_a -t uyvy -s 8x4 --planes -,- out", 2, "standard input can be one of the planes only"},
    {"morvane convert -f uyvy_a -t uyvy -s 8x4 --planes four.uyvy,bytes four.uyvy out", 2,
     "out is one file too many: a list of planes takes the place of a file"},
    {"morvane convert -f uyvy -t bgra -s 8x4 four.uyvy", 2, "OUT is required; see --help"},
    {"morvane convert -f uyvy -t bgra -s 8x4", 2, "IN is required; see --help"},
    {"morvane convert -f uyvy_a -s 8x4 --planes four.uyvy,/dev/zero out", 2,
     "the format of out is missing; give it with -t"},
    {"morvane convert -f uyvy -t bgra -s 8x4 --crop 9x4 four.uyvy out", 2, "cannot crop to 9x4: the picture is 8x4"},
    {"morvane convert -f uyvy -t bgra video.png out", 2, "video.png is a PNG, which is read as RGB, not as uyvy"},
    {"morvane convert -t bgrx -s 4x4 video.png out", 2, "video.png is 8x4, not 4x4"},
    {"morvane convert -t uyvy video.png out.png", 2, "out.png is a PNG, which holds RGB, not uyvy"},
    {"morvane show -f cbcr_16_422 -s 8x4 four.uyvy out.png", 2,
     "cbcr_16_422 is chroma without luma and makes no picture; --plane shows a plane or component of it"},
    {"morvane show -f uyvy_uyvy -s 8x4 four.uyvy out.png --plane A", 2,
     "uyvy_uyvy has no plane or component A; it has Cb, Y, Cr, fill, key"},
    {"morvane show -f uyvy -s 8x4 four.uyvy out.jpg", 2, "the picture is a PNG: out.jpg must end in .png"},
    {"morvane show -f uyvy -s 8x4 four.uyvy out.png --plane A", 2,
     "uyvy has no plane or component A; it has Cb, Y, Cr, uyvy"},
    {"morvane show -f uyvy -s 8x4 four.uyvy out.png --frame 4", 2,
     "four.uyvy has no frame 4: it has 4, numbered from 0"},
    {"morvane pattern", 2, "PATTERN is required; see --help"},
    {"morvane pattern bars -f uyvy -s 8x4", 2, "OUT is required; see --help"},
    {"morvane pattern bars -f uyvy_a -s 8x4 --planes fill,key out", 2,
     "out is one file too many: a list of planes takes the place of a file"},
    {"morvane pattern bats -f uyvy -s 8x4 out", 2, "unknown pattern bats; there are bars, ramp, zone and key"},
    {"morvane pattern bars -s 8x4 out", 2, "the format of out is missing; give it with -f"},
    {"morvane pattern bars -f uyvy out", 2, "the size of the pattern is missing; give it with -s WIDTHxHEIGHT"},
    {"morvane pattern bars -f quicktime -s 8x4 out", 2, "unknown format quicktime; 'morvane formats' lists them"},
    {"morvane pattern bars -f uyvy -s 0x4 out", 2, "size 0x4 is not WIDTHxHEIGHT in pixels, such as 1920x1080"},
    {"morvane pattern zone -f uyvy -s 8x4 --frames 0 out", 2, "--frames: 0 is not a number of 1 or more; see --help"},
    {"morvane pattern zone -s 8x4 --frames 2 out.png", 2, "out.png is a PNG, which holds one frame, and --frames is 2"},
    {"morvane pattern bars -f uyvy -s 8x4 out.png", 2, "out.png is a PNG, which holds RGB, not uyvy"},
    {"morvane pattern bars -f uyvy -s 8x4 --y4m out.png", 2, "--y4m writes YUV4MPEG2, and out.png is a PNG"},
    {"morvane pattern bars -f uyvy -s 8x4 --matrix 2021 out", 2, "--matrix 2021 is none of bt601, bt709 and bt2020"},
    {"morvane pattern bars -f uyvy -s 8x4 --stride 15 out", 2,
     "stride 15 is too small: a row of uyvy 8x4 has 16 bytes"},
    {"morvane pattern bars -f uyvy -s 8x4 -j 257 out", 2, "--threads: Value 257 not in range 1 to 256; see --help"},
    {"morvane pattern bars -f uyvy_a -s 8x4 --planes kept,./kept", 2,
     "two planes cannot be written to one file, kept and ./kept"},
    {"morvane compare -f uyvy -s 8x4 - -", 2, "standard input can be one of the two files only"},
    {"morvane compare -f uyvy_a -s 8x4 --planes -,bytes --planes four.uyvy,-", 2,
     "standard input can be one of the two files only"},
    {"morvane compare -f uyvy_a -s 8x4 --planes -,bytes --planes bytes,- --planes bytes,-", 2,
     "--planes is given 3 times, for two files"},
    {"morvane compare -f uyvy_a -s 8x4 --planes four.uyvy,bytes", 2, "B is required; see --help"},
};

constexpr mistake failed_files[] = {
    {"morvane convert -f uyvy -t bgra -s 8x4 nothing out", 1, "cannot read nothing: No such file or directory"},
    {"morvane convert -f uyvy -t bgra -s 8x4 directory out", 1, "cannot read directory: Is a directory"},
    {"morvane convert -t bgra nothing.png out", 1, "cannot read nothing.png: No such file or directory"},
    {"cp bytes /tmp/$$.png; morvane convert -t bgra /tmp/$$.png out 2>&1 | sed s/[0-9]*.png/X/ >&2; rm /tmp/$$.png; "
     "exit 1",
     1, "cannot read /tmp/X as a PNG: Not a PNG file"},
    {"morvane convert -f uyvy -t bgra -s 8x4 four.uyvy nowhere/out", 1,
     "cannot write nowhere/out: No such file or directory"},
    {"morvane convert -f uyvy -t bgra -s 8x4 four.uyvy kept/out", 1, "cannot write kept/out: Not a directory"},
    {"morvane convert -f uyvy -t bgra -s 8x4 four.uyvy directory", 1, "cannot write directory: Is a directory"},
    {"morvane convert -f uyvy -t bgra -s 8x4 four.uyvy /dev/full", 1,
     "cannot write /dev/full: No space left on device"},
    {"morvane convert -f uyvy -t bgra -s 8x4 four.uyvy - > /dev/full", 1,
     "cannot write standard output: No space left on device"},
    {"morvane convert -f uyvy -s 8x4 four.uyvy out.png", 1,
     "out.png holds one frame and the input has more; --skip and --frames 1 choose one"},
    {"morvane convert -f uyvy -t bgra -s 8x4 - out", 1,
     "standard input is empty: expected 64 bytes, one frame of uyvy 8x4"},
    {"head -c 100 four.uyvy | morvane convert -f uyvy -t bgra -s 8x4 - out", 1,
     "standard input ended inside frame 1: expected 64 bytes, one frame of uyvy 8x4, got 36"},
    {"head -c 100 four.uyvy | morvane convert -f uyvy -t bgra -s 8x4 - kept", 1,
     "standard input ended inside frame 1: expected 64 bytes, one frame of uyvy 8x4, got 36"},
    {"cat four.uyvy | morvane convert -f uyvy -t bgra -s 8x4 --skip 5 - out", 1,
     "standard input has no frame 5: it has 4, numbered from 0"},
    {"morvane convert -f uyvy -t bgra -s 1048576x1048576 --frames 1 /dev/zero out 2>&1 | "
     "sed 's/[0-9]\\{4\\}[.].* MB are/ GB, and few are/' >&2; exit 1",
     1, "frames of this size need 659 GB, and few are free"},
    {"morvane pattern bars -f bgra -s 1048576x1048576 out 2>&1 | "
     "sed 's/[0-9]\\{5\\}[.].* MB are/ GB, and few are/' >&2; exit 1",
     1, "frames of this size need 131 GB, and few are free"},
    {"morvane pattern bars -f bgra -s 8x4 /dev/full", 1, "cannot write /dev/full: No space left on device"},
    {"morvane pattern bars -f bgra -s 8x4 nowhere/out", 1, "cannot write nowhere/out: No such file or directory"},
    {"morvane convert -f uyvy_a -t uyvy -s 8x4 --planes four.uyvy,nothing out", 1,
     "cannot read nothing: No such file or directory"},
    {"morvane convert -f uyvy_a -t uyvy -s 8x4 --planes four.uyvy,bytes out", 1,
     "bytes is not a whole number of frames: expected a multiple of 32 bytes, plane alpha of one frame of uyvy_a 8x4, "
     "got 100 bytes"},
    {"head -c 96 four.uyvy > alpha; morvane convert -f uyvy_a -t uyvy -s 8x4 --planes four.uyvy,alpha out; "
     "code=$?; rm alpha; exit $code",
     1, "planes with different numbers of frames: alpha has 3, another 4"},
    {"head -c 96 four.uyvy | morvane convert -f uyvy_a -t uyvy -s 8x4 --planes four.uyvy,- out", 1,
     "standard input has fewer frames than four.uyvy"},
    {"head -c 192 four.uyvy | morvane convert -f uyvy_a -t uyvy -s 8x4 --planes -,/dev/zero out", 1,
     "standard input has fewer frames than /dev/zero"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 four.uyvy --dst-planes y,nowhere/uv", 1,
     "cannot write nowhere/uv: No such file or directory"},
    {"morvane convert -f uyvy -t y_uv_420 -s 8x4 four.uyvy --dst-planes kept,/dev/full", 1,
     "cannot write /dev/full: No space left on device"},
    {"morvane compare -f uyvy -s 8x4 four.uyvy nothing", 2, "cannot read nothing: No such file or directory"},
    {"morvane compare -f uyvy -s 8x4 four.uyvy bytes", 2,
     "bytes is not a whole number of frames: expected a multiple of 64 bytes, one frame of uyvy 8x4, got 100 bytes; "
     "with a stride of 25 it has 1 frame"},
};

// Sanitizers map more addresses than the limit leaves.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
constexpr mistake scarce_memory[] = {
    {"ulimit -v 200000; morvane convert -f uyvy -t bgra -s 10000x4000 --frames 1 /dev/zero out 2>&1 | "
     "sed 's/[.].*//' >&2; exit 1",
     1, "frames of this size need 240"},
    {"ulimit -v 200000; morvane convert -f uyvy -t bgra -s 8x4 -j 250 --frames 1 /dev/zero out", 1,
     "--threads is 250, and so many cannot be started"},
    {"ulimit -v 200000; morvane pattern bars -f uyvy -s 8x4 -j 250 out", 1,
     "--threads is 250, and so many cannot be started"},
};
INSTANTIATE_TEST_SUITE_P(scarce_memory, errors, testing::ValuesIn(scarce_memory));
#endif

INSTANTIATE_TEST_SUITE_P(arguments, errors, testing::ValuesIn(wrong_arguments));
INSTANTIATE_TEST_SUITE_P(files, errors, testing::ValuesIn(failed_files));

}  // namespace

}  // namespace morvane::tests
