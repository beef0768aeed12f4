// The kernels of lines on every backend against their rules, over many counts; and every kernel is there for a call: an
// entry point or a plan of the checked interface runs it.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "backend/choice.h"
#include "backend/dispatch.h"
#include "catalogue/conversions.h"
#include "morvane.hpp"
#include "recorder.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;
namespace kernel = Processing::Morvane::format_conversion::kernel;

// A plane of some units between bytes that may be read, so many bytes behind the begin of a cache line. In lines, a few
// bytes behind them may be written too.
struct plane_memory {
  static constexpr std::size_t margin = 128;
  static constexpr std::size_t cache_line = 64;
  static constexpr std::size_t written_behind = 16;
  std::vector<std::uint8_t> memory;
  std::size_t first;   // byte of the memory that begins a cache line
  std::size_t offset;  // of the plane, behind a margin
  std::size_t size;

  plane_memory(const std::size_t bytes, const unsigned seed, const std::size_t offset_of_plane)
      : memory(cache_line + margin + offset_of_plane + bytes + margin), offset(offset_of_plane), size(bytes) {
    first = cache_line - reinterpret_cast<std::uintptr_t>(memory.data()) % cache_line;
    std::mt19937 random(seed);
    std::generate(memory.begin() + static_cast<std::ptrdiff_t>(first), memory.end(),
                  [&] { return static_cast<std::uint8_t>(random() >> 7); });
  }
  plane_memory(plane_memory&&) = default;
  // Samples at the limits, and floats that are no numbers.
  void put_limits() {
    for (std::size_t i = first; i + 8 <= first + margin + offset + size + 32; i += 52) {
      memory[i] = memory[i + 1] = 255;
      memory[i + 2] = memory[i + 3] = 0;
      const float none = std::numeric_limits<float>::quiet_NaN();
      std::memcpy(&memory[i + 4], &none, 4);
    }
  }
  template <class Plane>
  typename Plane::pointer units() {
    return reinterpret_cast<typename Plane::pointer>(memory.data() + first + margin + offset);
  }
  // What a line may have been given behind its units is no part of the result.
  template <class Plane>
  std::vector<std::uint8_t> result() const {
    const auto begin = memory.begin() + static_cast<std::ptrdiff_t>(first);
    std::vector<std::uint8_t> all(begin, begin + static_cast<std::ptrdiff_t>(margin + offset + size + cache_line));
    if constexpr (sizeof(*typename Plane::pointer{}) == 2)
      for (std::size_t i = 0; i < written_behind; ++i) all[margin + offset + size + i] = 0;
    return all;
  }
};

// Of the first few of four bytes, rounded where they are whole words.
kernel::byte_places places_in(const int gathered, const bool backwards) {
  kernel::byte_places p = {{}, 0xff00c0ff, 0x00800300, gathered == 4 ? 0x00800020U : 0x20U};
  for (int i = 0; i < std::min(gathered, 4); ++i)
    p.from[i] = static_cast<std::uint8_t>(backwards ? gathered - 1 - i : i);
  return p;
}

