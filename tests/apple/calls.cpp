// What the code for Apple systems asks of vImage. It asks some of it once in a process, so each test needs a process of
// its own.
#include <gtest/gtest.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <barrier>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "Processing.Morvane.h"
#include "vimage.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;
using vimage::conversions;
using vimage::generations;
using byte_map = std::array<std::uint8_t, 4>;

constexpr byte_map bgra = {3, 2, 1, 0};
constexpr byte_map rgba = {1, 2, 3, 0};

// Which of vImage's functions and matrices do one kind of conversion.
struct route {
  std::string generate;
  std::string matrix;
  std::string convert;
  int alpha;
};

route to_argb(const std::string& matrix) {
  return {"vImageConvert_YpCbCrToARGB_GenerateConversion", "kvImage_YpCbCrToARGBMatrix_" + matrix,
          "vImageConvert_422CbYpCrYp8ToARGB8888", 255};
}

route to_uyvy(const std::string& matrix) {
  return {"vImageConvert_ARGBToYpCbCr_GenerateConversion", "kvImage_ARGBToYpCbCrMatrix_" + matrix,
          "vImageConvert_ARGB8888To422CbYpCrYp8", vimage::no_alpha};
}

const route to_argb_601 = to_argb("ITU_R_601_4");
const route to_argb_709 = to_argb("ITU_R_709_2");
const route to_uyvy_709 = to_uyvy("ITU_R_709_2");
const route to_uyvy_601 = to_uyvy("ITU_R_601_4");

// YpCbCr type 1 is kvImage422YpCbYpCr8, although the conversions are those of type 0, kvImage422CbYpCrYp8.
vimage::generation generation_of(const route& r) {
  return {.function = r.generate,
          .matrix = r.matrix,
          .range = {16, 128, 235, 240, 255, 0, 255, 0},
          .ypcbcr_type = 1,
          .argb_type = 0,
          .flags = 0};
}

struct geometry {
  int source_stride;
  int destination_stride;
  int xres;
  int yres;
};

vimage::conversion conversion_of(const route& r, const byte_map& map, const void* source, const void* destination,
                                 const geometry& g) {
  return {.function = r.convert,
          .matrix = r.matrix,
          .source = {source, g.yres, g.xres, g.source_stride},
          .destination = {destination, g.yres, g.xres, g.destination_stride},
          .permute_map = map,
          .alpha = r.alpha,
          .flags = 0};
}

struct entry_point {
  std::string name;
  void (*convert)(const std::uint8_t*, int, std::uint8_t*, int, int, int);
  const route& by;
  byte_map map;
};

const entry_point entry_points[] = {
    {"uyvy_bgra_601", fc::uyvy::bgra_601, to_argb_601, bgra}, {"uyvy_bgrx_601", fc::uyvy::bgrx_601, to_argb_601, bgra},
    {"uyvy_rgba_601", fc::uyvy::rgba_601, to_argb_601, rgba}, {"uyvy_rgbx_601", fc::uyvy::rgbx_601, to_argb_601, rgba},
    {"uyvy_bgra_709", fc::uyvy::bgra_709, to_argb_709, bgra}, {"uyvy_bgrx_709", fc::uyvy::bgrx_709, to_argb_709, bgra},
    {"uyvy_rgba_709", fc::uyvy::rgba_709, to_argb_709, rgba}, {"uyvy_rgbx_709", fc::uyvy::rgbx_709, to_argb_709, rgba},
    {"bgrx_709_uyvy", fc::bgrx_709::uyvy, to_uyvy_709, bgra}, {"rgbx_709_uyvy", fc::rgbx_709::uyvy, to_uyvy_709, rgba},
    {"bgrx_601_uyvy", fc::bgrx_601::uyvy, to_uyvy_601, bgra}, {"rgbx_601_uyvy", fc::rgbx_601::uyvy, to_uyvy_601, rgba},
};

template <class Parameter>
std::string name_of(const testing::TestParamInfo<Parameter>& info) {
  return info.param.name;
}

