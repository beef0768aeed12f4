// YUV4MPEG2 files as sources and sinks.
#include "y4m_frames.h"

#include <utility>

#include "errors.h"
#include "names.h"
#include "output.h"

namespace morvane::tool {

namespace {

class y4m_source : public frame_source {
 public:
  y4m_source(const source_wish& wish, input_file file)
      : file_(std::move(file)), header_(read_y4m_header(next_, file_.name())), layout_(layout_of(format(), size())) {
    if (!wish.format.empty() && format_named(wish.format).format != header_.format)
      wrong_arguments(file_.name(), " is ", format().name, ", not ", wish.format);
    if (!wish.size.empty() && parse_size(wish.size) != size())
      wrong_arguments(file_.name(), " is ", size(), ", not ", wish.size);
    if (!wish.strides.empty()) wrong_arguments(file_.name(), " is YUV4MPEG2, which has no stride");
    if (wish.skip > 0) skip(wish.skip);
  }

  const format_info& format() const override { return info_of(header_.format); }
  extent size() const override { return {header_.width, header_.height}; }
  image blank() const override { return image(format(), size(), layout_); }
  std::int64_t frame_bytes() const override { return layout_.bytes; }
  std::optional<std::int64_t> remaining() const override { return std::nullopt; }
  const y4m_stream* header() const override { return &header_; }

  bool read(image& into) override {
    if (!read_y4m_frame_header(next_, file_.name())) return false;
    std::int64_t got = 0;
    for (std::size_t p = 0; p < into.plane_count(); ++p) {
      const morvane_plane_layout& plane = layout_.planes[p];
      for (int y = 0; y < plane.rows; ++y) got += file_.read(into.row(p, y), plane.row_bytes);
    }
    if (got < layout_.bytes)
      io_failure(file_.name(), " ended inside frame ", frame_, ": expected ", layout_.bytes, " bytes, one frame of ",
                 format().name, ' ', size(), ", got ", got);
    ++frame_;
    return true;
  }

 private:
  void skip(std::int64_t frames) {
    image passed = blank();
    while (frame_ < frames)
      if (!read(passed))
        wrong_arguments(file_.name(), " has no frame ", frames, ": it has ", frame_, ", numbered from 0");
  }

  input_file file_;
  next_byte next_ = [this] { return file_.get(); };
  y4m_stream header_;
  morvane_layout layout_;
  std::int64_t frame_ = 0;
};

class y4m_sink : public frame_sink {
 public:
  y4m_sink(const sink_wish& wish, const std::string& header, const format_info& format)
      : size_(wish.size), layout_(layout_of(format, wish.size)), file_(wish.files.front()) {
    write(header);
    begin_ = static_cast<std::int64_t>(header.size());
  }

  void write(const image& frame) override {
    write(y4m_frame_header);
    for (std::size_t p = 0; p < frame.plane_count(); ++p) {
      const morvane_plane_layout& plane = layout_.planes[p];
      for (int y = 0; y < plane.rows; ++y) file_.write(frame.row(p, y), static_cast<std::size_t>(plane.row_bytes));
    }
    file_.flush();
  }
  image blank(const format_info& format, extent size) const override {
    return size == size_ ? image(format, size, layout_) : image(format, size);
  }
  void commit() override { file_.commit(); }
  void keep(std::int64_t frames) override {
    file_.keep(begin_ + frames * (static_cast<std::int64_t>(y4m_frame_header.size()) + layout_.bytes));
  }
  bool is_in_place() const override { return file_.is_in_place(); }

 private:
  void write(std::string_view line) { file_.write(line.data(), line.size()); }

  extent size_;
  morvane_layout layout_;
  output_file file_;
  std::int64_t begin_ = 0;  // of the first frame
};

}  // namespace

std::unique_ptr<frame_source> open_y4m_source(const source_wish& wish, input_file file) {
  return std::make_unique<y4m_source>(wish, std::move(file));
}

std::unique_ptr<frame_sink> open_y4m_sink(const sink_wish& wish, const format_info& format) {
  const std::string name = output_name(wish.files.front());
  if (!wish.strides.empty()) wrong_arguments(name, " is YUV4MPEG2, which has no stride");
  y4m_stream stream = wish.video;
  stream.format = format.format;
  stream.width = wish.size.width;
  stream.height = wish.size.height;
  return std::make_unique<y4m_sink>(wish, y4m_header(stream, wish.siting, name), format);
}

}  // namespace morvane::tool
