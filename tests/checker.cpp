// The checker: memory with fences, the sweep of cases, and the comparison.
#include "checker.h"

#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <sstream>
#include <stdexcept>

#include "oracle/oracle.h"

namespace morvane::tests {

namespace backend = Processing::Morvane::backend;
using catalogue::conversion;
using catalogue::plane;

namespace {

// Hold the largest case of pixels of up to 8 bytes, and of all, with more than a page of surroundings.
constexpr std::size_t memory_bytes = 16384;
constexpr std::size_t largest_memory = 2 * memory_bytes;
constexpr std::ptrdiff_t surroundings = 4096;
constexpr int widest = 110;  // two vector steps of 48 pixels and some

bool is_thin = false;

// An invalid access jumps back to the call under test; without one under test it ends the program as usual.
sigjmp_buf return_point;
volatile sig_atomic_t under_test = 0;

void on_invalid_access(int signal, siginfo_t*, void*) {
  if (under_test == 0) {
    ::signal(signal, SIG_DFL);
    raise(signal);
    return;
  }
  under_test = 0;
  siglongjmp(return_point, signal);
}

void catch_invalid_accesses() {
  struct sigaction action {};
  action.sa_sigaction = on_invalid_access;
  action.sa_flags = SA_SIGINFO | SA_NODEFER;
  sigaction(SIGSEGV, &action, nullptr);
  sigaction(SIGBUS, &action, nullptr);
}

// A long run of bytes of one kind of content; cases take pieces of it.
std::vector<std::uint8_t> make_pool(content pattern) {
  constexpr std::uint8_t limits[] = {0,   1,   15,  16,  17,  18,  127, 128, 129, 130,
                                     234, 235, 236, 239, 240, 241, 253, 254, 255, 255};
  std::mt19937 random(static_cast<unsigned>(pattern) + 1);
  std::vector<std::uint8_t> pool(4 * largest_memory);
  for (std::uint8_t& b : pool) {
    const auto n = static_cast<unsigned>(random() >> 8);
    switch (pattern) {
      case content::extremes:
        b = n % 2 == 0 ? 0 : 255;
        break;
      case content::thresholds:
        b = limits[n % std::size(limits)];
        break;
      case content::zeros:
        b = 0;
        break;
      case content::ones:
        b = 255;
        break;
      default:
        b = static_cast<std::uint8_t>(n);
    }
  }
  return pool;
}

const std::uint8_t* content_at(content pattern, std::uint32_t seed) {
  static const auto pools = [] {
    std::vector<std::vector<std::uint8_t>> all;
    for (int p = 0; p < static_cast<int>(content::count_of_all); ++p) all.push_back(make_pool(static_cast<content>(p)));
    return all;
  }();
  const auto& pool = pools[static_cast<std::size_t>(pattern)];
  return pool.data() + (std::size_t{seed} * 7919) % (pool.size() - largest_memory);
}

// Words beside the limits of video range, of the sign, of the byte and of the narrow samples.
std::span<const std::uint16_t> limits_of(catalogue::sample_type sample) {
  static constexpr std::uint16_t wide[] = {0,     1,     255,   256,   257,   4095,  4096,  4097,  32767, 32768, 32769,
                                           60159, 60160, 60161, 61439, 61440, 61441, 65279, 65280, 65534, 65535};
  static constexpr std::uint16_t of_10_bits[] = {0,    1,    3,    4,    15,   16,   511,  512,
                                                 1022, 1023, 1024, 1025, 4095, 4096, 65535};
  static constexpr std::uint16_t of_12_bits[] = {0,    1,    15,   16,   255,  256,  1023, 1024,
                                                 2047, 2048, 4094, 4095, 4096, 4097, 65535};
  if (sample == catalogue::sample_type::u16) return wide;
  if (sample == catalogue::sample_type::u16_low10) return of_10_bits;
  if (sample == catalogue::sample_type::u16_low12) return of_12_bits;
  return {};
}

const char* name_of(placement p) {
  return p == placement::surrounded ? "surrounded" : p == placement::at_end ? "at end" : "at start";
}

const char* name_of(content c) {
  constexpr const char* names[] = {"random", "extremes", "thresholds", "zeros", "ones", "opaque", "one less"};
  return names[static_cast<std::size_t>(c)];
}

extent extent_of_rows(const plane& format, int stride, int xres, int rows) {
  const std::ptrdiff_t last_row = std::ptrdiff_t{stride} * (rows - 1);
  return {std::min<std::ptrdiff_t>(0, last_row), std::max<std::ptrdiff_t>(0, last_row) + row_extent(format, xres)};
}

// An image without gaps can be one long line. At odd widths that holds more whole chroma samples than its rows do.
extent extent_of(const plane& format, const conversion& row, int stride, int xres, int rows) {
  extent e = extent_of_rows(format, stride, xres, rows);
  if (stride == tight_stride(format, xres)) e.high = std::max(e.high, row_extent(format, xres * rows));
  e.high += row.bytes_past(format, xres);
  return e;
}

bool has_chroma(const plane& p) {
  return p.components.find("Cb") != std::string_view::npos;
}

// Whether groups have their samples' upper bits first and then their lower ones, so that a partial group has a gap.
bool in_parts(const plane& p) {
  return p.sample == catalogue::sample_type::u8_and_2;
}

// Whether words hold samples of more than one pixel, as those of v210 do, which is then stored in whole groups.
bool spreads_pixels(const plane& p) {
  return p.sample == catalogue::sample_type::u32_3x10 && p.group_bytes % p.group_pixels != 0;
}

// Up to the last byte of lower bits: those of a partial group lie where a whole one has them.
std::ptrdiff_t extent_in_parts(const plane& p, int xres) {
  const int pairs = (xres + 1) / 2;
  const int in_last_group = pairs % 8;
  return std::ptrdiff_t{pairs} / 8 * p.group_bytes + (in_last_group > 0 ? 32 + in_last_group : 0);
}

int component_index(const plane& p, std::string_view wanted) {
  std::istringstream components{std::string(p.components)};
  int index = 0;
  for (std::string component; components >> component; ++index)
    if (component == wanted) return index;
  return -1;
}

// What the case of that number takes of `count` possible things: scattered, so that no two choices go hand in hand.
enum class choice : std::uint32_t {
  strides,
  source_padding,
  destination_padding,
  offset,
  pattern,
  argument,
  report,
  thinning
};

std::uint32_t pick(std::uint32_t number, choice what, std::size_t count) {
  std::uint32_t h = number * 0x9e3779b1U + static_cast<std::uint32_t>(what) * 0x85ebca6bU;
  h = (h ^ h >> 15) * 0x2c1b3c6dU;
  h = (h ^ h >> 12) * 0x297a2d39U;
  return (h ^ h >> 15) % static_cast<std::uint32_t>(count);
}

// How the planes of both sides are stored, row after row. `almost_tight`: with a stride that is the tight one of
// another format or, where pixels are no whole bytes, is tight but for the bits of a byte. `unlike`: each plane in its
// own way, tight or padded, up or down.
enum class rows { tight, padded, aligned, almost_tight, unlike };

struct stride_choice {
  rows source, destination;
  int source_sign, destination_sign;
};

constexpr stride_choice stride_choices[] = {
    {rows::tight, rows::tight, 1, 1},        {rows::padded, rows::padded, 1, 1},
    {rows::aligned, rows::aligned, 1, 1},    {rows::tight, rows::padded, 1, 1},
    {rows::padded, rows::tight, 1, 1},       {rows::tight, rows::almost_tight, 1, 1},
    {rows::tight, rows::tight, -1, -1},      {rows::padded, rows::tight, -1, 1},
    {rows::tight, rows::aligned, 1, -1},     {rows::tight, rows::tight, -1, 1},
    {rows::padded, rows::padded, -1, -1},    {rows::almost_tight, rows::almost_tight, 1, 1},
    {rows::unlike, rows::unlike, 1, 1},      {rows::tight, rows::unlike, 1, 1},
    {rows::almost_tight, rows::tight, 1, 1},
};

// A rounded source beside a tight destination: of interest where sources can be tight but for the bits of a byte.
bool is_for_parts(const stride_choice& c) {
  return c.source == rows::almost_tight && c.destination == rows::tight;
}

int stride_of(rows kind, const plane& p, int xres, std::uint32_t number, choice what) {
  constexpr int paddings[] = {1, 2, 3, 4, 6, 20, 37, 64};
  const int tight = tight_stride(p, xres);
  const int least = static_cast<int>(row_extent(p, xres));
  switch (kind) {
    case rows::padded:
      return std::max(tight, least) + paddings[pick(number, what, std::size(paddings))];
    case rows::aligned:
      return (least + 31) / 16 * 16;
    case rows::almost_tight:
      if (in_parts(p)) return xres * p.group_bytes / p.group_pixels;
      return 4 * xres < least ? tight : 4 * xres;
    case rows::unlike: {
      const std::uint32_t way = pick(number, choice::strides, 8);
      const int stride = stride_of(way % 2 == 0 ? rows::tight : rows::padded, p, xres, number, what);
      return way < 6 ? stride : -stride;
    }
    case rows::tight:
      break;
  }
  return tight;
}

}  // namespace

bool thin() {
  return is_thin;
}

void set_thin(bool on) {
  is_thin = on;
}

std::ptrdiff_t row_extent(const plane& p, int xres) {
  if (xres < 1) return 0;
  if (in_parts(p)) return extent_in_parts(p, xres);
  if (spreads_pixels(p)) return static_cast<std::ptrdiff_t>(p.row_bytes(xres));
  return std::ptrdiff_t{xres} * p.group_bytes / p.group_pixels;
}

int tight_stride(const plane& p, int xres) {
  const int bytes = xres * p.group_bytes;
  if ((in_parts(p) || spreads_pixels(p)) && bytes % p.group_pixels != 0) return static_cast<int>(p.row_bytes(xres));
  return bytes / p.group_pixels;
}

fenced_memory::fenced_memory(std::size_t bytes) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  size_ = (bytes + page - 1) / page * page;
  mapped_ = size_ + 2 * page;
  void* mapping = mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapping == MAP_FAILED) throw std::runtime_error("mmap failed");
  mapping_ = static_cast<std::uint8_t*>(mapping);
  begin_ = mapping_ + page;
  if (mprotect(begin_, size_, PROT_READ | PROT_WRITE) != 0) throw std::runtime_error("mprotect failed");
}

