// The search through the tables of expectations.
#include "oracle.h"
#include "parts.h"

namespace morvane::tests {
namespace {

using oracle::entry;

std::vector<std::span<const entry>> tables() {
  return {oracle::expectations_of_planes(),       oracle::expectations_of_chroma(),
          oracle::expectations_of_depth(),        oracle::expectations_of_rgb_to_video(),
          oracle::expectations_of_video_to_rgb(), oracle::expectations_of_full_chroma(),
          oracle::expectations_of_key(),          oracle::expectations_of_words(),
          oracle::expectations_of_card_10(),      oracle::expectations_of_black()};
}

}  // namespace

catalogue::thunk expectation(std::string_view name, std::string_view destination) {
  for (const std::span<const entry> table : tables())
    for (const entry& e : table)
      if (e.name == name && e.destination == destination) return e.expected;
  return nullptr;
}

std::vector<std::pair<std::string_view, std::string_view>> expected_conversions() {
  std::vector<std::pair<std::string_view, std::string_view>> result;
  for (const std::span<const entry> table : tables())
    for (const entry& e : table) result.emplace_back(e.name, e.destination);
  return result;
}

}  // namespace morvane::tests
