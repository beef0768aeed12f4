#include <cstdio>
#include <morvane.hpp>

int main() {
  const morvane::description rgb = {.format = morvane::format_named("bgrx"), .width = 1920, .height = 1080};
  const morvane::description yuv = {.format = morvane::format_named("uyvy"), .width = 1920, .height = 1080};

  morvane::image picture(rgb);  // all of it black
  morvane::image video(yuv);
  morvane::convert(rgb, picture.picture(), yuv, video.picture());

  const auto* pair = video.data();
  std::printf("black is Cb %d, Y %d, Cr %d, Y %d\n", pair[0], pair[1], pair[2], pair[3]);
}
