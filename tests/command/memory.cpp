// How much memory is free, by what the files of a system say.
#include "memory.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "errors.h"

namespace morvane::tests {

namespace {

constexpr std::int64_t million = 1'000'000;

// A system of files, with 900 million bytes that are free on the machine.
class free_memory : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = testing::TempDir() + "morvane-memory-XXXXXX";
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    root_ = pattern;
    write("/proc/meminfo", "MemTotal:  9000000 kB\nMemFree:  1 kB\nMemAvailable:  878906 kB\nBuffers:  1 kB\n");
  }
  void TearDown() override { std::filesystem::remove_all(root_); }

  void write(const std::string& path, const std::string& content) const {
    std::filesystem::create_directories(std::filesystem::path(root_ + path).parent_path());
    std::ofstream(root_ + path) << content;
  }
  void write_group(const std::string& group, const std::string& limit, std::int64_t used,
                   const std::string& stat = "") const {
    write("/sys/fs/cgroup" + group + "/memory.max", limit + "\n");
    write("/sys/fs/cgroup" + group + "/memory.current", std::to_string(used) + "\n");
    if (!stat.empty()) write("/sys/fs/cgroup" + group + "/memory.stat", stat);
  }
  void write_group_of_version_1(const std::string& group, std::int64_t limit, std::int64_t used) const {
    write("/sys/fs/cgroup/memory" + group + "/memory.limit_in_bytes", std::to_string(limit) + "\n");
    write("/sys/fs/cgroup/memory" + group + "/memory.usage_in_bytes", std::to_string(used) + "\n");
  }

  // So much is free, and not a byte more.
  void expect_free(std::int64_t bytes, const char* in_words) const {
    EXPECT_NO_THROW(tool::require_memory(bytes, root_));
    try {
      tool::require_memory(bytes + 1, root_);
      ADD_FAILURE() << "more than " << bytes << " bytes are free";
    } catch (const tool::failure& f) {
      EXPECT_EQ(f.exit_code, tool::exit_io);
      const std::string message = f.what(), end = std::string(" of memory, and ") + in_words + " are free";
      EXPECT_TRUE(message.starts_with("frames of this size need ") && message.ends_with(end)) << message;
    }
  }
  // The message has no number below zero.
  void expect_none_free() const {
    try {
      tool::require_memory(1, root_);
      ADD_FAILURE() << "a byte is free";
    } catch (const tool::failure& f) {
      EXPECT_STREQ(f.what(), "frames of this size need 0.0 MB of memory, and 0.0 MB are free");
    }
  }

 private:
  std::string root_;
};

TEST_F(free_memory, is_that_of_the_machine) {
  expect_free(878906 * 1024, "900.0 MB");
  write("/proc/self/cgroup", "0::/user/shell\n");
  expect_free(878906 * 1024, "900.0 MB");
}

TEST_F(free_memory, is_what_the_group_leaves) {
  write("/proc/self/cgroup", "0::/user/shell\n");
  write_group("/user/shell", "500000000", 200 * million);
  expect_free(300 * million, "300.0 MB");
  write_group("/user/shell", "5000000000", 200 * million);
  expect_free(878906 * 1024, "900.0 MB");
  write_group("/user/shell", "max", 200 * million);
  expect_free(878906 * 1024, "900.0 MB");
}

TEST_F(free_memory, is_what_every_group_around_it_leaves) {
  write("/proc/self/cgroup", "0::/user/shell/job\n");
  write_group("/user/shell/job", "max", 10 * million);
  write_group("/user/shell", "500000000", 100 * million);
  write_group("/user", "500000000", 400 * million);
  expect_free(100 * million, "100.0 MB");
  write_group("/user", "500000000", 50 * million);
  expect_free(400 * million, "400.0 MB");
  write_group("/other", "1000", 900);
  expect_free(400 * million, "400.0 MB");
}

// A container sees its own group as the outermost one, under that name or under the one that it has outside.
TEST_F(free_memory, is_what_a_container_leaves) {
  write_group("", "300000000", 100 * million);
  for (const char* group : {"0::/\n", "0::/pods/one\n"}) {
    write("/proc/self/cgroup", group);
    expect_free(200 * million, "200.0 MB");
  }
}

// What was read of files stays in memory as long as nobody needs it.
TEST_F(free_memory, counts_the_pages_of_files) {
  write("/proc/self/cgroup", "0::/\n");
  write_group("", "300000000", 290 * million,
              "anon 40000000\nfile 250000000\ninactive_anon 39000000\ninactive_file 200000000\nactive_file 30000000\n");
  expect_free(240 * million, "240.0 MB");
}

TEST_F(free_memory, is_none_where_more_is_used) {
  write("/proc/self/cgroup", "0::/\n");
  write_group("", "300000000", 310 * million);
  expect_none_free();
}

TEST_F(free_memory, is_what_groups_of_version_1_leave) {
  write("/proc/self/cgroup", "5:cpu,cpuacct:/a\n4:devices,memory:/user/shell\n1:name=systemd:/b\n0::/\n");
  write_group_of_version_1("/user/shell", INT64_MAX / 4096 * 4096, 20 * million);
  write_group_of_version_1("/user", 500 * million, 400 * million);
  write_group_of_version_1("/a", 1000, 900);
  write_group("/b", "1000", 900);
  expect_free(100 * million, "100.0 MB");
  write("/sys/fs/cgroup/memory/user/memory.stat",
        "active_file 1\ninactive_file 2\ntotal_inactive_file 60000000\ntotal_active_file 30000000\n");
  expect_free(190 * million, "190.0 MB");
}

}  // namespace

}  // namespace morvane::tests
