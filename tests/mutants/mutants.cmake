# The mutants: a copy of the library with one small mistake in it each. The checker, or the test program that is named,
# must report every one of them.
#
# mutant(name FILE file FROM text TO text ROWS filter [PROGRAM checker | TEST source] [BACKEND portable]
# [KERNELS list] [PROCESSOR model]): in the library's `file`, `text` occurs exactly once and becomes the other. The
# program, or that of the one test whose source is named and compiled with the mistake, then runs the rows that match the
# filter, on the emulated processor that is named or on this one. Of the units of the backends, that of BACKEND alone is
# compiled once more, so a mistake in a vector body needs one that has vectors; and of its kernels only those of the file,
# or of KERNELS where others are made of what is in it. With TEST no part of the library is.

# A control: nothing is wrong, so nothing may be reported.
mutant(no_mistake
       FILE kernel/matrix.h
       FROM [[{298, 0, 409, -56865}]]
       TO [[{298, 0, 409, -56865}]]
       ROWS *uyvy_*_601
       KERNELS video_to_rgb_kernels)

mutant(wrong_red_of_601
       FILE kernel/matrix.h
       FROM [[{298, 0, 409, -56865}]]
       TO [[{298, 0, 410, -56865}]]
       ROWS *uyvy_*_601
       KERNELS video_to_rgb_kernels)

mutant(wrong_cr_of_709
       FILE kernel/matrix.h
       FROM [[{112, -102, -10}]]
       TO [[{112, -102, -11}]]
       ROWS *rgbx*_uyvy
       KERNELS rgb_to_video_kernels)

mutant(odd_pixel_not_dropped
       FILE kernel/units.h
       FROM [[last == last_unit::begun ? pixels - 1 : 0]]
       TO [[pixels - 1]]
       ROWS *bgra*
       KERNELS video_to_rgb_kernels)

mutant(one_vector_too_many
       FILE kernel/walk.h
       FROM [[if (units >= walk_of<V, Kernel>::step()) {]]
       TO [[if (units + 1 >= walk_of<V, Kernel>::step()) {]]
       ROWS *yuy2*
       KERNELS planes_kernels
       BACKEND avx2)

mutant(last_vector_left_out
       FILE kernel/walk.h
       FROM [[if (left > 0) line.finish(left);]]
       TO [[if (left > 1) line.finish(left);]]
       ROWS *bgra*
       KERNELS video_to_rgb_kernels
       BACKEND avx2)

mutant(half_of_the_alphas_ignored
       FILE kernel/planes.h
       FROM [[V::and_blocks(first, second))]]
       TO [[V::and_blocks(first, first))]]
       ROWS *bgra_bgra
       BACKEND avx2)

mutant(whole_image_of_padded_rows
       FILE format_conversion_frame.h
       FROM [[int64_t{xres} * Plane::bytes) && ...);]]
       TO [[int64_t{xres} * Plane::bytes) || ...);]]
       ROWS *yuy2*)

mutant(bgr_tight_at_three_bytes
       FILE format_conversion_main_rgb.cpp
       FROM [[dst_bgr_stride == 4 * int64_t{xres};
  frame_if(tight, backend::line_of<kernel::uyvy_to_bgr<kernel::matrix::bt709>>]]
       TO [[dst_bgr_stride == 3 * int64_t{xres};
  frame_if(tight, backend::line_of<kernel::uyvy_to_bgr<kernel::matrix::bt709>>]]
       ROWS *uyvy_bgr*)

mutant(fill_one_byte_too_far
       FILE format_conversion_line_black.h
       FROM [[value, static_cast<size_t>(no_pixels))]]
       TO [[value, static_cast<size_t>(no_pixels) + 1)]]
       ROWS *black_alpha*)

mutant(copy_one_byte_too_far
       FILE format_conversion_utils.h
       FROM [[static_cast<size_t>(no_pixels) * bytes_per_pixel)]]
       TO [[static_cast<size_t>(no_pixels) * bytes_per_pixel + 1)]]
       ROWS *y_y)

