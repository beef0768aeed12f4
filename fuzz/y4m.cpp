// Files of any bytes as YUV4MPEG2: their lines are refused, or say the same when they are written and read again.
#include <cstddef>
#include <cstdint>
#include <string>

#include "refusal.h"
#include "y4m_file.h"

namespace morvane::fuzz {
namespace {

tool::next_byte bytes_of(const std::string& file, std::size_t& at) {
  return [&file, &at] { return at < file.size() ? static_cast<unsigned char>(file[at++]) : -1; };
}

void expect_same(const tool::y4m_stream& a, const tool::y4m_stream& b) {
  expect(a.format == b.format && a.width == b.width && a.height == b.height, "a picture stays what it is");
  expect(a.range == b.range && a.colour == b.colour, "colour stays what it is");
  expect(a.rate == b.rate && a.interlacing == b.interlacing && a.aspect == b.aspect, "time and shape stay");
  expect(a.extensions == b.extensions, "the words of others stay");
}

void read(const std::string& file) {
  std::size_t at = 0;
  tool::y4m_stream stream;
  if (!is_taken([&] { stream = tool::read_y4m_header(bytes_of(file, at), "a.y4m"); })) return;
  expect(stream.format != 0 && stream.width > 0 && stream.height > 0, "a stream has a format and a size");
  const std::string line = tool::y4m_header(stream, siting::left, "b.y4m");
  std::size_t again = 0;
  expect_same(stream, tool::read_y4m_header(bytes_of(line, again), "b.y4m"));
  expect(again == line.size(), "a header is one line");
  is_taken([&] {
    while (tool::read_y4m_frame_header(bytes_of(file, at), "a.y4m")) {
    }
  });
}

}  // namespace
}  // namespace morvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  morvane::fuzz::read(std::string(bytes, bytes + count));
  return 0;
}
