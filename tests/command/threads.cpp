// The threads that --threads gives, beside those that read and write.
#include <csignal>

#include "library.h"

namespace morvane::tests {

namespace {

class threads : public command {
 protected:
  // While it waits for its second frame.
  int threads_of(const std::string& arguments) const {
    const outcome o =
        run("mkfifo in\n"
            "morvane convert -f uyvy -t bgra -s 64x64 " +
            arguments +
            " in - > out & command=$!\n"
            "exec 3> in\n"
            "head -c 8192 /dev/zero >&3\n"
            "for i in $(seq 500); do [ \"$(wc -c < out)\" = 16384 ] && break; sleep 0.01; done\n"
            "ls /proc/$command/task | wc -l\n"
            "exec 3>&-\n"
            "wait $command && rm in out");
    EXPECT_EQ(o.exit_code, 0) << o.err;
    return std::stoi(o.out);
  }
};

TEST_F(threads, are_as_many_as_the_user_wants) {
  const int one = threads_of("-j 1");
  EXPECT_EQ(threads_of(""), one);
  EXPECT_EQ(threads_of("-j 2"), one + 1);
  EXPECT_EQ(threads_of("--threads 5"), one + 4);
}

TEST_F(threads, give_the_bytes_of_one_call) {
  const description from = described("v210", 95, 37);
  const description to = described("y_u_v_420", 95, 37);
  bytes frames;
  for (unsigned i = 0; i < 9; ++i) frames = frames + noise_of(from, i);
  write("in.raw", frames);
  const bytes expected = all_converted(frames, from, to);
  for (const char* line : {"in.raw out.raw -j 1", "in.raw out.raw -j 4", "in.raw - -j 3 > out.raw"}) {
    quietly(std::string("rm -f out.raw; morvane convert -f v210 -t y_u_v_420 -s 95x37 ") + line);
    EXPECT_EQ(read("out.raw"), expected) << line;
  }
  quietly("cat in.raw | morvane convert -f v210 -t y_u_v_420 -s 95x37 -j 2 - - | cat > out.raw");
  EXPECT_EQ(read("out.raw"), expected);
}

TEST_F(threads, end_with_an_interrupt_or_an_error) {
  const std::vector<std::string> endless = {"convert", "-f", "uyvy", "-t",        "bgra", "-s",
                                            "64x64",   "-j", "3",    "/dev/zero", "out"};
  EXPECT_EQ(interrupted(endless, 1, SIGTERM), SIGTERM);
  EXPECT_TRUE(files().empty());
  EXPECT_EQ(run("morvane convert -f uyvy -t bgra -s 64x64 -j 3 /dev/zero /dev/full").exit_code, 1);
  EXPECT_EQ(run("head -c 9000 /dev/zero | morvane convert -f uyvy -t bgra -s 64x64 -j 3 - out").exit_code, 1);
  EXPECT_TRUE(files().empty());
}

}  // namespace

}  // namespace morvane::tests
