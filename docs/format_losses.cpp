// There and back with noise.
#include "format_losses.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <random>

namespace morvane::docs {

namespace {

// Whole groups of every format, and enough of them for all values that 10 bits have.
constexpr int width = 240;
constexpr int height = 64;
constexpr options nearest_filter() {
  return {.filter = filter::nearest};
}

description described(format f) {
  return {.format = f, .width = width, .height = height};
}

// Floats that formats can have: from -0.5 to 1, or halves from 0 to 1.
void make_floats(std::uint8_t* bytes, std::size_t count, std::size_t size, std::mt19937& random) {
  for (std::size_t i = 0; i + size <= count; i += size) {
    const float single = static_cast<float>(random() % 65536) / 43690 - 0.5F;
    const auto half = static_cast<std::uint16_t>(random() % 0x3c01);
    if (size == sizeof single)
      std::memcpy(bytes + i, &single, size);
    else
      std::memcpy(bytes + i, &half, size);
  }
}

image noise_of(format f) {
  std::mt19937 random(1);
  image result(described(f));
  std::generate_n(result.data(), result.bytes(), [&] { return static_cast<std::uint8_t>(random()); });
  const morvane_plane_info plane = describe(f).planes[0];
  int samples = 0;
  for (const int of_component : plane.samples) samples += of_component;
  if (plane.is_float != 0)
    make_floats(result.data(), result.bytes(), static_cast<std::size_t>(plane.group_bytes / samples), random);
  return result;
}

// Empty where there is no conversion.
std::optional<plan> plan_between(format from, format to) {
  try {
    return plan(described(from), described(to), nearest_filter());
  } catch (const error& e) {
    if (e.code() != MORVANE_NO_WAY) throw;
    return std::nullopt;
  }
}

bool comes_back(image& picture, format of, const plan& there, const plan& back, format by) {
  image between(described(by));
  image again(described(of));
  there.run(picture.picture(), between.picture());
  back.run(between.picture(), again.picture());
  return std::equal(picture.data(), picture.data() + picture.bytes(), again.data());
}

}  // namespace

std::vector<format> lossless_from(format source) {
  std::vector<format> found;
  const std::optional<plan> same = plan_between(source, source);
  if (!same) return found;
  image noise = noise_of(source);
  // Without what no conversion keeps, such as unused bits.
  image picture(described(source));
  same->run(noise.picture(), picture.picture());
  for (const format f : formats()) {
    if (f == source) continue;
    const std::optional<plan> there = plan_between(source, f);
    const std::optional<plan> back = plan_between(f, source);
    if (there && back && there->losses().empty() && comes_back(picture, source, *there, *back, f)) found.push_back(f);
  }
  return found;
}

}  // namespace morvane::docs
