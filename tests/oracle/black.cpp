// Expectations: fills.
#include "card_10.h"
#include "parts.h"

namespace morvane::tests::oracle {
namespace {

void black_uyvy(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      l.destination[0][2 * i] = 128;
      l.destination[0][2 * i + 1] = 16;
    }
  });
}

void alpha_of_bytes(const call& c) {
  each_row(c, [&](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) l.destination[0][i] = byte(c.argument);
  });
}

void alpha_of_words(const call& c) {
  each_row(c, [&](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      l.destination[0][2 * i] = byte(c.argument);
      l.destination[0][2 * i + 1] = byte(floor_shift(c.argument, 8));
    }
  });
}

void black_yuyv(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) put_pair(l.destination[0], k, {16, 0}, {128, 0}, {16, 0}, {128, 0});
  });
}

constexpr entry entries[] = {
    {"black::uyvy", "uyvy", black_uyvy},
    {"black::alpha", "alpha", alpha_of_bytes},
    {"black::alpha", "alpha_u16", alpha_of_words},
    {"yuyv_matrox_10::black", "yuyv_matrox_10", black_yuyv},
};

}  // namespace

std::span<const entry> expectations_of_black() {
  return entries;
}

}  // namespace morvane::tests::oracle
