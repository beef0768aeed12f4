// What the module has beside the functions of morvane.h: calls without structs, and what there is to know as JSON.
// Texts are valid until the next call.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "morvane.h"

#define WEB(name) extern "C" __attribute__((export_name(#name), visibility("default")))

namespace {

class json {
 public:
  const char* text() const { return text_.c_str(); }

  json& open(const char bracket) {
    begin();
    text_ += bracket;
    is_first_ = true;
    return *this;
  }
  json& close(const char bracket) {
    text_ += bracket;
    is_first_ = false;
    return *this;
  }
  json& name(const char* key) {
    put(key);
    text_ += ':';
    is_first_ = true;
    return *this;
  }
  json& put(const int64_t value) {
    begin();
    text_ += std::to_string(value);
    return *this;
  }
  json& put(const char* value) {
    begin();
    text_ += '"';
    for (; *value != '\0'; ++value) {
      if (*value == '"' || *value == '\\') text_ += '\\';
      text_ += *value;
    }
    text_ += '"';
    return *this;
  }

 private:
  std::string text_;
  bool is_first_ = true;

  void begin() {
    if (!is_first_) text_ += ',';
    is_first_ = false;
  }
};

json answer;
morvane_error error;

void put_plane(json& j, const morvane_plane_info& p) {
  j.open('{').name("name").put(p.name).name("components").put(p.components).name("samples").open('[');
  for (const int32_t count : p.samples) j.put(count);
  j.close(']').name("groupBytes").put(p.group_bytes).name("groupPixels").put(p.group_pixels);
  j.name("imageRows").put(p.image_rows).name("bits").put(p.bits).name("isFloat").put(p.is_float).close('}');
}

void put_format(json& j, const morvane_format_info& f) {
  j.open('{').name("id").put(f.format).name("name").put(f.name).name("description").put(f.description);
  j.name("fourcc").put(f.fourcc).name("ffmpeg").put(f.ffmpeg).name("v4l2").put(f.v4l2);
  j.name("gstreamer").put(f.gstreamer).name("apple").put(f.apple).name("also").put(f.also);
  j.name("model").put(f.model).name("hasAlpha").put(f.has_alpha).name("planes").open('[');
  for (int32_t i = 0; i < f.plane_count; ++i) put_plane(j, f.planes[i]);
  j.close(']').close('}');
}

struct named {
  const char* name;
  int32_t value;
};

template <size_t count>
void put_names(json& j, const char* kind, const named (&all)[count]) {
  j.name(kind).open('{');
  for (const named& n : all) j.name(n.name).put(n.value);
  j.close('}');
}

void put_constants(json& j) {
  put_names(j, "matrices", {{"BT.601", MORVANE_BT601}, {"BT.709", MORVANE_BT709}, {"BT.2020", MORVANE_BT2020}});
  put_names(j, "ranges", {{"video", MORVANE_VIDEO}, {"full", MORVANE_FULL}});
  put_names(j, "filters", {{"linear", MORVANE_LINEAR}, {"nearest", MORVANE_NEAREST}});
  put_names(j, "sitings", {{"left", MORVANE_LEFT}, {"center", MORVANE_CENTER}});
  put_names(j, "models",
            {{"YCbCr", MORVANE_YCBCR},
             {"RGB", MORVANE_RGB},
             {"luma", MORVANE_LUMA},
             {"chroma", MORVANE_CHROMA},
             {"alpha", MORVANE_ALPHA}});
  put_names(j, "codes",
            {{"null", MORVANE_NULL},
             {"struct size", MORVANE_STRUCT_SIZE},
             {"unknown format", MORVANE_UNKNOWN_FORMAT},
             {"size", MORVANE_SIZE},
             {"option", MORVANE_OPTION},
             {"no way", MORVANE_NO_WAY},
             {"stride", MORVANE_STRIDE},
             {"plane too short", MORVANE_PLANE_TOO_SHORT},
             {"overlap", MORVANE_OVERLAP},
             {"rows", MORVANE_ROWS},
             {"scratch", MORVANE_SCRATCH},
             {"no memory", MORVANE_NO_MEMORY},
             {"via", MORVANE_VIA}});
}

// A description as five numbers.
constexpr int description_numbers = 5;

morvane_description description_of(const int32_t* n) {
  return {sizeof(morvane_description), n[0], n[1], n[2], n[3], n[4]};
}

}  // namespace

