// Files of any bytes as PNGs: they are refused, or are pictures of the size that they say.
#include <cstddef>
#include <cstdint>

#include "png_file.h"
#include "refusal.h"

namespace morvane::fuzz {
namespace {

void decode(const std::uint8_t* bytes, std::size_t count) {
  is_taken([&] {
    const tool::picture p = tool::decode_png({bytes, count}, "a.png");
    expect(p.size.width > 0 && p.size.height > 0, "a picture has a size");
    expect(p.channels == 3 || p.channels == 4, "a picture is RGB, with or without alpha");
    const auto pixels = static_cast<std::size_t>(p.size.width) * static_cast<std::size_t>(p.size.height);
    expect(p.samples.size() == pixels * static_cast<std::size_t>(p.channels), "a picture has all its samples");
  });
}

}  // namespace
}  // namespace morvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  morvane::fuzz::decode(bytes, count);
  return 0;
}
