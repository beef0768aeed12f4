#include "report/html_table.h"

#include <algorithm>

#include "report/text.h"

namespace morvane::bench {

namespace {

void write_titles(std::ostream& out, const std::vector<column>& columns, std::string_view attributes) {
  for (const column& c : columns) out << "<th" << attributes << '>' << escaped(c.title) << "</th>";
}

void write_groups(std::ostream& out, const std::vector<column>& columns, std::string_view attributes) {
  for (auto first = columns.begin(); first != columns.end();) {
    const auto last = std::find_if(first, columns.end(), [&first](const column& c) { return c.group != first->group; });
    out << "<th" << attributes << " colspan=\"" << last - first << "\">" << escaped(first->group) << "</th>";
    first = last;
  }
}

}  // namespace

table::table(std::ostream& out, const std::vector<column>& words, const std::vector<column>& numbers) : out_(out) {
  const auto is_grouped = [](const column& c) { return !c.group.empty(); };
  out_ << "<div class=\"table\"><table><thead>";
  if (std::any_of(numbers.begin(), numbers.end(), is_grouped)) {
    out_ << "<tr>";
    write_groups(out_, words, "");
    write_groups(out_, numbers, " class=\"group\"");
    out_ << "</tr>";
  }
  out_ << "<tr>";
  write_titles(out_, words, "");
  write_titles(out_, numbers, " class=\"n\"");
  out_ << "</tr></thead><tbody>\n";
}

table::~table() {
  out_ << "</tbody></table></div>\n";
}

void table::begin() {
  out_ << "<tr>";
}

void table::end() {
  out_ << "</tr>\n";
}

void table::word(std::string_view text) {
  out_ << "<td>" << escaped(text) << "</td>";
}

void table::sentence(std::string_view text) {
  out_ << "<td class=\"wide\">" << escaped(text) << "</td>";
}

void table::number(const std::string& text, bool bad) {
  out_ << (bad ? "<td class=\"n bad\">" : "<td class=\"n\">") << text << "</td>";
}

void table::blank() {
  out_ << "<td class=\"n weak\">-</td>";
}

void table::ratio(const measurement* fast, const measurement* slow, double least) {
  if (fast == nullptr || slow == nullptr) return blank();
  const double times = times_as_fast(*fast, *slow);
  number(fixed(times), times < least);
}

}  // namespace morvane::bench
