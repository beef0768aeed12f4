// Formats by formats: a picture with a coloured cell for each pair.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace morvane::bench {

struct matrix {
  struct name {
    std::string text{};
    int group = 0;  // neighbours of different groups stand a little apart
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

  std::string title{};
  std::string explanation{};
  std::string rows_are{};  // "from"
  std::string columns_are{};
  std::vector<name> rows{};
  std::vector<name> columns{};
  std::vector<step> steps{};  // ascending; the first one takes all that is less, too
  std::string grey_means{};   // in the legend, where a cell is grey
  std::vector<cell> cells{};  // a pair without a cell stays blank
};

// The colours: below2 (worst), below1, and above1 to above4 (best).
std::string draw(const matrix& m);

}  // namespace morvane::bench