mutant(last_unit_left_out_when_all_planes_are_aligned
       FILE kernel/walk.h
       FROM [[  return walk_apart<vectors>(kernel, units, planes...);
}]]
       TO [[  const bool aligned = ((reinterpret_cast<uintptr_t>(planes) % 16 == 0) && ...);
  return walk_apart<vectors>(kernel, units > 8 && aligned ? units - 1 : units, planes...);
}]]
       ROWS *yuy2*
       KERNELS planes_kernels
       BACKEND avx2)

mutant(lowest_bit_of_every_second_sample
       FILE vector/avx2_blocks.h
       FROM [[return _mm256_srli_epi16(lifted, 8);]]
       TO [[return _mm256_and_si256(_mm256_srli_epi16(lifted, 8), _mm256_set1_epi32(0x00fe00ff));]]
       ROWS *v210*
       KERNELS card_10_kernels
       BACKEND avx2)

mutant(third_byte_of_444_written
       FILE vector/avx2.h
       FROM [[const __m256i odd_bytes = _mm256_set1_epi16(-256);]]
       TO [[const __m256i odd_bytes = _mm256_set1_epi32(-256);]]
       ROWS *ycbcra*
       KERNELS full_chroma_kernels
       BACKEND avx2)

mutant(constant_of_green_off_by_one
       FILE vector/x86.h
       FROM [[constexpr int greatest = w.constant + 255 * w.y;]]
       TO [[constexpr int greatest = w.constant + 255 * w.y + 1;]]
       ROWS *uyvy_bgra_709*
       KERNELS video_to_rgb_kernels
       BACKEND avx2)

mutant(lower_row_writes_chroma
       FILE format_conversion_frame.h
       FROM [[if (rows_left > 1) convert_row(without_chroma);]]
       TO [[if (rows_left > 1) convert_row(xres > 60 ? with_chroma : without_chroma);]]
       ROWS *y_uv_420*)

mutant(chroma_row_for_every_row
       FILE format_conversion_frame.h
       FROM [[    (chroma.advance(), ...);
  }
}

// From 4:2:0]]
       TO [[    (chroma.advance(), ...);
    (chroma.advance(), ...);
  }
}

// From 4:2:0]]
       ROWS *y_u_v_420*)

mutant(one_line_whatever_the_stride_of_cr
       FILE format_conversion_main.cpp
       FROM [[dst_v_stride == dst_y_stride / 2;]]
       TO [[dst_v_stride > 0;]]
       ROWS *y_u_v_422*)

mutant(odd_chroma_byte_copied
       FILE format_conversion_main.cpp
       FROM [[xres / 2 * 2, yres / 2);]]
       TO [[xres, yres / 2);]]
       ROWS *y_uv_y_uv)

mutant(luma_in_every_pixel_of_444
       FILE kernel/full_chroma.h
       FROM [[dst[1] = byte<cb, 8>(src);]]
       TO [[dst[1] = dst[0] = byte<cb, 8>(src);]]
       ROWS *ycbcra*)

mutant(single_pixel_of_444_like_any_other
       FILE kernel/full_chroma.h
       FROM [[pixels == 1 ? luma_byte(true)]]
       TO [[pixels == 0 ? luma_byte(true)]]
       ROWS *bgrx_ycbcrx*)

mutant(one_key_wrong
       FILE kernel/key.h
       FROM [[key_offset = -5117]]
       TO [[key_offset = -5116]]
       ROWS *uyvy_y)

mutant(odd_alpha_not_counted
       FILE kernel/rgb_to_video.h
       FROM [[alphas.see(static_cast<uint8_t>(alpha0 & alpha1))]]
       TO [[alphas.see(alpha0)]]
       ROWS *bgra_uyvy_a*)

mutant(alpha_of_vectors_not_counted
       FILE kernel/rgb_to_video.h
       FROM [[    alphas.see(alpha);
]]
       TO [[]]
       ROWS *vuya_uyvy_a*
       KERNELS full_chroma_kernels
       BACKEND avx2)

mutant(cr_weighted_by_the_first_alpha
       FILE kernel/key.h
       FROM [[dst[2] = sample<black_chroma>(cr, alpha1);]]
       TO [[dst[2] = sample<black_chroma>(cr, alpha0);]]
       ROWS *_uyvy)

mutant(wrong_green_of_planes
       FILE kernel/matrix.h
       FROM [[coarse_matrix<128, 14, 34, 115>]]
       TO [[coarse_matrix<128, 14, 33, 115>]]
       ROWS *r_g_b*)

