// What is left when the command is interrupted, or when nobody reads what it writes.
#include <algorithm>
#include <csignal>

#include "shell.h"

namespace morvane::tests {

namespace {

class interruption : public command {};

const std::vector<std::string> endless = {"convert", "-f", "uyvy", "-t", "bgra", "-s", "64x64", "/dev/zero", "out"};
const std::vector<std::string> endless_planes = {"convert", "-f",   "uyvy",      "-t",           "y_u_v_420",
                                                 "-s",      "8x64", "/dev/zero", "--dst-planes", "a,b,c"};

TEST_F(interruption, leaves_nothing_behind) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGXFSZ}) {
    EXPECT_EQ(interrupted(endless, 1, signal), signal);
    EXPECT_TRUE(files().empty()) << signal;
  }
}

TEST_F(interruption, leaves_no_plane_behind) {
  EXPECT_EQ(interrupted(endless_planes, 3, SIGINT), SIGINT);
  EXPECT_TRUE(files().empty());
}

TEST_F(interruption, leaves_what_was_there) {
  write("out", {1, 2, 3});
  EXPECT_EQ(interrupted(endless, 2, SIGTERM), SIGTERM);
  EXPECT_EQ(files(), std::vector<std::string>{"out"});
  EXPECT_EQ(read("out"), (bytes{1, 2, 3}));
}

TEST_F(interruption, is_ignored_where_the_caller_ignores_it) {
  const outcome o =
      run("trap '' HUP INT\n"
          "mkfifo in\n"
          "morvane convert -f y -t y -s 4x2 in out & writer=$!\n"
          "exec 3> in\n"
          "printf 01234567 >&3\n"
          "for i in $(seq 1000); do [ $(ls | wc -l) = 2 ] && break; sleep 0.01; done\n"
          "kill -HUP $writer; kill -INT $writer; sleep 0.1\n"
          "printf 89abcdef >&3\n"
          "exec 3>&-\n"
          "wait $writer");
  EXPECT_EQ(o.exit_code, 0) << o.err;
  EXPECT_EQ(read("out"), (bytes{'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'a', 'b', 'c', 'd', 'e', 'f'}));
}

class closed_pipe : public command {};

TEST_F(closed_pipe, ends_the_command_without_a_word) {
  for (const char* line : {"morvane convert -f uyvy -t bgra -s 640x360 /dev/zero -", "morvane conversions",
                           "morvane show -f y -s 2000x2000 /dev/urandom -",
                           "morvane compare /dev/zero /dev/zero -f y -s 8x8 --frames 1"}) {
    const outcome o = run("{ sleep 0.1; " + std::string(line) + "; echo $? > code; } | : ; sleep 0.3");
    EXPECT_EQ(o.err, "") << line;
    EXPECT_EQ(read("code"), (bytes{'1', '4', '1', '\n'})) << line;
  }
  EXPECT_EQ(run("morvane convert -f uyvy -t bgra -s 640x360 /dev/zero - | head -c 9 | wc -c").out, "9\n");
}

}  // namespace

}  // namespace morvane::tests