fenced_memory::~fenced_memory() {
  munmap(mapping_, mapped_);
}

int run_guarded(catalogue::thunk convert, const catalogue::call& c) {
  const int signal = sigsetjmp(return_point, 0);
  if (signal != 0) return signal;
  under_test = 1;
  convert(c);
  under_test = 0;
  return 0;
}

void on_every_backend(const std::function<void(backend::kind)>& use) {
  const backend::kind usual = backend::chosen();
  for (const backend::kind k : backend::available()) {
    backend::choose(k);
    use(k);
  }
  backend::choose(usual);
}

checker::plane_state::plane_state(const plane& f, bool source)
    : format(&f),
      is_source(source),
      memory(std::make_unique<fenced_memory>(f.group_bytes > 8 * f.group_pixels ? largest_memory : memory_bytes)),
      before(memory->bytes().size()),
      expected(memory->bytes().size()) {
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
  catch_invalid_accesses();
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
  const auto size = static_cast<std::ptrdiff_t>(p.memory->bytes().size());
  if (c.where == placement::at_end)
    p.first_row = size - e.high;
  else if (c.where == placement::at_start)
    p.first_row = -e.low;
  else
    p.first_row = (surroundings - e.low + 31) / 32 * 32 + at.offset;
  if (p.first_row + e.low < 0 || p.first_row + e.high > size) throw std::logic_error("a case larger than its memory");
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
  const std::uint8_t* random = content_at(content::random, c.seed + 1);
  const std::ptrdiff_t words = (row_extent(*p.format, pixels(c)) + row_.bytes_past(*p.format, pixels(c))) / 2;
  for (int y = 0; y < rows(p, c); ++y)
    for (std::ptrdiff_t i = 0; i < words; ++i) {
      const std::uint16_t word = limits[*random++ % limits.size()];
      std::uint8_t* at = p.before.data() + p.first_row + std::ptrdiff_t{y} * stride + 2 * i;
      at[0] = static_cast<std::uint8_t>(word);
      at[1] = static_cast<std::uint8_t>(word >> 8);
    }
}