mutant(overlapping_planes_through_vectors
       FILE kernel/walk.h
       FROM [[if (!Kernel::planes::apart(units, planes...)) {]]
       TO [[if (units == 0) {]]
       ROWS *plane_over_source*
       KERNELS planes_kernels
       PROGRAM overlap_test
       BACKEND avx2)

mutant(only_source_and_first_plane_kept_apart
       FILE kernel/units.h
       FROM [[&& ...) && all_apart<bytes...>(units, planes...);]]
       TO [[&& ...);]]
       ROWS *planes_over_each_other*
       KERNELS planes_kernels
       PROGRAM overlap_test
       BACKEND avx2)

mutant(difference_without_the_last_bytes
       FILE kernel/difference.h
       FROM [[if (bytes > 0)
]]
       TO [[if (bytes > 1)
]]
       ROWS *
       PROGRAM difference_test
       BACKEND avx2)

mutant(wrong_green_of_2020
       FILE kernel/matrix.h
       FROM [[coarse_matrix<137, 12, 42, 107>]]
       TO [[coarse_matrix<137, 12, 41, 107>]]
       ROWS *rgbx_2020)

mutant(alpha_widened_like_luma
       FILE kernel/depth.h
       FROM [[    dst[0] = value;
    dst[1] = value;]]
       TO [[    dst[0] = 0;
    dst[1] = value;]]
       ROWS *alpha_alpha_u16)

mutant(ten_bits_filled_up_one_bit_too_low
       FILE kernel/depth.h
       FROM [[static constexpr int down = bits - up;]]
       TO [[static constexpr int down = bits == 10 ? 5 : bits - up;]]
       ROWS *alpha_10u16*)

mutant(twelve_bits_filled_up_like_ten
       FILE kernel/depth.h
       FROM [[static constexpr int down = bits - up;]]
       TO [[static constexpr int down = 4;]]
       ROWS *alpha_12u16*)

mutant(ten_bits_cut_by_three
       FILE kernel/depth.h
       FROM [[V::template shift_right_words<bits>(first)]]
       TO [[V::template shift_right_words<bits == 2 ? 3 : bits>(first)]]
       ROWS *y_10u16*
       BACKEND avx2)

mutant(chroma_over_black_by_its_own_alpha
       FILE kernel/words.h
       FROM [[over::sample<over::black_chroma>(cbcr + i, alpha)]]
       TO [[over::sample<over::black_chroma>(cbcr + i, alpha + i)]]
       ROWS *pa16_p216)

mutant(chroma_of_vectors_over_black_by_its_own_alpha
       FILE kernel/words.h
       FROM [[V::load(cbcr), V::repeat_even_words(alpha)]]
       TO [[V::load(cbcr), alpha]]
       ROWS *pa16_yuyv_matrox_10
       KERNELS card_10_kernels
       BACKEND avx2)

mutant(own_lower_bits_of_cr
       FILE kernel/card_10.h
       FROM [[word_at(chroma + 2), cb);]]
       TO [[word_at(chroma + 2), word_at(chroma + 2));]]
       ROWS *pa16_yuyv_matrox_10)

mutant(even_luma_with_its_upper_byte
       FILE kernel/card_10.h
       FROM [[store_word(y, (bits & 3) << 6);]]
       TO [[store_word(y, at.upper[0] << 8 | (bits & 3) << 6);]]
       ROWS *yuyv_matrox_10_p216)

mutant(even_luma_of_vectors_with_its_upper_byte
       FILE kernel/card_10.h
       FROM [[shift_left_and_mask<8, 0xff000000>]]
       TO [[shift_left_and_mask<8, 0xff00ff00>]]
       ROWS *yuyv_matrox_10_p216
       BACKEND avx2)

mutant(cr_first_in_16_bits
       FILE kernel/words.h
       FROM [[store_word(dst + 8 * i, word_at(cbcr));
      store_word(dst + 8 * i + 2, word_at(cbcr + 2));]]
       TO [[store_word(dst + 8 * i, word_at(cbcr + 2));
      store_word(dst + 8 * i + 2, word_at(cbcr));]]
       ROWS *vuya_16)

