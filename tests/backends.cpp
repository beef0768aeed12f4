// The backends of the build: which of them the processor can run, which one is chosen when the program starts, and that
// a choice takes effect.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "Processing.Morvane.h"
#include "backend/choice.h"
#include "backend/dispatch.h"
#include "recorder.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;
namespace kernel = Processing::Morvane::format_conversion::kernel;

// What was chosen before any test, and so before anything here chooses.
class choice_at_start : public testing::Environment {
 public:
  static inline backend::kind kind{};
  static inline const backend::line_table* lines = nullptr;

  void SetUp() override {
    kind = backend::chosen();
    lines = backend::lines_in_use;
  }
};
[[maybe_unused]] const testing::Environment* const environment = testing::AddGlobalTestEnvironment(new choice_at_start);

std::vector<std::string> words_of(const std::string& text) {
  std::istringstream words(text);
  return {std::istream_iterator<std::string>(words), {}};
}

// The names under which Linux lists what the processor can do, and what itself supports of that. An emulator shows the
// programs that it runs the processor of the machine, so that of the emulated one is then read from another file.
std::set<std::string> flags_of_processor() {
  const char* const other_file = std::getenv("MORVANE_CPUINFO");
  std::ifstream file(other_file != nullptr ? other_file : "/proc/cpuinfo");
  for (std::string line; std::getline(file, line);)
    if (line.starts_with("flags")) {
      const std::vector<std::string> words = words_of(line.substr(line.find(':') + 1));
      return {words.begin(), words.end()};
    }
  return {};
}

struct requirement {
  const char* backend;
  std::vector<std::string> flags;
};

const requirement requirements[] = {
    {"portable", {}},
    {"neon", {}},
    {"avx2", {"avx2", "f16c"}},
    {"avx512", {"f16c", "avx512f", "avx512bw", "avx512dq", "avx512vl", "avx512vbmi", "avx512_vnni"}},
};

bool is_possible(const std::string& name) {
  const std::set<std::string> flags = flags_of_processor();
  for (const requirement& r : requirements)
    if (r.backend == name)
      return std::all_of(r.flags.begin(), r.flags.end(), [&](const std::string& flag) { return flags.contains(flag); });
  ADD_FAILURE() << "what the backend " << name << " needs is not said here";
  return false;
}

std::vector<std::string> names_of_available() {
  std::vector<std::string> names;
  for (const backend::kind k : backend::available()) names.emplace_back(backend::name(k));
  return names;
}

TEST(backends, available_are_those_of_the_build_that_the_processor_can_run) {
  std::vector<std::string> possible;
  for (const std::string& name : words_of(MORVANE_BACKENDS_OF_BUILD))
    if (is_possible(name)) possible.push_back(name);
  EXPECT_EQ(names_of_available(), possible);
}

TEST(backends, the_last_one_is_chosen_at_start) {
  EXPECT_EQ(choice_at_start::kind, backend::available().back());
  backend::choose(backend::available().back());
  EXPECT_EQ(choice_at_start::lines, backend::lines_in_use);
}

using any_function = void (*)();

// The line functions of a few kernels of different families.
std::vector<any_function> lines_in_use() {
  return {reinterpret_cast<any_function>(backend::line_of<kernel::uyvy_to_yuy2>()),
          reinterpret_cast<any_function>(backend::line_of<kernel::uyvy_to_bgr<kernel::matrix::bt601>>()),
          reinterpret_cast<any_function>(backend::line_of<kernel::pa16_to_yuyv_10>()),
          reinterpret_cast<any_function>(backend::line_of<kernel::fill>()),
          reinterpret_cast<any_function>(backend::line_of<kernel::sum_of_differences>())};
}

TEST(backends, each_has_line_functions_of_its_own) {
  std::set<any_function> all;
  std::size_t counted = 0;
  for (const backend::kind k : backend::available()) {
    backend::choose(k);
    EXPECT_EQ(backend::chosen(), k);
    const std::vector<any_function> lines = lines_in_use();
    all.insert(lines.begin(), lines.end());
    counted += lines.size();
  }
  EXPECT_FALSE(all.contains(nullptr));
  EXPECT_EQ(all.size(), counted);
}

TEST(backends, come_back_when_they_are_chosen_again) {
  for (const backend::kind k : backend::available()) {
    backend::choose(k);
    const std::vector<any_function> lines = lines_in_use();
    for (const backend::kind other : backend::available()) {
      backend::choose(other);
      backend::choose(k);
      EXPECT_EQ(lines_in_use(), lines) << backend::name(other) << ", then " << backend::name(k);
      EXPECT_EQ(backend::chosen(), k);
    }
  }
}

// Otherwise a choice would have no effect on them. With one backend there is nothing to look up.
TEST(backends, conversions_call_the_line_functions_in_use) {
  std::uint8_t plane[8]{};
  int calls = 0;
  {
    const recorder recording([&](const line_call&) { ++calls; });
    Processing::Morvane::format_conversion::uyvy::yuy2(plane, 4, plane + 4, 4, 2, 1);
  }
  EXPECT_EQ(calls, calls_can_be_recorded ? 1 : 0);
}

}  // namespace
}  // namespace morvane::tests
