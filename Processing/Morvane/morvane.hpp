// The checked interface of Morvane in C++20, over that in C: the same functions, with ownership and exceptions.
//
//   const morvane::description from = {.format = morvane::format_named("uyvy"), .width = 1920, .height = 1080};
//   const morvane::description to = {.format = morvane::format_named("bgra"), .width = 1920, .height = 1080};
//   morvane::image source(from), result(to);
//   morvane::convert(from, source.picture(), to, result.picture());
//
// morvane.h describes what everything means; what it refuses is thrown here as morvane::error, before a byte is
// written.
#ifndef MORVANE_HPP
#define MORVANE_HPP

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "morvane.h"

namespace morvane {

// What was refused: the code of morvane_code, the argument, what was got and what is needed.
class error : public std::runtime_error {
 public:
  explicit error(const morvane_error& of) : std::runtime_error(of.message), of_(of) {}

  int code() const { return of_.code; }
  std::string argument() const { return of_.argument; }
  std::int64_t got() const { return of_.got; }
  std::int64_t needed() const { return of_.needed; }

 private:
  morvane_error of_;
};

namespace detail {

// The functions of C answer a code and fill in an error.
inline void expect(const std::int32_t code, const morvane_error& e) {
  if (code != MORVANE_OK) throw error(e);
}

}  // namespace detail

using format = morvane_format;

// Throws where no format has this name.
inline format format_named(const std::string& name) {
  const format found = morvane_format_named(name.c_str());
  if (found != 0) return found;
  morvane_error e = {MORVANE_UNKNOWN_FORMAT, "name", 0, 0, ""};
  ("no format has the name " + name).copy(e.message, sizeof e.message - 1);
  throw error(e);
}

// Empty where no format has this id.
inline std::string_view name_of(const format f) {
  const char* name = morvane_format_name(f);
  return name == nullptr ? std::string_view() : name;
}

inline std::vector<format> formats() {
  std::vector<format> all;
  for (std::int32_t i = 0; i < morvane_format_count(); ++i) all.push_back(morvane_format_at(i));
  return all;
}

// Those that answer to a name, of this library or of another system.
inline std::vector<format> formats_called(const std::string& name) {
  const std::int32_t count = morvane_formats_called(name.c_str(), nullptr, 0);
  std::vector<format> found(static_cast<std::size_t>(count));
  morvane_formats_called(name.c_str(), found.data(), count);
  return found;
}

inline morvane_format_info describe(const format f) {
  morvane_format_info info{};
  info.struct_size = sizeof info;
  morvane_error e;
  detail::expect(morvane_describe_format(f, &info, &e), e);
  return info;
}

// All of Processing.Morvane.h.
inline std::vector<morvane_entry_point> entry_points() {
  std::vector<morvane_entry_point> all;
  for (std::int32_t i = 0; i < morvane_entry_point_count(); ++i) {
    morvane_entry_point& e = all.emplace_back();
    e.struct_size = sizeof e;
    morvane_error wrong;
    detail::expect(morvane_describe_entry_point(i, &e, &wrong), wrong);
  }
  return all;
}

enum class matrix : std::int32_t { unsaid = MORVANE_MATRIX_DEFAULT, bt601 = 601, bt709 = 709, bt2020 = 2020 };
enum class range : std::int32_t { unsaid = MORVANE_RANGE_DEFAULT, video = MORVANE_VIDEO, full = MORVANE_FULL };
enum class filter : std::int32_t { linear = MORVANE_LINEAR, nearest = MORVANE_NEAREST };
enum class siting : std::int32_t { left = MORVANE_LEFT, center = MORVANE_CENTER };
enum class stores : std::int32_t { cached = MORVANE_CACHED, streaming = MORVANE_STREAMING, by_size = MORVANE_BY_SIZE };

struct description {
  morvane::format format = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  morvane::matrix matrix = matrix::unsaid;
  morvane::range range = range::unsaid;

  operator morvane_description() const {
    return {sizeof(morvane_description),     format, width, height, static_cast<std::int32_t>(matrix),
            static_cast<std::int32_t>(range)};
  }
};

struct color {
  std::uint8_t red = 0, green = 0, blue = 0;
};

struct options {
  morvane::filter filter = filter::linear;
  morvane::siting siting = siting::left;
  std::optional<color> background{};
  std::int32_t threads = 0;
  std::string via{};
  bool allow_irregular = false;
  bool rescale = false;
  morvane::stores stores = stores::cached;

