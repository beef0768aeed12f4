#include <Processing.Morvane.h>

#include <cstdio>
#include <vector>

int main() {
  constexpr int width = 1920, height = 1080;
  std::vector<uint8_t> picture(4 * width * height);  // bgrx, all of it black
  std::vector<uint8_t> video(2 * width * height);    // uyvy

  using namespace Processing::Morvane::format_conversion;
  bgrx_709::uyvy(picture.data(), 4 * width, video.data(), 2 * width, width, height);

  std::printf("black is Cb %d, Y %d, Cr %d, Y %d\n", video[0], video[1], video[2], video[3]);
}
