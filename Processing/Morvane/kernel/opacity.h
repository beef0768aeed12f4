// Whether all alpha that a kernel has seen is opaque.
#pragma once

#include <cstdint>

#include "../vector/inline.h"

namespace Processing::Morvane::format_conversion::kernel {

template <class V>
struct opacity {
  typename V::bytes vectors;
  uint8_t bytes = 255;

  MORVANE_INLINE static opacity none() {
    opacity o{};
    if constexpr (V::lanes > 0) o.vectors = V::same(255);
    return o;
  }
  MORVANE_INLINE void see(const typename V::bytes alpha) { vectors = V::and_bytes(vectors, alpha); }
  MORVANE_INLINE void see(const uint8_t alpha) { bytes = static_cast<uint8_t>(bytes & alpha); }
  MORVANE_INLINE bool result() const {
    if constexpr (V::lanes > 0) {
      if (!V::all_255(vectors)) return false;
    }
    return bytes == 255;
  }
};

// Nobody asks.
template <class V>
struct no_opacity {
  MORVANE_INLINE static no_opacity none() { return {}; }
  MORVANE_INLINE static void see(const typename V::bytes&) {}
  MORVANE_INLINE static void see(const uint8_t) {}
  MORVANE_INLINE static bool result() { return true; }
};

// Whether a kernel answers if all alpha was opaque, or true whatever it sees.
enum class alpha_report : bool { none, given };

template <class V, alpha_report report>
using seen_alpha = std::conditional_t<report == alpha_report::given, opacity<V>, no_opacity<V>>;

}  // namespace Processing::Morvane::format_conversion::kernel