void checker::fill(const test_case& c) {
  std::uint32_t seed = c.seed;
  for (std::size_t i = 0; i < sources_.size(); ++i) {
    plane_state& p = sources_[i];
    place(p, c.source[i], c);
    std::memcpy(p.before.data(), content_at(c.pattern, seed++), p.before.size());
    if (c.pattern == content::opaque || c.pattern == content::one_less) set_alpha(p, c.source[i].stride, c);
    if (c.pattern == content::thresholds) set_words(p, c.source[i].stride, c);
    std::memcpy(p.memory->bytes().data(), p.before.data(), p.before.size());
    p.expected = p.before;
  }
  for (std::size_t i = 0; i < destinations_.size(); ++i) {
    plane_state& p = destinations_[i];
    place(p, c.destination[i], c);
    std::memcpy(p.before.data(), content_at(content::random, ++seed), p.before.size());
    p.expected = p.before;
  }
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
    for (const plane_state& p : destinations_) std::memcpy(p.memory->bytes().data(), p.before.data(), p.before.size());
    bool reported = c.opacity == report::true_before;
    call = call_on(c, false);
    if (c.opacity != report::none) call.opaque = &reported;
    const int signal = run_guarded(row_.entry.convert, call);
    if (signal != 0)
      failure = std::string("crashed: ") + strsignal(signal);
    else
      failure = compare(c);
    if (failure.empty() && reported != expected_report)
      failure = std::string("opacity report: expected ") + (expected_report ? "true" : "false");
    if (!failure.empty()) failure = describe(c) + " backend " + backend::name(k) + "\n  " + failure;
  });
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