  // Points to `via`.
  operator morvane_options() const {
    morvane_options o{};
    o.struct_size = sizeof o;
    o.filter = static_cast<std::int32_t>(filter);
    o.siting = static_cast<std::int32_t>(siting);
    o.threads = threads;
    o.via = via.empty() ? nullptr : via.c_str();
    o.allow_irregular = allow_irregular ? 1 : 0;
    o.rescale = rescale ? 1 : 0;
    o.stores = static_cast<std::int32_t>(stores);
    o.has_background = background ? 1 : 0;
    if (background) {
      o.background[0] = background->red;
      o.background[1] = background->green;
      o.background[2] = background->blue;
    }
    return o;
  }
};

// With an alignment of 0, the strides that files have.
inline morvane_layout lay_out(const description& d, const std::int64_t alignment = 0) {
  const morvane_description described = d;
  morvane_layout layout{};
  layout.struct_size = sizeof layout;
  morvane_error e;
  detail::expect(morvane_lay_out(&described, alignment, &layout, &e), e);
  return layout;
}

// The planes of a picture in one run of memory, which the caller owns.
inline morvane_picture picture_in(void* memory, const morvane_layout& layout) {
  morvane_picture p{};
  p.struct_size = sizeof p;
  for (std::int32_t i = 0; i < layout.plane_count; ++i) {
    p.data[i] = static_cast<std::uint8_t*>(memory) + layout.planes[i].offset;
    p.stride[i] = layout.planes[i].stride;
    p.bytes[i] = layout.planes[i].stride * layout.planes[i].rows;
  }
  return p;
}

// The samples of a row of a plane, one line for each component; lines of components that the plane lacks may be null.
using component_lines = std::array<std::uint16_t*, MORVANE_COMPONENTS>;
inline void read_row(const description& d, const morvane_picture& picture, const std::int32_t plane,
                     const std::int32_t row, const component_lines& lines, const std::int64_t room) {
  const morvane_description described = d;
  morvane_error e;
  detail::expect(morvane_read_row(&described, &picture, plane, row, lines.data(), room, &e), e);
}

// A picture with memory of its own, all bytes zero.
class image {
 public:
  explicit image(const description& d, const std::int64_t alignment = 0)
      : layout_(lay_out(d, alignment)), memory_(static_cast<std::size_t>(layout_.bytes)) {}

  const morvane_layout& layout() const { return layout_; }
  std::uint8_t* data() { return memory_.data(); }
  const std::uint8_t* data() const { return memory_.data(); }
  std::size_t bytes() const { return memory_.size(); }
  morvane_picture picture() { return picture_in(memory_.data(), layout_); }

 private:
  morvane_layout layout_;
  std::vector<std::uint8_t> memory_;
};

// May be run by many threads at once, each with scratch memory of its own.
class plan {
 public:
  plan(const description& source, const description& destination, const options& how = {}) {
    const morvane_description from = source;
    const morvane_description to = destination;
    const morvane_options o = how;
    morvane_error e;
    plan_.reset(morvane_plan_create(&from, &to, &o, &e));
    if (plan_ == nullptr) throw error(e);
  }

  std::vector<std::string> steps() const { return texts(morvane_plan_step); }
  std::vector<std::string> losses() const { return texts(morvane_plan_loss); }
  std::size_t scratch_bytes() const { return static_cast<std::size_t>(morvane_plan_scratch_bytes(plan_.get())); }
  std::int32_t row_granularity() const { return morvane_plan_row_granularity(plan_.get()); }

  void run(const morvane_picture& source, const morvane_picture& destination, void* scratch,
           const std::size_t bytes) const {
    morvane_error e;
    detail::expect(morvane_plan_run(plan_.get(), &source, &destination, scratch, static_cast<std::int64_t>(bytes), &e),
                   e);
  }
  // With scratch memory that is allocated for this run.
  void run(const morvane_picture& source, const morvane_picture& destination) const {
    std::vector<std::uint8_t> scratch(scratch_bytes());
    run(source, destination, scratch.data(), scratch.size());
  }
  void run_rows(const morvane_picture& source, const morvane_picture& destination, const std::int32_t first,
                const std::int32_t rows, void* scratch, const std::size_t bytes) const {
    morvane_error e;
    detail::expect(morvane_plan_run_rows(plan_.get(), &source, &destination, first, rows, scratch,
                                         static_cast<std::int64_t>(bytes), &e),
                   e);
  }

 private:
  struct destroy {
    void operator()(morvane_plan* p) const { morvane_plan_destroy(p); }
  };
  std::unique_ptr<morvane_plan, destroy> plan_;

  template <class At>
  std::vector<std::string> texts(const At at) const {
    std::vector<std::string> all;
    for (std::int32_t i = 0; const char* text = at(plan_.get(), i); ++i) all.emplace_back(text);
    return all;
  }
};

inline void convert(const description& source, const morvane_picture& source_picture, const description& destination,
                    const morvane_picture& destination_picture, const options& how = {}) {
  const morvane_description from = source;
  const morvane_description to = destination;
  const morvane_options o = how;
  morvane_error e;
  detail::expect(morvane_convert(&from, &source_picture, &to, &destination_picture, &o, &e), e);
}

}  // namespace morvane

#endif
