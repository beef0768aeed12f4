// Every kernel, which each backend compiles.
#pragma once

#include "../kernel/black.h"
#include "../kernel/card_10.h"
#include "../kernel/chroma.h"
#include "../kernel/decoded_rows.h"
#include "../kernel/depth.h"
#include "../kernel/difference.h"
#include "../kernel/encoded_rows.h"
#include "../kernel/full_chroma.h"
#include "../kernel/key.h"
#include "../kernel/keyed_rows.h"
#include "../kernel/lines_chroma.h"
#include "../kernel/lines_colour.h"
#include "../kernel/lines_floats.h"
#include "../kernel/lines_groups.h"
#include "../kernel/lines_pairs.h"
#include "../kernel/lines_pixel_pairs.h"
#include "../kernel/lines_stored.h"
#include "../kernel/lines_tens.h"
#include "../kernel/list.h"
#include "../kernel/planes.h"
#include "../kernel/rearranged.h"
#include "../kernel/regrouped_rows.h"
#include "../kernel/resampled_rows.h"
#include "../kernel/rgb_to_video.h"
#include "../kernel/streamed.h"
#include "../kernel/video_to_rgb.h"
#include "../kernel/words.h"

namespace Processing::Morvane::backend {

namespace kernel = format_conversion::kernel;

using all_kernels = kernel::joined_lists<
    kernel::planes_kernels, kernel::chroma_kernels, kernel::depth_kernels, kernel::rgb_to_video_kernels,
    kernel::video_to_rgb_kernels, kernel::full_chroma_kernels, kernel::key_kernels, kernel::words_kernels,
    kernel::card_10_kernels, kernel::black_kernels, kernel::difference_kernels, kernel::lines_stored_kernels,
    kernel::lines_groups_kernels, kernel::lines_tens_kernels, kernel::lines_pairs_kernels, kernel::lines_floats_kernels,
    kernel::lines_chroma_kernels, kernel::lines_colour_kernels, kernel::lines_pixel_pairs_kernels,
    kernel::rearrange_kernels, kernel::decode_kernels, kernel::encode_kernels, kernel::resample_kernels,
    kernel::regroup_kernels, kernel::keyed_kernels, kernel::streamed_kernels>::type;

}  // namespace Processing::Morvane::backend