test_case checker::case_of(int xres, int yres, std::size_t strides, std::uint32_t number) const {
  constexpr int color_spaces[] = {601, 709, 0, 2020, -601};
  constexpr int values[] = {0, 16, 255, 300, -1, -300, 256, 65535, 70000, 0x1234};
  constexpr content for_reports[] = {content::opaque, content::one_less, content::random};
  constexpr content usual[] = {content::random, content::random,     content::random, content::extremes,
                               content::random, content::thresholds, content::zeros,  content::ones};
  const stride_choice& chosen = stride_choices[strides];
  test_case c;
  c.xres = xres;
  c.yres = yres;
  c.seed = number;
  for (std::size_t i = 0; i < sources_.size(); ++i)
    c.source[i].stride = chosen.source_sign * stride_of(chosen.source, *sources_[i].format, pixels(c),
                                                        number + static_cast<std::uint32_t>(i), choice::source_padding);
  for (std::size_t i = 0; i < destinations_.size(); ++i)
    c.destination[i].stride =
        chosen.destination_sign * stride_of(chosen.destination, *destinations_[i].format, pixels(c),
                                            number + static_cast<std::uint32_t>(i), choice::destination_padding);
  if (row_.one_stride)
    for (std::size_t i = 0; i < destinations_.size(); ++i)
      c.destination[i].stride = c.destination[destinations_.size() - 1].stride;
  const bool reports = row_.extra == catalogue::argument::opacity;
  c.pattern = reports ? for_reports[pick(number, choice::pattern, std::size(for_reports))]
                      : usual[pick(number, choice::pattern, std::size(usual))];
  if (row_.extra == catalogue::argument::color_space)
    c.argument = color_spaces[pick(number, choice::argument, std::size(color_spaces))];
  if (row_.extra == catalogue::argument::value) c.argument = values[pick(number, choice::argument, std::size(values))];
  if (row_.extra == catalogue::argument::rescale) c.argument = static_cast<int>(pick(number, choice::argument, 2));
  if (reports) c.opacity = static_cast<report>(pick(number, choice::report, 3));
  return c;
}

// Every width meets every height, every choice of strides and every place; every width also meets all offsets. The
// rest (paddings, contents, arguments) is scattered over the cases. Thinned: fewer widths, and a third of their cases.
void checker::for_each_case(const std::function<bool(const test_case&)>& take) const {
  constexpr placement places[] = {placement::surrounded, placement::at_end, placement::at_start};
  const bool several_planes = sources_.size() > 1 || destinations_.size() > 1;
  const bool reads_parts = !sources_.empty() && in_parts(*sources_[0].format);
  std::uint32_t number = 0;
  const auto sizes_and_strides = [&](int xres, int yres) {
    for (std::size_t s = 0; s < std::size(stride_choices); ++s)
      for (const placement where : places) {
        ++number;
        if (!several_planes && stride_choices[s].destination == rows::unlike) continue;
        if (!reads_parts && is_for_parts(stride_choices[s])) continue;
        if (thin() && pick(number, choice::thinning, 3) != 0) continue;
        test_case c = case_of(xres, yres, s, number);
        c.where = where;
        std::uint32_t planes = number;
        for (plane_place& p : c.source) p.offset = static_cast<int>(pick(++planes, choice::offset, 32));
        for (plane_place& p : c.destination) p.offset = static_cast<int>(pick(++planes, choice::offset, 32));
        if (!take(c)) return false;
      }
    return true;
  };
  const auto offsets = [&](int xres) {
    for (int offset = 0; offset < 32; ++offset)
      for (int planes = 0; planes < 3; ++planes) {
        ++number;
        if (thin() && pick(number, choice::thinning, 3) != 0) continue;
        const std::size_t strides = pick(number, choice::strides, std::size(stride_choices));
        test_case c = case_of(xres, 1 + offset % 3, strides, number);
        if (planes != 1)
          for (std::size_t i = 0; i < c.source.size(); ++i)
            c.source[i].offset = (offset + 5 * static_cast<int>(i)) % 32;
        if (planes != 0)
          for (std::size_t i = 0; i < c.destination.size(); ++i)
            c.destination[i].offset = (offset + 11 * static_cast<int>(i)) % 32;
        if (!take(c)) return false;
      }
    return true;
  };
  for (int xres = -1; xres <= widest; ++xres) {
    if (thin() && xres > 18 && xres < widest && xres % 16 > 2 && xres % 16 < 15) continue;
    for (int yres = -2; yres <= 8 / row_.rows_per_yres; ++yres)
      if (!sizes_and_strides(xres, yres)) return;
    if (!offsets(xres)) return;
  }
}

std::vector<std::string> checker::sweep(std::size_t most_failures) {
  std::vector<std::string> failures;
  for_each_case([&](const test_case& c) {
    if (std::string failure = check(c); !failure.empty()) failures.push_back(std::move(failure));
    return failures.size() < most_failures;
  });
  return failures;
}

}  // namespace morvane::tests
