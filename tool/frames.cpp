// Raw frames and PNGs as sources and sinks.
#include "frames.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

#include "errors.h"
#include "input_file.h"
#include "names.h"
#include "output.h"
#include "picture.h"
#include "png_file.h"
#include "raw_file.h"
#include "y4m_frames.h"

namespace morvane::tool {

namespace {

void require_file_for_every_plane(const format_info& f, const file_list& files) {
  if (files.size() == 1) return;
  for (const std::string& name : files) {
    if (name.empty()) wrong_arguments("a file in ", joined(files, ","), " has no name");
    if (names_png(name)) wrong_arguments(name, " is a PNG, which holds a picture and not one of its planes");
    if (names_y4m(name)) wrong_arguments(name, " is YUV4MPEG2, which holds all planes and not one of them");
  }
  if (files.size() != planes_of(f).size()) wrong_arguments(planes_in_words(f), "; there are ", files.size(), " files");
}

// Whether both names are of the same file, as it is or as it will be. Devices and pipes take any number of planes.
bool are_same_file(const std::string& a, const std::string& b) {
  if (a == "-" || b == "-") return a == b;
  std::error_code none;
  const bool there = std::filesystem::exists(a, none);
  if (there && !std::filesystem::is_regular_file(a, none)) return false;
  if (there) return std::filesystem::equivalent(a, b, none);
  const auto place = [&](const std::string& name) {
    return std::filesystem::weakly_canonical(std::filesystem::absolute(name), none);
  };
  return place(a) == place(b);
}

void require_distinct(const file_list& files) {
  for (auto a = files.begin(); a != files.end(); ++a)
    for (auto b = std::next(a); b != files.end(); ++b)
      if (are_same_file(*a, *b))
        wrong_arguments("two planes cannot be written to one file, ", *a == *b ? *a : *a + " and " + *b);
}

class raw_source : public frame_source {
 public:
  raw_source(const source_wish& wish, const format_info& f, extent size)
      : format_(f), size_(size), layout_(layout_of(f, size, wish.strides)), has_strides_(!wish.strides.empty()) {
    open(wish);
    for (raw_file& file : files_) file.skip(wish.skip);
    for (const raw_file& file : files_) require_as_many_frames(file);
  }

  const format_info& format() const override { return format_; }
  extent size() const override { return size_; }
  image blank() const override { return image(format_, size_, layout_); }
  std::int64_t frame_bytes() const override { return layout_.bytes; }
  std::optional<std::int64_t> remaining() const override {
    for (const raw_file& file : files_)
      if (file.remaining()) return file.remaining();
    return std::nullopt;
  }

  bool read(image& into) override {
    if (!next()) return false;
    for (std::size_t p = 0; p < planes_of(format_).size(); ++p) {
      raw_file& file = files_.size() == 1 ? files_.front() : files_[p];
      read_plane(file, layout_.planes[p], p, into);
    }
    return true;
  }

 private:
  void open(const source_wish& wish) {
    const file_list& names = wish.files;
    const std::string frame = text("one frame of ", format_.name, ' ', size_);
    if (names.size() == 1)
      files_.emplace_back(names.front(), layout_.bytes, frame, advisor(-1), wish.whole_frames);
    else
      for (std::size_t p = 0; p < names.size(); ++p)
        files_.emplace_back(names[p], plane_bytes(layout_.planes[p]),
                            text("plane ", format_.planes[p].name, " of ", frame), advisor(static_cast<int>(p)),
                            wish.whole_frames);
  }

  // Where the strides were given, others would be no help.
  raw_file::advisor advisor(int plane) const {
    if (has_strides_) return [](std::int64_t) { return std::string(); };
    return [this, plane](std::int64_t bytes) { return stride_advice(format_, size_, bytes, plane); };
  }

  void require_as_many_frames(const raw_file& file) const {
    const std::optional<std::int64_t> frames = remaining();
    if (file.remaining() && file.remaining() != frames)
      io_failure("planes with different numbers of frames: ", file.name(), " has ", *file.remaining(), ", another ",
                 *frames);
  }

  static void read_plane(raw_file& file, const morvane_plane_layout& plane, std::size_t p, image& into) {
    if (into.stride(p) == plane.stride) return file.take(into.row(p, 0), plane_bytes(plane));
    for (int y = 0; y < plane.rows; ++y) {
      file.take(into.row(p, y), plane.row_bytes);
      file.pass(plane.stride - plane.row_bytes);
    }
  }

  bool next() {
    const bool more = files_.front().next();
    for (std::size_t p = 1; p < files_.size(); ++p)
      if (files_[p].next() != more)
        io_failure(files_[more ? p : 0].name(), " has fewer frames than ", files_[more ? 0 : p].name());
    return more;
  }

  const format_info& format_;
  extent size_;
  morvane_layout layout_;
  bool has_strides_;
  std::vector<raw_file> files_;
};

class png_source : public frame_source {
 public:
  png_source(const std::string& path, const source_wish& wish)
      : picture_(read_png(path)), format_(format_of(path, wish.format)) {
    if (!wish.size.empty() && parse_size(wish.size) != picture_.size)
      wrong_arguments(path, " is ", picture_.size, ", not ", wish.size);
    if (!wish.strides.empty()) wrong_arguments(path, " is a PNG, which has no stride");
    if (wish.skip > 0) wrong_arguments(path, " has no frame ", wish.skip, ": it has 1, numbered from 0");
  }

  const format_info& format() const override { return format_; }
  extent size() const override { return picture_.size; }
  std::optional<std::int64_t> remaining() const override { return read_ ? 0 : 1; }

  bool read(image& into) override {
    if (read_) return false;
    from_picture(picture_, into);
    return read_ = true;
  }

