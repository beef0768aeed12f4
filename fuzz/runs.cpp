// Plans and runs of any formats, sizes, options, strides and bytes: whole pictures and bands in any order give what the
// rules say, read and write nothing but pixels, and write nothing where a call is refused.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "backend/choice.h"
#include "expect.h"
#include "fenced_plane.h"
#include "input.h"
#include "morvane.h"
#include "rules/convert.h"
#include "rules/layout.h"
#include "rules/picture.h"

namespace morvane::fuzz {
namespace {

namespace backend = Processing::Morvane::backend;
using tests::rules::picture;

constexpr int greatest_extent = 64;
constexpr std::uint8_t untouched = 0xa5;

using planes = std::array<fenced_plane, MORVANE_MAX_PLANES>;

// A picture in fenced planes, with the same for the rules and for the C interface.
class fenced_picture {
 public:
  fenced_picture(planes& memory, std::string_view format, int width, int height, FuzzedDataProvider& data)
      : memory_(memory), format_(tests::rules::format_of(format)) {
    of.format = format;
    of.width = width;
    of.height = height;
    given.struct_size = sizeof given;
    for (std::size_t i = 0; i < format_.planes.size(); ++i) lay(i, data);
  }

  std::ptrdiff_t rows(std::size_t plane) const { return tests::rules::rows_of_plane(format_, plane, of.height); }
  std::ptrdiff_t row_bytes(std::size_t plane) const { return tests::rules::row_bytes(format_, plane, of.width); }
  std::size_t plane_count() const { return format_.planes.size(); }

  // Calls take(row, bytes) for every row of every plane.
  template <class Take>
  void each_row(Take take) const {
    for (std::size_t i = 0; i < plane_count(); ++i)
      for (std::ptrdiff_t y = 0; y < rows(i); ++y) take(of.data[i] + of.stride[i] * y, row_bytes(i));
  }
  void fill(std::uint8_t value) const {
    each_row([&](std::uint8_t* row, std::ptrdiff_t bytes) { std::fill_n(row, bytes, value); });
  }
  std::vector<std::uint8_t> bytes() const {
    std::vector<std::uint8_t> all;
    each_row([&](const std::uint8_t* row, std::ptrdiff_t count) { all.insert(all.end(), row, row + count); });
    return all;
  }

  picture of{};
  morvane_picture given{};

 private:
  planes& memory_;
  const tests::rules::format& format_;

