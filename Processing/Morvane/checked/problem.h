// What is wrong with a call: the error of the C interface, as a value. A problem without a code is none.
#pragma once

#include <cstddef>
#include <cstdint>

#include "../morvane.h"

namespace Processing::Morvane::checked {

using problem = morvane_error;

inline bool is_wrong(const problem& p) {
  return p.code != MORVANE_OK;
}

inline problem none() {
  return {};
}

// The name of a part of an argument: "source.width", "source.data[1]".
struct part_name {
  char text[sizeof problem::argument];
};
part_name part(const char* argument, const char* field);
part_name part(const char* argument, size_t index);
part_name part(const char* argument, const char* field, size_t index);

// Stores the problem for a caller who wants to know more than its code.
int32_t answer(const problem& p, morvane_error* error);

// Of a struct whose caller set another size than that of this version.
problem check_size(const char* argument, uint32_t got, size_t needed);

// The message is formatted as printf does, behind the name of the argument.
[[gnu::format(printf, 5, 6)]] problem wrong(morvane_code code, const char* argument, int64_t got, int64_t needed,
                                            const char* message, ...);

}  // namespace Processing::Morvane::checked