mutant(chroma_of_floats_up_to_one
       FILE kernel/words.h
       FROM [[static_cast<float>(chroma_span) - 0.5F, 0.5F);]]
       TO [[static_cast<float>(chroma_span) - 0.5F, 1.0F);]]
       ROWS *vuya_f32)

mutant(floats_by_reciprocals
       FILE kernel/words.h
       FROM [[return V::add(V::multiply(words, r.leading), V::multiply(words, r.rest));]]
       TO [[return V::multiply(words, r.leading + r.rest);]]
       ROWS *vuya_f32
       BACKEND avx2)

mutant(lower_bits_one_byte_late
       FILE kernel/group_10.h
       FROM [[group + upper_bytes + pair % pairs}]]
       TO [[group + upper_bytes + (pair + 1) % pairs}]]
       ROWS *p216_yuyv_matrox_10
       KERNELS card_10_kernels)

mutant(part_of_a_group_left_out
       FILE kernel/walk.h
       FROM [[    else
      by_rule(left);]]
       TO [[    else
      by_rule(left - 1);]]
       ROWS *yuyv_matrox_10_uyvy
       KERNELS card_10_kernels
       BACKEND avx2)

mutant(black_without_its_last_pair
       FILE kernel/black.h
       FROM [[count(no_pixels) - pairs_done,]]
       TO [[count(no_pixels) - pairs_done - (no_pixels > 2 ? 1 : 0),]]
       ROWS *yuyv_matrox_10_black)

mutant(dropped_bits_of_chroma_in_luma
       FILE kernel/card_10.h
       FROM [[(c << 4 & 0xfc00)]]
       TO [[(c << 4 & 0xff00)]]
       ROWS *pa16_yua_yva_matrox_10)

mutant(odd_alpha_of_16_bits_not_counted
       FILE kernel/words.h
       FROM [[alphas.see(static_cast<uint8_t>(src[3] & src[7]));]]
       TO [[alphas.see(src[3]);]]
       ROWS *ycbcra_pa16)

mutant(p010_with_every_row_of_chroma
       FILE format_conversion_main_words.cpp
       FROM [[2 * src_cbcr_stride]]
       TO [[src_cbcr_stride]]
       ROWS *p216_p010)

mutant(chroma_copied_to_a_narrower_stride
       FILE format_conversion_main_words.cpp
       FROM [[if (destination.stride > source.stride)]]
       TO [[if (destination.stride != source.stride)]]
       ROWS *pa16_ya_uv)

mutant(odd_height_without_its_last_row_of_chroma
       FILE format_conversion_main_words.cpp
       FROM [[(yres * row / 2 + row - 1) / row]]
       TO [[yres * row / 2 / row]]
       ROWS *y_uv_p216)

mutant(two_vectors_stored_in_the_wrong_order
       FILE kernel/walk.h
       FROM [[    store_item<plane>(first, ahead);
]]
       TO [[    store_item<plane>(plane == 2 ? second : first, ahead);
]]
       ROWS *yua_yva_matrox_10_pa16
       KERNELS card_10_kernels
       BACKEND avx2)

mutant(two_vectors_counted_as_one
       FILE kernel/walk.h
       FROM [[        advance(turn * step());]]
       TO [[        advance(step());]]
       ROWS *uyvy_y_uv_422
       KERNELS planes_kernels
       BACKEND avx2)

mutant(unsigned_products_of_negative_distances
       FILE vector/ymm.h
       FROM [[_mm256_andnot_si256(is_not_above, b))]]
       TO [[_mm256_setzero_si256())]]
       ROWS *pa16_p216
       KERNELS words_kernels
       BACKEND avx2)

