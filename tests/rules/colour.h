// The matrices between YCbCr and RGB, in integers.
#pragma once

#include "rules/picture.h"

namespace morvane::tests::rules {

struct rgb {
  int r, g, b;

  bool operator==(const rgb&) const = default;
};

struct ycbcr {
  int y, cb, cr;

  bool operator==(const ycbcr&) const = default;
};

// What luma and chroma of a range span among working samples: luma from black on, chroma around 32768.
struct span {
  int black, luma, chroma;

  bool operator==(const span&) const = default;
};

span span_of(range in, int bits);

// The share of red and blue in luma.
struct shares {
  double r, b;
};

shares shares_of(matrix m);

// Two forms of each matrix: sums of rounded products of 16 bits for pictures of at most 10 bits, and sums of 32 bits.
enum class form { narrow, wide };

form form_of(int bits_of_one_picture, int bits_of_the_other);

// Times 2^13. R is y luma + cr_to_r cr, G is y luma - cb_to_g cb - cr_to_g cr, B is y luma + cb_to_b cb.
struct to_rgb {
  int luma, cr_to_r, cb_to_g, cr_to_g, cb_to_b;

  bool operator==(const to_rgb&) const = default;
};

to_rgb to_rgb_of(matrix m, const span& s);

// Times 2^15. What red, green and blue add to luma; what blue adds to Cb, and green and red take away; what red adds to
// Cr, and green and blue take away.
struct from_rgb {
  int y_r, y_g, y_b;
  int cb_b, cb_g, cb_r;
  int cr_r, cr_g, cr_b;
};

from_rgb from_rgb_of(matrix m, const span& s);

// A quarter of each sample, not clamped: what the narrow form has before it ends.
rgb narrow_sums(const ycbcr& of, const to_rgb& by, const span& s);

rgb rgb_of(const ycbcr& of, const to_rgb& by, const span& s, form in);
ycbcr ycbcr_of(const rgb& of, const from_rgb& by, const span& s, form in);

// The luminance of full range that is stored as L.
int luminance_of(const rgb& of, matrix m);

// Of the same matrix, from one span to another.
int luma_in(const span& to, int luma, const span& from);
int chroma_in(const span& to, int chroma, const span& from);

// Between RGB of full range and of video range.
int full_of_video(int sample);
int video_of_full(int sample);

}  // namespace morvane::tests::rules
