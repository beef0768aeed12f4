// The same bytes as libyuv.
#include "Processing.Morvane.h"
#include "peers.h"

#if defined(MORVANE_WITH_LIBYUV)
#include <libyuv.h>
#endif

namespace morvane::tests {

namespace fc = Processing::Morvane::format_conversion;

#if defined(MORVANE_WITH_LIBYUV)

TEST(libyuv_peer, splits_uyvy_to_planes) {
  const byte_plane source = noise(2 * width, height);
  byte_plane y(width, height), u(width / 2, height), v(width / 2, height);
  byte_plane peer_y = y, peer_u = u, peer_v = v;
  fc::uyvy::y_u_v_422(source.data(), source.stride, y.data(), y.stride, u.data(), u.stride, v.data(), v.stride, width,
                      height);
  libyuv::UYVYToI422(source.data(), source.stride, peer_y.data(), peer_y.stride, peer_u.data(), peer_u.stride,
                     peer_v.data(), peer_v.stride, width, height);
  EXPECT_EQ(y, peer_y);
  EXPECT_EQ(u, peer_u);
  EXPECT_EQ(v, peer_v);
}

TEST(libyuv_peer, splits_the_chroma_of_uyvy) {
  const byte_plane source = noise(2 * width, height);
  byte_plane y(width, height), cbcr(width, height), u(width / 2, height), v(width / 2, height);
  byte_plane peer_u = u, peer_v = v;
  fc::uyvy::y_uv_422(source.data(), source.stride, y.data(), y.stride, cbcr.data(), cbcr.stride, width, height);
  fc::uyvy::y_u_v_422(source.data(), source.stride, y.data(), y.stride, u.data(), u.stride, v.data(), v.stride, width,
                      height);
  libyuv::SplitUVPlane(cbcr.data(), cbcr.stride, peer_u.data(), peer_u.stride, peer_v.data(), peer_v.stride, width / 2,
                       height);
  EXPECT_EQ(u, peer_u);
  EXPECT_EQ(v, peer_v);
}

TEST(libyuv_peer, exchanges_the_bytes_of_uyvy) {
  const byte_plane source = noise(2 * width, height);
  byte_plane yuy2(2 * width, height);
  byte_plane peer = yuy2;
  fc::uyvy::yuy2(source.data(), source.stride, yuy2.data(), yuy2.stride, width, height);
  libyuv::SwapUVPlane(source.data(), source.stride, peer.data(), peer.stride, width, height);
  EXPECT_EQ(yuy2, peer);
}

TEST(libyuv_peer, takes_the_luma_of_uyvy) {
  const byte_plane source = noise(2 * width, height);
  byte_plane y(width, height, 26);
  byte_plane peer = y;
  fc::uyvy::y(source.data(), source.stride, y.data(), y.stride, width, height, false);
  libyuv::UYVYToY(source.data(), source.stride, peer.data(), peer.stride, width, height);
  EXPECT_EQ(y, peer);
}

TEST(libyuv_peer, interleaves_chroma) {
  const byte_plane luma = noise(width, height);
  const byte_plane u = noise(width / 2, height / 2, 2), v = noise(width / 2, height / 2, 3);
  byte_plane y(width, height), cbcr(width, height / 2);
  byte_plane peer = cbcr;
  fc::y_u_v::y_uv(luma.data(), luma.stride, u.data(), u.stride, v.data(), v.stride, y.data(), y.stride, cbcr.data(),
                  cbcr.stride, width, height);
  libyuv::MergeUVPlane(u.data(), u.stride, v.data(), v.stride, peer.data(), peer.stride, width / 2, height / 2);
  EXPECT_EQ(cbcr, peer);
}

TEST(libyuv_peer, makes_grey_of_luminance) {
  const byte_plane luminance = noise(width, height);
  byte_plane bgra(4 * width, height);
  byte_plane peer = bgra;
  fc::L::bgra(luminance.data(), luminance.stride, bgra.data(), bgra.stride, width, height);
  libyuv::J400ToARGB(luminance.data(), luminance.stride, peer.data(), peer.stride, width, height);
  EXPECT_EQ(bgra, peer);
}

TEST(libyuv_peer, takes_the_alpha_of_bgra) {
  const byte_plane bgra = noise(4 * width, height);
  byte_plane uyvy(2 * width, height), alpha(width, height);
  byte_plane peer = alpha;
  fc::bgra::uyvy_a(bgra.data(), bgra.stride, uyvy.data(), uyvy.stride, alpha.data(), alpha.stride, width, height,
                   nullptr);
  libyuv::ARGBExtractAlpha(bgra.data(), bgra.stride, peer.data(), peer.stride, width, height);
  EXPECT_EQ(alpha, peer);
}

// A scale of 1 << (24 - bits) takes the upper eight of so many bits.

TEST(libyuv_peer, takes_the_upper_byte_of_16_bits) {
  const byte_plane source = noise_of_words(width, height);
  byte_plane alpha(width, height);
  byte_plane peer = alpha;
  fc::alpha_u16::alpha(source.words(), source.stride, alpha.data(), alpha.stride, width, height);
  libyuv::Convert16To8Plane(source.words(), width, peer.data(), peer.stride, 1 << 8, width, height);
  EXPECT_EQ(alpha, peer);
}

TEST(libyuv_peer, takes_the_upper_eight_of_10_bits) {
  const byte_plane source = noise_of_words(width, height, 10);
  byte_plane y(width, height);
  byte_plane peer = y;
  fc::y_10u16::y(source.words(), source.stride, y.data(), y.stride, width, height);
  libyuv::Convert16To8Plane(source.words(), width, peer.data(), peer.stride, 1 << 14, width, height);
  EXPECT_EQ(y, peer);
}

TEST(libyuv_peer, copies_every_second_row_of_chroma) {
  const byte_plane luma = noise_of_words(width, height), chroma = noise_of_words(width, height);
  byte_plane y(2 * width, height), cbcr(2 * width, height / 2);
  byte_plane peer = cbcr;
  fc::p216::p010(luma.words(), luma.stride, chroma.words(), chroma.stride, y.words(), y.stride, cbcr.words(),
                 cbcr.stride, width, height);
  libyuv::CopyPlane(chroma.data(), 2 * chroma.stride, peer.data(), peer.stride, 2 * width, height / 2);
  EXPECT_EQ(y, luma);
  EXPECT_EQ(cbcr, peer);
}

#else

TEST(libyuv_peer, is_there) {
  GTEST_SKIP() << "libyuv is not installed";
}

#endif

}  // namespace morvane::tests
