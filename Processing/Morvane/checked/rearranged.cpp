#include "rearranged.h"

#include <algorithm>
#include <utility>

#include "../backend/dispatch.h"

namespace Processing::Morvane::checked {

namespace {

namespace kernel = format_conversion::kernel;
using catalogue::sample_type;

// The kernels.

struct kernel_of_bytes {
  int stored = 0;              // bytes of a unit
  std::array<int, 3> bytes{};  // that a unit is gathered from, of each source
  void (*run)(const source_rows& from, uint8_t* to, int units, const kernel::byte_places& places) = nullptr;
};

template <class Kernel, size_t... i>
void run(const source_rows& from, uint8_t* to, const int units, const kernel::byte_places& places,
         std::index_sequence<i...>) {
  Kernel k{};
  k.places = places;
  backend::line_of<Kernel>()(from[i]..., to, units, k);
}

template <int stored, int... bytes>
constexpr kernel_of_bytes entry_of(kernel::rearrange<stored, bytes...>) {
  return {stored, {bytes...}, [](const source_rows& from, uint8_t* to, int units, const kernel::byte_places& places) {
            run<kernel::rearrange<stored, bytes...>>(from, to, units, places,
                                                     std::make_index_sequence<sizeof...(bytes)>());
          }};
}

template <class... Kernel>
constexpr auto entries_of(kernel::kernel_list<Kernel...>) {
  return std::array{entry_of(Kernel())...};
}

constexpr auto kernels = entries_of(kernel::rearrange_kernels());

// Samples of planes.

bool has_whole_bytes(const catalogue::plane& p) {
  return p.sample == sample_type::u8 || p.sample == sample_type::u16 || low_bits(p.sample) != 0;
}

int bytes_of_sample(const catalogue::plane& p) {
  return p.sample == sample_type::u8 ? 1 : 2;
}

// How a working sample is stored that needs no rounding.
int stored_as(const catalogue::plane& p, const int sample) {
  const int rest = 16 - p.depth();
  return p.sample == sample_type::u16 ? sample >> rest << rest : sample >> rest;
}

bool keeps_all_bits(const catalogue::plane& from, const catalogue::plane& to) {
  if (low_bits(from.sample) != 0 || low_bits(to.sample) != 0) return from.sample == to.sample;
  return to.depth() >= from.depth();
}

int bytes_in(const stored_plane& p, const int pixels) {
  return pixels / p.layout->group_pixels * p.layout->group_bytes;
}

int samples_in(const stored_plane& p, const component c, const int pixels) {
  return pixels / p.layout->group_pixels * p.samples[c];
}

// The first byte of a sample, among those of its component.
int place_of(const stored_plane& p, const component c, const int index) {
  int left = index % p.samples[c];
  int item = 0;
  while (p.items[static_cast<size_t>(item)] != c || left-- > 0) ++item;
  return index / p.samples[c] * p.layout->group_bytes + item * bytes_of_sample(*p.layout);
}

// What a component is made of: one of the source, or a constant.
struct origin {
  component source = unused;
  int constant = 0;
};

origin origin_of(const component c, const shape& from) {
  if (c == unused || (c == alpha && !from.has_alpha)) return {unused, 65535};
  if (c == alpha) return {alpha};
  if (from.colour == model::luminance) return {first};
  if (from.colour == model::ycbcr && !from.has_chroma && c != first) return {unused, 32768};
  return {c};
}

// A byte of a period: the kept bits of a byte of a source, and others that are always set.
struct byte_of_period {
  size_t source = 0;
  int place = 0;
  int kept = 0;
  int set = 0;
};

// A period is as many pixels as have whole groups in all planes concerned.
class search {
 public:
  search(const shape& from, const shape& to, const stored_plane& p) : from_(from), to_(to), plane_(p) {}

  rearranged_plane find() {
    if (!is_full(plane_, to_) || !has_whole_bytes(*plane_.layout)) return {};
    if (!find_sources() || !find_period() || !find_bytes()) return {};
    for (int periods = 1; periods <= 4; ++periods)
      for (size_t i = 0; i < kernels.size(); ++i)
        if (suits(kernels[i], periods)) return made_by(i, periods);
    return {};
  }

 private:
  const shape& from_;
  const shape& to_;
  const stored_plane& plane_;
  rearranged_plane result_;
  int pixels_ = 0;  // of a period
  std::array<byte_of_period, 4> bytes_{};
  size_t byte_count_ = 0;

  const stored_plane& source(const size_t i) const { return from_.planes[result_.sources[i]]; }

  size_t plane_with(const component c) const {
    size_t i = 0;
    while (!from_.planes[i].has(c)) ++i;
    return i;
  }
  size_t source_with(const component c) const {
    size_t i = 0;
    while (!source(i).has(c)) ++i;
    return i;
  }
  bool add_source(const size_t plane) {
    const auto end = result_.sources.begin() + static_cast<ptrdiff_t>(result_.source_count);
    if (std::find(result_.sources.begin(), end, plane) != end) return true;
    if (end == result_.sources.end()) return false;
    result_.sources[result_.source_count++] = plane;
    const catalogue::plane& p = *from_.planes[plane].layout;
    return has_whole_bytes(p) && p.image_rows == plane_.layout->image_rows && keeps_all_bits(p, *plane_.layout);
  }
  bool find_sources() {
    for (const component c : {first, second, third, alpha}) {
      const component of = origin_of(c, from_).source;
      if (plane_.has(c) && of != unused && !add_source(plane_with(of))) return false;
    }
    return true;
  }