 private:
  const format_info& format_of(const std::string& path, const std::string& wanted) const {
    const bool alpha = picture_.channels == 4;
    const format_info& f = format_named(!wanted.empty() ? wanted : alpha ? "bgra" : "bgrx");
    if (!fits_png(f)) wrong_arguments(path, " is a PNG, which is read as RGB, not as ", f.name);
    if (alpha && !f.has_alpha) say(text("the alpha of ", path, " is dropped: ", f.name, " has none"));
    return f;
  }

  picture picture_;
  const format_info& format_;
  bool read_ = false;
};

class raw_sink : public frame_sink {
 public:
  raw_sink(const sink_wish& wish, const format_info& f)
      : size_(wish.size), layout_(layout_of(f, wish.size, wish.strides)) {
    for (const std::string& name : wish.files) files_.emplace_back(name);
  }

  void write(const image& frame) override {
    for (std::size_t p = 0; p < frame.plane_count(); ++p)
      write_plane(files_.size() == 1 ? files_.front() : files_[p], layout_.planes[p], p, frame);
    for (const output_file& file : files_) file.flush();
  }
  image blank(const format_info& format, extent size) const override {
    return size == size_ ? image(format, size, layout_) : image(format, size);
  }
  std::int64_t frame_bytes(const format_info& format, extent size) const override {
    return size == size_ ? layout_.bytes : image::bytes_of(format, size);
  }
  void commit() override {
    for (output_file& file : files_) file.finish();
    for (output_file& file : files_) file.commit();
  }
  void keep(std::int64_t frames) override {
    if (files_.size() == 1) return files_.front().keep(frames * layout_.bytes);
    for (std::size_t p = 0; p < files_.size(); ++p) files_[p].keep(frames * plane_bytes(layout_.planes[p]));
  }
  bool is_in_place() const override {
    return std::all_of(files_.begin(), files_.end(), [](const output_file& f) { return f.is_in_place(); });
  }

 private:
  void write_plane(output_file& file, const morvane_plane_layout& plane, std::size_t p, const image& frame) {
    const bool as_it_is = frame.stride(p) == plane.stride && frame.rows(p) == plane.rows;
    if (as_it_is) return file.write(frame.row(p, 0), static_cast<std::size_t>(plane_bytes(plane)));
    padding_.resize(static_cast<std::size_t>(plane.stride - plane.row_bytes));
    for (int y = 0; y < plane.rows; ++y) {
      file.write(frame.row(p, y), static_cast<std::size_t>(plane.row_bytes));
      file.write(padding_.data(), padding_.size());
    }
  }

  extent size_;
  morvane_layout layout_;
  std::deque<output_file> files_;
  std::vector<std::uint8_t> padding_;
};

class png_sink : public frame_sink {
 public:
  png_sink(const std::string& path, extent size) : size_(size), file_(path) {}

  void write(const image& frame) override {
    if (written_) io_failure(file_.name(), " holds one frame and the input has more; --skip and --frames 1 choose one");
    write_png(file_.stream(), file_.name(), to_picture(frame, size_));
    written_ = true;
  }
  void commit() override { file_.commit(); }
  void keep(std::int64_t) override { file_.commit(); }
  bool is_in_place() const override { return file_.is_in_place(); }

 private:
  extent size_;
  output_file file_;
  bool written_ = false;
};

// An input that says itself what its frames are; null where it does not.
std::unique_ptr<frame_source> open_described_source(const source_wish& wish) {
  input_file file(wish.files.front());
  if (file.at_end()) io_failure(file.name(), " is empty");
  return file.begins_with(y4m_magic) ? open_y4m_source(wish, std::move(file)) : nullptr;
}

}  // namespace

bool is_png(const file_list& files) {
  return files.size() == 1 && names_png(files.front());
}

bool is_y4m(const file_list& files) {
  return files.size() == 1 && names_y4m(files.front());
}

std::unique_ptr<frame_source> open_source(const source_wish& wish) {
  if (is_y4m(wish.files)) return open_y4m_source(wish, input_file(wish.files.front()));
  if (is_png(wish.files)) return std::make_unique<png_source>(wish.files.front(), wish);
  if (wish.files.size() == 1 && (wish.format.empty() || wish.size.empty()))
    if (auto source = open_described_source(wish)) return source;
  const std::string name = joined(wish.files, ",");
  if (wish.format.empty()) wrong_arguments("the format of ", name, " is missing; give it with -f");
  const format_info& f = format_named(wish.format);
  if (wish.size.empty()) wrong_arguments("the size of ", name, " is missing; give it with -s WIDTHxHEIGHT");
  const extent size = parse_size(wish.size);
  require_file_for_every_plane(f, wish.files);
  if (std::count(wish.files.begin(), wish.files.end(), "-") > 1)
    wrong_arguments("standard input can be one of the planes only");
  return std::make_unique<raw_source>(wish, f, size);
}

std::unique_ptr<frame_sink> open_sink(const sink_wish& wish, const format_info& format) {
  if (is_png(wish.files)) {
    const std::string& path = wish.files.front();
    if (!fits_png(format)) wrong_arguments(path, " is a PNG, which holds RGB, not ", format.name);
    if (!wish.strides.empty()) wrong_arguments(path, " is a PNG, which has no stride");
    return std::make_unique<png_sink>(path, wish.size);
  }
  if (wish.is_y4m || is_y4m(wish.files)) return open_y4m_sink(wish, format);
  require_file_for_every_plane(format, wish.files);
  require_distinct(wish.files);
  return std::make_unique<raw_sink>(wish, format);
}

}  // namespace morvane::tool
