// A call of the checked interface that is right until something of it is changed, and what it answers then.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "morvane.hpp"

namespace morvane::tests {

struct refusal {
  int code = 0;
  std::string argument{};
  std::int64_t got = 0;
  std::int64_t needed = 0;

  bool operator==(const refusal&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const refusal& r) {
    return out << "code " << r.code << " at " << r.argument << ": got " << r.got << ", needed " << r.needed;
  }
};

inline refusal refusal_of(const morvane_error& e) {
  return {e.code, e.argument, e.got, e.needed};
}

// An error whose every byte is something, so that fields that are left out show.
inline morvane_error smeared_error() {
  morvane_error e;
  std::fill_n(reinterpret_cast<std::uint8_t*>(&e), sizeof e, std::uint8_t{0x5a});
  return e;
}

// One plane of uyvy becomes two of y_uv_420, which lie among bytes that belong to nobody. Both matrices differ, so that
// there are lines.
struct attempt {
  morvane_description from =
      description{.format = format_named("uyvy"), .width = 6, .height = 4, .matrix = matrix::bt601};
  morvane_description to = description{.format = format_named("y_uv_420"), .width = 6, .height = 4};
  morvane_options how = options{};
  std::vector<std::uint8_t> read = std::vector<std::uint8_t>(48, 77);
  std::vector<std::uint8_t> memory = untouched();
  std::uint8_t* written = memory.data() + 16;
  morvane_picture source{sizeof(morvane_picture), {read.data()}, {12}, {48}};
  morvane_picture destination{sizeof(morvane_picture), {written, written + 40}, {6, 6}, {24, 12}};

  attempt() = default;
  attempt(const attempt&) = delete;
  attempt& operator=(const attempt&) = delete;

  static std::vector<std::uint8_t> untouched() { return std::vector<std::uint8_t>(84, 3); }

  void expect_untouched() const { EXPECT_EQ(memory, untouched()) << "bytes are written"; }

  // In C, with an error and without one, and in C++: all answer the same, and a refusal writes nothing.
  refusal result() {
    morvane_error e = smeared_error();
    const std::int32_t code = morvane_convert(&from, &source, &to, &destination, &how, &e);
    EXPECT_EQ(code, e.code);
    EXPECT_EQ(morvane_convert(&from, &source, &to, &destination, &how, nullptr), code);
    expect_fields(e);
    expect_exception(e);
    return refusal_of(e);
  }

  // The message is one sentence that begins with the name of the argument.
  void expect_fields(const morvane_error& e) const {
    const std::string argument(e.argument), message(e.message);
    EXPECT_LT(argument.size(), sizeof e.argument);
    EXPECT_LT(message.size(), sizeof e.message - 1) << "is cut off: " << message;
    if (e.code == MORVANE_OK) {
      EXPECT_EQ(refusal_of(e), refusal());
      EXPECT_EQ(message, "");
      return;
    }
    expect_untouched();
    EXPECT_TRUE(message.starts_with(argument + " ")) << message;
    EXPECT_EQ(message.find_first_of("\n\t"), std::string::npos) << message;
    EXPECT_NE(message.back(), '.') << message;
  }

 private:
  // C++ sets the sizes of descriptions and options itself.
  void expect_exception(const morvane_error& e) {
    if (from.struct_size != sizeof from || to.struct_size != sizeof to || how.struct_size != sizeof how) return;
    const auto in_cpp = [](const morvane_description& d) {
      return description{d.format, d.width, d.height, static_cast<matrix>(d.matrix), static_cast<range>(d.range)};
    };
    options o{.filter = static_cast<filter>(how.filter), .siting = static_cast<siting>(how.siting), .background = {}};
    o.threads = how.threads;
    o.via = how.via == nullptr ? "" : how.via;
    o.allow_irregular = how.allow_irregular != 0;
    o.rescale = how.rescale != 0;
    o.stores = static_cast<stores>(how.stores);
    if (how.has_background != 0) o.background = color{how.background[0], how.background[1], how.background[2]};
    try {
      convert(in_cpp(from), source, in_cpp(to), destination, o);
      EXPECT_EQ(e.code, MORVANE_OK) << "nothing is thrown";
    } catch (const error& thrown) {
      EXPECT_EQ((refusal{thrown.code(), thrown.argument(), thrown.got(), thrown.needed()}), refusal_of(e));
      EXPECT_STREQ(thrown.what(), e.message);
    }
    if (e.code != MORVANE_OK) expect_untouched();
  }
};

inline refusal after(const std::function<void(attempt&)>& change) {
  attempt a;
  change(a);
  return a.result();
}

}  // namespace morvane::tests
