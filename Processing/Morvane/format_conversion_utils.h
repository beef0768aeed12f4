// What the line kernels share: stepping through rows and lines, tests for overlap, clamping.
//
// Kernels are compiled once for every instruction set of a processor. A function that two of those copies share would
// be kept once by the linker, in whichever copy comes first, and could bring AVX2 instructions into the portable code.
// So whatever a kernel calls is either a template over its backend or MORVANE_INLINE, and never a function of the
// standard library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#define MORVANE_INLINE [[gnu::always_inline]] inline

namespace Processing::Morvane::format_conversion::line {

// The row after `line`: the stride counts bytes, whatever the type of the elements.
template <class Element>
MORVANE_INLINE const Element* next_line(const Element* line, const int line_stride) {
  return reinterpret_cast<const Element*>(reinterpret_cast<const uint8_t*>(line) + line_stride);
}

template <class Element>
MORVANE_INLINE Element* next_line(Element* line, const int line_stride) {
  return reinterpret_cast<Element*>(reinterpret_cast<uint8_t*>(line) + line_stride);
}

MORVANE_INLINE constexpr size_t at_least_zero(const int count) {
  return count < 0 ? 0 : static_cast<size_t>(count);
}

// Pairs that lie wholly within a line, and pairs that begin in it.
MORVANE_INLINE constexpr size_t whole_pairs(const int no_pixels) {
  return at_least_zero(no_pixels) / 2;
}

MORVANE_INLINE constexpr size_t begun_pairs(const int no_pixels) {
  return (at_least_zero(no_pixels) + 1) / 2;
}

// True when the two ranges share no byte; an empty range shares none.
MORVANE_INLINE bool apart(const void* a, const size_t a_bytes, const void* b, const size_t b_bytes) {
  const auto a_begin = reinterpret_cast<uintptr_t>(a);
  const auto b_begin = reinterpret_cast<uintptr_t>(b);
  return a_bytes == 0 || b_bytes == 0 || a_begin + a_bytes <= b_begin || b_begin + b_bytes <= a_begin;
}

// True when no two of the planes of a line share a byte; each plane has `units` times its own number of bytes.
template <int first_bytes, int... bytes, class First, class... Plane>
MORVANE_INLINE bool all_apart(const size_t units, First* first, Plane*... planes) {
  if constexpr (sizeof...(Plane) == 0)
    return true;
  else
    return (apart(first, units * first_bytes, planes, units * bytes) && ...) && all_apart<bytes...>(units, planes...);
}

// Little-endian words at any address.
MORVANE_INLINE uint16_t word_at(const uint8_t* p) {
  return static_cast<uint16_t>(p[0] | p[1] << 8);
}

MORVANE_INLINE void store_word(uint8_t* p, const int value) {
  p[0] = static_cast<uint8_t>(value);
  p[1] = static_cast<uint8_t>(value >> 8);
}

MORVANE_INLINE constexpr uint8_t clamp_to_byte(const int value) {
  return static_cast<uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
}

// Whether all alpha seen so far is 255.
template <class V>
struct opacity {
  typename V::bytes vectors;
  uint8_t bytes = 255;

