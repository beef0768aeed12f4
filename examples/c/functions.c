/* Every function of morvane.h at work, each in a function of its own. They print what the test of this file expects. */
#include <inttypes.h>
#include <morvane.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* A picture of 4x2 pixels in a format of this name. */
static morvane_description small_picture(const char* format) {
  morvane_description d = {.struct_size = sizeof d, .width = 4, .height = 2, .matrix = MORVANE_BT709};
  d.format = morvane_format_named(format);
  return d;
}

/* The planes of a picture in one run of memory, which the caller frees by freeing data[0]. */
static morvane_picture new_picture(const morvane_description* d, int value) {
  morvane_layout layout = {.struct_size = sizeof layout};
  morvane_picture p = {.struct_size = sizeof p};
  if (morvane_lay_out(d, 64, &layout, NULL) != MORVANE_OK) exit(1);
  unsigned char* memory = malloc((size_t)layout.bytes);
  if (memory == NULL) exit(1);
  memset(memory, value, (size_t)layout.bytes);
  for (int32_t i = 0; i < layout.plane_count; ++i) {
    p.data[i] = memory + layout.planes[i].offset;
    p.stride[i] = layout.planes[i].stride;
    p.bytes[i] = layout.planes[i].stride * layout.planes[i].rows;
  }
  return p;
}

static void formats_by_name(void) {
  const morvane_format format = morvane_format_named("y_uv_420");
  printf("%s has the id %" PRId32 "\n", morvane_format_name(format), format);
}

static void formats_by_a_name_of_another_system(void) {
  morvane_format found[4];
  const int32_t count = morvane_formats_called("NV12", found, 4);
  printf("NV12 is %s, and %" PRId32 " format is called so\n", morvane_format_name(found[0]), count);
}

static void all_formats(void) {
  int32_t with_alpha = 0;
  for (int32_t i = 0; i < morvane_format_count(); ++i) {
    morvane_format_info info = {.struct_size = sizeof info};
    if (morvane_describe_format(morvane_format_at(i), &info, NULL) != MORVANE_OK) exit(1);
    with_alpha += info.has_alpha;
  }
  printf("some formats have alpha: %s\n", with_alpha > 0 ? "yes" : "no");
}

static void planes_of_a_format(void) {
  morvane_format_info info = {.struct_size = sizeof info};
  if (morvane_describe_format(morvane_format_named("v210"), &info, NULL) != MORVANE_OK) exit(1);
  printf("v210 has %" PRId32 " pixels in %" PRId32 " bytes: %s\n", info.planes[0].group_pixels,
         info.planes[0].group_bytes, info.planes[0].components);
}

static void bytes_of_a_file(void) {
  morvane_description d = small_picture("v210");
  morvane_layout layout = {.struct_size = sizeof layout};
  morvane_error error;
  d.width = 1280;
  d.height = 720;
  if (morvane_lay_out(&d, 0, &layout, &error) != MORVANE_OK) exit(1);
  printf("1280x720 of v210: rows of %" PRId64 " bytes, %" PRId64 " in all\n", layout.planes[0].stride, layout.bytes);
}

static void samples_of_a_row(void) {
  const morvane_description d = small_picture("uyvy");
  const morvane_picture p = new_picture(&d, 128);
  uint16_t luma[4], cb[2], cr[2];
  uint16_t* const lines[MORVANE_COMPONENTS] = {luma, cb, cr, NULL, NULL};
  if (morvane_read_row(&d, &p, 0, 1, lines, 4, NULL) != MORVANE_OK) exit(1);
  printf("luma of 8 bits: %d\n", luma[3] >> 8);
  free(p.data[0]);
}

static void entry_points(void) {
  morvane_entry_point e = {.struct_size = sizeof e};
  int32_t irregular = 0;
  for (int32_t i = 0; i < morvane_entry_point_count(); ++i) {
    if (morvane_describe_entry_point(i, &e, NULL) != MORVANE_OK) exit(1);
    irregular += e.irregular[0] != '\0';
  }
  printf("some entry points are irregular: %s\n", irregular > 0 ? "yes" : "no");
}

