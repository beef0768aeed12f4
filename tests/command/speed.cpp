// What --time measures, and the threads that --threads gives.
#include <sstream>

#include "shell.h"

namespace morvane::tests {

namespace {

class timing : public command {};

TEST_F(timing, gives_the_speed_of_the_bytes_read_and_written_in_the_best_time) {
  write("in.raw", noise(2 * 640 * 360 * 2));
  const outcome o = run("morvane convert --time -f uyvy -t bgra -s 640x360 in.raw out.raw");
  ASSERT_EQ(o.exit_code, 0) << o.err;
  std::istringstream in(o.err.substr(o.err.find('\n') + 1));
  std::string source, arrow, destination, unit;
  int runs = 0;
  double best = 0, mean = 0, speed = 0;
  in >> source >> arrow >> destination >> runs >> best >> unit >> mean >> unit >> speed;
  EXPECT_EQ(runs, 21) << o.err;
  EXPECT_GE(mean, best);
  ASSERT_GT(best, 0);
  const double bytes = 640 * 360 * (2 + 4);
  EXPECT_NEAR(speed, bytes / (best * 1e-3) * 1e-9, 0.01 + speed * 0.0006 / best) << o.err;
}

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

}  // namespace

}  // namespace morvane::tests
