// morvane convert at work: live pipes, work that ends too early, and what is left of it then.
#include <unistd.h>

#include <algorithm>

#include "library.h"

namespace morvane::tests {

namespace {

const std::string line = "morvane convert -f uyvy -t bgra -s 8x4 ";

class streams : public command {
 protected:
  // Four frames of uyvy, of which each becomes 128 bytes of bgra.
  const bytes four = noise(4 * 8 * 4 * 2);
  const bytes four_bgra = converted(four, "uyvy", "bgra", 8, 4);

  void SetUp() override {
    command::SetUp();
    write("in", four);
  }
};

TEST_F(streams, a_frame_leaves_before_the_next_one_comes) {
  const outcome o = run(
      "mkfifo live out; { head -c 64 in; i=0; while [ ! -e seen ] && [ $i -lt 300 ]; do sleep 0.02; i=$((i+1)); done; "
      "tail -c 64 in; } > live & " +
      line + "live out & { head -c 128; touch seen; cat; } < out > both; wait; [ -e seen ] || exit 1");
  EXPECT_EQ(o.exit_code, 0) << o.err;
  EXPECT_EQ(read("both"), part(four_bgra, 0, 128) + part(four_bgra, 384, 128));
}

// The writer of the pipe waits until the frame was seen, or for two seconds and gives up.
TEST_F(streams, a_frame_leaves_while_the_input_is_open) {
  const outcome o =
      run("mkfifo live; { cat in; i=0; while [ ! -e seen ] && [ $i -lt 100 ]; do sleep 0.02; i=$((i+1)); done; "
          "[ -e seen ] || echo late > late; } > live & " +
          line + "live - | { head -c 512 > all; touch seen; }; wait");
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(read("all"), four_bgra);
  EXPECT_FALSE(exists("late"));
}

// Nobody reads the output until the sixth frame was taken from the input. A frame is longer than what a pipe holds, so
// the feeder is done when all but the end of the last frame was read.
TEST_F(streams, six_frames_are_read_while_the_first_cannot_leave) {
  const bytes six = noise(std::size_t{6} * 320 * 240 * 2);
  write("six", six);
  const outcome o =
      run("mkfifo live out; exec 4<> out\n"
          "morvane convert -f uyvy -t yuy2 -s 320x240 live - >&4 4>&- & command=$!\n"
          "if timeout 30 cat six > live; then head -c 921600 <&4 > all; else echo stuck; kill -9 $command; fi\n"
          "wait $command");
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(read("all"), converted(six, "uyvy", "yuy2", 320, 240));
}

TEST_F(streams, whole_frames_before_a_short_one_go_down_a_pipe) {
  const outcome o = run("head -c 200 in | " + line + "- - > out");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(o.err,
            "morvane: standard input ended inside frame 3: expected 64 bytes, one frame of uyvy 8x4, got 8; 3 whole "
            "frames are left in standard output\n");
  EXPECT_EQ(read("out"), part(four_bgra, 0, 384));
}

TEST_F(streams, whole_frames_before_a_short_one_are_kept_on_request) {
  const outcome piped = run("head -c 100 in | " + line + "--keep - out");
  EXPECT_EQ(piped.exit_code, 1);
  EXPECT_EQ(piped.err,
            "morvane: standard input ended inside frame 1: expected 64 bytes, one frame of uyvy 8x4, got 36; 1 whole "
            "frame is left in out\n");
  EXPECT_EQ(read("out"), part(four_bgra, 0, 128));
  const outcome file = run("head -c 200 in > short; " + line + "--keep short out");
  EXPECT_EQ(file.exit_code, 1);
  EXPECT_EQ(file.err,
            "morvane: short ended inside frame 3: expected 64 bytes, one frame of uyvy 8x4, got 8; 3 whole frames are "
            "left in out\n");
  EXPECT_EQ(read("out"), part(four_bgra, 0, 384));
  const outcome none = run("head -c 20 in > shorter; rm out; " + line + "--keep shorter out");
  EXPECT_EQ(none.exit_code, 1);
  EXPECT_EQ(none.err, "morvane: shorter ended inside frame 0: expected 64 bytes, one frame of uyvy 8x4, got 20\n");
  EXPECT_EQ(files(), (std::vector<std::string>{"in", "short", "shorter"}));
}

TEST_F(streams, planes_are_kept_each_in_its_file) {
  const outcome o = run("head -c 200 in | morvane convert -f uyvy -t y_uv_420 -s 8x4 --keep - --dst-planes y,uv");
  EXPECT_EQ(o.exit_code, 1);
  const bytes planes = converted(part(four, 0, 192), "uyvy", "y_uv_420", 8, 4);
  for (std::size_t frame = 0; frame < 3; ++frame) {
    EXPECT_EQ(part(read("y"), 32 * frame, 32), part(planes, 48 * frame, 32));
    EXPECT_EQ(part(read("uv"), 16 * frame, 16), part(planes, 48 * frame + 32, 16));
  }
  EXPECT_EQ(read("y").size() + read("uv").size(), planes.size());
}

// A file that may not grow beyond 4096 bytes, which is 29 frames of 140 bytes and a part of one.
const std::string small_disk =
    "trap '' XFSZ; ulimit -f 8; morvane convert -f y -t bgra -s 7x5 --frames 100 /dev/zero out ";

TEST_F(streams, a_full_disk_leaves_nothing) {
  const outcome o = run(small_disk);
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(o.err, "morvane: cannot write out: File too large\n");
  EXPECT_EQ(files(), std::vector<std::string>{"in"});
}

TEST_F(streams, a_full_disk_leaves_whole_frames_on_request) {
  const outcome o = run(small_disk + "--keep");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(o.err, "morvane: cannot write out: File too large; 29 whole frames are left in out\n");
  EXPECT_EQ(read("out").size(), 29u * 140);
  EXPECT_EQ(files(), (std::vector<std::string>{"in", "out"}));
}

// The first line; the shell adds one for a program that a signal has ended.
std::string said(const outcome& o) {
  return o.err.substr(0, o.err.find('\n'));
}

// Waits until a file has grown, and ends the program.
const std::string ended =
    "for i in $(seq 500); do [ \"$(cat out* 2>/dev/null | head -c 5000 | wc -c)\" = 5000 ] && break; sleep 0.01; done; "
    "kill $!; wait $!";

TEST_F(streams, an_interrupt_leaves_whole_frames_on_request) {
  const outcome o = run("morvane convert -f y -t bgra -s 7x5 --keep /dev/zero out & " + ended);
  EXPECT_EQ(o.exit_code, 143);
  const std::size_t size = read("out").size();
  EXPECT_GE(size, 5000u);
  EXPECT_EQ(size % 140, 0u);
  EXPECT_EQ(said(o), "morvane: interrupted; " + std::to_string(size / 140) + " whole frames are left in out");
}

TEST_F(streams, an_interrupt_leaves_whole_frames_in_a_pipe) {
  const outcome o = run("mkfifo pipe; cat pipe > out & morvane convert -f y -t bgra -s 7x5 /dev/zero - > pipe & " +
                        ended + "; code=$?; wait; exit $code");
  EXPECT_EQ(o.exit_code, 143);
  const std::size_t size = read("out").size();
  EXPECT_EQ(size % 140, 0u);
  EXPECT_EQ(said(o),
            "morvane: interrupted; " + std::to_string(size / 140) + " whole frames are left in standard output");
}

TEST_F(streams, an_interrupt_ends_what_waits_for_input) {
  const outcome o = run("mkfifo live; sleep 5 > live & keeper=$!; " + line +
                        "live out & sleep 0.2; kill $!; wait $!; code=$?; kill $keeper; exit $code");
  EXPECT_EQ(o.exit_code, 143);
  EXPECT_EQ(said(o), "morvane: interrupted");
  EXPECT_EQ(files(), (std::vector<std::string>{"in", "live"}));
}

TEST_F(streams, a_reader_that_has_seen_enough_hears_no_complaint) {
  const outcome endless =
      run("{ morvane convert -f uyvy -t bgra -s 640x360 /dev/zero -; echo $? > code; } | head -c 9 | wc -c");
  EXPECT_EQ(endless.err, "");
  EXPECT_EQ(std::stoi(endless.out), 9);
  EXPECT_EQ(read("code"), (bytes{'1', '4', '1', '\n'}));
  const outcome listing = run("{ sleep 0.1; morvane formats; echo $? > code; } | true");
  EXPECT_EQ(listing.err, "");
  EXPECT_EQ(read("code"), (bytes{'1', '4', '1', '\n'}));
}

// The input is open and silent when the output breaks.
TEST_F(streams, a_broken_pipe_ends_what_waits_for_input) {
  const outcome o = run("mkfifo live; { cat in; sleep 5; } > live & keeper=$!; { " + line +
                        "live -; echo $? > code; } | true; [ -e code ] && kill $keeper");
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(read("code"), (bytes{'1', '4', '1', '\n'}));
}

class in_a_closed_directory : public streams {
 protected:
  // Runs a line as a user who cannot make files in the directory, which has a file that he may write.
  outcome as_stranger(const std::string& what) const {
    const std::string user = ::geteuid() == 0 ? "setpriv --reuid 65534 --clear-groups " : "";
    return run("printf old > out; chmod 666 out; chmod a+rx .. . in; chmod a-w .; " + user + "sh -c '" + what +
               "'; code=$?; chmod u+w .; exit $code");
  }
  void SetUp() override {
    streams::SetUp();
    if (as_stranger("test -w out && ! test -w . && morvane --version").exit_code != 0)
      GTEST_SKIP() << "nobody else can be asked to run the command";
  }
};

TEST_F(in_a_closed_directory, a_file_is_written_in_place) {
  const outcome o = as_stranger(line + "in out");
  EXPECT_EQ(o.exit_code, 0) << o.err;
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(read("out"), four_bgra);
}

TEST_F(in_a_closed_directory, the_output_may_be_the_input) {
  const outcome o = as_stranger("morvane convert -f y -t y16 -s 1x1 out ./out");
  EXPECT_EQ(o.exit_code, 0) << o.err;
  EXPECT_EQ(read("out"), (bytes{0, 'o', 0, 'l', 0, 'd'}));
}

TEST_F(in_a_closed_directory, whole_frames_are_kept_in_a_file) {
  const outcome o = as_stranger("head -c 100 in | " + line + "--keep - out");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(read("out"), part(four_bgra, 0, 128));
}

TEST_F(in_a_closed_directory, no_file_is_made) {
  const outcome o = as_stranger(line + "in new");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(o.err, "morvane: cannot write new: Permission denied\n");
}

}  // namespace

}  // namespace morvane::tests