static void one_picture(void) {
  const morvane_description from = small_picture("uyvy"), to = small_picture("rgba");
  const morvane_picture source = new_picture(&from, 128), result = new_picture(&to, 0);
  morvane_error error;
  if (morvane_convert(&from, &source, &to, &result, NULL, &error) != MORVANE_OK) puts(error.message);
  printf("grey of video range is %d in full range\n", *(const unsigned char*)result.data[0]);
  free(source.data[0]);
  free(result.data[0]);
}

static void a_refusal(void) {
  const morvane_description from = small_picture("uyvy"), to = small_picture("rgba");
  morvane_picture source = new_picture(&from, 128), result = new_picture(&to, 0);
  morvane_error error;
  result.stride[0] = 8;
  if (morvane_convert(&from, &source, &to, &result, NULL, &error) == MORVANE_STRIDE)
    printf("%s: got %" PRId64 ", needed %" PRId64 "\n", error.argument, error.got, error.needed);
  free(source.data[0]);
  free(result.data[0]);
}

/* A plan for many pictures of one kind, with two threads and over a background where there is alpha. */
static morvane_plan* new_plan(const morvane_description* from, const morvane_description* to) {
  const morvane_options options = {
      .struct_size = sizeof options, .threads = 2, .has_background = 1, .background = {255, 255, 255}};
  morvane_error error;
  morvane_plan* plan = morvane_plan_create(from, to, &options, &error);
  if (plan == NULL) {
    puts(error.message);
    exit(1);
  }
  return plan;
}

static void steps_and_losses(void) {
  const morvane_description from = small_picture("bgra"), to = small_picture("y_uv_420");
  morvane_plan* plan = new_plan(&from, &to);
  for (int32_t i = 0; morvane_plan_step(plan, i) != NULL; ++i) printf("step: %s\n", morvane_plan_step(plan, i));
  for (int32_t i = 0; morvane_plan_loss(plan, i) != NULL; ++i) printf("loss: %s\n", morvane_plan_loss(plan, i));
  morvane_plan_destroy(plan);
}

static void many_pictures(void) {
  const morvane_description from = small_picture("bgra"), to = small_picture("y_uv_420");
  morvane_plan* plan = new_plan(&from, &to);
  const int64_t bytes = morvane_plan_scratch_bytes(plan);
  void* scratch = malloc((size_t)bytes);
  const morvane_picture source = new_picture(&from, 255), result = new_picture(&to, 0);
  for (int frame = 0; frame < 3; ++frame)
    if (morvane_plan_run(plan, &source, &result, scratch, bytes, NULL) != MORVANE_OK) exit(1);
  printf("white has luma %d\n", *(const unsigned char*)result.data[0]);
  free(source.data[0]);
  free(result.data[0]);
  free(scratch);
  morvane_plan_destroy(plan);
}

static void bands_of_a_picture(void) {
  const morvane_description from = small_picture("uyvy"), to = small_picture("bgra");
  morvane_plan* plan = new_plan(&from, &to);
  const int64_t bytes = morvane_plan_scratch_bytes(plan);
  void* scratch = malloc((size_t)bytes);
  const morvane_picture source = new_picture(&from, 128), result = new_picture(&to, 0);
  const int32_t unit = morvane_plan_row_granularity(plan);
  for (int32_t first = 0; first < from.height; first += unit)
    if (morvane_plan_run_rows(plan, &source, &result, first, unit, scratch, bytes, NULL) != MORVANE_OK) exit(1);
  printf("bands of %" PRId32 " row\n", unit);
  free(source.data[0]);
  free(result.data[0]);
  free(scratch);
  morvane_plan_destroy(plan);
}

int main(void) {
  formats_by_name();
  formats_by_a_name_of_another_system();
  all_formats();
  planes_of_a_format();
  bytes_of_a_file();
  samples_of_a_row();
  entry_points();
  one_picture();
  a_refusal();
  steps_and_losses();
  many_pictures();
  bands_of_a_picture();
  return 0;
}
