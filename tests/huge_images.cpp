// Images of more pixels or bytes than 32 bits count. Little of their memory is there: line functions that only count
// stand in for those that convert, rows lie half a gigabyte apart, or the same pages are mapped again and again.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "checker/checker.h"
#include "options.h"
#include "oracle/oracle.h"
#include "recorder.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;
using catalogue::call;
using catalogue::conversion;
using catalogue::max_planes;

// More pixels than an int counts.

constexpr int address_bits_of_plane = 42;

// Planes far from each other and from all else, the sources first.
template <class Places>
call call_nowhere(const conversion& row, int xres, int yres, Places stride_of) {
  call c;
  for (std::size_t i = 0; i < max_planes; ++i) {
    c.source.data[i] = reinterpret_cast<const std::uint8_t*>((i + 1) << address_bits_of_plane);
    c.destination.data[i] = reinterpret_cast<std::uint8_t*>((i + 1 + max_planes) << address_bits_of_plane);
    c.source.stride[i] = stride_of(true, i);
    c.destination.stride[i] = stride_of(false, row.one_stride ? 0 : i);
  }
  c.xres = xres;
  c.yres = yres;
  return c;
}

// How often the line functions were called, for how many pixels altogether, and how many rows of each plane were met,
// at most so many times each.
struct lines_of_image {
  std::int64_t calls = 0;
  std::int64_t pixels = 0;
  std::vector<std::vector<std::uint8_t>> visits = std::vector<std::vector<std::uint8_t>>(2 * max_planes);

  void count(const line_call& line, const call& c) {
    ++calls;
    pixels += line.count;
    for (const std::uintptr_t address : line.plane) {
      if (address == 0) continue;
      const std::size_t plane = (address >> address_bits_of_plane) - 1;
      const std::uintptr_t offset = address & ((std::uintptr_t{1} << address_bits_of_plane) - 1);
      const int stride = plane < max_planes ? c.source.stride[plane] : c.destination.stride.at(plane - max_planes);
      ASSERT_EQ(offset % static_cast<std::uintptr_t>(stride), 0U) << "within a row of plane " << plane;
      const std::size_t row = offset / static_cast<std::uintptr_t>(stride);
      ASSERT_LT(row, 131072U) << "plane " << plane;
      if (visits[plane].size() <= row) visits[plane].resize(row + 1);
      ++visits[plane][row];
    }
  }

  std::vector<std::pair<std::size_t, int>> rows_and_visits() const {
    std::vector<std::pair<std::size_t, int>> result;
    for (const auto& of_plane : visits)
      result.emplace_back(of_plane.size(), of_plane.empty() ? 0 : *std::max_element(of_plane.begin(), of_plane.end()));
    return result;
  }
};

// Of a row that copies, nothing: its planes are not there.
bool lines_are_counted(const conversion& row, const call& c, lines_of_image& lines) {
  const recorder recording([&](const line_call& line) { lines.count(line, c); });
  return run_guarded(row.entry.convert, c) == 0;
}

TEST(huge_image, of_more_pixels_than_an_int_counts_is_converted_row_by_row) {
  if (!calls_can_be_recorded) GTEST_SKIP() << "calls of line functions are direct";
  constexpr int xres = 64, yres = 6, wider = 1024, higher = 10922;
  int tested = 0;
  for (const conversion& row : catalogue::conversions) {
    const auto with_gaps = [](bool is_source, std::size_t i) {
      return 32 * 65536 + (is_source ? 64 : 128) + static_cast<int>(i);
    };
    const auto tight = [&](bool is_source, std::size_t i) {
      const catalogue::format* f = catalogue::find_format(is_source ? row.source : row.destination);
      const int width = xres * wider * row.pixels_per_xres;
      return f == nullptr || i >= f->plane_count() ? 1 : tight_stride(f->planes[i], width);
    };
    lines_of_image few;
    if (!lines_are_counted(row, call_nowhere(row, xres, yres, with_gaps), few)) continue;
    ++tested;
    for (const call& c : {call_nowhere(row, xres * wider, yres * higher, with_gaps),
                          call_nowhere(row, xres * wider, yres * higher, tight)}) {
      lines_of_image many;
      ASSERT_TRUE(lines_are_counted(row, c, many)) << row.name;
      EXPECT_EQ(many.calls, few.calls * higher) << row.name;
      EXPECT_EQ(many.pixels, few.pixels * wider * higher) << row.name;
      auto expected = few.rows_and_visits();
      for (auto& [rows, visits] : expected) rows *= higher;
      EXPECT_EQ(many.rows_and_visits(), expected) << row.name;
    }
  }
  EXPECT_GT(tested, 100);
}

