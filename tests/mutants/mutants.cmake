# The mutants: a copy of the library with one small mistake in it each. The checker must report every one of them.
#
# mutant(name FILE file FROM text TO text ROWS filter): in the library's `file`, `text` occurs exactly once and becomes
# the other; the checker then runs the rows that match the filter. AVX2 marks mistakes that only AVX2 processors show.

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
       FROM [[p_dst_alpha[pixels - 1] = byte]]
       TO [[p_dst_alpha[pixels] = p_dst_alpha[pixels - 1] = byte]]
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
