#include "problem.h"

#include <cstdarg>
#include <cstdio>

namespace Processing::Morvane::checked {

part_name part(const char* argument, const char* field) {
  part_name name{};
  std::snprintf(name.text, sizeof name.text, "%s.%s", argument, field);
  return name;
}

part_name part(const char* argument, const size_t index) {
  part_name name{};
  std::snprintf(name.text, sizeof name.text, "%s[%zu]", argument, index);
  return name;
}

part_name part(const char* argument, const char* field, const size_t index) {
  part_name name{};
  std::snprintf(name.text, sizeof name.text, "%s.%s[%zu]", argument, field, index);
  return name;
}

int32_t answer(const problem& p, morvane_error* error) {
  if (error != nullptr) *error = p;
  return p.code;
}

problem check_size(const char* argument, const uint32_t got, const size_t needed) {
  if (got == needed) return none();
  return wrong(MORVANE_STRUCT_SIZE, argument, got, static_cast<int64_t>(needed), "is %u, where sizeof gives %zu", got,
               needed);
}

problem wrong(const morvane_code code, const char* argument, const int64_t got, const int64_t needed,
              const char* message, ...) {
  problem p{};
  p.code = code;
  p.got = got;
  p.needed = needed;
  std::snprintf(p.argument, sizeof p.argument, "%s", argument);
  const int written = std::snprintf(p.message, sizeof p.message, "%s ", argument);
  std::va_list arguments;
  va_start(arguments, message);
  std::vsnprintf(p.message + written, sizeof p.message - static_cast<size_t>(written), message, arguments);
  va_end(arguments);
  return p;
}

}  // namespace Processing::Morvane::checked