// A stride that is what 32 bits leave of a row's bytes is not that of rows without gaps.
TEST(huge_image, of_rows_longer_than_an_int_counts_is_not_one_line) {
  if (!calls_can_be_recorded) GTEST_SKIP() << "calls of line functions are direct";
  constexpr int xres = (1 << 29) + 64, yres = 2;
  int tested = 0;
  for (const conversion& row : catalogue::conversions) {
    bool is_longer = false;
    const auto cut = [&](bool is_source, std::size_t i) {
      const catalogue::format* f = catalogue::find_format(is_source ? row.source : row.destination);
      if (f == nullptr || i >= f->plane_count()) return 1;
      // Pixels of three bytes are taken for one line where they have room for four.
      const int group_bytes = f->planes[i].group_bytes == 3 ? 4 : f->planes[i].group_bytes;
      const std::int64_t bytes = std::int64_t{xres} * group_bytes / f->planes[i].group_pixels;
      is_longer = is_longer || bytes > INT_MAX;
      return static_cast<int>(static_cast<std::uint32_t>(bytes));
    };
    const call c = call_nowhere(row, xres, yres, cut);
    int lines = 0;
    const recorder recording([&](const line_call& line) { lines += line.count <= xres ? 1 : 0; });
    if (!is_longer || row.pixels_per_xres > 1 || run_guarded(row.entry.convert, c) != 0) continue;
    EXPECT_GE(lines, yres) << row.name;
    ++tested;
  }
  EXPECT_GT(tested, 50);
}

// Rows half a gigabyte apart.

constexpr std::ptrdiff_t page = 4096;

// Zeros, of which only the pages that are written take memory, between two inaccessible pages.
class sparse_memory {
 public:
  explicit sparse_memory(std::ptrdiff_t bytes) : mapped_(static_cast<std::size_t>(bytes + 2 * page)) {
    void* mapping = mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (mapping == MAP_FAILED) throw std::runtime_error("mmap failed");
    mapping_ = static_cast<std::uint8_t*>(mapping);
    madvise(mapping_, mapped_, MADV_NOHUGEPAGE);
    mprotect(mapping_, page, PROT_NONE);
    mprotect(mapping_ + page + bytes, page, PROT_NONE);
  }
  sparse_memory(const sparse_memory&) = delete;
  sparse_memory& operator=(const sparse_memory&) = delete;
  ~sparse_memory() { munmap(mapping_, mapped_); }

  std::uint8_t* begin() const { return mapping_ + page; }

 private:
  std::size_t mapped_;
  std::uint8_t* mapping_ = nullptr;
};

constexpr int far_width = 70;
constexpr int far_height = 10;

// The rows of a plane, each with a page of surroundings.
class far_rows {
 public:
  far_rows(const catalogue::plane& p, int stride, unsigned seed)
      : stride_(stride),
        row_bytes_((row_extent(p, far_width) + 64 + page - 1) / page * page + page),
        memory_((far_height + 1) * std::ptrdiff_t{std::abs(stride)} / page * page + 2 * row_bytes_) {
    for (int y = 0; y < far_height; ++y) fill(row(y), content::random, seed + static_cast<unsigned>(y));
  }

  std::uint8_t* first() const {
    return memory_.begin() + page / 2 + (stride_ < 0 ? std::ptrdiff_t{far_height} * -stride_ : 0);
  }
  int stride() const { return stride_; }
  std::span<std::uint8_t> row(int y) const {
    return {first() + std::ptrdiff_t{y} * stride_ - page / 2, static_cast<std::size_t>(row_bytes_)};
  }

 private:
  int stride_;
  std::ptrdiff_t row_bytes_;
  sparse_memory memory_;
};

struct far_image {
  std::vector<std::unique_ptr<far_rows>> planes;

  // Each plane has a stride of its own, unless they share one.
  far_image(std::string_view format_name, int stride, bool one_stride, unsigned seed) {
    const catalogue::format* format = catalogue::find_format(format_name);
    for (std::size_t i = 0; format != nullptr && i < format->plane_count(); ++i) {
      const auto number = static_cast<int>(i);
      planes.push_back(std::make_unique<far_rows>(format->planes[i], one_stride ? stride : stride + 64 * number,
                                                  seed + 100 * static_cast<unsigned>(i)));
    }
  }
  template <class Byte>
  catalogue::planes<Byte> of_call() const {
    catalogue::planes<Byte> result;
    for (std::size_t i = 0; i < planes.size(); ++i) {
      result.data[i] = planes[i]->first();
      result.stride[i] = planes[i]->stride();
    }
    return result;
  }
};

void expect_equal(const far_image& got, const far_image& expected, const std::string& what) {
  for (std::size_t i = 0; i < got.planes.size(); ++i)
    for (int y = 0; y < far_height; ++y) {
      const std::span<std::uint8_t> row = got.planes[i]->row(y);
      ASSERT_TRUE(std::equal(row.begin(), row.end(), expected.planes[i]->row(y).begin()))
          << what << ", plane " << i << ", row " << y;
    }
}

