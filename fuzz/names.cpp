// Words of any bytes where the command expects names, sizes, colours and lists.
#include "names.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "refusal.h"

namespace morvane::fuzz {
namespace {

void parse(const std::string& word) {
  is_taken([&] { expect(tool::format_named(word).format != 0, "a name is that of a format"); });
  is_taken([&] { expect(!tool::entry_points_named(word).empty(), "a name is that of entry points"); });
  is_taken([&] { tool::parse_matrix("--matrix", word); });
  is_taken([&] { tool::parse_range("--range", word); });
  is_taken([&] { tool::parse_color("--background", word); });
  is_taken([&] {
    const tool::extent size = tool::parse_size(word);
    expect(size.width > 0 && size.height > 0, "a size is that of a picture");
  });
  expect(tool::joined(tool::parse_list(word), ",").size() <= word.size(), "a list holds nothing but its words");
}

}  // namespace
}  // namespace morvane::fuzz

// What a shell hands on holds no zero; the messages repeat lines as they are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  const std::string word(bytes, bytes + count);
  if (word.find_first_of(std::string_view("\0\n", 2)) == std::string::npos) morvane::fuzz::parse(word);
  return 0;
}
