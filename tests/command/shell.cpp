// The fixture that runs the command.
#include "shell.h"

#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace morvane::tests {

namespace {

std::string text_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

bytes noise(std::size_t count, unsigned seed) {
  std::mt19937 random(seed);
  bytes result(count);
  for (std::uint8_t& b : result) b = static_cast<std::uint8_t>(random());
  return result;
}

void command::SetUp() {
  std::string pattern = (std::filesystem::temp_directory_path() / "morvane-test-XXXXXX").string();
  ASSERT_NE(mkdtemp(pattern.data()), nullptr);
  root_ = pattern;
  std::filesystem::create_directory(directory());
}

void command::TearDown() {
  std::filesystem::remove_all(root_);
}

outcome command::run(const std::string& line) const {
  const std::string script = root_ + "/script";
  const std::string bin = std::filesystem::path(MORVANE_COMMAND).parent_path().string();
  std::ofstream(script) << "PATH='" << bin << "':$PATH\ncd '" << directory() << "' || exit 99\n" << line << '\n';
  const std::string call = "sh '" + script + "' </dev/null >'" + root_ + "/out' 2>'" + root_ + "/err'";
  const int status = std::system(call.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text_of(root_ + "/out"), text_of(root_ + "/err")};
}

void command::quietly(const std::string& line) const {
  const outcome o = run(line);
  EXPECT_EQ(o.exit_code, 0) << line;
  EXPECT_EQ(o.out, "") << line;
  EXPECT_EQ(o.err, "") << line;
}

void command::write(const std::string& name, const bytes& content) const {
  std::ofstream(directory() + "/" + name, std::ios::binary)
      .write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
}

bytes command::read(const std::string& name) const {
  const std::string content = text_of(directory() + "/" + name);
  return {content.begin(), content.end()};
}

bool command::exists(const std::string& name) const {
  return std::filesystem::exists(directory() + "/" + name);
}

std::vector<std::string> command::files() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(directory()))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace morvane::tests
