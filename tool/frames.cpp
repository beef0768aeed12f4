// Raw frames and PNGs as sources and sinks.
#include "frames.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <vector>

#include "errors.h"
#include "names.h"
#include "output.h"
#include "picture.h"
#include "png_file.h"

namespace morvane::tool {

namespace {

// How a frame lies in a raw file: plane after plane, row after row.
struct raw_layout {
  std::array<std::int64_t, catalogue::max_planes> row_bytes{};
  std::array<std::int64_t, catalogue::max_planes> stride{};
  std::int64_t frame_bytes = 0;
};

raw_layout layout_of(const catalogue::format& f, extent size, std::optional<std::int64_t> first_stride,
                     const char* option) {
  raw_layout result;
  for (std::size_t p = 0; p < f.plane_count(); ++p) {
    result.row_bytes[p] = result.stride[p] = f.planes[p].row_bytes(size.width);
    if (p == 0 && first_stride) result.stride[p] = *first_stride;
    if (result.stride[p] < result.row_bytes[p])
      wrong_arguments(option, " ", result.stride[p], " is too small: a row of ", f.name, " ", size, " has ",
                      result.row_bytes[p], " bytes");
    result.frame_bytes += result.stride[p] * plane_rows(f.planes[p], size.height);
  }
  return result;
}

struct close_file {
  void operator()(std::FILE* f) const {
    if (f != stdin) std::fclose(f);
  }
};

class raw_source : public frame_source {
 public:
  raw_source(const source_wish& wish, const catalogue::format& f, extent size)
      : name_(wish.path == "-" ? "standard input" : wish.path),
        format_(f),
        size_(size),
        layout_(layout_of(f, size, wish.stride, "stride")) {
    open(wish.path);
    skip(wish.skip);
  }

  const catalogue::format& format() const override { return format_; }
  extent size() const override { return size_; }
  std::optional<std::int64_t> remaining() const override { return remaining_; }

  bool read(image& into) override {
    if (remaining_ == 0 || at_end()) return false;
    if (remaining_) --*remaining_;
    taken_ = 0;
    for (std::size_t p = 0; p < format_.plane_count(); ++p)
      for (int y = 0; y < plane_rows(format_.planes[p], size_.height); ++y) {
        take(into.row(p, y), layout_.row_bytes[p]);
        pass(layout_.stride[p] - layout_.row_bytes[p]);
      }
    ++frame_;
    return true;
  }

 private:
  void open(const std::string& path) {
    file_.reset(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
    if (!file_) system_failure("cannot read " + name_, errno);
    struct stat found {};
    if (::fstat(::fileno(file_.get()), &found) != 0) system_failure("cannot read " + name_, errno);
    if (S_ISDIR(found.st_mode)) system_failure("cannot read " + name_, EISDIR);
    if (S_ISREG(found.st_mode)) count_frames(found.st_size - std::max<std::int64_t>(::ftello(file_.get()), 0));
  }

  void count_frames(std::int64_t bytes) {
    if (bytes == 0) io_failure(name_, " is empty: expected ", expected());
    if (bytes % layout_.frame_bytes != 0)
      io_failure(name_, " is not a whole number of frames: expected a multiple of ", expected(), ", got ", bytes,
                 " bytes");
    remaining_ = bytes / layout_.frame_bytes;
  }

  std::string expected() const { return text(layout_.frame_bytes, " bytes, one frame of ", format_.name, " ", size_); }

  void skip(std::int64_t frames) {
    if (remaining_ && frames >= *remaining_)
      wrong_arguments(name_, " has no frame ", frames, ": it has ", *remaining_, ", numbered from 0");
    if (remaining_) {
      ::fseeko(file_.get(), frames * layout_.frame_bytes, SEEK_CUR);
      *remaining_ -= frames;
      return;
    }
    for (; frame_ < frames; ++frame_) {
      if (at_end()) io_failure(name_, " has no frame ", frames, ": it has ", frame_, ", numbered from 0");
      taken_ = 0;
      pass(layout_.frame_bytes);
    }
  }

  bool at_end() {
    const int next = std::getc(file_.get());
    if (next == EOF && std::ferror(file_.get())) system_failure("cannot read " + name_, errno);
    if (next == EOF && frame_ == 0) io_failure(name_, " is empty: expected ", expected());
    return next == EOF || std::ungetc(next, file_.get()) == EOF;
  }

  void take(std::uint8_t* into, std::int64_t bytes) {
    const std::size_t got = std::fread(into, 1, static_cast<std::size_t>(bytes), file_.get());
    taken_ += static_cast<std::int64_t>(got);
    if (static_cast<std::int64_t>(got) == bytes) return;
    if (std::ferror(file_.get())) system_failure("cannot read " + name_, errno);
    io_failure(name_, " ended inside frame ", frame_, ": expected ", expected(), ", got ", taken_);
  }

  void pass(std::int64_t bytes) {
    passed_.resize(static_cast<std::size_t>(std::min<std::int64_t>(bytes, 1 << 16)));
    for (; bytes > 0; bytes -= static_cast<std::int64_t>(passed_.size())) {
      passed_.resize(std::min(passed_.size(), static_cast<std::size_t>(bytes)));
      take(passed_.data(), static_cast<std::int64_t>(passed_.size()));
    }
  }

  std::string name_;
  const catalogue::format& format_;
  extent size_;
  raw_layout layout_;
  std::unique_ptr<std::FILE, close_file> file_;
  std::optional<std::int64_t> remaining_;
  std::int64_t frame_ = 0;
  std::int64_t taken_ = 0;  // bytes of the frame being read
  std::vector<std::uint8_t> passed_;
};

class png_source : public frame_source {
 public:
  png_source(const source_wish& wish) : picture_(read_png(wish.path)), format_(format_of(wish)) {
    if (!wish.size.empty() && parse_size(wish.size) != picture_.size)
      wrong_arguments(wish.path, " is ", picture_.size, ", not ", wish.size);
    if (wish.stride) wrong_arguments(wish.path, " is a PNG, which has no stride");
    if (wish.skip > 0) wrong_arguments(wish.path, " has no frame ", wish.skip, ": it has 1, numbered from 0");
  }

