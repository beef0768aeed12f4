#include "problem.h"

#include <cstdarg>
#include <cstdio>

namespace Processing::Morvane::checked {

part_name part(const char* argument, const char* field) {
  part_name name{};
  std::snprintf(name.text, sizeof name.text, "%s.%s", argument, field);
  return name;
}

part_name part(const char* argument, const char* field, const size_t index) {
  part_name name{};
  std::snprintf(name.text, sizeof name.text, "%s.%s[%zu]", argument, field, index);
  return name;
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
