// What the rows must reach, and why some cannot.
#pragma once

#include <array>
#include <string_view>

#include "measure/workload.h"

namespace morvane::bench {

// What one kind of conversion must reach: shares of memcpy at the three sizes.
struct target {
  kind what{};
  std::string_view title{};
  std::array<double, 3> share_of_memcpy{};
};

inline constexpr target targets[] = {
    {kind::copy, "copies, fills", {0.95, 0.95, 0.95}},
    {kind::rearrangement, "rearrangements, depths, grey, luma, difference", {0.75, 0.92, 0.95}},
    {kind::weighting, "key stretch, compositing, float", {0.50, 0.80, 0.95}},
    {kind::rgb_to_ycbcr, "RGB to YCbCr", {0.50, 0.75, 0.95}},
    {kind::ycbcr_to_rgb, "YCbCr to RGB", {0.35, 0.65, 0.95}},
};

// The target of a row's kind, or null for a row that touches next to nothing of its planes, so that its speed says
// nothing.
const target* target_of(const row& r);

// Padded, odd and unaligned planes against tight ones, at full_hd.
inline constexpr double least_of_tight = 0.95;
// Rows of 64 pixels against rows of 1920, both padded.
inline constexpr double least_of_long_rows = 0.6;
// Never slower, but for what the machine itself makes of two runs of the same code.
inline constexpr double noise = 0.03;
inline constexpr double least_of_portable = 1.0 - noise;
inline constexpr double least_of_peer = 1.0 - noise;

// How many times as fast as libyuv, in cache; most rows have no target of their own and answer least_of_peer.
double least_of_libyuv_in_cache(const row& r);

// Why a row cannot reach a target, or nothing; and why not that of short rows.
std::string_view explanation(const row& r);
std::string_view explanation_of_short_rows(const row& r);

}  // namespace morvane::bench
