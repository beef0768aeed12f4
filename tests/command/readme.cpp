// The commands that the README shows, as they are written there.
#include <cstddef>
#include <filesystem>
#include <fstream>

#include "shell.h"

namespace morvane::tests {

namespace {

// The lines of the README's blocks of shell that call the program.
std::vector<std::string> shown_commands() {
  std::ifstream readme(MORVANE_PROJECT_DIR "/README.md");
  std::vector<std::string> commands;
  bool inside = false;
  for (std::string line; std::getline(readme, line);) {
    if (line.starts_with("```"))
      inside = line == "```sh";
    else if (inside && line.starts_with("morvane "))
      commands.push_back(line);
  }
  return commands;
}

class readme : public command {};

TEST_F(readme, shows_commands_that_work) {
  std::filesystem::create_directory_symlink(MORVANE_PROJECT_DIR "/examples", directory() + "/examples");
  const std::vector<std::string> commands = shown_commands();
  EXPECT_GE(commands.size(), 11U);
  for (const std::string& line : commands) {
    const outcome o = run(line);
    const bool finds_differences = line.starts_with("morvane compare ");  // a photograph is not the same after 4:2:2
    EXPECT_EQ(o.exit_code, finds_differences ? 1 : 0) << line << "\n" << o.err;
    EXPECT_EQ(o.err, "") << line;
  }
}

}  // namespace

}  // namespace morvane::tests
