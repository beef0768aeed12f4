#include <algorithm>
#include <cstring>
#include <sstream>

#include "catalogue/layout.h"
#include "peers/peers.h"

namespace morvane::bench {

namespace {

// The image on which results are compared; no width of a vector divides it.
constexpr size sample_image{1926, 34};

// In steps of 8 bits. Roundings of two integer matrices differ by less; another matrix or other chroma by far more.
constexpr int most_when_close = 5;

using memory = std::vector<std::uint8_t>;

int bytes_of(catalogue::sample_type sample) {
  return sample == catalogue::sample_type::u8 ? 1 : 2;
}

catalogue::layout layout_of(const catalogue::format& f) {
  return lay_out(f, sample_image.xres, sample_image.yres);
}

// Bytes without a pattern, but within the range of the format, which is that of video before a matrix: beyond it there
// is nothing to agree upon.
memory noise(const catalogue::format& f, catalogue::matrix colors) {
  memory result(static_cast<std::size_t>(layout_of(f).bytes));
  std::uint32_t state = 1;
  for (std::uint8_t& byte : result) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(state >> 24);
  }
  if (f.model == catalogue::color_model::ycbcr && colors != catalogue::matrix::none)
    for (std::uint8_t& byte : result) byte = static_cast<std::uint8_t>(16 + byte % 220);
  const int bits = catalogue::low_bits(f.planes[0].sample);
  if (bits > 0)
    for (std::size_t i = 1; i < result.size(); i += 2)
      result[i] = static_cast<std::uint8_t>(result[i] & ((1 << (bits - 8)) - 1));
  return result;
}

int sample_at(const std::uint8_t* bytes, int width) {
  return width == 1 ? *bytes : bytes[0] + 256 * bytes[1];
}

// The greatest difference of two samples, rounded up to a step of 8 bits.
int greatest_difference(const catalogue::format& f, const memory& a, const memory& b) {
  int greatest = 0;
  const catalogue::layout layout = layout_of(f);
  for (std::size_t p = 0; p < f.plane_count(); ++p) {
    const int width = bytes_of(f.planes[p].sample);
    const auto begin = static_cast<std::size_t>(layout.planes[p].offset);
    const std::size_t end = begin + static_cast<std::size_t>(layout.planes[p].bytes());
    for (std::size_t i = begin; i < end; i += static_cast<std::size_t>(width)) {
      const int difference = std::abs(sample_at(&a[i], width) - sample_at(&b[i], width));
      greatest = std::max(greatest, width == 1 ? difference : (difference + 255) / 256);
    }
  }
  return greatest;
}

int difference_of(const row& r, const peer& p) {
  const catalogue::conversion& conversion = *r.conversion;
  const catalogue::format& destination = *catalogue::find_format(conversion.destination);
  const std::size_t past =
      static_cast<std::size_t>(sample_image.xres) * static_cast<std::size_t>(conversion.bytes_past_per_pixel);
  memory source;
  bool opaque = false;
  catalogue::call call = make_call(conversion, r.rescale, sample_image);
  if (!conversion.source.empty()) {
    const catalogue::format& format = *catalogue::find_format(conversion.source);
    source = noise(format, conversion.colors);
    source.resize(source.size() + past);
    call.source = layout_of(format).at<const std::uint8_t>(source.data());
  }
  call.opaque = &opaque;

  memory ours(static_cast<std::size_t>(layout_of(destination).bytes) + past);
  memory theirs = ours;
  call.destination = layout_of(destination).at(ours.data());
  conversion.convert(call);
  call.destination = layout_of(destination).at(theirs.data());
  p.prepare(call)();
  return greatest_difference(destination, ours, theirs);
}

}  // namespace

agreement agreement_at(int difference) {
  return difference == 0                 ? agreement::same_bytes
         : difference <= most_when_close ? agreement::close
                                         : agreement::other_algorithm;
}

std::string_view name_of(agreement a) {
  switch (a) {
    case agreement::same_bytes:
      return "same bytes";
    case agreement::close:
      return "close";
    case agreement::other_algorithm:
      return "other algorithm";
  }
  return {};
}

agreement observed_agreement(const row& r, const peer& p) {
  return r.conversion->destination.empty() ? p.label : agreement_at(difference_of(r, p));
}

std::vector<std::string> wrong_labels(const std::vector<row>& rows, const std::vector<peer>& peers) {
  std::vector<std::string> result;
  for (const peer& p : peers)
    for (const std::string& name : p.row_names()) {
      std::ostringstream line;
      line << p.library << ' ' << p.function << " for " << name;
      const auto r = std::find_if(rows.begin(), rows.end(), [&name](const row& other) { return other.name == name; });
      if (r == rows.end())
        result.push_back(line.str() + ", which is no row");
      else if (observed_agreement(*r, p) != p.label) {
        line << " is labelled '" << name_of(p.label) << "' and differs by " << difference_of(*r, p);
        result.push_back(line.str());
      }
    }
  return result;
}

}  // namespace morvane::bench
