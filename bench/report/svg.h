// A picture as SVG, for light and dark pages.
#pragma once

#include <sstream>
#include <string>
#include <string_view>

namespace morvane::bench {

class svg {
 public:
  // `style` follows that of grounds and texts, which all pictures share. It has no variables, which not every viewer of
  // pictures knows.
  svg(int width, int height, std::string_view style);

  void text(double x, double y, std::string_view css, std::string_view content, std::string_view anchor = "start");
  // Upwards from the point.
  void rising_text(double x, double y, std::string_view css, std::string_view content);
  void line(double x, double from_y, double to_y, std::string_view css);
  // A tip is shown where the pointer rests.
  void rect(double x, double y, double width, double height, std::string_view css, std::string_view tip = "");
  void circle(double x, double y, double radius, std::string_view css);
  void path(std::string_view d, std::string_view css);

  std::string finish() { return out_.str() + "</svg>\n"; }

 private:
  std::ostringstream out_;
};

}  // namespace morvane::bench
