#include "converter.h"

#include <algorithm>

namespace morvane::gstreamer {
namespace {

// Grey has no matrix of its own, unless RGB is made to it.
bool has_matrix(const GstVideoInfo& info) {
  return GST_VIDEO_INFO_IS_YUV(&info) && info.colorimetry.matrix != GST_VIDEO_COLOR_MATRIX_UNKNOWN;
}

GstVideoColorMatrix matrix_of(const GstVideoInfo& info, const GstVideoInfo& other) {
  if (GST_VIDEO_INFO_IS_RGB(&info)) return GST_VIDEO_COLOR_MATRIX_UNKNOWN;
  return !has_matrix(info) && has_matrix(other) ? other.colorimetry.matrix : info.colorimetry.matrix;
}

// Whether the plan is to know which matrix a picture has. Where both have the same, it changes nothing.
bool needs_matrices(const GstVideoInfo& from, const GstVideoInfo& to) {
  return GST_VIDEO_INFO_IS_RGB(&from) || GST_VIDEO_INFO_IS_RGB(&to) || matrix_of(from, to) != matrix_of(to, from);
}

// Answers false for a matrix that the library does not have.
bool find_matrix(const GstVideoColorMatrix matrix, int32_t& found) {
  switch (matrix) {
    case GST_VIDEO_COLOR_MATRIX_UNKNOWN:
    case GST_VIDEO_COLOR_MATRIX_RGB:
      found = MORVANE_MATRIX_DEFAULT;
      return true;
    case GST_VIDEO_COLOR_MATRIX_BT601:
      found = MORVANE_BT601;
      return true;
    case GST_VIDEO_COLOR_MATRIX_BT709:
      found = MORVANE_BT709;
      return true;
    case GST_VIDEO_COLOR_MATRIX_BT2020:
      found = MORVANE_BT2020;
      return true;
    default:
      return false;
  }
}

int32_t range_of(const GstVideoInfo& info) {
  switch (info.colorimetry.range) {
    case GST_VIDEO_COLOR_RANGE_0_255:
      return MORVANE_FULL;
    case GST_VIDEO_COLOR_RANGE_16_235:
      return MORVANE_VIDEO;
    default:
      return MORVANE_RANGE_DEFAULT;
  }
}

bool has_coarse_chroma(const known_format& format) {
  return format.facts->n_components > 1 && format.facts->w_sub[1] > 0;
}

int32_t siting_of(const GstVideoInfo& info) {
  const bool is_center =
      info.chroma_site != GST_VIDEO_CHROMA_SITE_UNKNOWN && !(info.chroma_site & GST_VIDEO_CHROMA_SITE_H_COSITED);
  return is_center ? MORVANE_CENTER : MORVANE_LEFT;
}

std::string describe(const GstVideoInfo& info, const GstVideoInfo& other, const rows which,
                     morvane_description& description) {
  description = {};
  description.struct_size = sizeof description;
  description.format = find_format(GST_VIDEO_INFO_FORMAT(&info))->info.format;
  description.width = info.width;
  description.height = height_of(info, which);
  description.range = range_of(info);
  if (needs_matrices(info, other) && !find_matrix(matrix_of(info, other), description.matrix)) {
    gchar* name = gst_video_colorimetry_to_string(&info.colorimetry);
    std::string problem = std::string("there is no way for the matrix of the colorimetry ") + (name ? name : "?") +
                          ": bt601, bt709 and bt2020 have one";
    g_free(name);
    return problem;
  }
  return {};
}

morvane_layout layout_of(const morvane_description& description) {
  morvane_layout layout{};
  layout.struct_size = sizeof layout;
  morvane_lay_out(&description, 0, &layout, nullptr);
  return layout;
}

morvane_options options_of(const GstVideoInfo& from, const GstVideoInfo& to, const settings& wanted) {
  morvane_options options{};
  options.struct_size = sizeof options;
  options.filter = wanted.filter;
  options.siting = siting_of(has_coarse_chroma(*find_format(GST_VIDEO_INFO_FORMAT(&from))) ? from : to);
  options.threads = wanted.threads;
  if (wanted.background >= 0) {
    options.has_background = 1;
    for (int i = 0; i < 3; i++) options.background[i] = static_cast<uint8_t>(wanted.background >> (16 - 8 * i));
  }
  return options;
}

}  // namespace

bool is_same_picture(const GstVideoInfo& from, const GstVideoInfo& to) {
  return GST_VIDEO_INFO_FORMAT(&from) == GST_VIDEO_INFO_FORMAT(&to) && range_of(from) == range_of(to) &&
         matrix_of(from, to) == matrix_of(to, from);
}

std::string converter::add_part(std::vector<part>& parts, const rows which, const morvane_options& options) {
  if (height_of(from_, which) == 0) return {};
  morvane_description from, to;
  if (std::string problem = describe(from_, to_, which, from); !problem.empty()) return problem;
  if (std::string problem = describe(to_, from_, which, to); !problem.empty()) return problem;
  part made{.which = which, .from = layout_of(from), .to = layout_of(to), .plan = nullptr};
  morvane_error error;
  made.plan.reset(morvane_plan_create(&from, &to, &options, &error));
  if (!made.plan) return error.message;
  const auto needed = static_cast<std::size_t>(morvane_plan_scratch_bytes(made.plan.get()));
  scratch_.resize(std::max(scratch_.size(), needed));
  parts.push_back(std::move(made));
  return {};
}

std::string converter::prepare(const GstVideoInfo& from, const GstVideoInfo& to, const settings& wanted) {
  from_ = from;
  to_ = to;
  from_format_ = find_format(GST_VIDEO_INFO_FORMAT(&from));
  to_format_ = find_format(GST_VIDEO_INFO_FORMAT(&to));
  frame_.clear();
  fields_.clear();
  if (!from_format_ || !to_format_) return "the caps have a format that the catalogue does not know";
  if (from.width != to.width || from.height != to.height) return "the caps differ in size";

  const bool in_fields = GST_VIDEO_INFO_IS_INTERLACED(&from) &&
                         (shares_chroma_between_rows(*from_format_) || shares_chroma_between_rows(*to_format_));
  const bool in_frames = !in_fields || from.interlace_mode == GST_VIDEO_INTERLACE_MODE_MIXED;
  const morvane_options options = options_of(from, to, wanted);
  std::string problem;
  if (in_frames) problem = add_part(frame_, rows::all, options);
  for (const rows field : {rows::top_field, rows::bottom_field})
    if (in_fields && problem.empty()) problem = add_part(fields_, field, options);
  return problem;
}

std::string converter::run(GstBuffer* source, GstBuffer* destination) {
  mapped_frame from, to;
  if (std::string problem = from.map(from_, source, GST_MAP_READ); !problem.empty()) return problem;
  if (std::string problem = to.map(to_, destination, GST_MAP_WRITE); !problem.empty()) return problem;

  const bool is_interlaced = from_.interlace_mode != GST_VIDEO_INTERLACE_MODE_MIXED ||
                             GST_BUFFER_FLAG_IS_SET(source, GST_VIDEO_BUFFER_FLAG_INTERLACED);
  for (const part& p : is_interlaced && !fields_.empty() ? fields_ : frame_) {
    const morvane_picture read = from.picture(*from_format_, p.from, p.which);
    const morvane_picture written = to.picture(*to_format_, p.to, p.which);
    morvane_error error;
    if (morvane_plan_run(p.plan.get(), &read, &written, scratch_.data(), static_cast<int64_t>(scratch_.size()),
                         &error) != MORVANE_OK)
      return error.message;
  }
  return {};
}

}  // namespace morvane::gstreamer
