// The walk of a kernel over a line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "../vector/inline.h"
#include "../vector/operations.h"
#include "stored.h"
#include "streamed_plane.h"
#include "units.h"

namespace Processing::Morvane::format_conversion::kernel {

// Asks for the cache lines that the vectors after the next few will write. A store that crosses a cache line otherwise
// waits for both, one after the other. Source planes are mostly fetched by the processor itself.
template <class V, class Kernel, size_t bytes>
MORVANE_INLINE void expect_stores([[maybe_unused]] uint8_t* plane) {
  constexpr bool is_announced = Kernel::crowds_stores || !V::announces_crowded_stores_alone;
  if constexpr (is_announced && V::stores_expected_ahead > 0)
    for (size_t i = 0; i < bytes; i += V::cache_line) V::expect_store(plane + V::stores_expected_ahead + i);
}

// The same for those that they will read.
template <class V, size_t bytes>
MORVANE_INLINE void expect_loads([[maybe_unused]] const uint8_t* plane) {
  if constexpr (V::loads_expected_ahead > 0)
    for (size_t i = 0; i < bytes; i += V::cache_line) V::expect_load(plane + V::loads_expected_ahead + i);
}

// Places in the planes of a kernel that a walk of its own moves on.
template <size_t planes>
struct places_read {
  const uint8_t* at[planes];
};
template <size_t planes>
struct places_written {
  uint8_t* at[planes];
};

// What a kernel remembers that remembers nothing.
struct nothing_seen {
  MORVANE_INLINE static nothing_seen none() { return {}; }
  MORVANE_INLINE static void result() {}
};

template <class V, class Kernel>
struct seen_by {
  using type = nothing_seen;
};

template <class V, class Kernel>
requires requires {
  typename Kernel::template seen<V>;
}
struct seen_by<V, Kernel> {
  using type = typename Kernel::template seen<V>;
};

// A kernel on its way over a line. The pointers stand at the same unit of each plane.
template <class V, class Kernel, class Sources, class Destinations>
class line_walk;

template <class V, class Kernel>
using walk_of = line_walk<V, Kernel, std::make_index_sequence<Kernel::planes::sources>,
                          std::make_index_sequence<Kernel::planes::destinations>>;

template <class V, class Kernel, size_t... s, size_t... d>
class line_walk<V, Kernel, std::index_sequence<s...>, std::index_sequence<d...>> {
  using planes = typename Kernel::planes;
  using seen = typename seen_by<V, Kernel>::type;
  static constexpr bool remembers = !std::is_same_v<seen, nothing_seen>;
  template <size_t plane>
  using source_plane = typename planes::template type<plane>;
  template <size_t plane>
  using destination_plane = typename planes::template type<planes::sources + plane>;

 public:
  MORVANE_INLINE line_walk(const Kernel& kernel, const typename source_plane<s>::pointer... sources,
                           const typename destination_plane<d>::pointer... destinations)
      : kernel_(kernel),
        source_{reinterpret_cast<const uint8_t*>(sources)...},
        destination_{reinterpret_cast<uint8_t*>(destinations)...} {}

  MORVANE_INLINE auto result() const { return seen_.result(); }

  // The units that a vector holds.
  MORVANE_INLINE static constexpr size_t step() {
    using items = decltype(std::declval<line_walk&>().made_of(0));
    using item = std::remove_cvref_t<decltype(item_of<0>(std::declval<items>()))>;
    return item::stored_bytes / destination_plane<0>::bytes;
  }

  // The units from here on, one after the other.
  MORVANE_INLINE void by_rule(const size_t units) {
    for (size_t unit = 0; unit < units; ++unit) {
      // Beside a vector body the rule has a handful of units left. The compiler cannot know that: without this barrier
      // it would make vectors of them once more, in several times the code of the kernel.
      if constexpr (V::lanes > 0) asm volatile("");
      if constexpr (Kernel::looks_back)
        kernel_.rule(unit == 0, source_plane<s>::at(source_[s], unit)...,
                     destination_plane<d>::at(destination_[d], unit)...);
      else if constexpr (remembers)
        kernel_.rule(seen_, source_plane<s>::at(source_[s], unit)...,
                     destination_plane<d>::at(destination_[d], unit)...);
      else
        kernel_.rule(source_plane<s>::at(source_[s], unit)..., destination_plane<d>::at(destination_[d], unit)...);
    }
  }

  // As many whole vectors as there are. Answers how many units are left, behind which the pointers then stand.
  MORVANE_INLINE size_t by_vectors(size_t units) {
    constexpr size_t turn = V::vectors_a_turn > together ? V::vectors_a_turn : together;
    look_back(true);
    if constexpr (turn > 1) {
      for (size_t turns = units / (turn * step()); turns > 0; --turns) {  // down to zero, which needs no comparison
        expect<turn>();
#pragma GCC unroll 4
        for (size_t i = 0; i < turn; i += together) convert_together(static_cast<ptrdiff_t>(i * step()));
        advance(turn * step());
      }
      units %= turn * step();
    }
    for (; units >= step(); units -= step()) {
      expect<1>();
      convert(0);
      advance(step());
    }
    return units;
  }

