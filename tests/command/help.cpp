// The help of every subcommand, and its example.
#include <sstream>

#include "shell.h"

namespace morvane::tests {

namespace {

class help : public command, public testing::WithParamInterface<const char*> {};

// The lines under every heading "Example".
std::vector<std::string> examples_of(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> result;
  bool heading = false;
  for (std::string line; std::getline(in, line); heading = line.rfind("Example", 0) == 0)
    if (heading) result.push_back(line);
  return result;
}

TEST_P(help, gives_examples_that_work) {
  const outcome o = run(std::string("morvane ") + GetParam() + " --help");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(o.err, "");
  const std::vector<std::string> examples = examples_of(o.out);
  ASSERT_FALSE(examples.empty()) << o.out;
  for (const std::string& example : examples) {
    EXPECT_NE(example.find(GetParam()), std::string::npos) << example;
    const outcome shown = run(example);
    EXPECT_EQ(shown.exit_code, 0) << example;
    EXPECT_EQ(shown.err, "");
  }
}

INSTANTIATE_TEST_SUITE_P(every_subcommand, help,
                         testing::Values("formats", "conversions", "info", "convert", "pattern", "show", "compare"),
                         [](const auto& of) { return std::string(of.param); });

}  // namespace

}  // namespace morvane::tests
