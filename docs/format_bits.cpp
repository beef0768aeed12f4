// Bits are found by setting one of them and reading the row; floats, where one bit tells little, by their bytes.
#include "format_bits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <map>
#include <sstream>
#include <stdexcept>

namespace morvane::docs {

namespace {

[[noreturn]] void fail(const morvane_format_info& f, const morvane_plane_info& p, const std::string& why) {
  throw std::runtime_error("cannot draw plane " + std::string(p.name) + " of " + f.name + ": " + why);
}

// A sample of a group: of which line of read_row(), and the how manieth there.
struct place {
  int line = 0;
  int position = 0;

  auto operator<=>(const place&) const = default;
};

struct named_place {
  place at;
  std::string_view component;
  std::string name;
};

int line_of(std::string_view component) {
  static const std::map<std::string_view, int> lines = {{"Y", MORVANE_Y_R},   {"R", MORVANE_Y_R},  {"L", MORVANE_Y_R},
                                                        {"Cb", MORVANE_CB_G}, {"G", MORVANE_CB_G}, {"Cr", MORVANE_CR_B},
                                                        {"B", MORVANE_CR_B},  {"A", MORVANE_A}};
  const auto found = lines.find(component);
  return found == lines.end() ? MORVANE_X : found->second;
}

// In storage order.
std::vector<named_place> samples_of(const morvane_plane_info& p) {
  std::vector<named_place> result;
  std::array<int, MORVANE_COMPONENTS> before{};
  for (std::string_view rest = p.components; !rest.empty();) {
    const std::string_view component = rest.substr(0, rest.find(' '));
    rest.remove_prefix(std::min(component.size() + 1, rest.size()));
    const int line = line_of(component);
    const int position = before[static_cast<std::size_t>(line)]++;
    const int pixel = position * p.group_pixels / p.samples[line];
    result.push_back({{line, position}, component, std::string(component)});
    if (p.samples[line] > 1) result.back().name += std::to_string(pixel);
  }
  return result;
}

// A picture of one group of the plane, which is asked about by what it holds.
class probe {
 public:
  probe(const morvane_format_info& f, int plane)
      : f_(f),
        p_(f.planes[plane]),
        plane_(plane),
        of_{.format = f.format, .width = p_.group_pixels, .height = p_.image_rows},
        image_(of_) {
    const int room = *std::max_element(p_.samples, p_.samples + MORVANE_COMPONENTS);
    for (auto& line : lines_) line.resize(static_cast<std::size_t>(room));
  }

  // What each sample is when the group has these bytes.
  std::map<place, unsigned> read(const std::vector<std::uint8_t>& group) {
    const morvane_picture picture = image_.picture();
    std::copy(group.begin(), group.end(), static_cast<std::uint8_t*>(picture.data[plane_]));
    component_lines lines;
    std::transform(lines_.begin(), lines_.end(), lines.begin(), [](auto& line) { return line.data(); });
    read_row(of_, picture, plane_, 0, lines, static_cast<std::int64_t>(lines_.front().size()));
    std::map<place, unsigned> result;
    for (int line = 0; line < MORVANE_X; ++line)
      for (int i = 0; i < p_.samples[line]; ++i)
        result[{line, i}] = lines_[static_cast<std::size_t>(line)][static_cast<std::size_t>(i)];
    return result;
  }

  // The one sample that differs from that of zeros, or null.
  const std::pair<const place, unsigned>* changed_by(const std::vector<std::uint8_t>& group) {
    const std::map<place, unsigned> zero = read(std::vector<std::uint8_t>(group.size()));
    read_ = read(group);
    const std::pair<const place, unsigned>* found = nullptr;
    for (const auto& sample : read_) {
      if (sample.second == zero.at(sample.first)) continue;
      if (found != nullptr) fail(f_, p_, "two samples share a bit");
      found = &sample;
    }
    return found;
  }

