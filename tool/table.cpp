// Tables, and the terminal they are printed on.
#include "table.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <ostream>
#include <sstream>

namespace morvane::tool {

namespace {

constexpr std::size_t gap = 2;

std::vector<std::size_t> column_widths(const std::vector<table_row>& rows) {
  std::vector<std::size_t> widths(rows.front().size());
  for (const table_row& row : rows)
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  return widths;
}

// The text, broken between words into lines of at most `width`, each but the first after `indent` blanks.
std::string folded(const std::string& words, std::size_t width, std::size_t indent) {
  std::istringstream in(words);
  std::string result;
  std::size_t used = 0;
  for (std::string word; in >> word; used += word.size()) {
    if (used > 0 && used + 1 + word.size() > width) {
      result += '\n' + std::string(indent, ' ');
      used = 0;
    } else if (used > 0) {
      result += ' ';
      ++used;
    }
    result += word;
  }
  return result;
}

}  // namespace

void print_table(std::ostream& out, const std::vector<table_row>& rows, int terminal_width) {
  constexpr std::size_t narrowest = 20;
  const std::vector<std::size_t> widths = column_widths(rows);
  std::size_t indent = 0;
  for (std::size_t i = 0; i + 1 < widths.size(); ++i) indent += widths[i] + gap;
  const auto screen = static_cast<std::size_t>(terminal_width);
  const bool fold = screen >= indent + narrowest;
  for (const table_row& row : rows) {
    std::string line;
    for (std::size_t i = 0; i + 1 < row.size(); ++i) line += row[i] + std::string(widths[i] + gap - row[i].size(), ' ');
    line += fold ? folded(row.back(), screen - indent, indent) : row.back();
    out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
  }
}

int terminal_width() {
  winsize size{};
  return ::isatty(STDOUT_FILENO) != 0 && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace morvane::tool
