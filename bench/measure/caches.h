// The caches of this machine.
#pragma once

#include <cstdint>

namespace morvane::bench {

// Of the largest cache, in bytes; 32 MiB where the system does not tell.
std::int64_t last_level_cache();

}  // namespace morvane::bench
