// Descriptions, options and alignments of any bytes: layouts and plans are refused in full, or hold what they promise.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "expect.h"
#include "input.h"
#include "morvane.h"

namespace morvane::fuzz {
namespace {

__extension__ using wide = __int128;

// A number that may be right, or any number.
template <class Number>
Number number(FuzzedDataProvider& data, const Number least, const Number greatest) {
  return data.ConsumeBool() ? data.ConsumeIntegralInRange(least, greatest) : data.ConsumeIntegral<Number>();
}

std::uint32_t struct_size(FuzzedDataProvider& data, const std::size_t right) {
  return data.ConsumeIntegralInRange(0, 15) == 0 ? data.ConsumeIntegral<std::uint32_t>()
                                                 : static_cast<std::uint32_t>(right);
}

morvane_description description(FuzzedDataProvider& data) {
  morvane_description d{};
  d.struct_size = struct_size(data, sizeof d);
  d.format = number<std::int32_t>(data, 1, morvane_format_count());
  d.width = number<std::int32_t>(data, 1, 5000);
  d.height = number<std::int32_t>(data, 1, 5000);
  constexpr std::int32_t matrices[] = {0, 601, 709, 2020};
  d.matrix =
      data.ConsumeIntegralInRange(0, 15) == 0 ? data.ConsumeIntegral<std::int32_t>() : data.PickValueInArray(matrices);
  d.range = number<std::int32_t>(data, 0, 2);
  return d;
}

morvane_options options(FuzzedDataProvider& data) {
  morvane_options o{};
  o.struct_size = struct_size(data, sizeof o);
  o.filter = number<std::int32_t>(data, 0, 1);
  o.siting = number<std::int32_t>(data, 0, 1);
  o.has_background = data.ConsumeIntegral<std::int32_t>();
  data.ConsumeData(o.background, sizeof o.background);
  // No more threads than an input is worth.
  o.threads = data.ConsumeIntegralInRange(0, 15) == 0 ? data.ConsumeIntegral<std::int32_t>() : 0;
  if (o.threads > 2 && o.threads <= 256) o.threads = 2;
  o.allow_irregular = data.ConsumeBool() ? 1 : 0;
  o.rescale = data.ConsumeIntegralInRange(0, 7) == 0 ? 1 : 0;
  o.stores = data.ConsumeIntegralInRange(-1, 3);
  return o;
}

void expect_error(const morvane_error& e, const std::int32_t code) {
  expect(e.code == code && code > MORVANE_OK && code <= MORVANE_VIA, "an error has the code that is answered");
  expect(std::memchr(e.argument, 0, sizeof e.argument) != nullptr, "the name of an argument has an end");
  expect(std::memchr(e.message, 0, sizeof e.message) != nullptr, "a message has an end");
  const std::string_view argument(e.argument), message(e.message);
  expect(!argument.empty() && message.starts_with(argument), "a message begins with the argument");
}

// The name of an entry point, or any text.
std::string name_of_entry_point(FuzzedDataProvider& data) {
  morvane_entry_point by{};
  by.struct_size = sizeof by;
  const std::int32_t code =
      morvane_describe_entry_point(number<std::int32_t>(data, 0, morvane_entry_point_count()), &by, nullptr);
  return code == MORVANE_OK ? by.name : data.ConsumeRandomLengthString(300);
}

void facts(FuzzedDataProvider& data) {
  const auto format = number<std::int32_t>(data, 0, morvane_format_count());
  morvane_format_info info{};
  info.struct_size = struct_size(data, sizeof info);
  morvane_error e;
  std::memset(&e, 0x5a, sizeof e);
  const std::int32_t code = morvane_describe_format(format, &info, &e);
  expect(code != MORVANE_OK || std::string_view(info.name) == morvane_format_name(format), "a format has its name");
  if (code != MORVANE_OK) expect_error(e, code);
  morvane_format found[4] = {-1, -1, -1, -1};
  const std::string name = code == MORVANE_OK && data.ConsumeBool() ? info.ffmpeg : data.ConsumeRandomLengthString(40);
  const std::int32_t count = morvane_formats_called(name.c_str(), found, 3);
  expect(count >= 0 && found[3] == -1, "no more formats are stored than there is room for");
}

void expect_layout(const morvane_layout& layout, const morvane_description& d, const std::int64_t alignment) {
  expect(layout.plane_count >= 1 && layout.plane_count <= MORVANE_MAX_PLANES, "a layout has planes");
  wide end = 0;
  for (std::int32_t i = 0; i < layout.plane_count; ++i) {
    const morvane_plane_layout& p = layout.planes[i];
    expect(p.offset == end, "planes follow each other");
    expect(p.rows == d.height || p.rows == d.height / 2 + d.height % 2, "a plane has all rows, or half of them");
    expect(p.row_bytes >= 1 && p.stride >= p.row_bytes, "a stride has room for a row");
    expect(alignment == 0 || (p.offset % alignment == 0 && p.stride % alignment == 0), "planes are aligned");
    end += wide{p.stride} * p.rows;
  }
  expect(end == layout.bytes && end <= INT64_MAX, "a layout has the bytes of its planes");
}

void lay_out(const morvane_description& d, FuzzedDataProvider& data) {
  const std::int64_t alignment =
      data.ConsumeBool() ? std::int64_t{1} << data.ConsumeIntegralInRange(0, 12) : data.ConsumeIntegral<std::int64_t>();
  morvane_layout layout;
  std::memset(&layout, 0x5a, sizeof layout);
  layout.struct_size = struct_size(data, sizeof layout);
  const morvane_layout before = layout;
  morvane_error e;
  std::memset(&e, 0x5a, sizeof e);
  const std::int32_t code = morvane_lay_out(&d, alignment, &layout, &e);
  if (code == MORVANE_OK) return expect_layout(layout, d, alignment);
  expect_error(e, code);
  expect(std::memcmp(&layout, &before, sizeof layout) == 0, "a layout that is refused is left as it was");
}

void expect_texts(const morvane_plan* plan) {
  std::int32_t steps = 0;
  while (const char* step = morvane_plan_step(plan, steps)) {
    expect(*step != '\0', "a step is said");
    ++steps;
  }
  expect(steps >= 1, "a plan does something");
  for (std::int32_t i = 0; const char* loss = morvane_plan_loss(plan, i); ++i) expect(*loss != '\0', "a loss is said");
}

void plan(const morvane_description& from, const morvane_description& to, const morvane_options& how) {
  morvane_error e;
  std::memset(&e, 0x5a, sizeof e);
  morvane_plan* made = morvane_plan_create(&from, &to, &how, &e);
  if (made == nullptr) return expect_error(e, e.code);
  expect(e.code == MORVANE_OK, "a plan is made without an error");
  expect(from.width == to.width && from.height == to.height, "a plan is for pictures of one size");
  expect(morvane_plan_scratch_bytes(made) >= 0, "scratch memory has a size");
  const std::int32_t unit = morvane_plan_row_granularity(made);
  expect(unit == 1 || unit == 2, "bands begin at each row or each second one");
  expect_texts(made);

  // Nothing of such a size fits into no bytes.
  std::uint8_t nothing[8] = {};
  morvane_picture empty{sizeof empty, {}, {}, {}};
  for (void*& data : empty.data) data = nothing;
  const std::int32_t code = morvane_plan_run(made, &empty, &empty, nothing, 8, &e);
  expect(code == MORVANE_STRIDE || code == MORVANE_PLANE_TOO_SHORT, "planes without bytes are refused");
  expect_error(e, code);
  morvane_plan_destroy(made);
}

}  // namespace
}  // namespace morvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* input, const std::size_t size) {
  const std::vector<std::uint8_t> bytes = morvane::fuzz::prolonged(input, size);
  FuzzedDataProvider data(bytes.data(), bytes.size());
  const morvane_description from = morvane::fuzz::description(data);
  morvane_description to = morvane::fuzz::description(data);
  if (data.ConsumeBool()) {
    to.width = from.width;
    to.height = from.height;
  }
  morvane::fuzz::lay_out(from, data);
  morvane_options how = morvane::fuzz::options(data);
  const std::string via = morvane::fuzz::name_of_entry_point(data);
  if (data.ConsumeIntegralInRange(0, 3) == 0) how.via = via.c_str();
  morvane::fuzz::plan(from, to, how);
  morvane::fuzz::facts(data);
  return 0;
}