  bool is_whole_periods(const stored_plane& p) const {
    const int group = p.layout->group_pixels;
    return pixels_ % group == 0 && p.groups(to_.width) == result_.periods * (pixels_ / group);
  }
  // Kernels take sources of which a unit has more bytes first.
  bool find_period() {
    pixels_ = plane_.layout->group_pixels;
    for (size_t i = 0; i < result_.source_count; ++i) pixels_ = std::max(pixels_, source(i).layout->group_pixels);
    result_.periods = (to_.width - 1) / pixels_ + 1;
    bool is_whole = is_whole_periods(plane_);
    for (size_t i = 0; i < result_.source_count; ++i) is_whole = is_whole && is_whole_periods(source(i));
    std::stable_sort(result_.sources.begin(), result_.sources.begin() + static_cast<ptrdiff_t>(result_.source_count),
                     [&](const size_t a, const size_t b) {
                       return bytes_in(from_.planes[a], pixels_) > bytes_in(from_.planes[b], pixels_);
                     });
    return is_whole;
  }

  bool add_byte(const byte_of_period& b) {
    if (byte_count_ == bytes_.size()) return false;
    bytes_[byte_count_++] = b;
    return true;
  }
  bool add_constant(const int sample) {
    const int value = stored_as(*plane_.layout, sample);
    for (int i = 0; i < bytes_of_sample(*plane_.layout); ++i)
      if (!add_byte({0, 0, 0, value >> 8 * i & 255})) return false;
    return true;
  }
  // A byte that becomes a word is its upper byte, and where the largest one stands for 65535 the lower one too.
  bool add_sample(const component c, const int index) {
    const component of = origin_of(c, from_).source;
    const size_t i = source_with(of);
    if (samples_in(source(i), of, pixels_) != samples_in(plane_, c, pixels_)) return false;
    const catalogue::plane& p = *source(i).layout;
    const bool widens = bytes_of_sample(p) < bytes_of_sample(*plane_.layout);
    const bool repeats = widens && is_filled(of, fills_words(from_));
    if (repeats && plane_.layout->depth() < 16) return false;
    const int place = place_of(source(i), of, index);
    const int kept = stored_as(*plane_.layout, 65535) & (widens ? repeats ? 65535 : 0xff00 : stored_as(p, 65535));
    for (int k = 0; k < bytes_of_sample(*plane_.layout); ++k)
      if (!add_byte({i, widens ? place : place + k, kept >> 8 * k & 255, 0})) return false;
    return true;
  }
  bool find_bytes() {
    std::array<int, component_count> index{};
    for (int group = 0; group < pixels_ / plane_.layout->group_pixels; ++group)
      for (size_t item = 0; item < static_cast<size_t>(plane_.item_count); ++item) {
        const component c = plane_.items[item];
        const origin o = origin_of(c, from_);
        if (!(o.source == unused ? add_constant(o.constant) : add_sample(c, index[c]++))) return false;
      }
    return true;
  }

  int bytes_of_source(const size_t i, const int periods) const {
    return i < result_.source_count ? periods * bytes_in(source(i), pixels_) : 0;
  }
  bool suits(const kernel_of_bytes& k, const int periods) const {
    for (size_t i = 0; i < k.bytes.size(); ++i)
      if (k.bytes[i] != bytes_of_source(i, periods)) return false;
    return k.stored == periods * static_cast<int>(byte_count_);
  }
  rearranged_plane made_by(const size_t kernel, const int periods) {
    result_.kernel = static_cast<int>(kernel);
    result_.periods_of_unit = periods;
    for (size_t i = 0; i < static_cast<size_t>(kernels[kernel].stored); ++i) {
      const byte_of_period& b = bytes_[i % byte_count_];
      int place = b.place + static_cast<int>(i / byte_count_) * bytes_of_source(b.source, 1);
      for (size_t before = 0; before < b.source; ++before) place += bytes_of_source(before, periods);
      result_.places.from[i] = static_cast<uint8_t>(place);
      result_.places.kept[i] = static_cast<uint8_t>(b.kept);
      result_.places.set[i] = static_cast<uint8_t>(b.set);
    }
    return result_;
  }
};

// Periods behind the last whole unit pass through a unit of their own.
void rearrange_rest(const rearranged_plane& by, const int rest, const source_rows& from, uint8_t* to) {
  const kernel_of_bytes& k = kernels[static_cast<size_t>(by.kernel)];
  uint8_t gathered[3][4] = {};
  uint8_t made[4];
  for (size_t i = 0; i < by.source_count; ++i)
    std::copy_n(from[i], k.bytes[i] * rest / by.periods_of_unit, gathered[i]);
  k.run({gathered[0], gathered[1], gathered[2]}, made, 1, by.places);
  std::copy_n(made, k.stored * rest / by.periods_of_unit, to);
}

}  // namespace

rearranged_plane find_rearranged(const shape& from, const shape& to, const stored_plane& p) {
  return search(from, to, p).find();
}

void rearrange_row(const rearranged_plane& by, const source_rows& from, uint8_t* to) {
  const kernel_of_bytes& k = kernels[static_cast<size_t>(by.kernel)];
  const int units = by.periods / by.periods_of_unit;
  k.run(from, to, units, by.places);
  const int rest = by.periods % by.periods_of_unit;
  if (rest == 0) return;
  source_rows behind = from;
  for (size_t i = 0; i < by.source_count; ++i) behind[i] += int64_t{units} * k.bytes[i];
  rearrange_rest(by, rest, behind, to + int64_t{units} * k.stored);
}

}  // namespace Processing::Morvane::checked
