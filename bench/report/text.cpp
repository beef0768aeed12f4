#include "report/text.h"

#include <iomanip>
#include <sstream>

namespace morvane::bench {

std::string fixed(double value, int digits) {
  std::ostringstream out;
  out << std::fixed << std::setprecision(digits) << value;
  return out.str();
}

std::string joined(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) result.append(result.empty() ? "" : ", ").append(text);
  return result;
}

std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) switch (c) {
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '&':
        result += "&amp;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += c;
    }
  return result;
}

std::string title_of(const row& r) {
  const catalogue::conversion& c = *r.conversion;
  const std::string source(c.source);
  const std::string destination(c.destination);
  const std::string stretched = r.rescale ? " stretched" : "";
  if (source.empty()) return "fill of " + destination;
  if (destination.empty()) return "difference of uyvy";
  if (source == destination) return r.rescale ? source + stretched : "copy of " + source;
  return source + " to " + destination + stretched;
}

}  // namespace morvane::bench