  void lay(std::size_t i, FuzzedDataProvider& data) {
    const std::ptrdiff_t stride = row_bytes(i) + data.ConsumeIntegralInRange(0, 70) * data.ConsumeBool();
    const std::ptrdiff_t span = stride * (rows(i) - 1) + row_bytes(i);
    const bool upwards = data.ConsumeBool();
    const bool at_end = data.ConsumeBool();
    memory_[i].open();
    std::uint8_t* lowest = memory_[i].place(span, at_end, data.ConsumeIntegralInRange(0, 63));
    of.data[i] = upwards ? lowest + stride * (rows(i) - 1) : lowest;
    of.stride[i] = upwards ? -stride : stride;
    memory_[i].close_around(of.data[i], of.stride[i], rows(i), row_bytes(i));
    given.data[i] = of.data[i];
    given.stride[i] = of.stride[i];
    given.bytes[i] = span;
  }
};

void fill_at_random(const fenced_picture& p, FuzzedDataProvider& data) {
  const std::vector<std::uint8_t> pattern = data.ConsumeBytes<std::uint8_t>(64);
  std::uint32_t seed = data.ConsumeIntegral<std::uint32_t>();
  std::size_t at = 0;
  p.each_row([&](std::uint8_t* row, std::ptrdiff_t bytes) {
    for (std::ptrdiff_t i = 0; i < bytes; ++i, ++at) {
      seed = seed * 1664525U + 1013904223U;
      row[i] = at < pattern.size() ? pattern[at] : static_cast<std::uint8_t>(seed >> 24);
    }
  });
}

void describe_colour(picture& p, FuzzedDataProvider& data) {
  using enum tests::rules::matrix;
  constexpr tests::rules::matrix matrices[] = {bt601, bt709, bt2020};
  p.of = data.PickValueInArray(matrices);
  if (data.ConsumeBool()) p.in = data.ConsumeBool() ? tests::rules::range::full : tests::rules::range::video;
}

morvane_description description_of(const picture& p) {
  morvane_description d{};
  d.struct_size = sizeof d;
  d.format = morvane_format_named(std::string(p.format).c_str());
  d.width = p.width;
  d.height = p.height;
  constexpr std::int32_t matrices[] = {MORVANE_BT601, MORVANE_BT709, MORVANE_BT2020};
  d.matrix = matrices[static_cast<std::size_t>(p.of)];
  if (p.in) d.range = *p.in == tests::rules::range::full ? MORVANE_FULL : MORVANE_VIDEO;
  return d;
}

tests::rules::options options(FuzzedDataProvider& data) {
  tests::rules::options how;
  if (data.ConsumeBool()) how.chroma_filter = tests::rules::filter::nearest;
  if (data.ConsumeBool()) how.chroma_siting = tests::rules::siting::center;
  const auto part = [&] { return data.ConsumeIntegral<std::uint8_t>(); };
  if (data.ConsumeBool()) how.background = tests::rules::rgb8{part(), part(), part()};
  return how;
}

morvane_options given_options(const tests::rules::options& how) {
  morvane_options o{};
  o.struct_size = sizeof o;
  o.filter = how.chroma_filter == tests::rules::filter::nearest ? MORVANE_NEAREST : MORVANE_LINEAR;
  o.siting = how.chroma_siting == tests::rules::siting::center ? MORVANE_CENTER : MORVANE_LEFT;
  if (!how.background) return o;
  o.has_background = 1;
  o.background[0] = how.background->r;
  o.background[1] = how.background->g;
  o.background[2] = how.background->b;
  return o;
}

// What the rules make of the source.
std::vector<std::uint8_t> expected_bytes(const picture& source, picture destination, const tests::rules::options& how) {
  const tests::rules::format& f = tests::rules::format_of(destination.format);
  std::vector<std::uint8_t> memory;
  std::array<std::size_t, MORVANE_MAX_PLANES> begins{};
  for (std::size_t i = 0; i < f.planes.size(); ++i) {
    begins[i] = memory.size();
    destination.stride[i] = tests::rules::row_bytes(f, i, destination.width);
    memory.resize(memory.size() + static_cast<std::size_t>(destination.stride[i] *
                                                           tests::rules::rows_of_plane(f, i, destination.height)));
  }
  for (std::size_t i = 0; i < f.planes.size(); ++i) destination.data[i] = memory.data() + begins[i];
  tests::rules::convert(source, destination, how);
  return memory;
}

class run_of_plan {
 public:
  run_of_plan(const morvane_plan* plan, fenced_plane& scratch, const fenced_picture& source,
              const fenced_picture& destination)
      : plan_(plan), scratch_(scratch), source_(source), destination_(destination) {}

  // With scratch memory somewhere, which holds what was left there.
  std::int32_t rows(std::int32_t first, std::int32_t count, FuzzedDataProvider& data, std::int64_t missing = 0) {
    const std::int64_t needed = morvane_plan_scratch_bytes(plan_);
    scratch_.open();
    std::uint8_t* at = scratch_.place(needed, data.ConsumeBool(), data.ConsumeIntegralInRange(0, 63));
    scratch_.close_around(at, 0, 1, needed);
    morvane_error e{};
    const bool whole = first == 0 && count == destination_.of.height;
    const std::int32_t code =
        whole ? morvane_plan_run(plan_, &source_.given, &destination_.given, at, needed - missing, &e)
              : morvane_plan_run_rows(plan_, &source_.given, &destination_.given, first, count, at, needed, &e);
    expect(code == e.code, "an error has the code that is answered");
    return code;
  }

