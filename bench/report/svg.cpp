#include "report/svg.h"

#include "report/text.h"

namespace morvane::bench {

namespace {

constexpr std::string_view shared_style = R"(.sm { font: 11px system-ui, sans-serif; }
.sm .title { font-size: 15px; font-weight: 600; }
.sm .ground { fill: #fff; }
.sm text { fill: #1f2328; }
.sm text.weak { fill: #59636e; }
@media (prefers-color-scheme: dark) {
.sm .ground { fill: #0d1117; }
.sm text { fill: #e6edf3; }
.sm text.weak { fill: #9198a1; }
}
)";

}  // namespace

svg::svg(int width, int height, std::string_view style) {
  out_ << "<svg xmlns=\"http://www.w3.org/2000/svg\" class=\"sm\" viewBox=\"0 0 " << width << ' ' << height
       << "\" width=\"" << width << "\" height=\"" << height << "\" role=\"img\">\n<style>\n"
       << shared_style << style << "</style>\n<rect class=\"ground\" width=\"100%\" height=\"100%\"/>\n";
}

void svg::text(double x, double y, std::string_view css, std::string_view content, std::string_view anchor) {
  out_ << "<text x=\"" << x << "\" y=\"" << y << "\" class=\"" << css << "\" text-anchor=\"" << anchor << "\">"
       << escaped(content) << "</text>\n";
}

void svg::rising_text(double x, double y, std::string_view css, std::string_view content) {
  out_ << "<text class=\"" << css << "\" transform=\"translate(" << x << ' ' << y << ") rotate(-90)\">"
       << escaped(content) << "</text>\n";
}

void svg::line(double x, double from_y, double to_y, std::string_view css) {
  out_ << "<line class=\"" << css << "\" x1=\"" << x << "\" x2=\"" << x << "\" y1=\"" << from_y << "\" y2=\"" << to_y
       << "\"/>\n";
}

void svg::rect(double x, double y, double width, double height, std::string_view css, std::string_view tip) {
  out_ << "<rect class=\"" << css << "\" x=\"" << x << "\" y=\"" << y << "\" width=\"" << width << "\" height=\""
       << height << '"';
  if (tip.empty())
    out_ << "/>\n";
  else
    out_ << "><title>" << escaped(tip) << "</title></rect>\n";
}

void svg::circle(double x, double y, double radius, std::string_view css) {
  out_ << "<circle class=\"" << css << "\" cx=\"" << x << "\" cy=\"" << y << "\" r=\"" << radius << "\"/>\n";
}

void svg::path(std::string_view d, std::string_view css) {
  out_ << "<path class=\"" << css << "\" d=\"" << d << "\"/>\n";
}

}  // namespace morvane::bench
