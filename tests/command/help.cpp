// The help of every subcommand, and its example.
#include "shell.h"

namespace morvane::tests {

namespace {

class help : public command, public testing::WithParamInterface<const char*> {};

TEST_P(help, gives_an_example_that_works) {
  const outcome o = run(std::string("morvane ") + GetParam() + " --help");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(o.err, "");
  const std::size_t heading = o.out.find("\nExample");
  ASSERT_NE(heading, std::string::npos) << o.out;
  const std::size_t start = o.out.find('\n', heading + 1) + 1;
  const std::string example = o.out.substr(start, o.out.find('\n', start) - start);
  EXPECT_NE(example.find(GetParam()), std::string::npos) << example;
  const outcome shown = run(example);
  EXPECT_EQ(shown.exit_code, 0) << example;
  EXPECT_EQ(shown.err, "");
}

INSTANTIATE_TEST_SUITE_P(every_subcommand, help,
                         testing::Values("formats", "conversions", "info", "convert", "show", "compare"),
                         [](const auto& of) { return std::string(of.param); });

}  // namespace

}  // namespace morvane::tests