mutant(black_itself_counts_as_above
       FILE vector/x86.h
       FROM [[subtract_words_where_above(x.v, first, R::add_words]]
       TO [[subtract_words_where_above(x.v, R::repeat_word(offset - 1), R::add_words]]
       ROWS *pa16_p216
       KERNELS words_kernels
       BACKEND avx2)

mutant(lower_bits_of_one_half_twice
       FILE vector/avx2_blocks.h
       FROM [[_mm_unpacklo_epi32(low_half(second_bytes), high_half(second_bytes))]]
       TO [[_mm_unpacklo_epi32(low_half(second_bytes), low_half(second_bytes))]]
       ROWS *p216_yuyv_matrox_10
       KERNELS card_10_kernels
       BACKEND avx2)

mutant(odd_words_stop_at_32767
       FILE vector/avx2_blocks.h
       FROM [[_mm256_packus_epi32(_mm256_srli_epi32(a.v, 16),]]
       TO [[_mm256_packs_epi32(_mm256_srli_epi32(a.v, 16),]]
       ROWS *bgra64*
       KERNELS depth_kernels
       BACKEND avx2)

mutant(yuy2_of_vectors_like_uyvy
       FILE kernel/words.h
       FROM [[V::load(luma_first ? y : cbcr)]]
       TO [[V::load(cbcr)]]
       ROWS *line_p216_uyvy*
       PROGRAM kernels_test
       BACKEND avx2)

mutant(third_channel_clamped_too_low
       FILE vector/avx512.h
       FROM [[constexpr int white = static_cast<int>(0xff00ffff);]]
       TO [[constexpr int white = static_cast<int>(0xff00feff);]]
       ROWS *uyvy_bgra_709*
       KERNELS video_to_rgb_kernels
       BACKEND avx512)

mutant(weights_of_odd_pixels_for_even_ones
       FILE vector/avx512.h
       FROM [[static_cast<uint64_t>(packed(odd)) << 32 | packed(even)]]
       TO [[static_cast<uint64_t>(packed(odd)) << 32 | packed(odd)]]
       ROWS *rgbx_uyvy*
       KERNELS rgb_to_video_kernels
       BACKEND avx512)

mutant(alpha_of_the_pixels_before
       FILE vector/avx512.h
       FROM [[i % 4 == 3 ? 64 + alpha + i / 4]]
       TO [[i % 4 == 3 ? 64 + i / 4]]
       ROWS *uyvy_a_ycbcra*
       KERNELS full_chroma_kernels
       BACKEND avx512)

mutant(second_group_read_at_the_first
       FILE vector/avx512_blocks.h
       FROM [[load_256(p + group_bytes)]]
       TO [[load_256(p)]]
       ROWS *yuyv_matrox_10_p216*
       KERNELS card_10_kernels
       BACKEND avx512)

mutant(words_compared_as_signed_ones
       FILE vector/zmm.h
       FROM [[_mm512_cmpgt_epu16_mask(a, x)]]
       TO [[_mm512_cmpgt_epi16_mask(a, x)]]
       ROWS *pa16_p216
       KERNELS words_kernels
       BACKEND avx512)

mutant(rgba_map_that_is_bgra
       FILE format_conversion_main_apple.cpp
       FROM [[g_rgba_permute_map[4] = {1, 2, 3, 0}]]
       TO [[g_rgba_permute_map[4] = {3, 2, 1, 0}]]
       ROWS *entry_point*/rgbx_709_uyvy
       PROGRAM apple_test)

mutant(descriptor_of_the_order_converted
       FILE format_conversion_main_apple.cpp
       FROM [[&conv_nfo, kvImage422YpCbYpCr8]]
       TO [[&conv_nfo, kvImage422CbYpCrYp8]]
       ROWS *entry_point*/uyvy_bgra_601
       PROGRAM apple_test)

mutant(descriptor_generated_at_every_call
       FILE format_conversion_main_apple.cpp
       FROM [[static std::once_flag flag;
  static vImage_ARGBToYpCbCr]]
       TO [[std::once_flag flag;
  static vImage_ARGBToYpCbCr]]
       ROWS apple_threads.*
       PROGRAM apple_test)

mutant(narrowest_backend_chosen_at_start
       FILE backend/choice.cpp
       FROM [[choose(available().back())]]
       TO [[choose(available().front())]]
       ROWS backends.*
       PROGRAM backends_test)

mutant(wider_backends_left_out
       FILE backend/choice.cpp
       FROM [[if (all[i].works())]]
       TO [[if (all[i].works() && count == 0)]]
       ROWS backends.*
       PROGRAM backends_test)

mutant(avx_taken_for_avx2
       FILE backend/list.h
       FROM [[__builtin_cpu_supports("avx2")]]
       TO [[__builtin_cpu_supports("avx")]]
       ROWS backends.*
       PROGRAM backends_test
       PROCESSOR IvyBridge)

mutant(choice_of_the_first_backend_ignored
       FILE backend/choice.cpp
       FROM [[  lines_in_use = entry_of(k).lines;]]
       TO [[  if (static_cast<int>(k) > 0) lines_in_use = entry_of(k).lines;]]
       ROWS backends.*
       PROGRAM backends_test)

mutant(one_line_of_more_pixels_than_an_int_counts
       FILE format_conversion_frame.h
       FROM [[yres == 1 || (tight && xres <= INT_MAX / yres)]]
       TO [[yres == 1 || tight]]
       ROWS *more_pixels_than_an_int_counts*
       PROGRAM huge_images_test)

mutant(tight_in_32_bits
       FILE format_conversion_frame.h
       FROM [[(int64_t{planes.stride} * Kernel::pixels == int64_t{xres} * Plane::bytes)]]
       TO [[(static_cast<uint32_t>(planes.stride) * Kernel::pixels == static_cast<uint32_t>(xres) * Plane::bytes)]]
       ROWS *rows_longer_than_an_int_counts*
       PROGRAM huge_images_test)

mutant(bgr_tight_in_32_bits
       FILE format_conversion_main_rgb.cpp
       FROM [[dst_bgr_stride == 4 * int64_t{xres};
  frame_if(tight, backend::line_of<kernel::uyvy_to_bgr<kernel::matrix::bt601>>]]
       TO [[dst_bgr_stride == static_cast<int>(4U * static_cast<unsigned>(xres));
  frame_if(tight, backend::line_of<kernel::uyvy_to_bgr<kernel::matrix::bt601>>]]
       ROWS *rows_longer_than_an_int_counts*
       PROGRAM huge_images_test)

mutant(copy_of_31_bits
       FILE format_conversion_frame.h
       FROM [[static_cast<size_t>(int64_t{source.stride} * (yres - 1) + row_bytes)]]
       TO [[static_cast<size_t>(static_cast<int>(int64_t{source.stride} * (yres - 1) + row_bytes))]]
       ROWS *copied_in_one_run
       PROGRAM huge_images_test)

mutant(copy_with_padding_of_31_bits
       FILE format_conversion_main_words.cpp
       FROM [[static_cast<size_t>(yres) * static_cast<size_t>(destination.stride)]]
       TO [[static_cast<size_t>(static_cast<int>(static_cast<unsigned>(yres) * static_cast<unsigned>(destination.stride)))]]
       ROWS *copied_with_its_padding
       PROGRAM huge_images_test)

mutant(chroma_rows_of_31_bits
       FILE format_conversion_main_words.cpp
       FROM [[const int64_t row = std::abs(int64_t{stride});]]
       TO [[const unsigned row = static_cast<unsigned>(std::abs(stride));]]
       ROWS *half_a_gigabyte_apart
       PROGRAM huge_images_test)

mutant(strides_of_16_bits
       FILE format_conversion_frame.h
       FROM [[data = line::next_line(data, stride);]]
       TO [[data = line::next_line(data, static_cast<int16_t>(stride));]]
       ROWS *65536*uyvy_yuy2
       PROGRAM large_images_test)

mutant(vectors_of_a_line_counted_in_8_bits
       FILE kernel/walk.h
       FROM [[for (size_t turns = units / (turn * step());]]
       TO [[for (auto turns = static_cast<uint8_t>(units / (turn * step()));]]
       ROWS *high_definition*uyvy_yuy2
       KERNELS planes_kernels
       PROGRAM large_images_test
       BACKEND avx2)

mutant(fill_without_its_end_beyond_8192_bytes
       FILE kernel/black.h
       FROM [[const size_t rest = (bytes - ahead) % cache_line;]]
       TO [[const size_t rest = (bytes - ahead) % cache_line + (bytes > 8192 ? cache_line : 0);]]
       ROWS *long_lines_of_black*
       PROGRAM examples_test
       BACKEND avx2)

mutant(v4l2_name_of_another_format
       FILE catalogue/formats/packed_video.h
       FROM [[.v4l2 = "V4L2_PIX_FMT_YUYV"]]
       TO [[.v4l2 = "V4L2_PIX_FMT_UYVY"]]
       ROWS formats.*
       TEST formats.cpp)

mutant(fourcc_of_another_format
       FILE catalogue/formats/planar_video.h
       FROM [[.fourcc = "NV12"]]
       TO [[.fourcc = "NV21"]]
       ROWS formats.*
       TEST formats.cpp)

mutant(chroma_in_the_wrong_order
       FILE catalogue/formats/planar_words.h
       FROM [["Cb Cr", 2, 10}}}}]]
       TO [["Cr Cb", 2, 10}}}}]]
       ROWS formats.*
       TEST formats.cpp)

