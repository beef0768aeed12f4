// A plane on its way past the caches: what a walk stores of it is gathered until it fills whole cache lines.
#pragma once

#include <cstddef>
#include <cstdint>

#include "../vector/inline.h"

namespace Processing::Morvane::format_conversion::kernel {

inline constexpr size_t streamed_line = 64;

// Each turn brings so many bytes, whole cache lines of them, wherever the plane begins. The last one may begin so many
// bytes before those that it brings.
template <class V, size_t bytes_of_turn, size_t bytes_before>
class streamed_plane {
  static_assert(bytes_of_turn % streamed_line == 0);

 public:
  MORVANE_INLINE explicit streamed_plane(uint8_t* plane, const size_t bytes)
      : to_(plane - begun_before(plane)), begun_(begun_before(plane)) {
    uint8_t* end = plane + bytes;
    if constexpr (requires { V::expect_store(end); })
      if (begun_before(end) != 0) V::expect_store(end - 1);
  }

  // Where the bytes of a turn are stored.
  MORVANE_INLINE uint8_t* place() { return lines() + begun_; }

  // So many bytes of the turn. What fills no cache line yet waits for the next one. The first cache line may have begun
  // before the plane, with bytes that are not ours.
  MORVANE_INLINE void stream(const size_t bytes) {
    const size_t end = begun_ + bytes;
    size_t at = is_first_ ? put_first() : 0;
#pragma GCC unroll 1
    for (; at + streamed_line <= end; at += streamed_line) V::stream_cache_line(lines() + at, to_ + at);
    __builtin_memcpy(lines(), lines() + at, streamed_line);
    to_ += at;
    begun_ = end - at;
  }
  // Behind the last turn.
  MORVANE_INLINE void finish() const {
    __builtin_memcpy(to_, memory_ + room, begun_);
  }

 private:
  static constexpr size_t room = (bytes_before + streamed_line - 1) / streamed_line * streamed_line;
  alignas(streamed_line) uint8_t memory_[room + bytes_of_turn + streamed_line];
  uint8_t* to_;
  size_t begun_;  // bytes of a cache line that wait
  bool is_first_ = true;

  MORVANE_INLINE static size_t begun_before(const uint8_t* p) {
    return reinterpret_cast<uintptr_t>(p) % streamed_line;
  }
  MORVANE_INLINE uint8_t* lines() {
    return memory_ + room;
  }
  MORVANE_INLINE size_t put_first() {
    is_first_ = false;
    if (begun_ == 0) return 0;
    __builtin_memcpy(to_ + begun_, lines() + begun_, streamed_line - begun_);
    return streamed_line;
  }
};

}  // namespace Processing::Morvane::format_conversion::kernel
