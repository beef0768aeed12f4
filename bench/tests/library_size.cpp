// What the report says of the size of the shared library.
#include "report/library_size.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "made_up.h"
#include "report/page.h"

namespace morvane::bench {
namespace {

namespace fs = std::filesystem;

class size_of_library : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(directory_);
    aims_.library_megabytes = 3;
  }
  void TearDown() override { fs::remove_all(directory_); }

  std::optional<library_size> read(const std::string& text) const {
    std::ofstream(directory_ / "sizes") << text;
    return read_library_size(directory_ / "sizes");
  }

  const fs::path directory_ = fs::path(testing::TempDir()) / ("library_size_" + std::to_string(getpid()));
  targets aims_ = made_up_targets();
};

TEST_F(size_of_library, says_what_each_backend_adds) {
  const std::optional<library_size> s = read("libmorvane.so 1500000\nportable 400000\navx2 340000\n");
  EXPECT_EQ(sentence(s.value(), aims_),
            "The shared library without symbols has 1.50 MB (target: at most 3.00): portable 0.40, avx2 0.34, all else "
            "0.76.");
}

TEST_F(size_of_library, misses_what_is_larger) {
  EXPECT_TRUE(misses(read("libmorvane.so 3000000\n"), aims_).empty());
  const std::vector<miss> found = misses(read("libmorvane.so 3000001\n"), aims_);
  ASSERT_EQ(found.size(), 1);
  EXPECT_EQ(found.front().row, "shared library");
  EXPECT_NEAR(found.front().reached, 3, 1e-5);
  EXPECT_TRUE(misses(std::nullopt, aims_).empty());
}

TEST_F(size_of_library, refuses_a_file_of_another_kind) {
  EXPECT_FALSE(read_library_size({}));
  for (const char* text : {"", "libmorvane.so", "libmorvane.so 1000 avx2", "libmorvane.so 1000 avx2 many",
                           "libmorvane.so 1000 avx2 600 portable 600"})
    EXPECT_THROW(read(text), std::runtime_error) << text;
  EXPECT_THROW(read_library_size(directory_ / "nothing"), std::runtime_error);
}

TEST_F(size_of_library, stands_on_the_page) {
  std::ofstream(directory_ / "performance.md") << "<!-- begin measured size -->\nold\n<!-- end measured size -->\n";
  refresh_performance_page(directory_, library_size{.bytes = 1'000'000}, aims_, "abc");
  std::ifstream in(directory_ / "performance.md");
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  EXPECT_NE(text.find("has 1.00 MB"), std::string::npos) << text;
  EXPECT_NE(text.find(", commit abc.\n"), std::string::npos);
  EXPECT_EQ(text.find("old"), std::string::npos);
}

}  // namespace
}  // namespace morvane::bench