// The greater stride is that of the destination, so that no run of bytes is copied with all that lies between rows.
TEST(huge_image, of_rows_half_a_gigabyte_apart) {
  constexpr int far = (1 << 29) + page + 7;
  for (const conversion& row : catalogue::conversions)
    for (const int sign : {1, -1}) {
      const far_image source(row.source, sign * far, false, 1);
      const far_image expected(row.destination, sign * far + 1024, row.one_stride, 2);
      call c;
      c.source = source.of_call<const std::uint8_t>();
      c.xres = far_width / row.pixels_per_xres;
      c.yres = far_height / row.rows_per_yres;
      c.destination = expected.of_call<std::uint8_t>();
      expectation(row.name, row.destination)(c);
      on_every_backend([&](backend::kind k) {
        const far_image got(row.destination, sign * far + 1024, row.one_stride, 2);
        call again = c;
        again.destination.data = got.of_call<std::uint8_t>().data;
        ASSERT_EQ(run_guarded(row.entry.convert, again), 0) << row.name;
        expect_equal(got, expected, std::string(row.name) + " on " + backend::name(k));
      });
      if (testing::Test::HasFailure()) return;
    }
}

// Copies of gigabytes in one run.

constexpr std::size_t chunk = 2 << 20;

// The same pages again and again, then a chunk of its own that shows whether the end is reached, then no memory.
class repeated_memory {
 public:
  explicit repeated_memory(std::size_t bytes) : chunks_((bytes + chunk - 1) / chunk) {
    const int pages = memfd_create("pages", 0);
    if (pages < 0 || ftruncate(pages, chunk) != 0) throw std::runtime_error("memfd_create failed");
    mapped_ = (chunks_ + 1) * chunk;
    void* mapping = mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (mapping == MAP_FAILED) throw std::runtime_error("mmap failed");
    begin_ = static_cast<std::uint8_t*>(mapping);
    for (std::size_t i = 0; i + 1 < chunks_; ++i) map(begin_ + i * chunk, MAP_SHARED, pages);
    map(begin_ + (chunks_ - 1) * chunk, MAP_PRIVATE | MAP_ANONYMOUS, -1);
    close(pages);
  }
  repeated_memory(const repeated_memory&) = delete;
  repeated_memory& operator=(const repeated_memory&) = delete;
  ~repeated_memory() { munmap(begin_, mapped_); }

  std::uint8_t* begin() const { return begin_; }
  std::span<std::uint8_t> first_chunk() const { return {begin_, chunk}; }
  std::span<std::uint8_t> last_chunk() const { return {begin_ + (chunks_ - 1) * chunk, chunk}; }

 private:
  static void map(std::uint8_t* at, int flags, int file) {
    if (mmap(at, chunk, PROT_READ | PROT_WRITE, flags | MAP_FIXED, file, 0) == MAP_FAILED)
      throw std::runtime_error("mmap failed");
  }

  std::size_t chunks_;
  std::size_t mapped_ = 0;
  std::uint8_t* begin_ = nullptr;
};

// Beyond 32 bits a size cut to them is small, and the end stays as it was; beyond 31 it is negative, and crashes.
constexpr std::size_t beyond_31_bits = (std::size_t{1} << 31) + 3 * 65536;
constexpr std::size_t beyond_32_bits = (std::size_t{1} << 32) + 3 * 65536;

// The call copies so many bytes of the plane.
void expect_copy(const conversion& row, call c, std::size_t plane, std::size_t bytes) {
  const repeated_memory source(bytes);
  const repeated_memory destination(bytes);
  fill(source.first_chunk(), content::random, 1);
  fill(source.last_chunk(), content::random, 2);
  c.source.data.at(plane) = source.begin();
  c.destination.data.at(plane) = destination.begin();
  ASSERT_EQ(run_guarded(row.entry.convert, c), 0);
  EXPECT_EQ(std::memcmp(source.first_chunk().data(), destination.first_chunk().data(), chunk), 0);
  const std::size_t at_end = bytes % chunk;
  const std::span<std::uint8_t> end = destination.last_chunk();
  EXPECT_EQ(std::memcmp(source.last_chunk().data(), end.data(), at_end), 0);
  EXPECT_TRUE(std::all_of(end.begin() + static_cast<std::ptrdiff_t>(at_end), end.end(), [](int b) { return b == 0; }));
}

TEST(huge_image, is_copied_in_one_run) {
  const std::size_t bytes = thin() ? beyond_31_bits : beyond_32_bits;
  call c;
  c.xres = c.source.stride[0] = c.destination.stride[0] = 65536;
  c.yres = static_cast<int>(bytes / 65536);
  expect_copy(row_of("y::y", "y"), c, 0, bytes);
}

// A plane of chroma with all that lies between its rows; those of luma and alpha lie on each other.
TEST(huge_image, is_copied_with_its_padding) {
  std::array<std::uint8_t, 8> luma{}, alpha{}, luma_alpha{};
  call c;
  c.source.data = {luma.data(), nullptr, alpha.data(), nullptr};
  c.destination.data = {luma_alpha.data(), nullptr, nullptr, nullptr};
  c.source.stride[1] = c.destination.stride[1] = 65536;
  c.xres = 2;
  c.yres = static_cast<int>(beyond_31_bits / 65536);
  expect_copy(row_of("pa16::ya_uv", "ya_uv_16"), c, 1, beyond_31_bits);
}

}  // namespace
}  // namespace morvane::tests
