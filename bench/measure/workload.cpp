#include "measure/workload.h"

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

std::size_t bytes_needed(const std::vector<workload>& workloads) {
  std::size_t bytes = 0;
  for (const workload& w : workloads) bytes = std::max(bytes, bytes_needed(w));
  return bytes;
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

std::string name_of(const size& s) {
  return std::to_string(s.xres) + "x" + std::to_string(s.yres);
}

std::vector<place> all_places() {
  std::vector<place> result;
  for (const size& s : sizes)
    for (const shape memory : shapes) result.push_back({s, memory});
  result.push_back({short_rows, shape::padded});
  return result;
}

workload make_workload(const row& r, const place& where) {
  workload w{.conversion = r.conversion, .rescale = r.rescale, .picture = where.nominal, .memory = where.memory};
  if (where.memory == shape::odd) --w.picture.xres;
  w.bytes_read = bytes_read(w);
  w.bytes_written = bytes_written(w);
  return w;
}

catalogue::call make_call(const catalogue::conversion& c, bool rescale, const size& picture) {
  const bool by_color_space = c.extra == catalogue::argument::color_space;
  catalogue::call result;
  result.xres = picture.xres / c.pixels_per_xres;
  result.yres = picture.yres / c.rows_per_yres;
  result.argument = by_color_space ? int{Processing::Morvane::ccir_709} : int{rescale};
  return result;
}

job make_job(const catalogue::conversion& c, catalogue::call call) {
  const auto opaque = std::make_shared<bool>(false);
  call.opaque = opaque.get();
  return [&c, call, opaque] { c.convert(call); };
}

void fill_with_noise(std::uint8_t* memory, std::size_t bytes) {
  std::mt19937_64 random(1);
  for (std::size_t i = 0; i < bytes; i += sizeof(std::uint64_t)) {
    const std::uint64_t value = random();
    std::memcpy(memory + i, &value, std::min(sizeof value, bytes - i));
  }
}

arena::arena(const std::vector<workload>& workloads) : arena(bytes_needed(workloads)) {
}

arena::arena(std::size_t bytes_of_a_half) : half_((bytes_of_a_half + page - 1) / page * page) {
  const std::size_t total = 2 * half_ + 2 * page;
  memory_.reset(new std::uint8_t[total]);
  fill_with_noise(memory_.get(), total);
}

std::uint8_t* arena::source() const {
  void* start = memory_.get();
  std::size_t room = page + half_;
  return static_cast<std::uint8_t*>(std::align(page, half_, start, room));
}

std::uint8_t* arena::destination() const {
  return source() + half_ + page / 2;
}

catalogue::call arena::prepare(const workload& w) const {
  catalogue::call c = make_call(*w.conversion, w.rescale, w.picture);
  c.source = lay_out<const std::uint8_t>(w.conversion->source, w, source());
  c.destination = lay_out<std::uint8_t>(w.conversion->destination, w, destination());
  return c;
}

void arena::copy(std::int64_t bytes) const {
  std::memcpy(destination(), source(), static_cast<std::size_t>(bytes / 2));
}

}  // namespace morvane::bench