// Two planes of an image of 4 by 2 pixels. Nothing reads or writes them.
struct planes {
  std::uint8_t source[32] = {};
  std::uint8_t destination[32] = {};

  void convert(const entry_point& entry, const geometry& g) {
    entry.convert(source, g.source_stride, destination, g.destination_stride, g.xres, g.yres);
  }
};

constexpr geometry small = {16, 16, 4, 2};

class in_a_process_of_its_own : public testing::Test {
 protected:
  void SetUp() override {
    if (!generations().empty()) GTEST_SKIP() << "vImage was called before: run this test alone, as ctest does";
  }
};

class apple : public in_a_process_of_its_own, public testing::WithParamInterface<entry_point> {};

TEST_P(apple, entry_point_reaches_its_route_with_its_byte_map) {
  planes p;
  p.convert(GetParam(), small);
  EXPECT_EQ(generations(), std::vector{generation_of(GetParam().by)});
  EXPECT_EQ(conversions(), std::vector{conversion_of(GetParam().by, GetParam().map, p.source, p.destination, small)});
}

TEST_P(apple, sizes_and_strides_are_handed_on_as_they_are) {
  const geometry all[] = {
      small,        {8, 16, 3, 5},  {64, 128, 6, 1}, {-16, 16, 4, 2},  {16, -64, 4, 2},
      {0, 0, 0, 0}, {16, 16, 0, 2}, {16, 16, 4, 0},  {-1, -2, -3, -4}, {INT_MAX, INT_MIN, INT_MIN, INT_MAX},
  };
  planes p;
  std::vector<vimage::conversion> expected;
  for (const geometry& g : all) {
    p.convert(GetParam(), g);
    expected.push_back(conversion_of(GetParam().by, GetParam().map, p.source, p.destination, g));
  }
  EXPECT_EQ(conversions(), expected);
}

TEST_P(apple, refusals_of_vimage_go_unnoticed) {
  vimage::refuse();
  planes p;
  p.convert(GetParam(), small);
  p.convert(GetParam(), small);
  EXPECT_EQ(generations(), std::vector{generation_of(GetParam().by)});
  vimage::conversion ungenerated = conversion_of(GetParam().by, GetParam().map, p.source, p.destination, small);
  ungenerated.matrix.clear();
  EXPECT_EQ(conversions(), (std::vector{ungenerated, ungenerated}));
  for (const std::uint8_t byte : p.destination) EXPECT_EQ(byte, 0);
}

INSTANTIATE_TEST_SUITE_P(vimage, apple, testing::ValuesIn(entry_points), name_of<entry_point>);

struct dispatcher {
  std::string name;
  void (*convert)(const std::uint8_t*, int, std::uint8_t*, int, int, int, Processing::Morvane::e_ycbcr_color_space);
  byte_map map;
};

const dispatcher dispatchers[] = {{"uyvy_bgra", fc::uyvy::bgra, bgra},
                                  {"uyvy_rgba", fc::uyvy::rgba, rgba},
                                  {"uyvy_bgrx", fc::uyvy::bgrx, bgra},
                                  {"uyvy_rgbx", fc::uyvy::rgbx, rgba}};

class apple_dispatcher : public in_a_process_of_its_own, public testing::WithParamInterface<dispatcher> {};

TEST_P(apple_dispatcher, sends_601_to_601_and_all_else_to_709) {
  planes p;
  std::vector<vimage::conversion> expected;
  for (const int color_space : {709, 601, 0, -601, 600, 602, 2020, INT_MAX}) {
    GetParam().convert(p.source, small.source_stride, p.destination, small.destination_stride, small.xres, small.yres,
                       static_cast<Processing::Morvane::e_ycbcr_color_space>(color_space));
    const route& by = color_space == 601 ? to_argb_601 : to_argb_709;
    expected.push_back(conversion_of(by, GetParam().map, p.source, p.destination, small));
  }
  EXPECT_EQ(conversions(), expected);
}

INSTANTIATE_TEST_SUITE_P(vimage, apple_dispatcher, testing::ValuesIn(dispatchers), name_of<dispatcher>);

