#include "workload.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <span>
#include <type_traits>

namespace morvane::bench {

namespace {

constexpr std::size_t cache_line = 64;

// Source and destination lie half a page apart, so that no load waits for a store whose address merely looks alike to
// the processor. Conversions and copies gain from it equally.
constexpr std::size_t page = 4096;

constexpr size sizes[] = {{1920, 16}, {1920, 1080}, {3840, 2160}};
constexpr shape shapes[] = {shape::tight, shape::padded, shape::odd};

// The difference of two images of uyvy, which converts nothing and so is not in the catalogue.
void difference(const catalogue::call& c) {
  Processing::Morvane::sum_absolute_differences::difference(c.source.data[0], c.source.stride[0], c.source.data[1],
                                                            c.source.stride[1], 2 * c.xres, c.yres);
}

constexpr catalogue::conversion difference_row = {
    .name = "sum_absolute_differences::difference", .source = "uyvy_uyvy", .entry = {difference}};

int stride_of(const catalogue::plane& p, const workload& w) {
  const std::int64_t row = p.row_bytes(w.picture.xres);
  return static_cast<int>(w.memory == shape::padded ? row + std::int64_t{cache_line} : row);
}

// How far an unaligned plane lies behind the start of a cache line.
std::size_t misplacement(const workload& w, bool is_source) {
  if (w.memory != shape::unaligned) return 0;
  const std::size_t odd = is_source ? 5 : 13;
  return w.conversion->entry.takes_words ? odd + 1 : odd;
}

// What a plane takes of the memory, in whole cache lines.
std::size_t room_for(const catalogue::plane& p, const workload& w) {
  const std::size_t bytes =
      static_cast<std::size_t>(stride_of(p, w)) * static_cast<std::size_t>(p.rows(w.picture.yres)) +
      misplacement(w, false);
  return (bytes + cache_line - 1) / cache_line * cache_line;
}

std::span<const catalogue::plane> planes_of(std::string_view format_name) {
  if (format_name.empty()) return {};
  const catalogue::format& format = *catalogue::find_format(format_name);
  return {format.planes.data(), format.plane_count()};
}

// Where the destination has fewer rows of the same samples, as many rows of the source are read.
int image_rows_read(const catalogue::plane& source, const catalogue::conversion& c) {
  int rows = source.image_rows;
  for (const catalogue::plane& p : planes_of(c.destination))
    if (p.components == source.components) rows = std::max(rows, p.image_rows);
  return rows;
}

std::int64_t bytes_read(const workload& w) {
  std::int64_t bytes = 0;
  for (catalogue::plane p : planes_of(w.conversion->source)) {
    p.image_rows = image_rows_read(p, *w.conversion);
    bytes += p.row_bytes(w.picture.xres) * p.rows(w.picture.yres);
  }
  return bytes;
}

std::int64_t bytes_written(const workload& w) {
  const std::string_view name = w.conversion->destination;
  return name.empty() ? 0 : catalogue::find_format(name)->frame_bytes(w.picture.xres, w.picture.yres);
}

template <class Byte>
catalogue::planes<Byte> lay_out(std::string_view format_name, const workload& w, Byte* memory) {
  catalogue::planes<Byte> result;
  std::size_t i = 0;
  for (const catalogue::plane& p : planes_of(format_name)) {
    result.data[i] = memory + misplacement(w, std::is_const_v<Byte>);
    result.stride[i] = stride_of(p, w);
    memory += room_for(p, w);
    ++i;
  }
  return result;
}

std::size_t bytes_needed(const workload& w) {
  const catalogue::conversion& c = *w.conversion;
  const auto room = [&](std::string_view format_name) {
    std::size_t bytes = 0;
    for (const catalogue::plane& p : planes_of(format_name))
      bytes += room_for(p, w) + static_cast<std::size_t>(c.bytes_past(p, w.picture.xres));
    return bytes;
  };
  return std::max({room(c.source), room(c.destination), static_cast<std::size_t>(w.bytes() / 2)});
}

}  // namespace

std::string_view name_of(shape s) {
  switch (s) {
    case shape::tight:
      return "tight";
    case shape::padded:
      return "padded";
    case shape::odd:
      return "odd";
    case shape::unaligned:
      return "unaligned";
  }
  return {};
}

std::string workload::size_name() const {
  return std::to_string(picture.xres) + "x" + std::to_string(picture.yres);
}

std::string workload::name() const {
  return display_name(*conversion).append("/").append(size_name()).append("/").append(shape_name());
}

std::vector<const catalogue::conversion*> all_conversions() {
  std::vector<const catalogue::conversion*> result;
  for (const catalogue::conversion& c : catalogue::conversions) result.push_back(&c);
  result.push_back(&difference_row);
  return result;
}

std::string display_name(const catalogue::conversion& c) {
  const auto same_name = [&c](const catalogue::conversion& other) { return c.name == other.name; };
  const bool shared = std::count_if(catalogue::conversions.begin(), catalogue::conversions.end(), same_name) > 1;
  std::string result(c.name);
  if (shared) result.append("(").append(c.destination).append(")");
  return result;
}

workload make_workload(const catalogue::conversion& c, size picture, shape memory) {
  if (memory == shape::odd) --picture.xres;
  workload w{.conversion = &c, .picture = picture, .memory = memory};
  w.bytes_read = bytes_read(w);
  w.bytes_written = bytes_written(w);
  return w;
}

std::vector<workload> all_workloads() {
  std::vector<workload> result;
  for (const catalogue::conversion* c : all_conversions())
    for (const size& s : sizes)
      for (const shape m : shapes) result.push_back(make_workload(*c, s, m));
  return result;
}

arena::arena(const std::vector<workload>& workloads) : half_(0) {
  for (const workload& w : workloads) half_ = std::max(half_, bytes_needed(w));
  half_ = (half_ + page - 1) / page * page;
  const std::size_t total = 2 * half_ + 2 * page;
  memory_.reset(new std::uint8_t[total]);
  std::mt19937 random(1);
  std::generate_n(memory_.get(), total, [&random] { return static_cast<std::uint8_t>(random()); });
}

std::uint8_t* arena::source() const {
  void* start = memory_.get();
  std::size_t room = page + half_;
  return static_cast<std::uint8_t*>(std::align(page, half_, start, room));
}

std::uint8_t* arena::destination() const {
  return source() + half_ + page / 2;
}

catalogue::call arena::prepare(const workload& w, bool* opaque) const {
  catalogue::call c;
  c.source = lay_out<const std::uint8_t>(w.conversion->source, w, source());
  c.destination = lay_out<std::uint8_t>(w.conversion->destination, w, destination());
  c.xres = w.picture.xres / w.conversion->pixels_per_xres;
  c.yres = w.picture.yres / w.conversion->rows_per_yres;
  c.argument = w.conversion->extra == catalogue::argument::color_space ? Processing::Morvane::ccir_709 : 0;
  c.opaque = opaque;
  return c;
}

void arena::copy(std::int64_t bytes) const {
  std::memcpy(destination(), source(), static_cast<std::size_t>(bytes / 2));
}

}  // namespace morvane::bench
