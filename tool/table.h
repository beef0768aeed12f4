// Aligned tables for people.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace morvane::tool {

using table_row = std::vector<std::string>;

// Prints the rows in aligned columns, the first row as the heading. `terminal_width` above zero folds the last column
// into that many columns of the screen.
void print_table(std::ostream& out, const std::vector<table_row>& rows, int terminal_width = 0);

// The width of the terminal that standard output is, or 0 when it is none.
int terminal_width();

}  // namespace morvane::tool