 private:
  const morvane_plan* plan_;
  fenced_plane& scratch_;
  const fenced_picture& source_;
  const fenced_picture& destination_;
};

// Bands of one to three units in any order.
std::vector<std::pair<int, int>> bands(int height, int unit, FuzzedDataProvider& data) {
  std::vector<std::pair<int, int>> all;
  for (int first = 0; first < height;) {
    const int rows = std::min(unit * data.ConsumeIntegralInRange(1, 3), height - first);
    all.emplace_back(first, rows);
    first += rows;
  }
  for (std::size_t i = all.size(); i > 1; --i)
    std::swap(all[i - 1], all[data.ConsumeIntegralInRange<std::size_t>(0, i - 1)]);
  return all;
}

// What a run gives, which is what bands in any order give.
std::vector<std::uint8_t> bytes_of_runs(run_of_plan& run, const fenced_picture& destination, int unit,
                                        FuzzedDataProvider& data) {
  const int height = destination.of.height;
  destination.fill(untouched);
  expect(run.rows(0, height, data) == MORVANE_OK, "a right call is done");
  std::vector<std::uint8_t> made = destination.bytes();
  destination.fill(untouched);
  for (const auto& [first, rows] : bands(height, unit, data))
    expect(run.rows(first, rows, data) == MORVANE_OK, "a right band is done");
  expect(destination.bytes() == made, "bands in any order give the bytes of one run");
  return made;
}

// A number up to a greatest one, which half of them are or nearly are.
std::int64_t at_most(std::int64_t greatest, std::int64_t least, FuzzedDataProvider& data) {
  const std::int64_t near = std::max(least, greatest - 2);
  return data.ConsumeIntegralInRange(data.ConsumeBool() ? near : least, greatest);
}

// One thing is made wrong; the code says which.
std::int32_t spoil(fenced_picture& source, fenced_picture& destination, FuzzedDataProvider& data) {
  fenced_picture& p = data.ConsumeBool() ? source : destination;
  const std::size_t i = data.ConsumeIntegralInRange<std::size_t>(0, p.plane_count() - 1);
  switch (data.ConsumeIntegralInRange(0, 3)) {
    case 0:
      p.given.data[i] = nullptr;
      return MORVANE_NULL;
    case 1:
      p.given.bytes[i] = at_most(p.given.bytes[i] - 1, INT64_MIN, data);
      return MORVANE_PLANE_TOO_SHORT;
    case 2:
      if (p.rows(i) == 1) return MORVANE_OK;
      p.given.stride[i] = at_most(p.row_bytes(i) - 1, 0, data) * (data.ConsumeBool() ? 1 : -1);
      return MORVANE_STRIDE;
    default: {
      if (p.rows(i) == 1) return MORVANE_OK;
      // More bytes than there are, or more than there can be.
      const std::int64_t far = data.ConsumeIntegralInRange(p.given.bytes[i], INT64_MAX);
      p.given.stride[i] = data.ConsumeBool() ? far : -far;
      return far > (INT64_MAX - p.row_bytes(i)) / (p.rows(i) - 1) ? MORVANE_STRIDE : MORVANE_PLANE_TOO_SHORT;
    }
  }
}

// Whether a row of the one plane shares a byte with a row of the other.
bool share(const fenced_picture& a, std::size_t i, const fenced_picture& b, std::size_t j) {
  const auto begin = [](const fenced_picture& p, std::size_t plane, std::ptrdiff_t row) {
    return static_cast<const std::uint8_t*>(p.given.data[plane]) + p.given.stride[plane] * row;
  };
  for (std::ptrdiff_t x = 0; x < a.rows(i); ++x)
    for (std::ptrdiff_t y = 0; y < b.rows(j); ++y)
      if (begin(a, i, x) < begin(b, j, y) + b.row_bytes(j) && begin(b, j, y) < begin(a, i, x) + a.row_bytes(i))
        return true;
  return false;
}

// Moves a plane of the destination near another plane; whether they share bytes then.
bool is_moved_onto_another(fenced_picture& destination, const fenced_picture& source, FuzzedDataProvider& data) {
  const std::size_t i = data.ConsumeIntegralInRange<std::size_t>(0, destination.plane_count() - 1);
  const bool onto_source = destination.plane_count() == 1 || data.ConsumeBool();
  const fenced_picture& other = onto_source ? source : destination;
  const std::size_t j = onto_source ? data.ConsumeIntegralInRange<std::size_t>(0, source.plane_count() - 1)
                                    : (i + 1) % destination.plane_count();
  const std::int64_t far = std::max(other.given.bytes[j], destination.given.bytes[i]);
  destination.given.data[i] =
      static_cast<std::uint8_t*>(other.given.data[j]) + data.ConsumeIntegralInRange<std::int64_t>(-far, far);
  return share(destination, i, other, j);
}

void expect_refusals(run_of_plan& run, fenced_picture& source, fenced_picture& destination, int unit,
                     FuzzedDataProvider& data) {
  const int height = destination.of.height;
  destination.fill(untouched);
  const std::vector<std::uint8_t> before = destination.bytes();
  const std::int32_t first = data.ConsumeIntegral<std::int32_t>(), rows = data.ConsumeIntegral<std::int32_t>();
  const bool begins = first >= 0 && first < height && first % unit == 0;
  const bool ends = rows > 0 && begins && rows <= height - first && (rows % unit == 0 || rows == height - first);
  if (!ends) expect(run.rows(first, rows, data) == MORVANE_ROWS, "a band that is none is refused");
  const std::int64_t missing = -at_most(-1, -INT64_MAX, data);
  expect(run.rows(0, height, data, missing) == MORVANE_SCRATCH, "too little scratch memory is refused");
  const morvane_picture given = destination.given;
  if (is_moved_onto_another(destination, source, data))
    expect(run.rows(0, height, data) == MORVANE_OVERLAP, "planes that share bytes are refused");
  destination.given = given;
  const std::int32_t code = spoil(source, destination, data);
  if (code != MORVANE_OK) expect(run.rows(0, height, data) == code, "a picture that is none is refused");
  expect(destination.bytes() == before, "a call that is refused writes nothing");
}

// The memory of all runs, one after the other.
struct rooms {
  planes source, destination;
  fenced_plane scratch;
};

// A plan and its pictures. `rules` says what it makes of them; an entry point has its own formula.
void run(rooms& in, fenced_picture& source, fenced_picture& destination, const morvane_options& given,
         const tests::rules::options* rules, FuzzedDataProvider& data) {
  const morvane_description source_is = description_of(source.of), destination_is = description_of(destination.of);
  morvane_plan* plan = morvane_plan_create(&source_is, &destination_is, &given, nullptr);
  expect(rules == nullptr || (plan != nullptr) == tests::rules::convertible(source.of.format, destination.of.format),
         "there is a plan where the rules have a conversion");
  if (plan == nullptr) return;
  run_of_plan of(plan, in.scratch, source, destination);
  const int unit = morvane_plan_row_granularity(plan);
  fill_at_random(source, data);
  const std::vector<std::uint8_t> read = source.bytes();
  const std::vector<std::uint8_t> made = bytes_of_runs(of, destination, unit, data);
  if (rules != nullptr)
    expect(made == expected_bytes(source.of, destination.of, *rules), "a run gives the bytes of the rules");
  expect(source.bytes() == read, "a source is not written");
  expect_refusals(of, source, destination, unit, data);
  morvane_plan_destroy(plan);
}

void run_by_rules(rooms& in, int width, int height, FuzzedDataProvider& data) {
  static const std::vector<std::string_view> names = tests::rules::format_names();
  const auto any_name = [&] { return names[data.ConsumeIntegralInRange<std::size_t>(0, names.size() - 1)]; };
  const std::string_view from = any_name(), to = any_name();
  fenced_picture source(in.source, from, width, height, data);
  fenced_picture destination(in.destination, to, width, height, data);
  describe_colour(source.of, data);
  describe_colour(destination.of, data);
  const tests::rules::options how = options(data);
  morvane_options given = given_options(how);
  if (data.ConsumeIntegralInRange(0, 15) == 0) given.threads = data.ConsumeIntegralInRange(2, 3);
  given.stores = data.ConsumeIntegralInRange(0, 2);
  run(in, source, destination, given, &how, data);
}

// By an entry point, whatever it needs and however irregular it is.
void run_via(rooms& in, int width, int height, FuzzedDataProvider& data) {
  morvane_entry_point by{};
  by.struct_size = sizeof by;
  const std::int32_t index = data.ConsumeIntegralInRange(0, morvane_entry_point_count() - 1);
  expect(morvane_describe_entry_point(index, &by, nullptr) == MORVANE_OK, "an entry point is known");
  if (by.source == 0) return;
  for (const morvane_format f : {by.source, by.destination}) {
    morvane_format_info info{};
    info.struct_size = sizeof info;
    expect(morvane_describe_format(f, &info, nullptr) == MORVANE_OK, "a format is known");
    width = (width + info.width_multiple - 1) / info.width_multiple * info.width_multiple;
    height = (height + info.height_multiple - 1) / info.height_multiple * info.height_multiple;
  }
  fenced_picture source(in.source, morvane_format_name(by.source), width, height, data);
  fenced_picture destination(in.destination, morvane_format_name(by.destination), width, height, data);
  describe_colour(source.of, data);
  destination.of.of = source.of.of;
  morvane_options given{};
  given.struct_size = sizeof given;
  given.via = by.name;
  given.allow_irregular = 1;
  given.rescale = by.rescales != 0 && data.ConsumeBool() ? 1 : 0;
  given.stores = data.ConsumeIntegralInRange(0, 2);
  run(in, source, destination, given, nullptr, data);
}

void run(FuzzedDataProvider& data) {
  static rooms in;
  const int width = data.ConsumeIntegralInRange(1, greatest_extent);
  const int height = data.ConsumeIntegralInRange(1, greatest_extent);
  const auto backends = backend::available();
  backend::choose(backends[data.ConsumeIntegralInRange<std::size_t>(0, backends.size() - 1)]);
  if (data.ConsumeIntegralInRange(0, 7) == 0)
    run_via(in, width, height, data);
  else
    run_by_rules(in, width, height, data);
}

}  // namespace
}  // namespace morvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* input, const std::size_t size) {
  const std::vector<std::uint8_t> bytes = morvane::fuzz::prolonged(input, size);
  FuzzedDataProvider data(bytes.data(), bytes.size());
  morvane::fuzz::run(data);
  return 0;
}
