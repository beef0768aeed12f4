// The caches of this machine.
#pragma once

#include <cstdint>

namespace morvane::bench {

// Of the largest cache, in bytes; 32 MiB where the system does not tell.
std::int64_t last_level_cache();

// What all frames of a ring move at least for none of them to be still in a cache when its turn comes again.
std::int64_t bytes_beyond_caches();

}  // namespace morvane::bench