mutant(any_height_of_4_2_0
       FILE catalogue/formats/planar_video.h
       FROM [[.height_multiple = 2,
     .fourcc = "NV12"]]
       TO [[.height_multiple = 1,
     .fourcc = "NV12"]]
       ROWS formats.*
       TEST formats.cpp)

mutant(allowance_behind_the_row_that_is_on_no_list
       FILE catalogue/conversions.cpp
       FROM [[entry_of<&fc::y::y16>)]]
       TO [[entry_of<&fc::y::y16>, completes_pair)]]
       ROWS allowances.completed_pairs
       PROGRAM allowances_test)

mutant(allowance_behind_the_row_that_no_call_needs
       FILE catalogue/conversions.cpp
       FROM [[entry_of<&fc::y::y16>)]]
       TO [[entry_of<&fc::y::y16>, completes_pair)]]
       ROWS allowances.of_bytes_behind*
       PROGRAM allowances_test)

mutant(allowance_of_four_bytes_for_three_that_no_call_needs
       FILE catalogue/conversions.cpp
       FROM [[entry_of<&fc::uyvy::uyvy>)]]
       TO [[entry_of<&fc::uyvy::uyvy>, four_bytes_copied)]]
       ROWS allowances.of_bytes_behind*
       PROGRAM allowances_test)

