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

enum class range { by_format, video };

void convert_by_peer(AVPixelFormat from, const byte_plane& source, AVPixelFormat to, std::vector<byte_plane*> planes,
                     range levels = range::by_format) {
  SwsContext* context =
      sws_getContext(width, height, from, width, height, to, SWS_POINT | SWS_ACCURATE_RND, nullptr, nullptr, nullptr);
  ASSERT_NE(context, nullptr);
  if (levels == range::video) {
    const int* matrix = sws_getCoefficients(SWS_CS_DEFAULT);
    ASSERT_GE(sws_setColorspaceDetails(context, matrix, 0, matrix, 0, 0, 1 << 16, 1 << 16), 0);
  }
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

TEST(swscale_peer, widens_uyvy_to_planes_of_16_bits) {
  const byte_plane source = noise(2 * width, height);
  byte_plane y(2 * width, height), cbcr(2 * width, height);
  byte_plane peer_y = y, peer_cbcr = cbcr;
  fc::uyvy::p216(source.data(), source.stride, y.data(), y.stride, cbcr.data(), cbcr.stride, width, height);
  convert_by_peer(AV_PIX_FMT_UYVY422, source, AV_PIX_FMT_P216LE, {&peer_y, &peer_cbcr});
  EXPECT_EQ(y, peer_y);
  EXPECT_EQ(cbcr, peer_cbcr);
}

// Grey of full range is widened as alpha is, so that 255 becomes 65535.
TEST(swscale_peer, widens_grey_of_full_range_as_alpha) {
  const byte_plane source = noise(width, height);
  byte_plane alpha(2 * width, height);
  byte_plane peer = alpha;
  fc::alpha::alpha_u16(source.data(), source.stride, alpha.data(), alpha.stride, width, height);
  convert_by_peer(AV_PIX_FMT_GRAY8, source, AV_PIX_FMT_GRAY16LE, {&peer});
  EXPECT_EQ(alpha, peer);
}

TEST(swscale_peer, widens_grey_of_video_range_as_luma) {
  const byte_plane source = noise(width, height);
  byte_plane y(2 * width, height);
  byte_plane peer = y;
  fc::y::y16(source.data(), source.stride, y.words(), y.stride, width, height);
  convert_by_peer(AV_PIX_FMT_GRAY8, source, AV_PIX_FMT_GRAY16LE, {&peer}, range::video);
  EXPECT_EQ(y, peer);
}

TEST(swscale_peer, widens_grey_of_10_bits_as_alpha) {
  const byte_plane source = noise_of_words(width, height, 10);
  byte_plane alpha(2 * width, height);
  byte_plane peer = alpha;
  fc::alpha_10u16::alpha_u16(source.data(), source.stride, alpha.data(), alpha.stride, width, height);
  convert_by_peer(AV_PIX_FMT_GRAY10LE, source, AV_PIX_FMT_GRAY16LE, {&peer});
  EXPECT_EQ(alpha, peer);
}

TEST(swscale_peer, widens_grey_of_12_bits_as_alpha) {
  const byte_plane source = noise_of_words(width, height, 12);
  byte_plane alpha(2 * width, height);
  byte_plane peer = alpha;
  fc::alpha_12u16::alpha_u16(source.data(), source.stride, alpha.data(), alpha.stride, width, height);
  convert_by_peer(AV_PIX_FMT_GRAY12LE, source, AV_PIX_FMT_GRAY16LE, {&peer});
  EXPECT_EQ(alpha, peer);
}

#else

TEST(swscale_peer, is_there) {
  GTEST_SKIP() << "swscale is not installed";
}

#endif

}  // namespace morvane::tests
