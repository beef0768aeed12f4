// The lines of text in YUV4MPEG2.
#include "y4m_file.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

#include "errors.h"
#include "names.h"

namespace morvane::tool {

namespace {

constexpr std::string_view frame_magic = "FRAME";
constexpr std::string_view range_word = "COLORRANGE=";
constexpr std::string_view sampling_word = "YSCSS=";
constexpr std::size_t longest_line = 4096;

struct colour_word {
  std::string_view word;
  std::string_view format;  // as formats_called() takes it
};

// The first of several for a format is the one to write. Samples of more than eight bits are in the lower bits of
// little-endian words.
constexpr colour_word colour_words[] = {
    {"420mpeg2", "yuv420p"},   {"420jpeg", "yuv420p"},    {"420paldv", "yuv420p"},   {"420", "yuv420p"},
    {"422", "yuv422p"},        {"444", "yuv444p"},        {"444alpha", "yuva444p"},  {"mono", "gray"},
    {"mono10", "gray10le"},    {"mono12", "gray12le"},    {"mono14", "gray14le"},    {"mono16", "gray16le"},
    {"420p10", "yuv420p10le"}, {"422p10", "yuv422p10le"}, {"444p10", "yuv444p10le"}, {"420p12", "yuv420p12le"},
    {"422p12", "yuv422p12le"}, {"444p12", "yuv444p12le"}, {"420p14", "yuv420p14le"}, {"422p14", "yuv422p14le"},
    {"444p14", "yuv444p14le"}, {"420p16", "yuv420p16le"}, {"422p16", "yuv422p16le"}, {"444p16", "yuv444p16le"},
};
constexpr std::string_view colour_when_unsaid = "420jpeg";
constexpr std::string_view colour_sited_at_center = "420jpeg";

// None where the library has no such format.
morvane::format format_of(const colour_word& c) {
  const std::vector<morvane::format> found = formats_called(std::string(c.format));
  return found.size() == 1 ? found.front() : 0;
}

morvane::format format_of(std::string_view colour) {
  const auto* const c = std::find_if(std::begin(colour_words), std::end(colour_words),
                                     [&](const colour_word& known) { return known.word == colour; });
  return c == std::end(colour_words) ? 0 : format_of(*c);
}

// What a file says, fit for a line on the terminal.
std::string shown(std::string_view words) {
  constexpr std::size_t most = 40;
  std::string result(words.substr(0, most));
  std::replace_if(
      result.begin(), result.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
  return words.size() > most ? result + "..." : result;
}

template <class... Part>
[[noreturn]] void refuse(const std::string& name, const Part&... part) {
  io_failure("cannot read ", name, " as YUV4MPEG2: ", part...);
}

// Without its end; none where the file has ended before it.
std::optional<std::string> read_line(const next_byte& next, const std::string& name) {
  std::string line;
  for (int byte = next(); byte != '\n'; byte = next()) {
    if (byte < 0 && line.empty()) return std::nullopt;
    if (byte < 0) refuse(name, "it ends inside the line ", shown(line));
    if (line.size() == longest_line) refuse(name, "a line is longer than ", longest_line, " bytes: ", shown(line));
    line += static_cast<char>(byte);
  }
  return line;
}

std::vector<std::string_view> words_of(std::string_view line) {
  std::vector<std::string_view> words;
  while (!line.empty()) {
    const std::size_t end = std::min(line.find(' '), line.size());
    if (end > 0) words.push_back(line.substr(0, end));
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  return words;
}

std::optional<int> number(std::string_view digits) {
  int value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size() || value < 0) return std::nullopt;
  return value;
}

bool is_ratio(std::string_view word) {
  const std::size_t colon = word.find(':');
  return colon != std::string_view::npos && number(word.substr(0, colon)) && number(word.substr(colon + 1));
}

bool is_interlacing(std::string_view word) {
  return word.size() == 1 && std::string_view("?ptbm").find(word.front()) != std::string_view::npos;
}

// Takes the words of a header one by one.
class header_reader {
 public:
  explicit header_reader(const std::string& name) : name_(name) {}

  void take(std::string_view word) {
    const std::string_view value = word.substr(1);
    switch (word.front()) {
      case 'W':
        return take_length(stream_.width, word, "width");
      case 'H':
        return take_length(stream_.height, word, "height");
      case 'C':
        return take_once(stream_.colour, word, true);
      case 'F':
        return take_once(stream_.rate, word, is_ratio(value));
      case 'A':
        return take_once(stream_.aspect, word, is_ratio(value));
      case 'I':
        return take_once(stream_.interlacing, word, is_interlacing(value));
      case 'X':
        return take_extension(value);
      default:
        refuse(name_, "the header has the unknown word ", shown(word));
    }
  }

  y4m_stream result() {
    if (stream_.width == 0) refuse(name_, "the header has no width");
    if (stream_.height == 0) refuse(name_, "the header has no height");
    if (stream_.colour.empty()) stream_.colour = colour_when_unsaid;
    stream_.format = format_of(stream_.colour);
    if (stream_.format == 0) refuse(name_, "there is no format for its colour space C", shown(stream_.colour));
    return stream_;
  }

 private:
  void take_length(int& length, std::string_view word, const char* what) {
    const std::optional<int> value = number(word.substr(1));
    if (!value || *value == 0) refuse(name_, "the ", what, ' ', shown(word), " is not a number of pixels");
    if (length != 0) refuse(name_, "the header says twice how much its ", what, " is");
    length = *value;
  }

  void take_once(std::string& into, std::string_view word, bool valid) {
    if (!valid || word.size() == 1) refuse(name_, "the header's word ", shown(word), " is not valid");
    if (!into.empty()) refuse(name_, "the header has two words of the kind ", shown(word));
    into = word.substr(1);
  }

  void take_extension(std::string_view value) {
    if (value.empty() || value.starts_with(sampling_word)) return;  // this is another name for the colour
    if (!value.starts_with(range_word)) {
      stream_.extensions.emplace_back(value);
      return;
    }
    const std::string_view range = value.substr(range_word.size());
    if (range == "FULL")
      stream_.range = morvane::range::full;
    else if (range == "LIMITED")
      stream_.range = morvane::range::video;
    else
      refuse(name_, "its range ", shown(range), " is neither FULL nor LIMITED");
  }

  const std::string& name_;
  y4m_stream stream_;
};

std::string colour_to_write(const y4m_stream& stream, morvane::siting siting, const std::string& name) {
  if (!stream.colour.empty() && format_of(stream.colour) == stream.format) return stream.colour;
  if (siting == morvane::siting::center && format_of(colour_sited_at_center) == stream.format)
    return std::string(colour_sited_at_center);
  std::vector<std::string> there;
  for (const colour_word& c : colour_words) {
    const morvane::format f = format_of(c);
    if (f == stream.format) return std::string(c.word);
    const std::string other(name_of(f));
    if (f != 0 && std::find(there.begin(), there.end(), other) == there.end()) there.push_back(other);
  }
  wrong_arguments(name, " is YUV4MPEG2, which holds ", joined(there), ", not ", name_of(stream.format));
}

void add(std::string& line, char letter, const std::string& value) {
  if (!value.empty()) line += std::string(" ") + letter + value;
}

}  // namespace

bool names_y4m(const std::string& path) {
  return has_extension(path, ".y4m");
}

bool y4m_holds(morvane::format format) {
  return std::any_of(std::begin(colour_words), std::end(colour_words),
                     [&](const colour_word& c) { return format_of(c) == format; });
}

y4m_stream read_y4m_header(const next_byte& next, const std::string& name) {
  const std::optional<std::string> line = read_line(next, name);
  if (!line) refuse(name, "it is empty");
  const std::vector<std::string_view> words = words_of(*line);
  if (words.empty() || words.front() != y4m_magic || line->front() == ' ')
    refuse(name, "it begins with ", shown(*line), ", not with ", y4m_magic);
  header_reader reader(name);
  std::for_each(words.begin() + 1, words.end(), [&](std::string_view word) { reader.take(word); });
  return reader.result();
}

bool read_y4m_frame_header(const next_byte& next, const std::string& name) {
  const std::optional<std::string> line = read_line(next, name);
  if (!line) return false;
  if (line->substr(0, line->find(' ')) != frame_magic)
    refuse(name, "a frame begins with ", shown(*line), ", not with ", frame_magic);
  return true;
}

std::string y4m_header(const y4m_stream& stream, morvane::siting siting, const std::string& name) {
  const std::string colour = colour_to_write(stream, siting, name);
  std::string line = text(y4m_magic, " W", stream.width, " H", stream.height);
  add(line, 'F', stream.rate);
  add(line, 'I', stream.interlacing);
  add(line, 'A', stream.aspect);
  add(line, 'C', colour);
  for (const std::string& word : stream.extensions) add(line, 'X', word);
  if (stream.range != morvane::range::unsaid)
    add(line, 'X', text(range_word, stream.range == morvane::range::full ? "FULL" : "LIMITED"));
  return line + '\n';
}

}  // namespace morvane::tool
