#include "rearranged.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "../backend/dispatch.h"
#include "layout.h"

namespace Processing::Morvane::checked {

namespace {

namespace kernel = format_conversion::kernel;
using catalogue::sample_type;

// The kernels.

// A place in a row of each plane that is read, or of each that is written.
using source_rows = std::array<const uint8_t*, 3>;
using destination_rows = std::array<uint8_t*, 3>;

// What a kernel does beside arranging bytes. Averages are of bytes or of words.
enum class deed { nothing_else, moving_words, averaging_bytes, averaging_words };

struct kernel_kind {
  deed beside = deed::nothing_else;
  kernel::parts of_rows = kernel::parts::equal;

  constexpr bool operator==(const kernel_kind&) const = default;
};

// Of planes that are read in two rows, there is a far one beside the near one.
struct read_rows {
  source_rows near{};
  source_rows far{};
};

struct kernel_entry {
  kernel_kind kind;
  std::array<int, 3> written{};  // bytes of a unit in each plane
  std::array<int, 3> read{};
  size_t read_in_one_row = 0;  // these planes come first
  void (*run)(const read_rows& from, const destination_rows& to, int units, const rearrangement& by,
              bool streams) = nullptr;
};

template <class Kernel, size_t... s, size_t... far, size_t... d>
void run(const read_rows& from, std::index_sequence<s...>, std::index_sequence<far...>, const destination_rows& to,
         std::index_sequence<d...>, const int units, const rearrangement& by, const bool streams) {
  Kernel k{};
  k.places = by.places;
  k.streams = streams;
  if constexpr (requires { k.bits; }) k.bits = by.bits;
  if constexpr (requires { k.up; }) {
    k.up = by.up;
    k.down = by.down;
  }
  constexpr size_t in_one_row = sizeof...(s) - sizeof...(far);
  backend::line_of<Kernel>()(from.near[s]..., from.far[in_one_row + far]..., to[d]..., units, k);
}
template <class Kernel, size_t sources, size_t in_two_rows, size_t destinations>
void run_kernel(const read_rows& from, const destination_rows& to, const int units, const rearrangement& by,
                const bool streams) {
  run<Kernel>(from, std::make_index_sequence<sources>(), std::make_index_sequence<in_two_rows>(), to,
              std::make_index_sequence<destinations>(), units, by, streams);
}

template <int... written, int... read>
constexpr kernel_entry entry_of(kernel::rearrange<kernel::of_planes<written...>, kernel::of_planes<read...>>) {
  using k = kernel::rearrange<kernel::of_planes<written...>, kernel::of_planes<read...>>;
  return {{}, {written...}, {read...}, sizeof...(read), run_kernel<k, sizeof...(read), 0, sizeof...(written)>};
}
template <int... written, int... read>
constexpr kernel_entry entry_of(kernel::rearrange_moved<kernel::of_planes<written...>, kernel::of_planes<read...>>) {
  using k = kernel::rearrange_moved<kernel::of_planes<written...>, kernel::of_planes<read...>>;
  return {{deed::moving_words},
          {written...},
          {read...},
          sizeof...(read),
          run_kernel<k, sizeof...(read), 0, sizeof...(written)>};
}
template <class Sample, kernel::parts of_rows, int... written, int... one, int... two>
constexpr kernel_entry entry_of(kernel::resample<Sample, of_rows, kernel::of_planes<written...>,
                                                 kernel::of_planes<one...>, kernel::of_planes<two...>>) {
  using k = kernel::resample<Sample, of_rows, kernel::of_planes<written...>, kernel::of_planes<one...>,
                             kernel::of_planes<two...>>;
  return {{sizeof(Sample) == 1 ? deed::averaging_bytes : deed::averaging_words, of_rows},
          {written...},
          {one..., two...},
          sizeof...(one),
          run_kernel<k, sizeof...(one) + sizeof...(two), sizeof...(two), sizeof...(written)>};
}

template <class... Kernel>
constexpr auto entries_of(kernel::kernel_list<Kernel...>) {
  return std::array{entry_of(Kernel())...};
}

constexpr auto kernels = entries_of(kernel::joined_lists<kernel::rearrange_kernels, kernel::resample_kernels>::type());

// Samples of planes.

bool has_whole_bytes(const catalogue::plane& p) {
  return p.sample == sample_type::u8 || p.sample == sample_type::u16 || low_bits(p.sample) != 0;
}

int bytes_of_sample(const catalogue::plane& p) {
  return p.sample == sample_type::u8 ? 1 : 2;
}

// Samples in the lower bits of words are moved, unless they lie there in both pictures.
bool moves_words(const catalogue::plane& from, const catalogue::plane& to) {
  return from.sample != to.sample && (low_bits(from.sample) != 0 || low_bits(to.sample) != 0);
}

// Averages are of samples of one kind.
bool can_average(const catalogue::plane& from, const catalogue::plane& to) {
  return from.sample == to.sample;
}

// Half a step of a sample of fewer bits.
int half_of(const catalogue::plane& p) {
  return p.depth() < 16 ? 1 << (15 - p.depth()) : 0;
}
int rounded_by(const catalogue::plane& from, const catalogue::plane& to) {
  return to.depth() < from.depth() ? half_of(to) : 0;
}

int bytes_in(const stored_plane& p, const int pixels) {
  return static_cast<int>(p.layout->row_bytes(pixels));
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

// The planes of the source that hold the components of one of the destination.
plane_numbers planes_read(const shape& from, const stored_plane& p) {
  plane_numbers planes;
  for (const component c : {first, second, third, alpha}) {
    const component of = origin_of(c, from).source;
    if (!p.has(c) || of == unused) continue;
    const size_t plane = from.plane_with(of);
    if (!planes.contains(plane)) planes.add(plane);
  }
  return planes;
}

// Those that are made of the same planes as the first of them.
plane_numbers made_alike(const shape& from, const shape& to, plane_numbers planes) {
  const plane_numbers read = planes_read(from, to.planes[planes[0]]);
  planes.keep_if([&](const size_t plane) {
    const plane_numbers other = planes_read(from, to.planes[plane]);
    return std::equal(read.begin(), read.end(), other.begin(), other.end());
  });
  return planes;
}

// A byte of a period: the kept bits of a byte of a source, whose word is rounded, and others that are always set.
struct byte_of_period {
  size_t source = 0;
  int place = 0;
  int kept = 0;
  int set = 0;
  int rounded_by = 0;
  bool is_average = false;
};

// A period is as many pixels as have whole groups in all planes concerned.
class search {
 public:
  search(const shape& from, const shape& to, const bool nearest, const plane_numbers& planes)
      : from_(from), to_(to), nearest_(nearest) {
    result_.written = planes;
  }
  std::optional<rearrangement> find() {
    if (find_read_planes() && find_moves() && find_period() && find_bytes() && find_kernel()) return result_;
    return {};
  }

 private:
  const shape& from_;
  const shape& to_;
  const bool nearest_;
  rearrangement result_;
  kernel_kind kind_;
  int pixels_ = 0;                // of a period
  few<byte_of_period, 4> bytes_;  // more of them no kernel writes

  const stored_plane& read(const size_t i) const { return from_.planes[result_.read[i]]; }
  const stored_plane& written(const size_t i) const { return to_.planes[result_.written[i]]; }
  size_t read_with(const component c) const {
    size_t i = 0;
    while (!read(i).has(c)) ++i;
    return i;
  }

  bool averages(const catalogue::plane& p, const catalogue::plane& of) const {
    return of.image_rows != p.image_rows && !nearest_;
  }
  bool can_make(const catalogue::plane& p, const catalogue::plane& of) const {
    return has_whole_bytes(of) && (!averages(p, of) || can_average(of, p));
  }
  void add_read(const size_t i, const catalogue::plane& p) {
    const catalogue::plane& of = *from_.planes[i].layout;
    if (!result_.read.contains(i)) result_.read.add(i);
    if (!averages(p, of)) return;
    kind_ = {of.sample == sample_type::u8 ? deed::averaging_bytes : deed::averaging_words,
             of.image_rows < p.image_rows ? kernel::parts::equal : kernel::parts::three_to_one};
    if (!result_.read_in_two_rows.contains(i)) result_.read_in_two_rows.add(i);
  }
  bool find_read_planes() {
    for (const size_t plane : result_.written) {
      const stored_plane& p = to_.planes[plane];
      if (!is_full(p, to_) || !has_whole_bytes(*p.layout)) return false;
      for (const size_t i : planes_read(from_, p)) {
        if (!can_make(*p.layout, *from_.planes[i].layout)) return false;
        add_read(i, *p.layout);
      }
    }
    return true;
  }
  // Words are moved all alike.
  bool find_moves() {
    bool is_alike = true;
    bool is_first = true;
    for (const size_t plane : result_.written)
      for (const size_t i : result_.read) {
        const catalogue::plane& p = *to_.planes[plane].layout;
        const catalogue::plane& of = *from_.planes[i].layout;
        const bool moves = moves_words(of, p);
        const int up = moves ? low_bits_above(of) : 0;
        const int down = moves ? low_bits_above(p) : 0;
        is_alike = is_alike && (is_first || (up == result_.up && down == result_.down));
        result_.up = up;
        result_.down = down;
        is_first = false;
      }
    if (!moves()) return true;
    const bool is_moved_alone = kind_.beside == deed::nothing_else;
    kind_.beside = deed::moving_words;
    return is_alike && is_moved_alone;
  }
  static int low_bits_above(const catalogue::plane& p) { return low_bits(p.sample) != 0 ? 16 - low_bits(p.sample) : 0; }
  bool moves() const { return result_.up != 0 || result_.down != 0; }

  template <class Take>
  void each_plane(const Take take) const {
    for (size_t i = 0; i < result_.read.size(); ++i) take(read(i));
    for (size_t i = 0; i < result_.written.size(); ++i) take(written(i));
  }
  // Kernels take the planes of which a unit has more bytes first.
  void sort(plane_numbers& planes, const shape& s) const {
    std::sort(planes.begin(), planes.end(), [&](const size_t a, const size_t b) {
      const int more = bytes_in(s.planes[a], pixels_) - bytes_in(s.planes[b], pixels_);
      return more != 0 ? more > 0 : a < b;
    });
  }
  bool find_period() {
    each_plane([&](const stored_plane& p) { pixels_ = std::max(pixels_, p.layout->group_pixels); });
    result_.periods = (to_.width - 1) / pixels_ + 1;
    bool is_whole = true;
    each_plane([&](const stored_plane& p) {
      const int groups = pixels_ / p.layout->group_pixels;
      is_whole = is_whole && pixels_ % p.layout->group_pixels == 0 && p.groups(to_.width) == result_.periods * groups;
    });
    sort(result_.read, from_);
    sort(result_.written, to_);
    return is_whole;
  }

  bool add(const byte_of_period& b) {
    if (bytes_.is_full()) return false;
    bytes_.add(b);
    return true;
  }
  // How a working sample is stored that needs no rounding; of words that are moved, before they are moved down.
  int stored_as(const catalogue::plane& p, const int sample) const {
    const int rest = 16 - p.depth();
    return p.sample == sample_type::u16 || (moves() && p.sample != sample_type::u8) ? sample >> rest << rest
                                                                                    : sample >> rest;
  }
  bool add_constant(const catalogue::plane& to, const int sample) {
    const int value = stored_as(to, sample);
    for (int i = 0; i < bytes_of_sample(to); ++i)
      if (!add({0, 0, 0, value >> 8 * i & 255})) return false;
    return true;
  }
  // A byte that becomes a word is its upper byte, and where the largest one stands for 65535 the lower one too. Of a
  // word that becomes a byte it is the upper one.
  bool add_sample(const stored_plane& to, const component c, const int index) {
    const component of = origin_of(c, from_).source;
    const size_t i = read_with(of);
    const catalogue::plane& p = *read(i).layout;
    const bool is_average = averages(*to.layout, p);
    const bool is_average_at_top = is_average && p.sample == sample_type::u16;
    const int half = is_average_at_top ? half_of(*to.layout) : rounded_by(p, *to.layout);
    const bool widens = bytes_of_sample(p) < bytes_of_sample(*to.layout);
    const bool narrows = bytes_of_sample(p) > bytes_of_sample(*to.layout);
    const bool fills = is_filled(of, fills_words(from_));
    if (samples_in(read(i), of, pixels_) != samples_in(to, c, pixels_)) return false;
    if (fills && (half != 0 || (widens && to.layout->depth() < 16))) return false;
    if (fills && moves() && p.depth() != to.layout->depth()) return false;
    const int place = place_of(read(i), of, index) + (narrows ? 1 : 0);
    const bool uses_all = narrows || (widens && fills) || is_average_at_top;
    const int read_bits = uses_all ? 65535 : widens ? 0xff00 : stored_as(p, 65535);
    const int kept = stored_as(*to.layout, 65535) & read_bits;
    if (is_average && bytes_of_sample(p) == 2) result_.bits.read = static_cast<uint32_t>(stored_as(p, 65535)) * 0x10001;
    for (int k = 0; k < bytes_of_sample(*to.layout); ++k)
      if (!add({i, widens ? place : place + k, kept >> 8 * k & 255, 0, half, is_average})) return false;
    return true;
  }
  bool find_bytes(const stored_plane& to) {
    std::array<int, component_count> index{};
    for (int group = 0; group < pixels_ / to.layout->group_pixels; ++group)
      for (size_t item = 0; item < static_cast<size_t>(to.item_count); ++item) {
        const component c = to.items[item];
        const origin o = origin_of(c, from_);
        if (!(o.source == unused ? add_constant(*to.layout, o.constant) : add_sample(to, c, index[c]++))) return false;
      }
    return true;
  }
  bool find_bytes() {
    return std::all_of(result_.written.begin(), result_.written.end(),
                       [&](const size_t plane) { return find_bytes(to_.planes[plane]); });
  }

  bool is_as(const std::array<int, 3>& bytes, const plane_numbers& planes, const shape& s) const {
    for (size_t i = 0; i < bytes.size(); ++i)
      if (bytes[i] != (i < planes.size() ? result_.periods_of_unit * bytes_in(s.planes[planes[i]], pixels_) : 0))
        return false;
    return planes.size() <= bytes.size();
  }
  // Planes that are read in two rows come behind the others.
  bool reads_as(const kernel_entry& k) const {
    for (size_t i = 0; i < result_.read.size(); ++i)
      if (result_.read_in_two_rows.contains(result_.read[i]) != (i >= k.read_in_one_row)) return false;
    return k.kind == kind_ && is_as(k.read, result_.read, from_);
  }
  bool find_kernel() {
    for (result_.periods_of_unit = 1; result_.periods_of_unit <= 4; ++result_.periods_of_unit)
      for (result_.kernel = 0; result_.kernel < kernels.size(); ++result_.kernel) {
        const kernel_entry& k = kernels[result_.kernel];
        if (!is_as(k.written, result_.written, to_) || !reads_as(k)) continue;
        set_places();
        return true;
      }
    return false;
  }
  void set_places() {
    size_t unit = 0;
    size_t begin = 0;
    for (size_t i = 0; i < result_.written.size(); ++i) {
      const auto count = static_cast<size_t>(bytes_in(written(i), pixels_));
      for (int period = 0; period < result_.periods_of_unit; ++period)
        for (size_t k = 0; k < count; ++k) set_place(unit++, period, bytes_[begin + k]);
      begin += count;
    }
  }
  void set_place(const size_t i, const int period, const byte_of_period& b) {
    int place = b.place;
    if (b.kept != 0) place += period * bytes_in(read(b.source), pixels_);
    for (size_t before = 0; before < b.source; ++before)
      place += result_.periods_of_unit * bytes_in(read(before), pixels_);
    result_.places.from[i] = static_cast<uint8_t>(place);
    result_.places.kept |= static_cast<uint32_t>(b.kept) << 8 * i;
    result_.places.set |= static_cast<uint32_t>(b.set) << 8 * i;
    result_.places.added |= static_cast<uint32_t>(b.rounded_by) << 8 * (place & 2);
    if (b.kept != 0 && !b.is_average) result_.bits.near_alone |= uint32_t{255} << 8 * place;
  }
};

// What is read for a row of the image. Rows of the source that become a row of half as many are the next to each other.
read_rows rows_read(const rearrangement& by, const shape& from, const morvane_picture& source, const int row) {
  read_rows rows = {rows_of<source_rows>(source, from, by.read, row)};
  for (size_t i = 0; i < by.read.size(); ++i)
    if (by.read_in_two_rows.contains(by.read[i]))
      rows.far[i] = row_of(source, from, by.read[i], from.far_row_of_chroma(row));
  return rows;
}

// A unit that has as much of each row as there is.
class unit_of_rows {
 public:
  unit_of_rows(const source_rows& rows, const std::array<int, 3>& bytes) {
    for (size_t i = 0; i < rows.size(); ++i)
      if (rows[i] != nullptr) std::copy_n(rows[i], bytes[i], bytes_[i]);
  }
  source_rows rows() const { return {bytes_[0], bytes_[1], bytes_[2]}; }

 private:
  uint8_t bytes_[3][4] = {};
};

// Periods behind the last whole unit pass through a unit of their own.
void rearrange_rest(const rearrangement& by, const int rest, const read_rows& from, const destination_rows& to) {
  const kernel_entry& k = kernels[by.kernel];
  std::array<int, 3> bytes = k.read;
  for (int& b : bytes) b = b * rest / by.periods_of_unit;
  const unit_of_rows near(from.near, bytes), far(from.far, bytes);
  uint8_t made[3][4];
  k.run({near.rows(), far.rows()}, {made[0], made[1], made[2]}, 1, by, false);
  for (size_t i = 0; i < by.written.size(); ++i) std::copy_n(made[i], k.written[i] * rest / by.periods_of_unit, to[i]);
}

// All of these planes at once. Where some of them have no lower rows, those of the others are made apart.
rearrangements find_together(const shape& from, const shape& to, const bool nearest, const plane_numbers& planes) {
  std::optional<rearrangement> upper = search(from, to, nearest, planes).find();
  if (!upper) return {};
  plane_numbers with_lower_rows = planes;
  with_lower_rows.keep_if([&](const size_t plane) { return to.planes[plane].layout->image_rows == 1; });
  upper->of_lower_rows = with_lower_rows.size() == planes.size();
  rearrangements found;
  found.add(*upper);
  if (upper->of_lower_rows || with_lower_rows.size() == 0) return found;
  std::optional<rearrangement> lower = search(from, to, nearest, with_lower_rows).find();
  if (!lower) return {};
  lower->of_upper_rows = false;
  found.add(*lower);
  return found;
}

}  // namespace

bool is_written(const rearrangements& all, const size_t plane) {
  return std::any_of(all.begin(), all.end(), [&](const rearrangement& r) { return r.written.contains(plane); });
}

rearrangements find_rearrangements(const shape& from, const shape& to, const bool nearest, plane_numbers planes) {
  rearrangements found;
  while (planes.size() > 0) {
    plane_numbers tried = made_alike(from, to, planes);
    rearrangements together = find_together(from, to, nearest, tried);
    if (together.size() == 0 && tried.size() > 1) {
      tried.keep_if([&](const size_t plane) { return plane == planes[0]; });
      together = find_together(from, to, nearest, tried);
    }
    for (const rearrangement& r : together) found.add(r);
    planes.keep_if([&](const size_t plane) { return !tried.contains(plane); });
  }
  return found;
}

void rearrange_row(const rearrangement& by, const shape& from, const morvane_picture& source, const shape& to,
                   const morvane_picture& destination, const int row, const bool streams) {
  if (!(row % 2 == 0 ? by.of_upper_rows : by.of_lower_rows)) return;
  const kernel_entry& k = kernels[by.kernel];
  const read_rows read = rows_read(by, from, source, row);
  const auto written = rows_of<destination_rows>(destination, to, by.written, row);
  const int units = by.periods / by.periods_of_unit;
  k.run(read, written, units, by, streams);
  const int rest = by.periods % by.periods_of_unit;
  if (rest == 0) return;
  const read_rows read_behind = {units_on(read.near, k.read, units), units_on(read.far, k.read, units)};
  rearrange_rest(by, rest, read_behind, units_on(written, k.written, units));
}

}  // namespace Processing::Morvane::checked
