/* The checked interface of Morvane, in C: any picture to any other.
 *
 * A picture is planes of memory and a description of what is in them: a format, a size, and for YCbCr a matrix and a
 * range. A plan is made once from two descriptions and then converts any number of pictures of that kind.
 *
 *   morvane_description from = {sizeof from, morvane_format_named("uyvy"), 1920, 1080, 0, 0};
 *   morvane_description to = {sizeof to, morvane_format_named("bgra"), 1920, 1080, 0, 0};
 *   morvane_error error;
 *   if (morvane_convert(&from, &picture, &to, &result, NULL, &error) != MORVANE_OK) puts(error.message);
 *
 * Whatever can be wrong is refused before a byte is written: the function returns a code, and the error says which
 * argument it was, what was got and what is needed. Sizes are in bytes unless they are said to be pixels or rows. All
 * functions may be called from any thread; a plan may be run by many threads at once.
 *
 * examples/c/functions.c has every function at work.
 *
 * Structs begin with their own size, which the caller sets, so that later versions may add fields at the end.
 */
#ifndef MORVANE_H
#define MORVANE_H

#include <stdint.h>

#if defined(__GNUC__)
#define MORVANE_C_API __attribute__((visibility("default")))
#else
#define MORVANE_C_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

#define MORVANE_MAX_PLANES 4
#define MORVANE_MAX_MATRICES 3

/* Why a call was refused. */
enum morvane_code {
  MORVANE_OK = 0,
  MORVANE_NULL = 1,            /* a pointer that must not be null */
  MORVANE_STRUCT_SIZE = 2,     /* struct_size was not set, or is of no known version */
  MORVANE_UNKNOWN_FORMAT = 3,  /* no format has this id */
  MORVANE_SIZE = 4,            /* below 1, too large for the address space, or wider than 2^28 pixels for a plan */
  MORVANE_OPTION = 5,          /* a matrix, range, filter, siting, kind of stores or alignment that does not exist */
  MORVANE_NO_WAY = 6,          /* formats between which there is no conversion, or pictures of different size */
  MORVANE_STRIDE = 7,          /* a stride shorter than a row */
  MORVANE_PLANE_TOO_SHORT = 8, /* a plane with fewer bytes than its rows need */
  MORVANE_OVERLAP = 9,         /* planes or scratch memory that share bytes, of which one is written */
  MORVANE_ROWS = 10,           /* a band that is outside the picture or does not begin and end where it may */
  MORVANE_SCRATCH = 11,        /* less scratch memory than the plan needs */
  MORVANE_NO_MEMORY = 12,
  MORVANE_VIA = 13 /* an entry point that there is not between the formats, or that these pictures do not suit */
};

/* What was wrong. `got` and `needed` are the numbers in question; 0 where they are none. */
typedef struct morvane_error {
  int32_t code;      /* of morvane_code */
  char argument[28]; /* its name: "destination.stride[1]" */
  int64_t got;
  int64_t needed;
  char message[216]; /* one sentence */
} morvane_error;

/* A format by its id, which never changes; 0 is none. */
typedef int32_t morvane_format;

/* The format of a name as `morvane formats` lists it, or 0. */
MORVANE_C_API morvane_format morvane_format_named(const char* name);
/* The formats that answer to a name of this library or of another system ("nv12", "YUY2", "V4L2_PIX_FMT_GREY", "420v"),
 * whatever its case; those that answer to it as it is written hide the others. Stores up to `room` of them and returns
 * how many there are. */
MORVANE_C_API int32_t morvane_formats_called(const char* name, morvane_format* found, int32_t room);
/* The name of a format, or NULL. */
MORVANE_C_API const char* morvane_format_name(morvane_format format);
/* How many formats there are, and the id of each, from 0 on; 0 beyond the last. */
MORVANE_C_API int32_t morvane_format_count(void);
MORVANE_C_API morvane_format morvane_format_at(int32_t index);

/* What components mean, and which there are: luma, red or luminance; Cb or green; Cr or blue; alpha; what is unused. */
enum morvane_model { MORVANE_YCBCR = 1, MORVANE_RGB = 2, MORVANE_LUMA = 3, MORVANE_CHROMA = 4, MORVANE_ALPHA = 5 };
enum morvane_component {
  MORVANE_Y_R = 0,
  MORVANE_CB_G = 1,
  MORVANE_CR_B = 2,
  MORVANE_A = 3,
  MORVANE_X = 4,
  MORVANE_COMPONENTS = 5
};

