// What people see at a terminal: progress and folded tables.
#include <algorithm>
#include <sstream>

#include "shell.h"

namespace morvane::tests {

namespace {

constexpr unsigned short wide = 200;

class progress : public command {
 protected:
  void SetUp() override {
    command::SetUp();
    write("frame", noise(8));
  }

  // Four frames, of which the last two come after progress may be shown.
  const std::string slow_frames = "{ cat frame frame; sleep 0.7; cat frame; sleep 0.2; cat frame; } | ";
  const std::string conversion = "morvane convert -f y -t y -s 4x2 - ";
};

TEST_F(progress, is_shown_after_a_while_and_cleared) {
  EXPECT_EQ(run_at_terminal(slow_frames + conversion + "out", wide), "\r\033[K3 frames\r\033[K4 frames\r\033[K");
  EXPECT_EQ(read("out").size(), 32u);
}

TEST_F(progress, has_a_bar_where_the_end_is_known) {
  EXPECT_EQ(run_at_terminal(slow_frames + conversion + "out --frames 4", wide),
            "\r\033[K[######################........] 3 of 4 frames"
            "\r\033[K[##############################] 4 of 4 frames\r\033[K");
}

TEST_F(progress, is_not_shown_for_short_work) {
  EXPECT_EQ(run_at_terminal("for i in 1 2 3 4 5; do cat frame; done | " + conversion + "out", wide), "");
}

TEST_F(progress, is_no_part_of_standard_output) {
  const std::string line = slow_frames + conversion;
  EXPECT_EQ(run_at_terminal(line + "- > out", wide), "\r\033[K3 frames\r\033[K4 frames\r\033[K");
  EXPECT_EQ(read("out").size(), 32u);
  EXPECT_EQ(run_at_terminal(line + "out 2> err", wide), "");
  EXPECT_EQ(read("err"), bytes());
}

class folded_tables : public command {};

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> result;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    line.erase(std::remove(line.begin(), line.end(), '\r'), line.end());
    result.push_back(line);
  }
  return result;
}

// Undoes the folding: a line that goes on begins with blanks up to the last column. Sees that no word of it would have
// fitted into the line before.
std::vector<std::string> unfolded(const std::vector<std::string>& lines, std::size_t column, std::size_t width) {
  std::vector<std::string> result;
  std::size_t used = 0;
  for (const std::string& line : lines) {
    EXPECT_LE(line.size(), width) << line;
    if (line.find_first_not_of(' ') != column) {
      result.push_back(line);
    } else {
      const std::string rest = line.substr(column);
      EXPECT_GT(used + 1 + rest.substr(0, rest.find(' ')).size(), width) << line;
      result.back() += ' ' + rest;
    }
    used = line.size();
  }
  return result;
}

TEST_F(folded_tables, have_the_width_of_the_terminal) {
  const std::vector<std::string> whole = lines_of(run("morvane formats").out);
  const std::size_t column = whole.front().rfind("  ") + 2;
  for (const std::size_t rest : {20u, 21u, 33u, 50u, 200u}) {
    const std::size_t width = column + rest;
    const std::vector<std::string> shown =
        lines_of(run_at_terminal("morvane formats", static_cast<unsigned short>(width)));
    EXPECT_EQ(shown.size() > whole.size(), rest < 100) << rest;
    EXPECT_EQ(unfolded(shown, column, width), whole) << rest;
  }
}

TEST_F(folded_tables, are_not_folded_where_there_is_no_room) {
  const std::vector<std::string> whole = lines_of(run("morvane formats").out);
  const std::size_t column = whole.front().rfind("  ") + 2;
  EXPECT_EQ(lines_of(run_at_terminal("morvane formats", static_cast<unsigned short>(column + 19))), whole);
}

}  // namespace

}  // namespace morvane::tests
