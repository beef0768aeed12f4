// Formats by formats: a picture with a coloured cell for each pair.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace morvane::bench {

struct matrix {
  struct name {
    std::string text{};
    std::string group{};  // neighbours of different groups stand a little apart
  };
  struct cell {
    std::size_t row = 0;
    std::size_t column = 0;
    std::optional<double> value{};  // without one the cell is grey
    std::string tip{};
  };
  // The colour of values from `least` up to the next step.
  struct step {
    double least = 0;
    std::string colour{};  // a class of the picture's style
    std::string text{};    // in the legend
  };
  enum class tips {
    of_each_cell,
    of_low_ones,  // below `aim`; the others are drawn together, which takes a tenth of the bytes
  };

  std::string title{};
  std::string explanation{};
  std::string rows_are{};  // "from"
  std::string columns_are{};
  std::vector<name> rows{};
  std::vector<name> columns{};
  std::vector<step> steps{};  // ascending; the first one takes all that is less, too
  std::string grey_means{};   // in the legend, where a cell is grey
  std::vector<cell> cells{};  // row by row from left to right; a pair without a cell stays blank
  double aim = 0;
  tips told = tips::of_each_cell;
};

// The colours: below2 (worst), below1, and above1 to above4 (best). Many names make small cells and small letters, so
// that the picture is no wider than a page; the groups are then named beside the rows.
std::string draw(const matrix& m);

}  // namespace morvane::bench