/* How a plane is stored: its rows are groups of pixels, of which the last one is whole. */
typedef struct morvane_plane_info {
  const char* name;
  const char* components;              /* of a group, as they are stored: "Cb Y Cr Y"; x is unused */
  int32_t samples[MORVANE_COMPONENTS]; /* of each component in a group */
  int32_t group_bytes;
  int32_t group_pixels;
  int32_t image_rows; /* rows of the picture to a row of the plane: 2 for the chroma of 4:2:0 */
  int32_t bits;       /* of a sample; 16 where is_float, which is what they are converted by */
  int32_t is_float;
} morvane_plane_info;

/* What is known of a format. Texts live as long as the program, and are "" where there is nothing to tell. */
typedef struct morvane_format_info {
  uint32_t struct_size;
  morvane_format format;
  const char* name;
  const char* description;
  const char* fourcc; /* four characters, blanks at the end included */
  const char* ffmpeg; /* the names that other systems have for it */
  const char* v4l2;
  const char* gstreamer;
  int32_t model; /* of morvane_model */
  int32_t has_alpha;
  int32_t width_multiple; /* what the entry points of Processing.Morvane.h need; the checked interface takes any size */
  int32_t height_multiple;
  int32_t plane_count;
  morvane_plane_info planes[MORVANE_MAX_PLANES];
  const char* apple; /* CoreVideo's: four characters, or "24RGB" for kCVPixelFormatType_24RGB, which has none */
  const char* also;  /* more names, separated by blanks */
} morvane_format_info;

MORVANE_C_API int32_t morvane_describe_format(morvane_format format, morvane_format_info* info, morvane_error* error);

enum morvane_matrix { MORVANE_MATRIX_DEFAULT = 0, MORVANE_BT601 = 601, MORVANE_BT709 = 709, MORVANE_BT2020 = 2020 };
enum morvane_range { MORVANE_RANGE_DEFAULT = 0, MORVANE_VIDEO = 1, MORVANE_FULL = 2 };

/* What a picture holds. The matrix is BT.709 by default; the range is video for YCbCr and full for RGB. Alpha, L and
 * floats have a range of their own, whatever is said here. */
typedef struct morvane_description {
  uint32_t struct_size;
  morvane_format format;
  int32_t width; /* in pixels, at least 1, odd ones too */
  int32_t height;
  int32_t matrix; /* of morvane_matrix */
  int32_t range;  /* of morvane_range */
} morvane_description;

/* Where the planes of a picture lie, one after the other in one run of memory. */
typedef struct morvane_plane_layout {
  int64_t offset;    /* of the first row */
  int64_t stride;    /* from row to row */
  int64_t row_bytes; /* of whole groups */
  int64_t rows;
} morvane_plane_layout;

typedef struct morvane_layout {
  uint32_t struct_size;
  int32_t plane_count;
  int64_t bytes; /* of all planes */
  morvane_plane_layout planes[MORVANE_MAX_PLANES];
} morvane_layout;

/* With an alignment of 0 the strides are those that files have: 128 bytes for every 48 pixels of v210, and rows without
 * gaps for all other formats. Otherwise strides and offsets are multiples of the alignment, a power of two up to 4096.
 */
MORVANE_C_API int32_t morvane_lay_out(const morvane_description* description, int64_t alignment, morvane_layout* layout,
                                      morvane_error* error);

/* The planes of a picture: the first byte of the first row, the signed bytes from row to row, and how many bytes there
 * are from the first byte of that row which lies lowest in memory. The caller owns the memory. */
typedef struct morvane_picture {
  uint32_t struct_size;
  void* data[MORVANE_MAX_PLANES];
  int64_t stride[MORVANE_MAX_PLANES];
  int64_t bytes[MORVANE_MAX_PLANES];
} morvane_picture;

/* The samples of a row of a plane, each component into a line of its own, with their bits at the top of the words;
 * floats as the words that they are converted by. What is unused is left out. The lines of the components that the
 * plane has are not NULL and have room for all samples of whole groups, `room` at least; the others are ignored. */
MORVANE_C_API int32_t morvane_read_row(const morvane_description* description, const morvane_picture* picture,
                                       int32_t plane, int32_t row, uint16_t* const lines[MORVANE_COMPONENTS],
                                       int64_t room, morvane_error* error);