  const catalogue::format& format() const override { return format_; }
  extent size() const override { return picture_.size; }
  std::optional<std::int64_t> remaining() const override { return read_ ? 0 : 1; }

  bool read(image& into) override {
    if (read_) return false;
    from_picture(picture_, into);
    return read_ = true;
  }

 private:
  const catalogue::format& format_of(const source_wish& wish) const {
    const bool alpha = picture_.channels == 4;
    const catalogue::format& f = format_named(!wish.format.empty() ? wish.format : alpha ? "bgra" : "bgrx");
    if (!fits_png(f)) wrong_arguments(wish.path, " is a PNG, which is read as RGB, not as ", f.name);
    if (alpha && !f.alpha) say(text("the alpha of ", wish.path, " is dropped: ", f.name, " has none"));
    return f;
  }

  picture picture_;
  const catalogue::format& format_;
  bool read_ = false;
};

class raw_sink : public frame_sink {
 public:
  raw_sink(const sink_wish& wish, const catalogue::format& f)
      : size_(wish.size), layout_(layout_of(f, wish.size, wish.stride, "stride")), file_(wish.path) {}

  void write(const image& frame) override {
    for (std::size_t p = 0; p < frame.plane_count(); ++p) {
      padding_.resize(static_cast<std::size_t>(layout_.stride[p] - layout_.row_bytes[p]));
      for (int y = 0; y < plane_rows(frame.plane(p), size_.height); ++y) {
        file_.write(frame.row(p, y), static_cast<std::size_t>(layout_.row_bytes[p]));
        file_.write(padding_.data(), padding_.size());
      }
    }
  }
  void commit() override { file_.commit(); }

 private:
  extent size_;
  raw_layout layout_;
  output_file file_;
  std::vector<std::uint8_t> padding_;
};

class png_sink : public frame_sink {
 public:
  explicit png_sink(const sink_wish& wish) : size_(wish.size), file_(wish.path) {}

  void write(const image& frame) override {
    if (written_) io_failure(file_.name(), " holds one frame and the input has more; --skip and --frames 1 choose one");
    write_png(file_.stream(), file_.name(), to_picture(frame, size_));
    written_ = true;
  }
  void commit() override { file_.commit(); }

 private:
  extent size_;
  output_file file_;
  bool written_ = false;
};

}  // namespace

std::unique_ptr<frame_source> open_source(const source_wish& wish) {
  if (names_png(wish.path)) return std::make_unique<png_source>(wish);
  if (wish.format.empty()) wrong_arguments("the format of ", wish.path, " is missing; give it with -f");
  const catalogue::format& f = format_named(wish.format);
  if (wish.size.empty()) wrong_arguments("the size of ", wish.path, " is missing; give it with -s WIDTHxHEIGHT");
  const extent size = parse_size(wish.size);
  require_whole_rows(f, size);
  return std::make_unique<raw_source>(wish, f, size);
}

std::unique_ptr<frame_sink> open_sink(const sink_wish& wish, const catalogue::format& format) {
  if (!names_png(wish.path)) return std::make_unique<raw_sink>(wish, format);
  if (!fits_png(format)) wrong_arguments(wish.path, " is a PNG, which holds RGB, not ", format.name);
  if (wish.stride) wrong_arguments(wish.path, " is a PNG, which has no stride");
  return std::make_unique<png_sink>(wish);
}

}  // namespace morvane::tool
