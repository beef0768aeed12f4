# The mutants: a copy of the library with one small mistake in it each. The checker, or the test program that is named,
# must report every one of them.
#
# mutant(name FILE file FROM text TO text ROWS filter [PROGRAM checker]): in the library's `file`, `text` occurs exactly
# once and becomes the other; the program then runs the rows that match the filter. AVX2 marks mistakes that only AVX2
# processors show.

mutant(wrong_red_of_601
       FILE format_conversion_matrix.h
       FROM [[{298, 0, 409, -56865}]]
       TO [[{298, 0, 410, -56865}]]
       ROWS *uyvy_*_601)

mutant(wrong_cr_of_709
       FILE format_conversion_matrix.h
       FROM [[{112, -102, -10}]]
       TO [[{112, -102, -11}]]
       ROWS *rgbx*_uyvy)

mutant(odd_pixel_not_dropped
       FILE format_conversion_utils.h
       FROM [[return at_least_zero(no_pixels) / 2]]
       TO [[return (at_least_zero(no_pixels) + 1) / 2]]
       ROWS *bgra*)

mutant(one_vector_too_many
       FILE format_conversion_utils.h
       FROM [[if (units >= step) {]]
       TO [[if (units + 1 >= step) {]]
       ROWS *yuy2*
       AVX2)

mutant(last_vector_left_out
       FILE format_conversion_utils.h
       FROM [[if (units > 0) kernel.template vector<V>]]
       TO [[if (units > 1) kernel.template vector<V>]]
       ROWS *bgra*
       AVX2)

mutant(half_of_the_alphas_ignored
       FILE format_conversion_line.h
       FROM [[V::and_blocks(first, second))]]
       TO [[V::and_blocks(first, first))]]
       ROWS *bgra_bgra
       AVX2)

mutant(whole_image_of_padded_rows
       FILE format_conversion_frame.h
       FROM [[(planes.is_tight(xres) && ...)]]
       TO [[(planes.is_tight(xres) || ...)]]
       ROWS *yuy2*)

mutant(bgr_tight_at_three_bytes
       FILE format_conversion_main.cpp
       FROM [[rgb_kernel<true, false, 3>>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_dst_bgr, dst_bgr_stride, 4}]]
       TO [[rgb_kernel<true, false, 3>>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_dst_bgr, dst_bgr_stride, 3}]]
       ROWS *uyvy_bgr*)

mutant(fill_one_byte_too_far
       FILE format_conversion_line_black.h
       FROM [[value, static_cast<size_t>(no_pixels))]]
       TO [[value, static_cast<size_t>(no_pixels) + 1)]]
       ROWS *black_alpha*)

mutant(copy_one_byte_too_far
       FILE format_conversion_line.h
       FROM [[static_cast<size_t>(no_pixels) * bytes_per_pixel)]]
       TO [[static_cast<size_t>(no_pixels) * bytes_per_pixel + 1)]]
       ROWS *y_y)

mutant(last_unit_left_out_when_all_planes_are_aligned
       FILE format_conversion_utils.h
       FROM [[if (all_apart<bytes...>(units, planes...))]]
       TO [[if (units > 8 && ((reinterpret_cast<uintptr_t>(planes) % 16 == 0) && ...))
    walk<V, bytes...>(kernel, units - 1, planes...);
  else if (all_apart<bytes...>(units, planes...))]]
       ROWS *yuy2*)

mutant(lowest_bit_of_every_third_sample
       FILE format_conversion_line.h
       FROM [[shift_right_and_mask<6, 0xff0000>]]
       TO [[shift_right_and_mask<6, 0xfe0000>]]
       ROWS *v210*
       AVX2)

mutant(lower_row_writes_chroma
       FILE format_conversion_frame.h
       FROM [[(upper ? with_chroma : without_chroma)(]]
       TO [[(upper || xres > 60 ? with_chroma : without_chroma)(]]
       ROWS *y_uv_420*)

mutant(chroma_row_for_every_row
       FILE format_conversion_frame.h
       FROM [[if (upper) ((chroma.data]]
       TO [[((chroma.data]]
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
       FILE format_conversion_line_bgra_ycbcrx.h
       FROM [[dst[1] = byte<cb, 8>(src);]]
       TO [[dst[1] = dst[0] = byte<cb, 8>(src);]]
       ROWS *ycbcra*)

mutant(single_pixel_of_444_like_any_other
       FILE format_conversion_line_bgra_ycbcrx.h
       FROM [[pixels == 1 ? luma_byte(true)]]
       TO [[pixels == 0 ? luma_byte(true)]]
       ROWS *bgrx_ycbcrx*)

mutant(one_key_wrong
       FILE format_conversion_line.h
       FROM [[key_offset = -5117]]
       TO [[key_offset = -5116]]
       ROWS *uyvy_y)

mutant(odd_alpha_not_counted
       FILE format_conversion_utils.h
       FROM [[alphas.see(static_cast<uint8_t>(alpha0 & alpha1))]]
       TO [[alphas.see(alpha0)]]
       ROWS *bgra_uyvy_a*)

mutant(alpha_of_vectors_not_counted
       FILE format_conversion_utils.h
       FROM [[      V::store_bytes(alpha, fourth);
      if constexpr (track_alpha) alphas.see(fourth);]]
       TO [[      V::store_bytes(alpha, fourth);]]
       ROWS *vuya_uyvy_a*
       AVX2)

mutant(cr_weighted_by_the_first_alpha
       FILE format_conversion_line.h
       FROM [[dst[2] = sample<black_chroma>(cr, alpha1);]]
       TO [[dst[2] = sample<black_chroma>(cr, alpha0);]]
       ROWS *_uyvy)

mutant(wrong_green_of_planes
       FILE format_conversion_matrix.h
       FROM [[ccir_709 ? 34 : 52]]
       TO [[ccir_709 ? 33 : 52]]
       ROWS *r_g_b*)

mutant(overlapping_planes_through_vectors
       FILE format_conversion_utils.h
       FROM [[if (all_apart<bytes...>(units, planes...))]]
       TO [[if (units > 0)]]
       ROWS *plane_over_source*
       PROGRAM overlap_test
       AVX2)

mutant(only_source_and_first_plane_kept_apart
       FILE format_conversion_utils.h
       FROM [[&& ...) && all_apart<bytes...>(units, planes...);]]
       TO [[&& ...);]]
       ROWS *planes_over_each_other*
       PROGRAM overlap_test
       AVX2)

mutant(difference_without_the_last_bytes
       FILE sum_absolute_differences_inc.h
       FROM [[return w.bytes + V::total(w.vectors);]]
       TO [[return V::total(w.vectors);]]
       ROWS *
       PROGRAM difference_test
       AVX2)
