// Running the command as a user would: in a directory with files, by a shell.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace morvane::tests {

using bytes = std::vector<std::uint8_t>;

struct outcome {
  int exit_code = 0;
  std::string out;
  std::string err;
};

// Bytes without a pattern, the same in every run.
bytes noise(std::size_t count, unsigned seed = 1);

// A fixture with an empty directory that lasts for one test.
class command : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Runs a line of shell in the directory; `morvane` is the program under test, standard input is empty.
  outcome run(const std::string& line) const;
  // As run(), at a terminal of so many columns, from which standard output and error both come.
  std::string run_at_terminal(const std::string& line, unsigned short columns) const;
  // Starts the command, waits until files are there, sends it the signal and returns that by which it ended, by itself
  // or with the exit code for it.
  int interrupted(std::vector<std::string> arguments, std::size_t files_to_wait_for, int signal) const;
  // As run(), and expects it to succeed and to say nothing.
  void quietly(const std::string& line) const;

  void write(const std::string& name, const bytes& content) const;
  bytes read(const std::string& name) const;
  bool exists(const std::string& name) const;
  // The names of the directory's files, sorted.
  std::vector<std::string> files() const;
  std::string directory() const { return root_ + "/here"; }

 private:
  std::string script_of(const std::string& line) const;

  std::string root_;
};

}  // namespace morvane::tests
