// The same bytes as swscale.
#include "Processing.Morvane.h"
#include "peers.h"

#if defined(MORVANE_WITH_SWSCALE)
extern "C" {
#include <libswscale/swscale.h>
}
#endif

namespace morvane::tests {

namespace fc = Processing::Morvane::format_conversion;

#if defined(MORVANE_WITH_SWSCALE)

void convert_by_peer(AVPixelFormat from, const byte_plane& source, AVPixelFormat to, std::vector<byte_plane*> planes) {
  SwsContext* context =
      sws_getContext(width, height, from, width, height, to, SWS_POINT | SWS_ACCURATE_RND, nullptr, nullptr, nullptr);
  ASSERT_NE(context, nullptr);
  const std::uint8_t* data[4] = {source.data()};
  const int stride[4] = {source.stride};
  std::uint8_t* destination[4] = {};
  int destination_stride[4] = {};
  for (std::size_t p = 0; p < planes.size(); ++p) {
    destination[p] = planes[p]->data();
    destination_stride[p] = planes[p]->stride;
  }
  sws_scale(context, data, stride, 0, height, destination, destination_stride);
  sws_freeContext(context);
}

TEST(swscale_peer, splits_uyvy_to_planes) {
  const byte_plane source = noise(2 * width, height);
  byte_plane y(width, height), u(width / 2, height), v(width / 2, height);
  byte_plane peer_y = y, peer_u = u, peer_v = v;
  fc::uyvy::y_u_v_422(source.data(), source.stride, y.data(), y.stride, u.data(), u.stride, v.data(), v.stride, width,
                      height);
  convert_by_peer(AV_PIX_FMT_UYVY422, source, AV_PIX_FMT_YUV422P, {&peer_y, &peer_u, &peer_v});
  EXPECT_EQ(y, peer_y);
  EXPECT_EQ(u, peer_u);
  EXPECT_EQ(v, peer_v);
}

TEST(swscale_peer, exchanges_the_bytes_of_uyvy) {
  const byte_plane source = noise(2 * width, height);
  byte_plane yuy2(2 * width, height);
  byte_plane peer = yuy2;
  fc::uyvy::yuy2(source.data(), source.stride, yuy2.data(), yuy2.stride, width, height);
  convert_by_peer(AV_PIX_FMT_UYVY422, source, AV_PIX_FMT_YUYV422, {&peer});
  EXPECT_EQ(yuy2, peer);
}

#else

TEST(swscale_peer, is_there) {
  GTEST_SKIP() << "swscale is not installed";
}

#endif

}  // namespace morvane::tests