 private:
  const morvane_format_info& f_;
  const morvane_plane_info& p_;
  int plane_;
  description of_;
  image image_;
  std::array<std::vector<std::uint16_t>, MORVANE_COMPONENTS> lines_;
  std::map<place, unsigned> read_;
};

const named_place& named(const std::vector<named_place>& samples, const place& at) {
  return *std::find_if(samples.begin(), samples.end(), [&](const named_place& s) { return s.at == at; });
}

// Numbers begin with 0 in every sample: those that are read stand at the top of words.
void number_from_zero(const morvane_format_info& f, const morvane_plane_info& p, std::vector<stored_bit>& bits) {
  std::map<std::string, std::vector<int>> numbers;
  for (const stored_bit& b : bits)
    if (b.is_used()) numbers[b.sample].push_back(b.number);
  for (const named_place& sample : samples_of(p)) {
    if (sample.at.line == MORVANE_X) continue;
    std::vector<int>& of_sample = numbers[sample.name];
    std::sort(of_sample.begin(), of_sample.end());
    const int count = static_cast<int>(of_sample.size());
    if (count == 0 || of_sample.back() != 15 || of_sample.front() != 16 - count)
      fail(f, p, "bits of " + sample.name + " are missing");
    if (count != p.bits && sample.at.line != MORVANE_A) fail(f, p, sample.name + " has not as many bits as it should");
  }
  for (stored_bit& b : bits)
    if (b.is_used()) b.number -= numbers[b.sample].front();
}

std::vector<stored_bit> bits_of_integers(const morvane_format_info& f, int plane) {
  const morvane_plane_info& p = f.planes[plane];
  const std::vector<named_place> samples = samples_of(p);
  probe asked(f, plane);
  std::vector<stored_bit> bits;
  for (std::size_t byte = 0; byte < static_cast<std::size_t>(p.group_bytes); ++byte)
    for (unsigned mask = 0x80; mask != 0; mask >>= 1) {
      std::vector<std::uint8_t> group(static_cast<std::size_t>(p.group_bytes));
      group[byte] = static_cast<std::uint8_t>(mask);
      stored_bit& b = bits.emplace_back();
      const auto* changed = asked.changed_by(group);
      if (changed == nullptr) continue;
      const named_place& sample = named(samples, changed->first);
      // Alpha repeats its bits in what is left of a word, so that the highest one is the bit itself.
      const auto highest = static_cast<int>(std::bit_width(changed->second)) - 1;
      b = {sample.name, sample.component, highest};
    }
  number_from_zero(f, p, bits);
  return bits;
}

// Little-endian floats of two or four bytes, one next to the other.
std::vector<stored_bit> bits_of_floats(const morvane_format_info& f, int plane) {
  const morvane_plane_info& p = f.planes[plane];
  const std::vector<named_place> samples = samples_of(p);
  const std::size_t bytes = static_cast<std::size_t>(p.group_bytes) / samples.size();
  const std::vector<std::uint8_t> quarter =
      bytes == 4 ? std::vector<std::uint8_t>{0, 0, 0x80, 0x3e} : std::vector<std::uint8_t>{0, 0x34};
  probe asked(f, plane);
  std::vector<stored_bit> bits;
  for (const named_place& sample : samples) {
    std::vector<std::uint8_t> group(static_cast<std::size_t>(p.group_bytes));
    if (bits.size() / 8 + quarter.size() > group.size()) fail(f, p, "it has floats of an unknown kind");
    std::copy(quarter.begin(), quarter.end(), group.begin() + static_cast<std::ptrdiff_t>(bits.size() / 8));
    const auto* changed = asked.changed_by(group);
    if (bytes != quarter.size() || changed == nullptr || changed->first != sample.at)
      fail(f, p, "it has floats of an unknown kind");
    for (int byte = 0; byte < static_cast<int>(bytes); ++byte)
      for (int bit = 7; bit >= 0; --bit) bits.push_back({sample.name, sample.component, 8 * byte + bit});
  }
  return bits;
}

}  // namespace

std::vector<stored_bit> bits_of_group(const morvane_format_info& format, int plane) {
  return format.planes[plane].is_float != 0 ? bits_of_floats(format, plane) : bits_of_integers(format, plane);
}

}  // namespace morvane::docs
