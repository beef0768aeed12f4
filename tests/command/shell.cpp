// The fixture that runs the command.
#include "shell.h"

#include <pty.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
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

std::string command::script_of(const std::string& line) const {
  const std::string script = root_ + "/script";
  const std::string bin = std::filesystem::path(MORVANE_COMMAND).parent_path().string();
  std::ofstream(script) << "PATH='" << bin << "':$PATH\ncd '" << directory() << "' || exit 99\n" << line << '\n';
  return script;
}

outcome command::run(const std::string& line) const {
  const std::string call = "sh '" + script_of(line) + "' </dev/null >'" + root_ + "/out' 2>'" + root_ + "/err'";
  const int status = std::system(call.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text_of(root_ + "/out"), text_of(root_ + "/err")};
}

std::string command::run_at_terminal(const std::string& line, unsigned short columns) const {
  const std::string script = script_of(line);
  const winsize size = {.ws_row = 25, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
  int terminal = -1;
  const pid_t child = ::forkpty(&terminal, nullptr, nullptr, &size);
  if (child == 0) {
    ::execlp("sh", "sh", script.c_str(), nullptr);
    ::_exit(127);
  }
  std::string shown;
  std::array<char, 4096> part{};
  for (ssize_t got = 0; (got = ::read(terminal, part.data(), part.size())) > 0;)
    shown.append(part.data(), static_cast<std::size_t>(got));
  ::close(terminal);
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << line;
  return shown;
}

int command::interrupted(std::vector<std::string> arguments, std::size_t files_to_wait_for, int signal) const {
  arguments.insert(arguments.begin(), "morvane");
  std::vector<char*> words;
  for (std::string& word : arguments) words.push_back(word.data());
  words.push_back(nullptr);
  const std::string place = directory();
  const pid_t child = ::fork();
  if (child == 0) {
    ::signal(signal, SIG_DFL);
    if (::chdir(place.c_str()) == 0) ::execv(MORVANE_COMMAND, words.data());
    ::_exit(127);
  }
  for (int i = 0; i < 1000 && files().size() < files_to_wait_for; ++i) ::usleep(10'000);
  EXPECT_EQ(files().size(), files_to_wait_for) << "nothing was being written";
  ::kill(child, signal);
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status) - 128;
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