  // What by_vectors has left. The last vector of a line converts some units once more, to the same bytes.
  MORVANE_INLINE void finish(const size_t left) {
    static_assert(planes::begin_anywhere || !remembers);
    if constexpr (planes::begin_anywhere)
      convert_last(static_cast<ptrdiff_t>(left) - static_cast<ptrdiff_t>(step()));
    else if constexpr (V::narrower::lanes > 0)
      walk_apart<typename V::narrower>(kernel_, left, source_[s]..., destination_[d]...);
    else
      by_rule(left);
  }

  // The same and finish in one, by one vector body, which the last vector goes through once more: in kernels of which
  // there are many, others would only be code. A line is not shorter than a vector.
  MORVANE_INLINE void by_one_body(const size_t units) {
    size_t vectors = units / step();
    size_t left = units % step();
    for (bool begins = true;; begins = false) {
      look_back(begins);
#pragma GCC unroll 1
      for (; vectors > 0; --vectors) {
        expect<1>();
        convert(0);
        advance(step());
      }
      if (left == 0) return;
      go_back(step() - left);
      vectors = 1;
      left = 0;
    }
  }

  // In whole vectors, so many that fill whole cache lines of every plane, and some of them.
  MORVANE_INLINE static constexpr size_t units_of_turn() {
    constexpr size_t fewest_bytes = 512;
    size_t units = step();
    while (((units * destination_plane<d>::bytes < fewest_bytes ||
             units * destination_plane<d>::bytes % streamed_line != 0) ||
            ...))
      units += step();
    return units;
  }
  // Whether the units of a line are enough for a vector and for a cache line of each plane.
  MORVANE_INLINE static constexpr bool can_stream(const size_t units) {
    return units >= step() && units >= streamed_line;
  }
  // All units past the caches. Vectors are stored to memory of their own, where each may begin anywhere.
  MORVANE_INLINE void by_streaming(size_t units) {
    constexpr size_t turn = units_of_turn();
    stream_into(units, streamed_plane<V, turn * destination_plane<d>::bytes, step() * destination_plane<d>::bytes>(
                           destination_[d], units * destination_plane<d>::bytes)...);
  }

 private:
  const Kernel& kernel_;
  seen seen_ = seen::none();
  const uint8_t* source_[sizeof...(s) + 1];
  uint8_t* destination_[sizeof...(d) + 1];

  // So many vectors are converted before they are stored, all to one plane before any to the next: a processor takes
  // stores to one cache line faster together than in turn with others.
  static constexpr size_t together = planes::destinations > 1 && !Kernel::fills_registers ? V::stored_together : 1;

  // What the vector body makes of the units that begin so many units ahead.
  MORVANE_INLINE auto made_of(const ptrdiff_t ahead) {
    if constexpr (remembers)
      return kernel_.template convert<V>(seen_, source_[s] + ahead * source_plane<s>::bytes...);
    else
      return kernel_.template convert<V>(source_[s] + ahead * source_plane<s>::bytes...);
  }
  template <size_t plane, class Items>
  MORVANE_INLINE void store_item(const Items& items, const ptrdiff_t ahead) const {
    store<V>(destination_[plane] + ahead * destination_plane<plane>::bytes, item_of<plane>(items));
  }
  template <size_t plane, class Items>
  MORVANE_INLINE void store_two_items(const Items& first, const Items& second, const ptrdiff_t ahead) const {
    store_item<plane>(first, ahead);
    store_item<plane>(second, ahead + static_cast<ptrdiff_t>(step()));
  }
  MORVANE_INLINE void convert(const ptrdiff_t ahead) {
    auto items = made_of(ahead);
    (store_item<d>(items, ahead), ...);
  }
  MORVANE_INLINE void look_back(const bool begins, [[maybe_unused]] const ptrdiff_t ahead = 0) {
    if constexpr (Kernel::looks_back)
      seen_ = kernel_.template seen_before<V>(begins, source_[s] + ahead * source_plane<s>::bytes...);
  }
  // A vector that does not follow the one before.
  MORVANE_INLINE void convert_last(const ptrdiff_t ahead) {
    look_back(false, ahead);
    convert(ahead);
  }
  MORVANE_INLINE void convert_together(const ptrdiff_t ahead) {
    if constexpr (together == 1) {
      convert(ahead);
    } else {
      static_assert(together == 2);
      auto first = made_of(ahead);
      auto second = made_of(ahead + static_cast<ptrdiff_t>(step()));
      (store_two_items<d>(first, second, ahead), ...);
    }
  }

