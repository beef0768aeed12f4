// What --time measures.
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

}  // namespace

}  // namespace morvane::tests
