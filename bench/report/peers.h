// The other libraries that do the same job as a row of the report, and how near their results come.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "rows.h"

namespace morvane::bench {

enum class agreement {
  same_bytes,
  close,            // the same formula, rounded otherwise
  other_algorithm,  // another matrix, or chroma taken from other places
};

std::string_view name_of(agreement a);

struct peer {
  std::string_view rows{};  // names of rows, separated by blanks; those that the catalogue does not have are skipped
  std::string_view library{};
  std::string_view function{};
  agreement label{};  // with the versions of Debian 12
  // Sets up what the library wants to keep from call to call, and answers what is measured.
  std::function<std::function<void()>(const catalogue::call&)> prepare{};

  bool serves(std::string_view row_name) const;
};

// A function that keeps nothing from call to call.
struct stateless_peer {
  std::string_view rows;
  std::string_view function;
  agreement label;
  catalogue::thunk convert;
};

std::vector<peer> peers_of(std::string_view library, std::span<const stateless_peer> functions);

// Empty where the library was not there when this was built.
std::vector<peer> libyuv_peers();
std::vector<peer> swscale_peers();
std::vector<peer> opencv_peers();

std::vector<peer> all_peers();

// What the results of the library and of a peer on one image say. Where there is no image to compare, as for a sum, it
// is what the label says.
agreement observed_agreement(const row& r, const peer& p);

// A line for each peer whose label is not what the results say.
std::vector<std::string> wrong_labels(const std::vector<row>& rows, const std::vector<peer>& peers);

}  // namespace morvane::bench