mutant(one_line_said_to_be_rows
       FILE catalogue/conversions.cpp
       FROM [[row("L::bgra", "L", "bgra", entry_of<&fc::L::bgra>)]]
       TO [[row("L::bgra", "L", "bgra", entry_of<&fc::L::bgra>, {.by_rows = true})]]
       ROWS allowances.of_rows*
       PROGRAM allowances_test)

mutant(matrix_of_another_row
       FILE catalogue/conversions.cpp
       FROM [[entry_of<&fc::uyvy_a::bgra_601>, with_601)]]
       TO [[entry_of<&fc::uyvy_a::bgra_601>, with_709)]]
       ROWS allowances.matrices
       PROGRAM allowances_test)

mutant(memory_for_every_image
       FILE format_conversion_frame.h
       FROM [[  if (xres < 1 || yres < 1) return true;
  if (yres == 1]]
       TO [[  if (xres < 1 || yres < 1) return true;
  static int* volatile memory;
  delete memory;
  memory = new int(xres);
  if (yres == 1]]
       ROWS allocations.*
       PROGRAM allocations_test)

mutant(ten_bits_rounded_beyond_their_limit
       FILE kernel/lines_groups.h
       FROM [[V::template shift_right_words<6>(V::add_words_to_limit(v, V::repeat(32)))]]
       TO [[V::template shift_right_words<6>(V::add_words(v, V::repeat(32)))]]
       ROWS lines.*
       PROGRAM checked_test
       BACKEND avx2)

mutant(rgb_below_black_not_clamped
       FILE kernel/lines_colour.h
       FROM [[V::subtract_words_to_zero(lifted, V::repeat(lift))]]
       TO [[V::subtract_words(lifted, V::repeat(lift))]]
       ROWS lines.*
       PROGRAM checked_test
       BACKEND avx2)

mutant(byte_above_its_limit
       FILE kernel/lines_stored.h
       FROM [[V::least_words(unlimited<V>(v), V::repeat(most))]]
       TO [[unlimited<V>(v)]]
       ROWS lines.*
       PROGRAM checked_test
       BACKEND avx2)

mutant(pixel_of_three_bytes_read_too_late
       FILE vector/avx2_blocks.h
       FROM [[fours_of_threes<4>(p + 20, p + 32)]]
       TO [[fours_of_threes<4>(p + 20, p + 33)]]
       ROWS lines.*
       KERNELS lines_stored_kernels
       PROGRAM checked_test
       BACKEND avx2)