// Coefficients of BT.709 and samples of eight to ten bits.
template <class Kernel>
Kernel with_members(const bool full) {
  Kernel k{};
  if constexpr (requires { k.repeated[0]; }) {
    for (std::size_t i = 0; i < std::size(k.repeated); ++i) k.repeated[i] = (i % 2 == 0) == full ? 255 : 0;
  } else if constexpr (requires { k.repeated; }) {
    k.repeated = full ? 65535 : 0;
  }
  if constexpr (requires { k.kept = 0; }) k.kept = full ? 65535 : 0xffc0;
  if constexpr (requires { k.half = 0; }) k.half = full ? 0 : 32;
  if constexpr (requires { k.by[0]; }) {
    for (std::size_t i = 0; i < std::size(k.by); ++i) k.by[i].fills_words = (i % 2 == 0) == full;
  } else if constexpr (requires { k.by; }) {
    k.by.fills_words = full;
  }
  if constexpr (requires { k.order; }) k.order.is_reversed = full;
  if constexpr (requires { k.set; }) k.set = full ? 0xc000 : 0;
  if constexpr (requires { k.r_cr; })
    std::tie(k.y, k.r_cr, k.g_cb, k.g_cr, k.b_cb, k.black) =
        std::tuple{9576, 14744, 1754, 4383, 17373, full ? 0 : 4096};
  if constexpr (requires { k.lift; }) k.black = static_cast<std::int16_t>(full ? 8192 : 8379);
  if constexpr (requires { k.of.y_r; })
    k.of = {5960, 20048, 2024, 3285, 11051, 14336, 14336, 13022, 1314, full ? 0 : 4096};
  if constexpr (requires { k.bottom; })
    std::tie(k.r, k.g, k.b, k.bottom) = std::tuple{6966, 23436, 2366, full ? 0 : 4096};
  if constexpr (requires { k.factor; }) std::tie(k.from, k.to, k.factor, k.bits) = std::tuple{4096, 0, 9576, 13};
  if constexpr (requires { k.background; }) k.background = 12345;
  if constexpr (requires { k.value; }) k.value = 4711;
  if constexpr (requires { k.next; }) k.next = full ? Kernel::bytes_to_next : 0;
  if constexpr (requires { k.to.places; }) k.to.places = full ? 0x03000102 : 0x02010003;
  if constexpr (requires { k.to.exchanged; }) k.to.exchanged = full ? 65535 : 0;
  if constexpr (requires { k.to.as; }) k.to.as = {{full}, static_cast<std::uint16_t>(full ? 0xc000 : 0)};
  if constexpr (requires { k.from.kept; }) k.from.kept = 0xffc0;
  if constexpr (requires { k.from.up; }) k.from.up = 6;
  if constexpr (requires { k.from.has_fine_bits; }) k.from.has_fine_bits = full;
  if constexpr (requires { k.from.places; }) k.from.places = full ? 0x000102 : 0x000201;
  if constexpr (requires { k.from.exchanged; }) k.from.exchanged = full ? 65535 : 0;
  if constexpr (requires { k.from.lowest; }) k.from.order = {full}, k.from.lowest = full ? 0 : 2;
  if constexpr (requires { k.to.down; })
    std::tie(k.to.half, k.to.down, k.to.kept) = full ? std::tuple{32, 6, 1023} : std::tuple{8, 0, 0xfff0};
  if constexpr (requires { k.filters; }) {
    k.filters = full;
    k.before_first = -1;
  }
  if constexpr (requires { k.to.by; }) k.to.by = with_members<kernel::rgb_lines_to_luminance>(full);
  if constexpr (requires { typename decltype(k.matrix)::lines; })
    k.matrix = {with_members<typename decltype(k.matrix)::lines>(full)};
  else if constexpr (requires { k.matrix; })
    k.matrix = with_members<decltype(k.matrix)>(full);
  if constexpr (requires { k.places; }) k.places = places_in(Kernel::gathered, full);
  if constexpr (requires { k.bits; }) k.bits = {full ? 0xffffffff : 0xffc0ffc0, 0x00ff00ff};
  if constexpr (requires { k.up; }) std::tie(k.up, k.down) = full ? std::pair{6, 0} : std::pair{4, 6};
  return k;
}

template <class Kernel, class Planes>
struct planes_of;

template <class Kernel, class... Plane>
struct planes_of<Kernel, kernel::plane_list<Plane...>> {
  using indices = std::index_sequence_for<Plane...>;
  std::vector<plane_memory> memory;

  explicit planes_of(const int count, std::size_t offset = 0) {
    unsigned seed = 1;
    const auto next = [&] {
      return std::exchange(offset, (offset * 5 + (offset > 0 ? 3 : 0)) % plane_memory::cache_line);
    };
    (memory.emplace_back(static_cast<std::size_t>(count * Plane::bytes), seed++, next()), ...);
    for (plane_memory& m : memory) m.put_limits();
  }
  template <std::size_t... i>
  void convert(const Kernel& k, const int count, std::index_sequence<i...>) {
    if constexpr (std::is_empty_v<Kernel>)
      backend::line_of<Kernel>()(memory[i].template units<Plane>()..., count);
    else
      backend::line_of<Kernel>()(memory[i].template units<Plane>()..., count, k);
  }
  template <std::size_t... i>
  void convert_by_rule(const Kernel& k, const int count, std::index_sequence<i...>) {
    for (std::size_t unit = 0; unit < static_cast<std::size_t>(count); ++unit)
      if constexpr (Kernel::looks_back)
        k.rule(unit == 0, Plane::at(memory[i].template units<Plane>(), unit)...);
      else
        k.rule(Plane::at(memory[i].template units<Plane>(), unit)...);
  }
  template <std::size_t... i>
  std::array<std::vector<std::uint8_t>, sizeof...(Plane)> results(std::index_sequence<i...>) const {
    return {memory[i].template result<Plane>()...};
  }
};

template <class Kernel>
void expect_rule(const bool full) {
  using planes = planes_of<Kernel, typename Kernel::planes>;
  using indices = typename planes::indices;
  const Kernel k = with_members<Kernel>(full);
  for (int count = 0; count <= 300; count += count < 140 ? 1 : 13) {
    planes expected(count);
    expected.convert_by_rule(k, count, indices());
    planes made(count);
    made.convert(k, count, indices());
    ASSERT_EQ(expected.results(indices()), made.results(indices())) << count << " units";
  }
}