  template <class... Plane>
  MORVANE_INLINE void stream_into(size_t units, Plane&&... to) {
    static_assert(!remembers);
    constexpr size_t turn = units_of_turn();
    for (size_t count = turn; units > 0; units -= count) {
      if (units < turn) count = units;
#pragma GCC unroll 1
      for (size_t unit = 0; unit < count; unit += step()) {
        (expect_loads<V, step() * source_plane<s>::bytes>(source_[s] + unit * source_plane<s>::bytes), ...);
        const auto last = static_cast<ptrdiff_t>(count) - static_cast<ptrdiff_t>(step());
        const auto next = static_cast<ptrdiff_t>(unit);
        make(next < last ? next : last, to...);
      }
      (to.stream(count * destination_plane<d>::bytes), ...);
      advance(count);
    }
    (to.finish(), ...);
  }
  template <class... Plane>
  MORVANE_INLINE void make(const ptrdiff_t ahead, Plane&... to) {
    auto items = made_of(ahead);
    (store<V>(to.place() + ahead * destination_plane<d>::bytes, item_of<d>(items)), ...);
  }

  template <size_t vectors>
  MORVANE_INLINE void expect() const {
    if constexpr (Kernel::expects_loads) (expect_loads<V, vectors * step() * source_plane<s>::bytes>(source_[s]), ...);
    (expect_stores<V, Kernel, vectors * step() * destination_plane<d>::bytes>(destination_[d]), ...);
  }
  MORVANE_INLINE void advance(const size_t units) {
    ((source_[s] += units * source_plane<s>::bytes), ...);
    ((destination_[d] += units * destination_plane<d>::bytes), ...);
  }
  MORVANE_INLINE void go_back(const size_t units) {
    ((source_[s] -= units * source_plane<s>::bytes), ...);
    ((destination_[d] -= units * destination_plane<d>::bytes), ...);
  }
};

// Runs a kernel over the units of a line whose planes are apart: vectors, then one vector more that ends with the line
// and overlaps the one before. Planes in which a vector may not begin anywhere, and lines shorter than a vector, are
// left to the narrower vectors that the backend names, and in the end to the rule.
template <class V, class Kernel, class... Pointer>
MORVANE_INLINE auto walk_apart(const Kernel& kernel, const size_t units, const Pointer... planes) {
  if constexpr (V::lanes > 0) {
    if (units >= walk_of<V, Kernel>::step()) {
      walk_of<V, Kernel> line(kernel, planes...);
      const size_t left = line.by_vectors(units);
      if (left > 0) line.finish(left);
      return line.result();
    }
    if constexpr (V::narrower::lanes > 0) return walk_apart<typename V::narrower>(kernel, units, planes...);
  }
  walk_of<V, Kernel> line(kernel, planes...);
  line.by_rule(units);
  return line.result();
}

// The vectors that take the stores of a kernel fastest.
template <class V, class Kernel, bool bound_by_memory = Kernel::bound_by_memory && (V::lanes > 0)>
struct vectors_for {
  using type = V;
};

template <class V, class Kernel>
struct vectors_for<V, Kernel, true> {
  using type = typename V::mover;
};

// Stores a line past the caches. It is not compiled into the function of the line, which has registers for one walk.
// A backend has one of its own, also where it lends its vectors from another.
template <class Backend, class V, class Kernel, class... Pointer>
[[gnu::noinline]] void stream_line(const Kernel& kernel, const size_t units, const Pointer... planes) {
  const Kernel own = kernel;  // which no store can change
  walk_of<V, Kernel>(own, planes...).by_streaming(units);
}

// The same for planes that may overlap, where the kernel says what happens then.
template <class V, class Kernel, class... Pointer>
MORVANE_INLINE auto walk(const Kernel& kernel, const size_t units, const Pointer... planes) {
  if constexpr (Kernel::in_order && V::lanes > 0) {
    if (!Kernel::planes::apart(units, planes...)) {
      walk_of<V, Kernel> rule(kernel, planes...);
      rule.by_rule(units);
      return rule.result();
    }
  }
  using vectors = typename vectors_for<V, Kernel>::type;
  if constexpr (vector::streams<V> && requires { kernel.streams; })
    if (kernel.streams && walk_of<vectors, Kernel>::can_stream(units))
      return stream_line<V, vectors>(kernel, units, planes...);
  return walk_apart<vectors>(kernel, units, planes...);
}

// The line function of a kernel for the backend V.
template <class V, class Kernel, class Planes = typename Kernel::planes>
struct line_by;

template <class V, class Kernel, class... Plane>
struct line_by<V, Kernel, plane_list<Plane...>> {
  MORVANE_INLINE static auto run(const typename Plane::pointer... planes, const int no_pixels, const Kernel& kernel) {
    if constexpr (requires { kernel.template line<V>(planes..., no_pixels); })
      return kernel.template line<V>(planes..., no_pixels);
    else
      return walk<V>(kernel, Kernel::count(no_pixels), planes...);
  }
  MORVANE_INLINE static auto run(const typename Plane::pointer... planes, const int no_pixels) {
    return run(planes..., no_pixels, Kernel());
  }
};

}  // namespace Processing::Morvane::format_conversion::kernel
