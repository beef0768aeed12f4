# The mutants of ways without lines: copies, rearrangements, kernels that read one layout and write another, stores
# past the caches.

mutant(short_cut_of_the_other_filter
       FILE checked/short_cuts.cpp
       FROM [[if (s.nearest_alone && w.filters]]
       TO [[if (false && w.filters]]
       ROWS short_cuts.*
       PROGRAM checked_test)

mutant(short_cut_past_a_matrix
       FILE checked/short_cuts.cpp
       FROM [[  if (computes(w)) return;]]
       TO [[]]
       ROWS short_cuts.*
       PROGRAM checked_test)

mutant(short_cut_of_half_a_group
       FILE checked/short_cuts.cpp
       FROM [[if (copies_all(w) || !has_whole_groups(w.from) || !has_whole_groups(w.to)) return;]]
       TO [[if (copies_all(w)) return;]]
       ROWS *are_as_the_rules_say/uyvy
       PROGRAM checked_test)

mutant(short_cut_lost
       FILE checked/short_cuts.cpp
       FROM [[    {"uyvy::yuy2"},
]]
       TO [[]]
       ROWS short_cuts.*
       PROGRAM checked_test)

mutant(unused_bytes_copied
       FILE checked/short_cuts.cpp
       FROM [[return !p.has(unused) && p.layout]]
       TO [[return p.layout]]
       ROWS short_cuts.*
       PROGRAM checked_test)

mutant(padding_copied_by_a_short_cut
       FILE checked/direct.cpp
       FROM [[if (!w.by->copies_padding.empty() && !copies_rows) return false;]]
       TO [[]]
       ROWS named_entry_points.copy_nothing_between_rows
       PROGRAM checked_test)

mutant(short_cut_between_two_rows_of_chroma
       FILE checked/direct.cpp
       FROM [[return first % unit_rows(w) == 0 && rows]]
       TO [[return rows]]
       ROWS short_cuts.*
       PROGRAM checked_test)

mutant(entry_point_given_no_room_behind_a_row
       FILE checked/direct.cpp
       FROM [[if (!touches_more(w) && can_be_called(w, source, destination)) {]]
       TO [[if (can_be_called(w, source, destination)) {]]
       ROWS named_entry_points.touch_nothing*
       PROGRAM checked_test)

mutant(irregular_entry_point_without_consent
       FILE checked/direct.cpp
       FROM [[if (!c->irregular.empty() && !wish.allow_irregular)]]
       TO [[if (false)]]
       ROWS named_entry_points.*
       PROGRAM checked_test)

mutant(scratch_memory_of_another_hand
       FILE checked/run.cpp
       FROM [[static_cast<uint8_t*>(scratch) + w.scratch_bytes * hand);]]
       TO [[static_cast<uint8_t*>(scratch) + 0 * w.scratch_bytes * hand);]]
       ROWS plans_with_threads.have_scratch*
       PROGRAM checked_test)

mutant(part_of_a_picture_left_to_nobody
       FILE checked/run.cpp
       FROM [[hands->run((height - 1) / rows + 1, part)]]
       TO [[hands->run(height / rows, part)]]
       ROWS plans_with_threads.*
       PROGRAM checked_test)

mutant(half_a_group_copied
       FILE checked/short_cuts.cpp
       FROM [[if (!is_copied(p) || !is_full(p, w.to)) return -1;]]
       TO [[if (!is_copied(p)) return -1;]]
       ROWS *are_as_the_rules_say/uyvy
       PROGRAM checked_test)

mutant(unused_bits_of_words_rearranged_too
       FILE checked/rearranged.cpp
       FROM [[widens ? 0xff00 : stored_as(p, 65535)]]
       TO [[widens ? 0xff00 : 65535]]
       ROWS *are_as_the_rules_say/p010
       PROGRAM checked_test)

mutant(samples_behind_the_last_unit_left_out
       FILE checked/rearranged.cpp
       FROM [[  if (rest == 0) return;]]
       TO [[  return;]]
       ROWS *are_as_the_rules_say/y_uv_420
       PROGRAM checked_test)

mutant(part_of_a_period_rearranged
       FILE checked/rearranged.cpp
       FROM [[ && p.groups(to_.width) == result_.periods * groups;]]
       TO [[;]]
       ROWS *are_as_the_rules_say/uyvy
       PROGRAM checked_test)

mutant(rows_of_another_sampling_rearranged
       FILE checked/rearranged.cpp
       FROM [[return of.image_rows != p.image_rows && !nearest_;]]
       TO [[return of.image_rows == 0 && p.image_rows == 0 && !nearest_;]]
       ROWS *are_as_the_rules_say/y_uv_420
       PROGRAM checked_test)

mutant(pair_beyond_the_last_one
       FILE checked/decoded.cpp
       FROM [[{w.filters_chroma(), !has_last_pixel, streams}]]
       TO [[{w.filters_chroma(), w.from.width == 0, streams}]]
       ROWS *are_as_the_rules_say/y_uv_420
       PROGRAM checked_test)

mutant(last_pixel_of_luma_alone
       FILE checked/decoded.cpp
       FROM [[i == 0 && has_own_luma ? k.read[i] / 2 : k.read[i], gathered]]
       TO [[k.read[i] / 2, gathered]]
       ROWS *are_as_the_rules_say/uyvy
       PROGRAM checked_test)

mutant(average_of_rows_of_sixteen_bits_rounded_twice
       FILE kernel/decoded_rows.h
       FROM [[has_fine_bits ? V::average_down(near, far) :]]
       TO [[has_fine_bits ? V::average_up(near, far) :]]
       ROWS *are_as_the_rules_say/p016
       PROGRAM checked_test
       KERNELS decode_kernels
       BACKEND avx2)

mutant(samples_in_lower_bits_left_where_they_are
       FILE checked/decoded.cpp
       FROM [[result.up = low_bits(chroma.layout->sample) != 0 ?]]
       TO [[result.up = low_bits(chroma.layout->sample) == 10 ?]]
       ROWS *are_as_the_rules_say/y_u_v_420_12u16
       PROGRAM checked_test)

mutant(blue_of_one_pixel_for_two_in_a_plane
       FILE kernel/decoded_writers.h
       FROM [[bytes::packed<V, order>(p.first.b, p.second.b)]]
       TO [[bytes::packed<V, order>(p.first.b, p.first.b)]]
       ROWS lines.*
       PROGRAM checked_test
       KERNELS decode_kernels
       BACKEND avx2)

mutant(red_once_more_in_the_plane_of_green
       FILE kernel/decoded_writers.h
       FROM [[put_word(second + 2 * pixel, by.of(b));]]
       TO [[put_word(second + 2 * pixel, by.of(a));]]
       ROWS lines.*
       PROGRAM checked_test
       KERNELS decode_kernels)

mutant(narrow_matrix_for_sixteen_bits
       FILE checked/decoded.cpp
       FROM [[if (kernels[i].is_narrow == w.narrow && reads]]
       TO [[if (reads]]
       ROWS *are_as_the_rules_say/p216
       PROGRAM checked_test)

mutant(red_and_blue_exchanged_in_big_endian_words
       FILE checked/decoded.cpp
       FROM [[(exchanged != result.is_big_endian)]]
       TO [[exchanged]]
       ROWS *are_as_the_rules_say/p010
       PROGRAM checked_test)

mutant(tens_beyond_the_largest_one
       FILE kernel/decoded_rows.h
       FROM [[V::least_words(positive, V::repeat(16383))]]
       TO [[V::least_words(positive, V::repeat(32767))]]
       ROWS lines.*
       TEST checked/kernels.cpp
       BACKEND avx2)

mutant(decoder_that_no_plan_takes
       FILE checked/decoded.cpp
       FROM [[if (!is_matrix_alone(w)) return {};]]
       TO [[if (is_matrix_alone(w)) return {};]]
       ROWS checked_plans.decode_without_lines
       PROGRAM checked_test)

mutant(first_pixel_before_itself_left_out
       FILE checked/encoded.cpp
       FROM [[k.before_first = how.begins_row ? 0 : -1;]]
       TO [[k.before_first = how.begins_row ? 1 : -1;]]
       ROWS *are_as_the_rules_say/bgra
       PROGRAM checked_test)

mutant(last_pixel_without_the_one_before
       FILE checked/encoded.cpp
       FROM [[pairs > 0 ? last - bytes : last]]
       TO [[last]]
       ROWS *are_as_the_rules_say/bgra
       PROGRAM checked_test)

mutant(exchanged_weights_of_luma_stay
       FILE checked/encoded.cpp
       FROM [[std::swap(k.y_r, k.y_b);]]
       TO [[std::swap(k.y_r, k.y_r);]]
       ROWS *are_as_the_rules_say/bgra
       PROGRAM checked_test)

mutant(rows_of_chroma_not_averaged
       FILE kernel/encoded_rows.h
       FROM [[V::average_up(chroma[0], chroma[rows - 1]) :]]
       TO [[V::average_up(chroma[0], chroma[0]) :]]
       ROWS checked_tails.*
       PROGRAM checked_test
       BACKEND avx2)

mutant(encoder_that_no_plan_takes
       FILE checked/encoded.cpp
       FROM [[if (!is_matrix_alone(w) || !is_of_pixels_or_pairs(w.from)) return {};]]
       TO [[if (is_matrix_alone(w) || !is_of_pixels_or_pairs(w.from)) return {};]]
       ROWS checked_plans.encode_without_lines
       PROGRAM checked_test)

mutant(last_pixel_of_a_stream_as_one_of_its_own
       FILE checked/encoded.cpp
       FROM [[s.planes[0].layout->group_pixels == 1 || s.width % 2 == 0]]
       TO [[s.planes[0].layout->group_pixels > 0]]
       ROWS *are_as_the_rules_say/R12L
       PROGRAM checked_test)

mutant(pixel_of_a_stream_before_its_pair_forgotten
       FILE kernel/encoded_readers.h
       FROM [[number < 0 ? -bytes_of_pair : 0]]
       TO [[number < 0 ? 0 * bytes_of_pair : 0]]
       ROWS lines.*
       PROGRAM checked_test
       KERNELS encode_kernels
       BACKEND avx2)

mutant(plane_of_green_read_for_blue
       FILE kernel/encoded_readers.h
       FROM [[g = words<V>(row[1] + on), b = words<V>(row[2] + on);]]
       TO [[g = words<V>(row[1] + on), b = words<V>(row[1] + on);]]
       ROWS lines.*
       PROGRAM checked_test
       KERNELS encode_kernels
       BACKEND avx2)

mutant(tens_in_planes_half_as_bright
       FILE kernel/encoded_readers.h
       FROM [[V::template shift_left_words<6>(V::load(p))]]
       TO [[V::template shift_left_words<5>(V::load(p))]]
       ROWS lines.*
       PROGRAM checked_test
       KERNELS encode_kernels
       BACKEND avx2)

mutant(words_of_chroma_cut_instead_of_rounded
       FILE kernel/encoded_rows.h
       FROM [[V::add_words_to_limit(exact, V::repeat(to.half))]]
       TO [[V::add_words_to_limit(exact, V::repeat(to.half - 1))]]
       ROWS lines.*
       TEST checked/kernels.cpp
       BACKEND avx2)

mutant(two_unused_bits_read_as_samples
       FILE checked/encoded.cpp
       FROM [[result.lowest = rgb.layout->unused_low_bits;]]
       TO [[result.lowest = 0 * rgb.layout->unused_low_bits;]]
       ROWS *are_as_the_rules_say/R10l
       PROGRAM checked_test)

mutant(blue_first_in_big_endian_words_that_are_read
       FILE checked/encoded.cpp
       FROM [[(rgb.items[0] == blue) != result.is_big_endian]]
       TO [[rgb.items[0] == blue]]
       ROWS *are_as_the_rules_say/r210
       PROGRAM checked_test)

mutant(narrow_matrix_from_ten_bits_to_sixteen
       FILE checked/encoded.cpp
       FROM [[k.rows == rows && k.is_narrow == w.narrow &&]]
       TO [[k.rows == rows && k.is_narrow == (w.narrow || w.from.depth == 10) &&]]
       ROWS *are_as_the_rules_say/x2rgb10
       PROGRAM checked_test)

mutant(last_pixel_of_words_cut_in_half
       FILE checked/encoded.cpp
       FROM [[is_luma ? k.bytes_of_sample :]]
       TO [[is_luma ? 1 :]]
       ROWS *are_as_the_rules_say/rgb48
       PROGRAM checked_test)

mutant(words_cut_instead_of_rounded
       FILE checked/rearranged.cpp
       FROM [[to.depth() < from.depth() ? half_of(to) : 0]]
       TO [[0 * (from.depth() + to.depth())]]
       ROWS *are_as_the_rules_say/p216
       PROGRAM checked_test)

mutant(chroma_of_the_lower_row_stays
       FILE checked/rearranged.cpp
       FROM [[row % 2 == 0 ? by.of_upper_rows : by.of_lower_rows]]
       TO [[row % 2 == 0 ? by.of_upper_rows : true]]
       ROWS *are_as_the_rules_say/yuy2
       PROGRAM checked_test)

mutant(luma_beside_chroma_averaged_too
       FILE checked/rearranged.cpp
       FROM [[if (b.kept != 0 && !b.is_average) result_.bits]]
       TO [[if (b.kept != 0 && false) result_.bits]]
       ROWS *are_as_the_rules_say/uyvy
       PROGRAM checked_test)

mutant(chroma_of_the_upper_row_alone
       FILE checked/shape.h
       FROM [[half_height ? 2 * chroma_row_beside(row) : std::min(row + 1, height - 1);]]
       TO [[half_height ? 2 * chroma_row_beside(row) : row;]]
       ROWS *are_as_the_rules_say/y_uv_422
       PROGRAM checked_test)

mutant(averages_of_words_with_unused_bits
       FILE checked/rearranged.cpp
       FROM [[result_.bits.read = static_cast<uint32_t>(stored_as(p, 65535)) * 0x10001;]]
       TO [[result_.bits.read = static_cast<uint32_t>(stored_as(p, 65535)) * 0 - 1;]]
       ROWS *are_as_the_rules_say/p010
       PROGRAM checked_test)

mutant(averages_of_words_cut_instead_of_rounded
       FILE checked/rearranged.cpp
       FROM [[is_average_at_top ? half_of(*to.layout) : rounded_by(p, *to.layout)]]
       TO [[rounded_by(p, *to.layout)]]
       ROWS *are_as_the_rules_say/p210
       PROGRAM checked_test)

mutant(words_not_moved_down
       FILE checked/rearranged.cpp
       FROM [[const int down = moves ? low_bits_above(p) : 0;]]
       TO [[const int down = moves ? 0 * low_bits_above(p) : 0;]]
       ROWS *are_as_the_rules_say/p010
       PROGRAM checked_test)

mutant(full_words_of_other_depth_moved
       FILE checked/rearranged.cpp
       FROM [[if (fills && moves() && p.depth() != to.layout->depth()) return false;]]
       TO [[if (false) return false;]]
       ROWS *are_as_the_rules_say/y_u_v_a_422_10u16
       PROGRAM checked_test)

mutant(three_parts_rounded_up_twice
       FILE kernel/resampled_rows.h
       FROM [[V::average_bytes_up(near, V::average_bytes_down(near, far))]]
       TO [[V::average_bytes_up(near, V::average_bytes_up(near, far))]]
       ROWS lines.are_as_their_rules_say_on_every_backend
       PROGRAM checked_test
       BACKEND avx2)

mutant(three_parts_of_the_far_row
       FILE kernel/resampled_rows.h
       FROM [[of_rows == parts::equal ? average_up(a, b) : nearer_to_first(a, b)]]
       TO [[of_rows == parts::equal ? average_up(a, b) : nearer_to_first(b, a)]]
       ROWS *are_as_the_rules_say/y_uv_420
       PROGRAM checked_test)

mutant(regrouping_without_the_rest
       FILE checked/regrouped.cpp
       FROM [[if (w.from.width % pixels != 0)]]
       TO [[if (false)]]
       ROWS *are_as_the_rules_say/v210
       PROGRAM checked_test)

mutant(regrouping_that_no_plan_takes
       FILE checked/regrouped.cpp
       FROM [[  if (computes(w)) return {};]]
       TO [[  if (!computes(w)) return {};]]
       ROWS checked_plans.regroup_without_lines
       PROGRAM checked_test)

mutant(rest_with_the_near_row_of_chroma_alone
       FILE checked/regrouped.cpp
       FROM [[read(row, chroma, way_.far_row_of_chroma(row));]]
       TO [[read(row, chroma, row);]]
       ROWS *are_as_the_rules_say/p010
       PROGRAM checked_test)

mutant(groups_with_the_near_row_of_chroma_alone
       FILE checked/regrouped.cpp
       FROM [[planes[w.from.half_height ? 1 : 0], w.far_row_of_chroma(row)]]
       TO [[planes[w.from.half_height ? 1 : 0], row]]
       ROWS *are_as_the_rules_say/p010
       PROGRAM checked_test)

mutant(second_of_five_bytes_without_luma
       FILE kernel/regrouped_rows.h
       FROM [[(cb & 0xff) | y0 >> 10]]
       TO [[(cb & 0xff) | y0 >> 11]]
       ROWS *are_as_the_rules_say/v210
       PROGRAM checked_test)

mutant(key_of_bytes_not_repeated
       FILE kernel/keyed_rows.h
       FROM [[p.a[i] = static_cast<uint16_t>(alpha[i] * 257);]]
       TO [[p.a[i] = static_cast<uint16_t>(alpha[i] * 256);]]
       ROWS *are_as_the_rules_say/uyvy_a
       PROGRAM checked_test)

mutant(key_not_repeated_up_to_the_end_of_its_group
       FILE checked/regrouped.cpp
       FROM [[for (const component i : {first, second, third, alpha}) repeat_last(]]
       TO [[for (const component i : {first, second, third}) repeat_last(]]
       ROWS *are_as_the_rules_say/pa16
       PROGRAM checked_test)

mutant(picture_of_the_largest_cached_size_streamed
       FILE checked/streamed.cpp
       FROM [[bytes_of(w.to) > MORVANE_MOST_CACHED]]
       TO [[bytes_of(w.to) >= MORVANE_MOST_CACHED]]
       ROWS streaming.is_chosen_by_size*
       PROGRAM checked_test)

mutant(pictures_by_lines_streamed_by_size
       FILE checked/streamed.cpp
       FROM [[const bool pays = streams_in_one_pass(w) && bytes_of(w.to)]]
       TO [[const bool pays = bytes_of(w.to)]]
       ROWS streaming.is_chosen_by_size*
       PROGRAM checked_test)

mutant(stores_never_streamed
       FILE checked/run.cpp
       FROM [[(w.streams ? run_streaming : run_cached)(]]
       TO [[(w.streams && first < 0 ? run_streaming : run_cached)(]]
       ROWS streaming.fills_whole_cache_lines*
       PROGRAM checked_test)

mutant(rows_of_one_pass_not_streamed
       FILE checked/run.cpp
       FROM [[make_planes(w, source, destination, first, rows, scratch, true);]]
       TO [[make_planes(w, source, destination, first, rows, scratch, false);]]
       ROWS streaming.fills_whole_cache_lines
       PROGRAM checked_test)

mutant(streaming_not_finished
       FILE checked/run.cpp
       FROM [[  finish_streaming();]]
       TO [[]]
       ROWS streaming.fills_whole_cache_lines
       PROGRAM checked_test)

mutant(cache_line_streamed_from_before_a_plane_on
       FILE kernel/streamed_plane.h
       FROM [[size_t at = is_first_ ? put_first() : 0;]]
       TO [[size_t at = 0;]]
       ROWS lines.are_as_their_rules_say_past_the_caches*
       KERNELS rearrange_kernels
       PROGRAM checked_test
       BACKEND avx2)

mutant(cache_line_streamed_that_is_begun_alone
       FILE kernel/streamed_plane.h
       FROM [[V::stream_cache_line(lines() + at, to_ + at);]]
       TO [[V::stream_cache_line(lines() + at, to_ + at);
    if (at < end) V::stream_cache_line(lines() + at, to_ + at);]]
       ROWS lines.are_as_their_rules_say_past_the_caches*
       KERNELS rearrange_kernels
       PROGRAM checked_test
       BACKEND avx2)

mutant(begun_cache_line_forgotten
       FILE kernel/streamed_plane.h
       FROM [[__builtin_memcpy(lines(), lines() + at, streamed_line);]]
       TO [[]]
       ROWS lines.are_as_their_rules_say_past_the_caches*
       KERNELS rearrange_kernels
       PROGRAM checked_test
       BACKEND avx2)

mutant(end_of_a_plane_not_stored
       FILE kernel/streamed_plane.h
       FROM [[__builtin_memcpy(to_, memory_ + room, begun_);]]
       TO [[]]
       ROWS lines.are_as_their_rules_say_past_the_caches*
       KERNELS rearrange_kernels
       PROGRAM checked_test
       BACKEND avx2)

mutant(cache_line_streamed_beyond_a_row
       FILE checked/streamed.cpp
       FROM [[size_t lines = (bytes - ahead) / line_bytes;]]
       TO [[size_t lines = (bytes - ahead + line_bytes - 1) / line_bytes;]]
       ROWS streaming.has_the_same_bytes*
       PROGRAM checked_test)

mutant(end_of_a_row_not_streamed
       FILE checked/streamed.cpp
       FROM [[std::memcpy(to, from, (bytes - ahead) % line_bytes);]]
       TO [[]]
       ROWS streaming.has_the_same_bytes*
       PROGRAM checked_test)

mutant(encoder_that_is_said_to_stream
       FILE checked/streamed.cpp
       FROM [[!fills_rows(w) || w.encoded]]
       TO [[!fills_rows(w)]]
       ROWS streaming.is_left_out_where_rgb_is_encoded*
       PROGRAM checked_test)

mutant(bytes_that_an_entry_point_leaves_streamed
       FILE checked/streamed.cpp
       FROM [[!fills_rows(w) || w.encoded]]
       TO [[w.encoded]]
       ROWS streaming.has_the_same_bytes_by_every_entry_point
       PROGRAM checked_test)

mutant(rows_upwards_given_to_an_entry_point_that_leaves_them
       FILE checked/direct.cpp
       FROM [[is_tight(source, w.from) && goes_down(destination, w.to);]]
       TO [[is_tight(source, w.from) && (true || goes_down(destination, w.to));]]
       ROWS named_entry_points.reach_rows_that_go_up
       PROGRAM checked_test)

mutant(luminance_of_exchanged_chroma
       FILE checked/decoded.cpp
       FROM [[std::swap(result.luminance.r, result.luminance.b);]]
       TO [[]]
       ROWS *are_as_the_rules_say/y_vu_420
       PROGRAM checked_test)

mutant(luminance_of_one_pixel_for_two
       FILE kernel/decoded_writers.h
       FROM [[steps_of_bytes<V>(p.first), steps_of_bytes<V>(p.second)]]
       TO [[steps_of_bytes<V>(p.first), steps_of_bytes<V>(p.first)]]
       ROWS lines.*
       PROGRAM checked_test
       KERNELS decode_kernels
       BACKEND avx2)