// All formats, and the names of constants.
WEB(web_facts) const char* web_facts() {
  answer = {};
  answer.open('{').name("formats").open('[');
  for (int32_t i = 0; i < morvane_format_count(); ++i) {
    morvane_format_info info = {};
    info.struct_size = sizeof info;
    morvane_describe_format(morvane_format_at(i), &info, &error);
    put_format(answer, info);
  }
  answer.close(']');
  put_constants(answer);
  return answer.close('}').text();
}

// What was wrong with the call before.
WEB(web_error) const char* web_error() {
  answer = {};
  answer.open('{').name("code").put(error.code).name("argument").put(error.argument);
  answer.name("got").put(error.got).name("needed").put(error.needed).name("message").put(error.message);
  return answer.close('}').text();
}

// NULL and an error where the numbers describe no picture.
WEB(web_lay_out) const char* web_lay_out(const int32_t* description, const int32_t alignment) {
  const morvane_description d = description_of(description);
  morvane_layout layout = {};
  layout.struct_size = sizeof layout;
  if (morvane_lay_out(&d, alignment, &layout, &error) != MORVANE_OK) return nullptr;
  answer = {};
  answer.open('{').name("bytes").put(layout.bytes).name("planes").open('[');
  for (int32_t i = 0; i < layout.plane_count; ++i) {
    const morvane_plane_layout& p = layout.planes[i];
    answer.open('{').name("offset").put(p.offset).name("stride").put(p.stride);
    answer.name("rowBytes").put(p.row_bytes).name("rows").put(p.rows).close('}');
  }
  return answer.close(']').close('}').text();
}

// Two descriptions, and then the options in the order below.
WEB(web_plan) morvane_plan* web_plan(const int32_t* numbers, const char* via) {
  const morvane_description from = description_of(numbers), to = description_of(numbers + description_numbers);
  const int32_t* n = numbers + 2 * description_numbers;
  morvane_options options = {};
  options.struct_size = sizeof options;
  options.filter = n[0];
  options.siting = n[1];
  options.has_background = n[2];
  for (int i = 0; i < 3; ++i) options.background[i] = static_cast<uint8_t>(n[3 + i]);
  options.threads = n[6];
  options.allow_irregular = n[7];
  options.rescale = n[8];
  options.via = via;
  return morvane_plan_create(&from, &to, &options, &error);
}

// A picture without planes, or NULL where there is no memory for it; the caller frees it.
WEB(web_picture) morvane_picture* web_picture() {
  auto* const picture = static_cast<morvane_picture*>(calloc(1, sizeof(morvane_picture)));
  if (picture != nullptr) picture->struct_size = sizeof *picture;
  return picture;
}
WEB(web_set_plane)
void web_set_plane(morvane_picture* picture, const int32_t plane, void* data, const double stride, const double bytes) {
  picture->data[plane] = data;
  picture->stride[plane] = static_cast<int64_t>(stride);
  picture->bytes[plane] = static_cast<int64_t>(bytes);
}

// The code of morvane.h. All rows where `rows` is negative.
WEB(web_run)
int32_t web_run(const morvane_plan* plan, const morvane_picture* source, const morvane_picture* destination,
                const int32_t first, const int32_t rows, void* scratch, const int32_t scratch_bytes) {
  if (rows < 0) return morvane_plan_run(plan, source, destination, scratch, scratch_bytes, &error);
  return morvane_plan_run_rows(plan, source, destination, first, rows, scratch, scratch_bytes, &error);
}

// Each component of a row as code values, from `lines` on with `room` words for each. Floats keep all 16 bits.
WEB(web_read_row)
int32_t web_read_row(const int32_t* description, const morvane_picture* picture, const int32_t plane, const int32_t row,
                     const int32_t bits, uint16_t* lines, const int32_t room) {
  const morvane_description d = description_of(description);
  uint16_t* each[MORVANE_COMPONENTS];
  for (int i = 0; i < MORVANE_COMPONENTS; ++i) each[i] = lines + static_cast<ptrdiff_t>(i) * room;
  const int32_t code = morvane_read_row(&d, picture, plane, row, each, room, &error);
  if (code != MORVANE_OK) return code;
  for (ptrdiff_t i = 0; i < ptrdiff_t{MORVANE_COMPONENTS} * room; ++i)
    lines[i] = static_cast<uint16_t>(lines[i] >> (16 - bits));
  return code;
}
