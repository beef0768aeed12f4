#include "checker/checker.h"

#include <algorithm>
#include <cstring>
#include <sstream>
#include <stdexcept>

#include "oracle/oracle.h"

namespace morvane::tests {

namespace backend = Processing::Morvane::backend;
using catalogue::conversion;
using catalogue::plane;

namespace {

constexpr std::ptrdiff_t surroundings = 4096;
constexpr std::ptrdiff_t renewed_around = 512;

const char* name_of(placement p) {
  return p == placement::surrounded ? "surrounded" : p == placement::at_end ? "at end" : "at start";
}

bool has_chroma(const plane& p) {
  return p.components.find("Cb") != std::string_view::npos;
}

void copy_bytes(std::span<const std::uint8_t> from, std::span<std::uint8_t> to) {
  std::memcpy(to.data(), from.data(), from.size());
}

int component_index(const plane& p, std::string_view wanted) {
  std::istringstream components{std::string(p.components)};
  int index = 0;
  for (std::string component; components >> component; ++index)
    if (component == wanted) return index;
  return -1;
}

}  // namespace

void on_every_backend(const std::function<void(backend::kind)>& use) {
  const backend::kind usual = backend::chosen();
  for (const backend::kind k : backend::available()) {
    backend::choose(k);
    use(k);
  }
  backend::choose(usual);
}

checker::plane_state::plane_state(const plane& f, bool source) : format(&f), is_source(source) {
  hold(16384);
}

void checker::plane_state::hold(std::size_t bytes) {
  if (memory != nullptr && bytes <= memory->bytes().size()) return;
  memory = std::make_unique<fenced_memory>(bytes);
  before.resize(memory->bytes().size());
  renew();
}

std::span<std::uint8_t> checker::plane_state::window_in(std::span<std::uint8_t> plane) const {
  return plane.subspan(static_cast<std::size_t>(window.low), static_cast<std::size_t>(window.high - window.low));
}

void checker::plane_state::renew() {
  tests::fill(before, content::random, 0);
  expected = before;
  std::memcpy(memory->bytes().data(), before.data(), before.size());
}

checker::checker(const conversion& row) : row_(row), expectation_(expectation(row.name, row.destination)) {
  if (expectation_ == nullptr) throw std::invalid_argument("no expectation for " + std::string(row.name));
  const auto planes_of = [](std::string_view name, bool source) {
    std::vector<plane_state> planes;
    const catalogue::format* format = catalogue::find_format(name);
    if (format == nullptr) throw std::invalid_argument("no format " + std::string(name));
    for (std::size_t i = 0; i < format->plane_count(); ++i) planes.emplace_back(format->planes[i], source);
    return planes;
  };
  if (!row.source.empty()) sources_ = planes_of(row.source, true);
  destinations_ = planes_of(row.destination, false);
}

int checker::pixels(const test_case& c) const {
  return c.xres * row_.pixels_per_xres;
}

// An image of odd height has one row of 4:2:0 chroma more where it is written than where it is read.
int checker::rows(const plane_state& p, const test_case& c) const {
  int image_rows = c.yres * row_.rows_per_yres;
  if (row_.completes_row_pair && image_rows > 0 && has_chroma(*p.format)) image_rows += image_rows % 2;
  return p.is_source ? image_rows / p.format->image_rows : static_cast<int>(p.format->rows(image_rows));
}

bool checker::is_one_line(const test_case& c) const {
  if (c.yres == 1) return true;
  if (row_.by_rows) return false;
  const auto tight = [&](const auto& planes, const auto& places) {
    for (std::size_t i = 0; i < planes.size(); ++i)
      if (places[i].stride * planes[i].format->group_pixels != c.xres * planes[i].format->group_bytes) return false;
    return true;
  };
  return tight(sources_, c.source) && tight(destinations_, c.destination);
}

extent checker::extent_in(const plane_state& p, int stride, const test_case& c) const {
  const int count = rows(p, c);
  if (c.xres < 1 || count < 1) return {};
  if (in_parts(*p.format)) {
    if (is_one_line(c)) return {0, row_extent(*p.format, c.xres * count)};
    return extent_of_rows(*p.format, stride, c.xres, count);
  }
  extent e = extent_of(*p.format, row_, stride, pixels(c), count);
  if (copies_padding(p, c)) e.high = std::max(e.high, std::ptrdiff_t{count} * stride);
  return e;
}

bool checker::copies_padding(const plane_state& p, const test_case& c) const {
  if (p.format->name != row_.copies_padding) return false;
  const auto stride_of = [&](const auto& planes, const auto& places) {
    for (std::size_t i = 0; i < planes.size(); ++i)
      if (planes[i].format->name == row_.copies_padding) return places[i].stride;
    return 0;
  };
  const int stride = stride_of(sources_, c.source);
  return stride > 0 && stride == stride_of(destinations_, c.destination);
}

void checker::place(plane_state& p, const plane_place& at, const test_case& c) const {
  const extent e = extent_in(p, at.stride, c);
  p.hold(static_cast<std::size_t>(e.high - e.low + 2 * surroundings + 64));
  const auto size = static_cast<std::ptrdiff_t>(p.memory->bytes().size());
  if (c.where == placement::at_end)
    p.first_row = size - e.high;
  else if (c.where == placement::at_start)
    p.first_row = -e.low;
  else
    p.first_row = (surroundings - e.low + 31) / 32 * 32 + at.offset;
  p.window = {std::max<std::ptrdiff_t>(0, p.first_row + e.low - renewed_around),
              std::min(size, p.first_row + e.high + renewed_around)};
}

void checker::set_alpha(plane_state& p, int stride, const test_case& c) const {
  const int index = component_index(*p.format, "A");
  if (index < 0 || c.xres < 1 || c.yres < 1 || p.format->sample != catalogue::sample_type::u8) return;
  const auto alpha_at = [&](int x, int y) -> std::uint8_t& {
    return p
        .before[static_cast<std::size_t>(p.first_row + std::ptrdiff_t{y} * stride + x * p.format->group_bytes + index)];
  };
  const int width = c.xres + (row_.completes_pair ? c.xres % 2 : 0);
  for (int y = 0; y < c.yres; ++y)
    for (int x = 0; x < width; ++x) alpha_at(x, y) = 255;
  if (c.pattern == content::one_less) {
    const auto pixel = static_cast<int>(c.seed * 2654435761U % static_cast<unsigned>(width * c.yres));
    alpha_at(pixel % width, pixel / width) = c.seed % 3 == 0 ? 0 : c.seed % 3 == 1 ? 127 : 254;
  }
}

// Words begin where the samples of a row do, which may be at an odd address.
void checker::set_words(plane_state& p, int stride, const test_case& c) const {
  const std::span<const std::uint16_t> limits = limits_of(p.format->sample);
  if (limits.empty() || c.xres < 1) return;
  const std::span<const std::uint8_t> random = piece_of(content::random, c.seed + 1);
  std::size_t taken = 0;
  const auto words =
      static_cast<std::ptrdiff_t>((row_extent(*p.format, pixels(c)) + row_.bytes_past(*p.format, pixels(c))) / 2);
  for (int y = 0; y < rows(p, c); ++y)
    for (std::ptrdiff_t i = 0; i < words; ++i) {
      const std::uint16_t word = limits[random[taken++ % piece_bytes] % limits.size()];
      std::uint8_t* at = p.before.data() + p.first_row + std::ptrdiff_t{y} * stride + 2 * i;
      at[0] = static_cast<std::uint8_t>(word);
      at[1] = static_cast<std::uint8_t>(word >> 8);
    }
}

// What lies outside the windows of a case is as the cases before have left it, and the same in memory and expectation.
void checker::fill(const test_case& c) {
  std::uint32_t seed = c.seed;
  for (std::size_t i = 0; i < sources_.size(); ++i) {
    plane_state& p = sources_[i];
    place(p, c.source[i], c);
    tests::fill(p.window_in(p.before), c.pattern, seed++);
    if (c.pattern == content::opaque || c.pattern == content::one_less) set_alpha(p, c.source[i].stride, c);
    if (c.pattern == content::thresholds) set_words(p, c.source[i].stride, c);
    copy_bytes(p.window_in(p.before), p.window_in(p.memory->bytes()));
    copy_bytes(p.window_in(p.before), p.window_in(p.expected));
  }
  for (std::size_t i = 0; i < destinations_.size(); ++i) {
    plane_state& p = destinations_[i];
    place(p, c.destination[i], c);
    tests::fill(p.window_in(p.before), content::random, ++seed);
    copy_bytes(p.window_in(p.before), p.window_in(p.expected));
  }
}

void checker::renew_all() {
  for (plane_state& p : sources_) p.renew();
  for (plane_state& p : destinations_) p.renew();
}

catalogue::call checker::call_on(const test_case& c, bool expected) {
  catalogue::call call;
  const auto start = [&](plane_state& p) {
    return (expected ? p.expected.data() : p.memory->bytes().data()) + p.first_row;
  };
  for (std::size_t i = 0; i < sources_.size(); ++i) {
    call.source.data[i] = start(sources_[i]);
    call.source.stride[i] = c.source[i].stride;
  }
  for (std::size_t i = 0; i < destinations_.size(); ++i) {
    call.destination.data[i] = start(destinations_[i]);
    call.destination.stride[i] = c.destination[i].stride;
  }
  call.xres = c.xres;
  call.yres = c.yres;
  call.argument = c.argument;
  return call;
}

std::string checker::check(const test_case& c) {
  fill(c);
  bool expected_report = c.opacity == report::true_before;
  catalogue::call call = call_on(c, true);
  if (c.opacity != report::none) call.opaque = &expected_report;
  expectation_(call);

  std::string failure;
  on_every_backend([&](backend::kind k) {
    if (!failure.empty()) return;
    for (plane_state& p : destinations_) copy_bytes(p.window_in(p.before), p.window_in(p.memory->bytes()));
    bool reported = c.opacity == report::true_before;
    call = call_on(c, false);
    if (c.opacity != report::none) call.opaque = &reported;
    const int signal = run_guarded(row_.entry.convert, call);
    if (signal != 0)
      failure = std::string("crashed: ") + name_of_signal(signal);
    else
      failure = compare(c);
    if (failure.empty() && reported != expected_report)
      failure = std::string("opacity report: expected ") + (expected_report ? "true" : "false");
    if (!failure.empty()) failure = describe(c) + " backend " + backend::name(k) + "\n  " + failure;
  });
  if (!failure.empty()) renew_all();
  return failure;
}

std::string checker::compare(const test_case& c) const {
  const auto differs = [&](const plane_state& p, int stride, const char* side) {
    const std::span<const std::uint8_t> got = p.memory->bytes();
    if (std::memcmp(got.data(), p.expected.data(), got.size()) == 0) return std::string();
    const auto at = std::mismatch(got.begin(), got.end(), p.expected.begin()).first - got.begin();
    const auto index = static_cast<std::size_t>(at);
    std::ostringstream text;
    text << side << " plane " << p.format->name << ": byte " << at - p.first_row << " from the first";
    for (int y = 0; y < rows(p, c); ++y) {
      const std::ptrdiff_t x = at - p.first_row - std::ptrdiff_t{y} * stride;
      if (x >= 0 && x < row_extent(*p.format, pixels(c))) text << " (row " << y << ", byte " << x << ")";
    }
    text << ": expected " << int{p.expected[index]} << ", got " << int{got[index]} << ", before "
         << int{p.before[index]};
    return text.str();
  };
  for (std::size_t i = 0; i < destinations_.size(); ++i)
    if (std::string text = differs(destinations_[i], c.destination[i].stride, "destination"); !text.empty())
      return text;
  for (std::size_t i = 0; i < sources_.size(); ++i)
    if (std::string text = differs(sources_[i], c.source[i].stride, "source"); !text.empty()) return text;
  return {};
}

std::string checker::describe(const test_case& c) const {
  std::ostringstream text;
  text << row_.name << " (" << row_.source << " to " << row_.destination << ") " << c.xres << "x" << c.yres << ", "
       << name_of(c.where) << ", content " << name_of(c.pattern) << " seed " << c.seed;
  const auto add_planes = [&](const char* side, const auto& planes, const auto& places) {
    for (std::size_t i = 0; i < planes.size(); ++i)
      text << ", " << side << " " << planes[i].format->name << " stride " << places[i].stride
           << " address % 32 = " << planes[i].first_row % 32;
  };
  add_planes("source", sources_, c.source);
  add_planes("destination", destinations_, c.destination);
  if (row_.extra != catalogue::argument::none && row_.extra != catalogue::argument::opacity)
    text << ", argument " << c.argument;
  if (row_.extra == catalogue::argument::opacity)
    text << ", report " << (c.opacity == report::none ? "none" : c.opacity == report::true_before ? "true" : "false");
  return text.str();
}

}  // namespace morvane::tests