  MORVANE_INLINE static opacity none_seen() {
    opacity o{};
    if constexpr (V::lanes > 0) o.vectors = V::same(255);
    return o;
  }
  MORVANE_INLINE void see(const typename V::bytes alpha) { vectors = V::and_bytes(vectors, alpha); }
  MORVANE_INLINE void see(const uint8_t alpha) { bytes = static_cast<uint8_t>(bytes & alpha); }
  MORVANE_INLINE bool is_opaque() const {
    if constexpr (V::lanes > 0) {
      if (!V::all_255(vectors)) return false;
    }
    return bytes == 255;
  }
};

// Runs a kernel's rule over `units` of a line, one after the other. A unit is what the rule converts at once: a pixel,
// a pair or a group. It takes bytes... of each plane.
template <class V, int... bytes, class Kernel, class... Plane>
MORVANE_INLINE void walk_rule(Kernel& kernel, size_t units, Plane*... planes) {
  for (; units > 0; --units) {
    // Beside a vector body the rule has a handful of units left. The compiler cannot know that: without this barrier it
    // would make vectors of them once more, in several times the code of the kernel.
    if constexpr (V::lanes > 0) asm volatile("");
    kernel.rule(planes...);
    ((planes += bytes), ...);
  }
}

// The even bytes of two blocks and the odd ones.
template <class V>
MORVANE_INLINE auto even_and_odd_bytes(const uint8_t* src) {
  return V::deinterleave2(V::load(src), V::load(src + V::block_bytes));
}

// Blocks that follow each other.
template <class V, class... Block>
MORVANE_INLINE void store_blocks(uint8_t* dst, const Block... blocks) {
  ((V::store(dst, blocks), dst += V::block_bytes), ...);
}

// Kernels that fill several planes have a body for two vectors at once, `two_vectors`, which stores both to one plane
// before it goes on to the next: a processor takes stores to one cache line faster together than in turn with others.
template <class V, class Kernel, class... Place>
concept takes_two_vectors = requires(Kernel kernel, Place... places) {
  kernel.template two_vectors<V>(places...);
};

// Asks for the cache lines that the vectors after the next few will write. A store that crosses a cache line otherwise
// waits for both, one after the other. Source planes are fetched by the processor itself.
template <class V, int bytes, class Byte>
MORVANE_INLINE void expect_stores([[maybe_unused]] Byte* plane) {
  if constexpr (!std::is_const_v<Byte> && V::stores_expected_ahead > 0)
    for (int i = 0; i < bytes; i += V::cache_line) V::expect_store(plane + V::stores_expected_ahead + i);
}

// Runs a kernel over a line whose planes are apart: its vector body as long as a whole vector of units is left, then
// the body once more over the last units of the line, some of which it converts a second time, to the same bytes. Only
// a line shorter than one vector is left to the rule.
template <class V, int... bytes, class Kernel, class... Plane>
MORVANE_INLINE void walk(Kernel& kernel, size_t units, Plane*... planes) {
  if constexpr (V::lanes > 0) {
    constexpr size_t step = Kernel::template step<V>;
    if (units >= step) {
      if constexpr (takes_two_vectors<V, Kernel, Plane*...>)
        for (; units >= 2 * step; units -= 2 * step) {
          (expect_stores<V, 2 * step * bytes>(planes), ...);
          kernel.template two_vectors<V>(planes...);
          ((planes += 2 * step * bytes), ...);
        }
      else if constexpr (V::vectors_a_turn > 1) {
        constexpr size_t turn = V::vectors_a_turn * step;
        for (size_t turns = units / turn; turns > 0; --turns) {  // counts down to zero, which needs no comparison
          (expect_stores<V, turn * bytes>(planes), ...);
#pragma GCC unroll 4
          for (size_t i = 0; i < turn; i += step) kernel.template vector<V>((planes + i * bytes)...);
          ((planes += turn * bytes), ...);
        }
        units %= turn;
      }
      for (; units >= step; units -= step) {
        (expect_stores<V, step * bytes>(planes), ...);
        kernel.template vector<V>(planes...);
        ((planes += step * bytes), ...);
      }
      if (units > 0) kernel.template vector<V>((planes - (step - units) * bytes)...);
      return;
    }
  }
  walk_rule<V, bytes...>(kernel, units, planes...);
}

// Runs a kernel over a line whose planes may overlap: then the rule alone defines the result.
template <class V, int... bytes, class Kernel, class... Plane>
MORVANE_INLINE void walk_in_order(Kernel& kernel, const size_t units, Plane*... planes) {
  if (all_apart<bytes...>(units, planes...))
    walk<V, bytes...>(kernel, units, planes...);
  else
    walk_rule<V, bytes...>(kernel, units, planes...);
}

// The card format of 40 bytes for 16 pixels: the upper eight bits of the samples of eight pairs, Y0 Cb Y1 Cr, then a
// byte for each pair with the lower two bits of its samples, Y0 lowest.
namespace group_10 {

inline constexpr int upper_bytes = 32;  // of a group
inline constexpr int bytes = 40;
inline constexpr size_t pairs = 8;

// The upper bytes of a pair, and the byte with its lower bits.
template <class Byte>
struct place {
  Byte* upper;
  Byte* low;
};

template <class Byte>
MORVANE_INLINE constexpr place<Byte> of_pair(Byte* line, const size_t pair) {
  Byte* group = line + pair / pairs * bytes;
  return {group + pair % pairs * 4, group + upper_bytes + pair % pairs};
}

// Walks over the pairs that begin in a line: whole groups by the kernel's vector body, whose block holds the upper
// bytes of one, and the others pair by pair, at the same places of a group. A pair has pair_bytes... in each other
// plane.
template <class V, int... pair_bytes, class Kernel, class Byte, class... Plane>
MORVANE_INLINE void walk(const Kernel& kernel, const int no_pixels, Byte* yuyv, Plane*... planes) {
  size_t left = begun_pairs(no_pixels);
  if constexpr (V::lanes > 0) {
    static_assert(V::block_bytes == upper_bytes);
    if constexpr (takes_two_vectors<V, Kernel, place<Byte>, place<Byte>, Plane*...>)
      for (; left >= 2 * pairs; left -= 2 * pairs) {
        expect_stores<V, 2 * bytes>(yuyv);
        (expect_stores<V, 2 * pairs * pair_bytes>(planes), ...);
        kernel.template two_vectors<V>(of_pair(yuyv, 0), of_pair(yuyv, pairs), planes...);
        yuyv += 2 * bytes;
        ((planes += 2 * pairs * pair_bytes), ...);
      }
    for (; left >= pairs; left -= pairs) {
      expect_stores<V, bytes>(yuyv);
      (expect_stores<V, pairs * pair_bytes>(planes), ...);
      kernel.template vector<V>(of_pair(yuyv, 0), planes...);
      yuyv += bytes;
      ((planes += pairs * pair_bytes), ...);
    }
  }
  for (size_t pair = 0; pair < left; ++pair) {
    if constexpr (V::lanes > 0) asm volatile("");  // as in walk_rule
    kernel.rule(of_pair(yuyv, pair), (planes + pair * pair_bytes)...);
  }
}

}  // namespace group_10

// Pixels of four bytes to pairs of uyvy, as the kernel `Colors` converts them, with the fourth bytes in a plane of
// alpha of their own. The line function returns whether all of that alpha is 255, or true when nobody asks.
template <class Colors, bool track_alpha>
struct uyvy_a_kernel {
  template <class V>
  struct walker {
    opacity<V> alphas = opacity<V>::none_seen();

    MORVANE_INLINE void rule(const uint8_t* src, uint8_t* dst, uint8_t* alpha) {
      const uint8_t alpha0 = src[3];
      const uint8_t alpha1 = src[7];
      Colors::rule(src, dst);
      alpha[0] = alpha0;
      alpha[1] = alpha1;
      if constexpr (track_alpha) alphas.see(static_cast<uint8_t>(alpha0 & alpha1));
    }

    template <class>
    static constexpr size_t step = V::lanes / 2;

    template <class>
    MORVANE_INLINE void vector(const uint8_t* src, uint8_t* dst, uint8_t* alpha) {
      const auto pixels = Colors::template load<V>(src);
      const auto fourth = V::fourth(pixels);
      Colors::template convert<V>(pixels, dst);
      V::store_bytes(alpha, fourth);
      if constexpr (track_alpha) alphas.see(fourth);
    }
  };

  template <class V>
  static bool line(const uint8_t* p_src, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
    walker<V> w;
    walk_in_order<V, 8, 4, 2>(w, Colors::pairs(no_pixels), p_src, p_dst_uyvy, p_dst_alpha);
    return w.alphas.is_opaque();
  }
};

}  // namespace Processing::Morvane::format_conversion::line