/* An entry point of Processing.Morvane.h. */
typedef struct morvane_entry_point {
  uint32_t struct_size;
  morvane_format source; /* 0 where it fills a picture */
  morvane_format destination;
  int32_t matrices[MORVANE_MAX_MATRICES]; /* that it has; 0 behind the last */
  int32_t rescales;                       /* whether it can stretch luma, by an argument */
  int32_t reports_opacity;                /* whether it can tell if all alpha was opaque */
  const char* name;                       /* "uyvy::yuy2" */
  const char* irregular; /* what its output does differently from what the name says, in a sentence, or "" */
} morvane_entry_point;

MORVANE_C_API int32_t morvane_entry_point_count(void);
/* From 0 on. Several may have one name and differ by their formats. */
MORVANE_C_API int32_t morvane_describe_entry_point(int32_t index, morvane_entry_point* entry_point,
                                                   morvane_error* error);

enum morvane_filter { MORVANE_LINEAR = 0, MORVANE_NEAREST = 1 };
enum morvane_siting { MORVANE_LEFT = 0, MORVANE_CENTER = 1 };
/* Streaming stores pass by the caches: they do not read the lines that they overwrite, and whoever reads the result
 * next finds it in memory. By size, a plan streams where it makes rows in one pass, and the destination has more than
 * MORVANE_MOST_CACHED bytes. */
enum morvane_stores { MORVANE_CACHED = 0, MORVANE_STREAMING = 1, MORVANE_BY_SIZE = 2 };
#define MORVANE_MOST_CACHED 67108864

/* How a picture is converted. All zero but the size is the default. */
typedef struct morvane_options {
  uint32_t struct_size;
  int32_t filter;          /* of chroma, of morvane_filter */
  int32_t siting;          /* of chroma, of morvane_siting */
  int32_t has_background;  /* whether a source with alpha is laid over a background where the destination has none */
  uint8_t background[4];   /* red, green and blue, 0 to 255; the fourth is ignored */
  int32_t threads;         /* of the plan's own, which share every run of all rows: 2 to 256; 0 or 1 for none */
  const char* via;         /* an entry point between the two formats that converts instead of the rules, or NULL */
  int32_t allow_irregular; /* whether `via` may be irregular */
  int32_t rescale;         /* whether `via` stretches luma */
  int32_t stores;          /* to the destination, of morvane_stores; cached where `via` leaves bytes as they are, and
                              where RGB becomes 4:2:2 or 4:2:0 in one pass */
} morvane_options;

typedef struct morvane_plan morvane_plan;

/* A plan, or NULL and an error. `options` may be NULL. The caller destroys it. */
MORVANE_C_API morvane_plan* morvane_plan_create(const morvane_description* source,
                                                const morvane_description* destination, const morvane_options* options,
                                                morvane_error* error);
/* NULL is allowed. */
MORVANE_C_API void morvane_plan_destroy(morvane_plan* plan);

/* Its steps in order, and what they lose ("16 to 8 bits", "alpha dropped"): sentences that live as long as the plan;
 * NULL beyond the last. */
MORVANE_C_API const char* morvane_plan_step(const morvane_plan* plan, int32_t index);
MORVANE_C_API const char* morvane_plan_loss(const morvane_plan* plan, int32_t index);

/* The memory that a run needs beside the pictures, at any address outside their rows. Where it is 0, `scratch` may be
 * NULL. */
MORVANE_C_API int64_t morvane_plan_scratch_bytes(const morvane_plan* plan);
/* Bands begin at a multiple of so many rows: 2 where two rows share one of chroma that is written, else 1. */
MORVANE_C_API int32_t morvane_plan_row_granularity(const morvane_plan* plan);

/* Converts all rows. Allocates nothing; threads that run a plan at the same time need scratch memory of their own. */
MORVANE_C_API int32_t morvane_plan_run(const morvane_plan* plan, const morvane_picture* source,
                                       const morvane_picture* destination, void* scratch, int64_t scratch_bytes,
                                       morvane_error* error);
/* Converts a band: `rows` rows from row `first` on, both multiples of the granularity, or up to the last row. Bands may
 * run in any order and at the same time; the pictures are given whole. */
MORVANE_C_API int32_t morvane_plan_run_rows(const morvane_plan* plan, const morvane_picture* source,
                                            const morvane_picture* destination, int32_t first, int32_t rows,
                                            void* scratch, int64_t scratch_bytes, morvane_error* error);

/* One picture to another, with a plan and scratch memory of its own. */
MORVANE_C_API int32_t morvane_convert(const morvane_description* source, const morvane_picture* source_picture,
                                      const morvane_description* destination,
                                      const morvane_picture* destination_picture, const morvane_options* options,
                                      morvane_error* error);

#ifdef __cplusplus
}
#endif

#endif