// Past the caches, with planes that begin anywhere, which no two of them need to do alike.
template <class Kernel>
void expect_rule_past_caches() {
  using planes = planes_of<Kernel, typename Kernel::planes>;
  using indices = typename planes::indices;
  Kernel k = with_members<Kernel>(true);
  k.streams = true;
  for (const int count : {1, 64, 97, 201, 1100})
    for (std::size_t offset = 0; offset < plane_memory::cache_line; ++offset) {
      planes expected(count, offset);
      expected.convert_by_rule(k, count, indices());
      planes made(count, offset);
      made.convert(k, count, indices());
      ASSERT_EQ(expected.results(indices()), made.results(indices())) << count << " units at " << offset;
    }
}

// Kernels without a vector body are one loop on every backend.
template <class Kernel>
void expect_rule_of_lines(const int number) {
  if constexpr (std::is_base_of_v<kernel::line_base, Kernel>)
    for (const bool full : {false, true}) {
      SCOPED_TRACE("kernel " + std::to_string(number));
      expect_rule<Kernel>(full);
      if (testing::Test::HasFatalFailure()) return;
    }
}

template <class Kernel>
void expect_rule_past_caches(const int number) {
  if constexpr (requires(Kernel k) { k.streams; }) {
    SCOPED_TRACE("kernel " + std::to_string(number));
    expect_rule_past_caches<Kernel>();
  }
}

template <class... Kernel>
void expect_rules(kernel::kernel_list<Kernel...>) {
  void (*const expect[])(int) = {expect_rule_of_lines<Kernel>...};
  for (int number = 0; number < static_cast<int>(std::size(expect)); ++number) expect[number](number);
}

template <class... Kernel>
void expect_rules_past_caches(kernel::kernel_list<Kernel...>) {
  void (*const expect[])(int) = {expect_rule_past_caches<Kernel>...};
  for (int number = 0; number < static_cast<int>(std::size(expect)); ++number) {
    expect[number](number);
    if (testing::Test::HasFatalFailure()) return;
  }
}

class lines : public testing::Test {
 protected:
  void TearDown() override { backend::choose(backend::available().back()); }
};

TEST_F(lines, are_as_their_rules_say_on_every_backend) {
  for (const backend::kind k : backend::available()) {
    SCOPED_TRACE(backend::name(k));
    backend::choose(k);
    expect_rules(backend::all_kernels());
  }
}

TEST_F(lines, are_as_their_rules_say_past_the_caches_wherever_planes_begin) {
  for (const backend::kind k : backend::available()) {
    SCOPED_TRACE(backend::name(k));
    backend::choose(k);
    expect_rules_past_caches(backend::all_kernels());
  }
}

// All choices that decide about kernels.
const options hows[] = {
    {},
    {.filter = filter::nearest},
    {.siting = siting::center, .background = color{1, 2, 3}},
};
const range ranges[] = {range::unsaid, range::video, range::full};
const matrix matrices[] = {matrix::bt709, matrix::bt2020};

void convert_all(const description& from, const description& to) {
  for (const options& how : hows) try {
      image source(from), result(to);
      convert(from, source.picture(), to, result.picture(), how);
    } catch (const error& e) {
      EXPECT_EQ(e.code(), MORVANE_NO_WAY) << e.what();
    }
}

std::set<std::size_t> kernels_of_plans() {
  std::set<std::size_t> kernels;
  const recorder recording([&](const line_call& line) { kernels.insert(line.kernel); });
  for (const format from : formats())
    for (const format to : formats())
      for (const range of_source : ranges)
        for (const range of_result : {range::video, range::full})
          for (const matrix m : matrices)
            convert_all({.format = from, .width = 4, .height = 4, .range = of_source},
                        {.format = to, .width = 4, .height = 4, .matrix = m, .range = of_result});
  const description large{.format = format_named("v210"), .width = 256, .height = 256};
  const description other{.format = format_named("bgra"), .width = 256, .height = 256};
  image source(large), result(other);
  convert(large, source.picture(), other, result.picture(), {.stores = stores::streaming});
  return kernels;
}

// Beside them, one kernel sums differences.
TEST(every_kernel, is_run_by_an_entry_point_or_a_plan) {
  if (!calls_can_be_recorded) GTEST_SKIP() << "calls of line functions are direct";
  std::set<std::size_t> run = kernels_of_plans();
  for (const catalogue::conversion& row : catalogue::conversions) run.merge(kernels_of(row));
  EXPECT_EQ(run.size(), number_of_kernels() - 1);
}

}  // namespace
}  // namespace morvane::tests
