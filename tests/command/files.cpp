// The files that the command reads and writes: their modes, their places, and where reading begins.
#include <sys/stat.h>
#include <unistd.h>

#include "shell.h"

namespace morvane::tests {

namespace {

class written_files : public command {
 protected:
  void SetUp() override {
    command::SetUp();
    write("in.raw", noise(3 * 8));
  }
  unsigned mode_of(const std::string& name) const {
    struct stat found {};
    return ::stat((directory() + "/" + name).c_str(), &found) == 0 ? found.st_mode & 07777u : 0;
  }
};

constexpr const char* copy = "morvane convert -f y -t y -s 4x2 in.raw ";

TEST_F(written_files, have_the_mode_that_the_user_wants_for_new_ones) {
  quietly("umask 022; " + std::string(copy) + "a && morvane show -f y -s 4x2 in.raw a.png");
  EXPECT_EQ(mode_of("a"), 0644u);
  EXPECT_EQ(mode_of("a.png"), 0644u);
  quietly("umask 027; " + std::string(copy) + "b");
  EXPECT_EQ(mode_of("b"), 0640u);
}

TEST_F(written_files, keep_their_mode_when_they_are_replaced) {
  quietly("touch a && chmod 604 a && umask 077 && " + std::string(copy) + "a");
  EXPECT_EQ(mode_of("a"), 0604u);
  EXPECT_EQ(read("a"), read("in.raw"));
}

// Only a user without all rights can be kept from a directory.
TEST_F(written_files, need_no_directory_in_which_others_can_be_put) {
  std::string as_user;
  if (::geteuid() == 0) {
    as_user = "setpriv --reuid=65534 --regid=65534 --clear-groups ";
    if (run("chmod 755 .. && " + as_user + "test -x \"$(command -v morvane)\"").exit_code != 0)
      GTEST_SKIP() << "no user without all rights may run the command here";
  }
  quietly("mkdir d && echo before > d/a && chmod 666 d/a && chmod 555 d && chmod 644 in.raw");
  quietly(as_user + copy + "d/a");
  EXPECT_EQ(read("d/a"), read("in.raw"));
  EXPECT_EQ(mode_of("d/a"), 0666u);
  const outcome o = run("head -c 9 in.raw | " + as_user + "morvane convert -f y -t y -s 4x2 - d/a");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(read("d/a"), read("in.raw"));
  quietly("chmod 755 d");
}

class read_files : public written_files {};

TEST_F(read_files, begin_where_standard_input_stands) {
  const bytes all = read("in.raw");
  quietly("{ dd bs=8 count=1 of=/dev/null 2> /dev/null; morvane convert -f y -t y -s 4x2 - rest; } < in.raw");
  EXPECT_EQ(read("rest"), bytes(all.begin() + 8, all.end()));
  quietly("{ dd bs=8 count=1 of=/dev/null 2> /dev/null; morvane convert -f y -t y -s 4x2 --skip 1 - rest; } < in.raw");
  EXPECT_EQ(read("rest"), bytes(all.begin() + 16, all.end()));
  const outcome o =
      run("{ dd bs=3 count=1 of=/dev/null 2> /dev/null; morvane convert -f y -t y -s 4x2 - rest; } < in.raw");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_NE(o.err.find("got 21 bytes"), std::string::npos) << o.err;
}

}  // namespace

}  // namespace morvane::tests
