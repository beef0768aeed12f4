// How the program under the emulator tells the plugin which instructions belong to which job: by a system call that the
// kernel refuses, before the job and after it.
#pragma once

#include <cstdint>

namespace morvane::bench {

inline constexpr std::int64_t mark_system_call = 167;  // prctl on 64-bit Arm
inline constexpr std::uint64_t mark_option = 0x4d6f7276;
inline constexpr std::uint64_t mark_begin = 1;
inline constexpr std::uint64_t mark_end = 2;

}  // namespace morvane::bench
