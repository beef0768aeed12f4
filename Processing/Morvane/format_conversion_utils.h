// What doors and entry points share: planes as bytes, the next row, plain copies, and the call of a kernel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "backend/dispatch.h"

namespace Processing::Morvane::format_conversion {

// 16-bit planes as the kernels take them, at any address.
inline const uint8_t* bytes_of(const uint16_t* p_words) {
  return reinterpret_cast<const uint8_t*>(p_words);
}

inline uint8_t* bytes_of(uint16_t* p_words) {
  return reinterpret_cast<uint8_t*>(p_words);
}

inline const uint8_t* bytes_of(const uint8_t* p_bytes) {
  return p_bytes;
}

inline uint8_t* bytes_of(uint8_t* p_bytes) {
  return p_bytes;
}

}  // namespace Processing::Morvane::format_conversion

namespace Processing::Morvane::format_conversion::line {

// The row after `line`: the stride counts bytes, whatever the type of the elements.
template <class Element>
inline const Element* next_line(const Element* line, const int line_stride) {
  return reinterpret_cast<const Element*>(reinterpret_cast<const uint8_t*>(line) + line_stride);
}

template <class Element>
inline Element* next_line(Element* line, const int line_stride) {
  return reinterpret_cast<Element*>(reinterpret_cast<uint8_t*>(line) + line_stride);
}

// A copy of pixels as they are.
template <int bytes_per_pixel>
inline void copy(const uint8_t* p_src, uint8_t* p_dst, const int no_pixels) {
  if (no_pixels > 0) std::memcpy(p_dst, p_src, static_cast<size_t>(no_pixels) * bytes_per_pixel);
}

// Runs a kernel over one line: planes, then the number of pixels.
template <class Kernel, class... Argument>
inline typename Kernel::answer run(const Argument... arguments) {
  return backend::line_of<Kernel>()(arguments...);
}

}  // namespace Processing::Morvane::format_conversion::line