std::multiset<std::string> matrices_generated() {
  std::multiset<std::string> matrices;
  for (const vimage::generation& g : generations()) matrices.insert(g.matrix);
  return matrices;
}

const std::multiset<std::string> each_matrix_once = {to_argb_601.matrix, to_argb_709.matrix, to_uyvy_709.matrix,
                                                     to_uyvy_601.matrix};

class apple_threads : public in_a_process_of_its_own {};

TEST_F(apple_threads, each_descriptor_is_generated_once) {
  constexpr int thread_count = 8;
  planes shared[std::size(entry_points)];
  std::barrier together(thread_count);
  std::vector<std::thread> threads;
  for (int i = 0; i < thread_count; ++i)
    threads.emplace_back([&] {
      for (std::size_t k = 0; k < std::size(entry_points); ++k) {
        together.arrive_and_wait();
        shared[k].convert(entry_points[k], small);
      }
    });
  for (std::thread& t : threads) t.join();

  EXPECT_EQ(matrices_generated(), each_matrix_once);
  std::vector<vimage::conversion> expected;
  for (std::size_t k = 0; k < std::size(entry_points); ++k)
    expected.insert(
        expected.end(), thread_count,
        conversion_of(entry_points[k].by, entry_points[k].map, shared[k].source, shared[k].destination, small));
  EXPECT_EQ(conversions(), expected);
}

// A call in a thread of its own.
class threaded_call {
 public:
  template <class Call>
  explicit threaded_call(Call call)
      : thread_([this, call] {
          number_ = gettid();
          call();
          has_ended_ = true;
        }) {}
  threaded_call(const threaded_call&) = delete;
  threaded_call& operator=(const threaded_call&) = delete;
  ~threaded_call() { thread_.join(); }

  bool has_ended() const { return has_ended_; }

  // Waits until the call ends, or until Linux says that the thread sleeps.
  void wait_until_it_waits() const {
    while (!has_ended_ && (number_ == 0 || state_of_thread() != 'S')) std::this_thread::yield();
  }
  void wait_until_ended() const {
    while (!has_ended_) std::this_thread::yield();
  }

 private:
  // Behind the name of the program, which stands in parentheses.
  char state_of_thread() const {
    std::ifstream file("/proc/self/task/" + std::to_string(number_) + "/stat");
    std::string text;
    std::getline(file, text);
    const std::size_t name_end = text.rfind(')');
    return name_end == std::string::npos ? '?' : text.at(name_end + 2);
  }

  std::atomic<pid_t> number_ = 0;
  std::atomic<bool> has_ended_ = false;
  std::thread thread_;
};

class apple_threads_meet : public apple {};

// A generation that does not come to its end stops those who need its descriptor, and nobody else.
TEST_P(apple_threads_meet, descriptors_wait_for_themselves_alone) {
  const route& slow = GetParam().by;
  planes p;
  const auto call = [&p](const entry_point& entry) {
    return std::make_unique<threaded_call>([&] { p.convert(entry, small); });
  };

  std::optional<vimage::held_generation> hold(slow.matrix);
  std::vector<std::unique_ptr<threaded_call>> slow_calls;
  slow_calls.push_back(call(GetParam()));
  vimage::held_generation::wait_until_begun();
  slow_calls.push_back(call(GetParam()));
  for (const auto& one : slow_calls) one->wait_until_it_waits();

  std::size_t others = 0;
  for (const entry_point& entry : entry_points)
    if (entry.by.matrix != slow.matrix) {
      call(entry)->wait_until_ended();
      ++others;
    }
  for (const auto& one : slow_calls) EXPECT_FALSE(one->has_ended());
  EXPECT_EQ(conversions().size(), others);

  hold.reset();
  for (const auto& one : slow_calls) one->wait_until_ended();
  EXPECT_EQ(matrices_generated(), each_matrix_once);
  EXPECT_EQ(conversions().back().matrix, slow.matrix);
}

INSTANTIATE_TEST_SUITE_P(vimage, apple_threads_meet, testing::ValuesIn(entry_points), name_of<entry_point>);

}  // namespace
}  // namespace morvane::tests
