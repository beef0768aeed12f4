# Mutants of the checked interface.

mutant(stride_of_a_whole_row_refused
       FILE checked/layout.cpp
       FROM [[stride < row_bytes && stride > -row_bytes]]
       TO [[stride <= row_bytes && stride > -row_bytes]]
       ROWS checked_errors.a_right_call*
       PROGRAM checked_test)

mutant(negative_stride_one_byte_too_short
       FILE checked/layout.cpp
       FROM [[stride < row_bytes && stride > -row_bytes]]
       TO [[stride < row_bytes && stride > 1 - row_bytes]]
       ROWS checked_errors.planes
       PROGRAM checked_test)

mutant(product_of_stride_and_rows_unchecked
       FILE checked/layout.cpp
       FROM [[__builtin_mul_overflow(step, rows - 1, &bytes)]]
       TO [[((bytes = static_cast<int64_t>(static_cast<uint64_t>(step) * static_cast<uint64_t>(rows - 1))), false)]]
       ROWS checked_extremes.strides
       PROGRAM checked_test)

mutant(bytes_of_all_planes_unchecked
       FILE checked/layout.cpp
       FROM [[__builtin_mul_overflow(stride, p.rows(s.height), &bytes)]]
       TO [[((bytes = static_cast<int64_t>(static_cast<uint64_t>(stride) * static_cast<uint64_t>(p.rows(s.height)))), false)]]
       ROWS checked_extremes.layouts
       PROGRAM checked_test)

mutant(planes_of_the_destination_not_compared
       FILE checked/layout.cpp
       FROM [[for (size_t other = 0; other < d; ++other)]]
       TO [[for (size_t other = 0; other + 1 < d; ++other)]]
       ROWS checked_overlap.of_two_planes_of_the_destination
       PROGRAM checked_test)

mutant(overlap_of_one_byte_unseen
       FILE checked/layout.cpp
       FROM [[a.row(i) + a.bytes <= b.row(j)]]
       TO [[a.row(i) + a.bytes <= b.row(j) + 1]]
       ROWS checked_overlap.is_that_of_bytes
       PROGRAM checked_test)

mutant(rows_between_rows_refused
       FILE checked/layout.cpp
       FROM [[if (a.row(i) + a.bytes <= b.row(j))
      ++i;]]
       TO [[if (i == a.count)
      ++i;]]
       ROWS checked_overlap.is_that_of_bytes
       PROGRAM checked_test)

mutant(scratch_memory_in_the_source
       FILE checked/layout.cpp
       FROM [[plane_sharing(used, source, from); plane >= 0]]
       TO [[plane_sharing(used, source, from); plane > 0]]
       ROWS checked_overlap.of_scratch_memory*
       PROGRAM checked_test)

mutant(scratch_memory_in_the_destination
       FILE checked/layout.cpp
       FROM [[plane_sharing(used, destination, to); plane >= 0]]
       TO [[plane_sharing(used, destination, to); plane > 0]]
       ROWS checked_overlap.of_scratch_memory*
       PROGRAM checked_test)

mutant(scratch_memory_of_one_thread_compared
       FILE checked/interface.cpp
       FROM [[checked::is_apart({scratch.data, needed}]]
       TO [[checked::is_apart({scratch.data, checked::scratch_bytes_of(plan.way)}]]
       ROWS checked_overlap.of_the_scratch_memory*
       PROGRAM checked_test)

mutant(stride_of_a_single_row_counts
       FILE checked/layout.cpp
       FROM [[const int64_t span = rows > 1 ? span_of(stride, rows, row_bytes) : row_bytes;]]
       TO [[const int64_t span = span_of(stride, rows, row_bytes);]]
       ROWS checked_extremes.strides_of_a_single_row
       PROGRAM checked_test)

mutant(layout_that_is_refused_is_written
       FILE checked/interface.cpp
       FROM [[if (!is_wrong(p)) *layout = made;]]
       TO [[*layout = made;]]
       ROWS checked_errors.layouts
       PROGRAM checked_test)

mutant(larger_structs_taken_for_known_ones
       FILE checked/layout.cpp
       FROM [[picture->struct_size != sizeof *picture]]
       TO [[picture->struct_size < sizeof *picture]]
       ROWS checked_errors.sizes_of_structs
       PROGRAM checked_test)

mutant(got_and_needed_exchanged
       FILE checked/interface.cpp
       FROM [["scratch_bytes", scratch.bytes, needed, "is %lld]]
       TO [["scratch_bytes", needed, scratch.bytes, "is %lld]]
       ROWS checked_errors.of_every_code_say_all
       PROGRAM checked_test)

mutant(bands_end_at_any_row
       FILE checked/interface.cpp
       FROM [[rows > height - first || (rows % unit != 0 && rows != height - first)]]
       TO [[rows > height - first]]
       ROWS checked_errors.bands_and_scratch_memory
       PROGRAM checked_test)

mutant(short_plane_noticed_behind_the_scratch_memory
       FILE checked/interface.cpp
       FROM [[  if (const problem p = check_pictures(plan, source_picture, destination_picture); is_wrong(p)) return answer(p, error);
  const int64_t bytes = scratch_bytes_of(plan);]]
       TO [[  const int64_t bytes = scratch_bytes_of(plan);
  void* volatile early = std::malloc(static_cast<size_t>(bytes));
  std::free(early);
  if (const problem p = check_pictures(plan, source_picture, destination_picture); is_wrong(p)) return answer(p, error);]]
       ROWS checked_memory.is_not_taken_by_a_call_that_is_refused
       PROGRAM allocations_test)

mutant(memory_for_every_run
       FILE checked/interface.cpp
       FROM [[  checked::run_all(plan.way, plan.hands.get(), *source, *destination, scratch.data);]]
       TO [[  checked::run_all(plan.way, plan.hands.get(), *source, *destination, scratch.data);
  void* volatile memory = std::malloc(1);
  std::free(memory);]]
       ROWS checked_memory.is_not_taken_by_a_run
       PROGRAM allocations_test)

mutant(group_behind_the_last_one
       FILE checked/stored.h
       FROM [[return (width - 1) / layout->group_pixels + 1;]]
       TO [[return width / layout->group_pixels + 1;]]
       ROWS *are_as_the_rules_say/uyvy
       PROGRAM checked_test)

mutant(chroma_of_another_row_kept
       FILE checked/rows.cpp
       FROM [[if (kept.row != row) kept = {row, 0};]]
       TO [[if (kept.row < 0) kept = {row, 0};]]
       ROWS *are_as_the_rules_say/y_uv_420
       PROGRAM checked_test)

mutant(chroma_kept_from_run_to_run
       FILE checked/rows.cpp
       FROM [[  kept_row kept_[3];]]
       TO [[  inline static kept_row kept_[3];]]
       ROWS *checked_threads.share_a_plan/y_uv_420
       PROGRAM threads_test)

mutant(no_sample_behind_the_last_one
       FILE checked/rows.cpp
       FROM [[if (piece_.is_last) line[count] = line[count - 1];]]
       TO [[]]
       ROWS *are_as_the_rules_say/uyvy
       PROGRAM checked_test)

mutant(job_left_before_its_guests_are_done
       FILE checked/crew.cpp
       FROM [[    work(hand);
    leave();]]
       TO [[    leave();
    work(hand);]]
       ROWS crew_of_threads.*
       PROGRAM checked_test)

mutant(parts_of_a_late_hand_lost
       FILE checked/crew.cpp
       FROM [[for (size_t i = 0; i < ranges_.size(); ++i) {
    range& r]]
       TO [[for (size_t i = 0; i < 1; ++i) {
    range& r]]
       ROWS crew_of_threads.begins_with_parts_of_its_own
       PROGRAM checked_test)

mutant(hand_that_begins_with_the_parts_of_another
       FILE checked/crew.cpp
       FROM [[(static_cast<size_t>(hand) + i) % ranges_.size()]]
       TO [[i]]
       ROWS crew_of_threads.begins_with_parts_of_its_own
       PROGRAM checked_test)

mutant(job_of_one_caller_given_to_another
       FILE checked/crew.cpp
       FROM [[if (busy_.test_and_set(std::memory_order_acquire)) return false;]]
       TO [[busy_.test_and_set(std::memory_order_acquire);]]
       ROWS crew_of_threads.*
       PROGRAM checked_test)

mutant(piece_that_repeats_its_first_sample_before_it
       FILE checked/rows.cpp
       FROM [[if (piece_.is_first) line[-1] = line[0];]]
       TO [[line[-1] = line[0];]]
       ROWS *of_wide_rows_are_as_the_rules_say/bgra
       PROGRAM checked_test)

mutant(piece_that_forgets_the_sample_before_it
       FILE checked/rows.cpp
       FROM [[line[-1] = line[count - 1]; }]]
       TO [[line[-1] = line[count - 2]; }]]
       ROWS *of_wide_rows_are_as_the_rules_say/bgra
       PROGRAM checked_test)

mutant(piece_that_does_not_read_ahead
       FILE checked/columns.h
       FROM [[count + std::min(ahead, left - count)]]
       TO [[count]]
       ROWS *of_wide_rows_are_as_the_rules_say/uyvy
       PROGRAM checked_test)

mutant(upper_chroma_of_the_first_piece
       FILE checked/rows.cpp
       FROM [[lines_.upper.from(way_.to.chroma_samples(piece_.first_column))]]
       TO [[lines_.upper]]
       ROWS *of_wide_rows_are_as_the_rules_say/*
       PROGRAM checked_test)

mutant(lines_too_short_for_the_longest_piece
       FILE checked/row_lines.cpp
       FROM [[std::min(width_, most_columns)]]
       TO [[std::min(width_, columns_of_piece)]]
       ROWS *of_wide_rows_are_as_the_rules_say/bgra
       PROGRAM checked_test)

mutant(plane_written_beside_its_copy
       FILE checked/rows.cpp
       FROM [[if (p.layout->image_rows != image_rows || way_.is_direct(i)) continue;]]
       TO [[if (p.layout->image_rows != image_rows) continue;]]
       ROWS *are_as_the_rules_say/y_uv_420
       PROGRAM checked_test)

mutant(shares_of_words_short_of_the_quotient
       FILE kernel/lines_floats.h
       FROM [[V::multiply(v, 0x1p-32F + 0x1p-48F)]]
       TO [[V::multiply(v, 0x1p-32F)]]
       ROWS *every_code.is_written/rgbf32
       PROGRAM checked_test
       BACKEND avx2)

mutant(rest_of_planes_stored_as_the_first_items
       FILE kernel/stored.h
       FROM [[prepended(in_a_row(a.first, b.first), in_a_row(a.rest, b.rest))]]
       TO [[prepended(in_a_row(b.first, a.first), in_a_row(a.rest, b.rest))]]
       ROWS lines.*
       KERNELS decode_kernels
       PROGRAM checked_test
       BACKEND avx2)

mutant(far_row_on_the_other_side
       FILE checked/shape.h
       FROM [[row % 2 == 0 ? row / 2 - 1 : row / 2 + 1]]
       TO [[row % 2 == 0 ? row / 2 + 1 : row / 2 - 1]]
       ROWS *are_as_the_rules_say/y_uv_420
       PROGRAM checked_test)

mutant(last_vector_without_the_unit_before
       FILE kernel/walk.h
       FROM [[look_back(false, ahead);]]
       TO [[]]
       ROWS lines.*
       KERNELS lines_pixel_pairs_kernels
       PROGRAM checked_test
       BACKEND avx2)

mutant(last_vector_of_one_body_without_the_unit_before
       FILE kernel/walk.h
       FROM [[look_back(begins);]]
       TO [[look_back(true);]]
       ROWS checked_tails.*
       PROGRAM checked_test
       KERNELS encode_kernels
       BACKEND avx2)

mutant(second_ten_bits_at_another_place
       FILE kernel/lines_tens.h
       FROM [[V::template shift_right_words<4 + lowest>(halves.first)]]
       TO [[V::template shift_right_words<4>(halves.first)]]
       ROWS *every_code.is_read/R10k
       PROGRAM checked_test
       BACKEND avx2)

mutant(bytes_of_words_in_the_other_order
       FILE checked/stored_packed.cpp
       FROM [[return p.layout->order == byte_order::big_endian;]]
       TO [[return p.layout->order != byte_order::big_endian;]]
       ROWS known_bits.*
       PROGRAM checked_test)

mutant(samples_of_streams_not_put_together
       FILE vector/avx2_blocks.h
       FROM [[_mm_setr_epi8(-1, 0, 2, 4, -1, -1, 8, 10, 12, -1, -1, -1, -1, -1, -1, -1)]]
       TO [[_mm_setr_epi8(-1, 0, 2, 4, -1, -1, 8, 10, 14, -1, -1, -1, -1, -1, -1, -1)]]
       ROWS *every_code.is_written/st2110_422_10
       KERNELS lines_pairs_kernels
       PROGRAM checked_test
       BACKEND avx2)

mutant(stream_in_the_other_order
       FILE kernel/lines_pairs.h
       FROM [[const auto lower = static_cast<uint16_t>((p[big_endian ? 2 : 0] | p[1] << 8) << 4);]]
       TO [[const auto lower = static_cast<uint16_t>((p[big_endian ? 0 : 2] | p[1] << 8) << 4);]]
       ROWS known_bits.*
       PROGRAM checked_test)

mutant(half_floats_rounded_down
       FILE kernel/lines_floats.h
       FROM [[(bits - exponents_apart + 0xfff + (bits >> 13 & 1)) >> 13]]
       TO [[(bits - exponents_apart) >> 13]]
       ROWS *every_code.is_written/rgbaf16
       PROGRAM checked_test)

mutant(half_floats_rounded_down_in_vectors
       FILE vector/ymm.h
       FROM [[_mm256_cvtps_ph(v, _MM_FROUND_TO_NEAREST_INT)]]
       TO [[_mm256_cvtps_ph(v, _MM_FROUND_TO_ZERO)]]
       ROWS *every_code.is_written/rgbaf16
       KERNELS lines_floats_kernels
       PROGRAM checked_test
       BACKEND avx2)

mutant(smallest_half_floats_are_zero
       FILE kernel/lines_floats.h
       FROM [[static_cast<float>(mantissa) * 0x1p-24F]]
       TO [[0.0F]]
       ROWS *every_code.is_read/rgbaf16
       PROGRAM checked_test)

mutant(rgb_in_floats_of_video_range
       FILE checked/shape.cpp
       FROM [[s.full_range = is_rgb;]]
       TO [[s.full_range = false;]]
       ROWS *every_code.is_read/rgbf32
       PROGRAM checked_test)

mutant(words_in_threes_exchanged
       FILE vector/avx2_blocks.h
       FROM [[_mm256_permute2x128_si256(words_16, words_0, 0x30)]]
       TO [[_mm256_permute2x128_si256(words_16, words_0, 0x20)]]
       ROWS lines.*
       KERNELS lines_stored_kernels
       PROGRAM checked_test
       BACKEND avx2)

mutant(two_bits_of_alpha_not_told
       FILE catalogue/formats/format.h
       FROM [[return has_words_of_pixels() ? 2 : depth();]]
       TO [[return depth();]]
       ROWS checked_plans.tell_steps_and_losses
       PROGRAM checked_test)

mutant(alpha_first_widened_as_what_is_last
       FILE checked/stored.cpp
       FROM [[k.repeated[i] = is_filled(p.items[i], fills_words)]]
       TO [[k.repeated[i] = is_filled(p.items[std::size(k.repeated) - 1], fills_words)]]
       ROWS */checked_pairs.are_as_the_rules_say/ayuv
       PROGRAM checked_test)

mutant(alpha_first_rounded_as_what_is_last
       FILE checked/stored.cpp
       FROM [[k.by[i] = {is_filled(p.items[i], fills_words)}]]
       TO [[k.by[i] = {is_filled(p.items[std::size(k.by) - 1], fills_words)}]]
       ROWS */checked_pairs.are_as_the_rules_say/vuya_16
       PROGRAM checked_test)

mutant(second_of_four_bytes_widened_as_the_first
       FILE kernel/lines_stored.h
       FROM [[upper<V>(both.first, repeated[1]);]]
       TO [[upper<V>(both.first, repeated[0]);]]
       ROWS lines.are_as_their_rules_say_on_every_backend
       PROGRAM checked_test
       BACKEND avx2)

mutant(second_of_two_bytes_rounded_as_the_first
       FILE kernel/lines_stored.h
       FROM [[two_of<V, i>(a, by[i + 1].template of<V>(V::load(b)))]]
       TO [[two_of<V, i>(a, by[i].template of<V>(V::load(b)))]]
       ROWS lines.are_as_their_rules_say_on_every_backend
       PROGRAM checked_test
       BACKEND avx2)

mutant(chroma_of_pairs_always_cb_first
       FILE checked/stored.cpp
       FROM [=[return {lines.of[p.items[first_chroma]], lines.of[p.items[first_chroma + 2]]};]=]
       TO [=[return {lines.of[p.items[first_chroma] == third ? second : p.items[first_chroma]], lines.of[third]};]=]
       ROWS */checked_pairs.are_as_the_rules_say/yvyu
       PROGRAM checked_test)

mutant(little_endian_names_not_without_their_end
       FILE checked/facts.cpp
       FROM [[ffmpeg.ends_with("le")]]
       TO [[ffmpeg.ends_with("LE")]]
       ROWS formats_called.are_found_by_the_names_that_people_use
       PROGRAM checked_test)

mutant(second_group_of_chroma_at_another_place
       FILE vector/avx2_sixes.h
       FROM [[_mm_srli_si128(load_64(cr + 4), 2)]]
       TO [[_mm_srli_si128(load_64(cr + 4), 0)]]
       ROWS lines.are_as_their_rules_say_on_every_backend
       PROGRAM checked_test
       BACKEND avx2)

mutant(second_group_of_six_words_with_a_gap
       FILE vector/avx2_sixes.h
       FROM [[_mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7)]]
       TO [[_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7)]]
       ROWS lines.are_as_their_rules_say_on_every_backend
       PROGRAM checked_test
       BACKEND avx2)

mutant(odd_pixel_before_a_pair_of_lines_forgotten
       FILE kernel/lines_colour.h
       FROM [[odd_before = odd;]]
       TO [[]]
       ROWS lines.*
       KERNELS lines_pixel_pairs_kernels
       PROGRAM checked_test
       BACKEND avx2)

mutant(pixel_before_a_piece_forgotten_by_the_matrix
       FILE checked/rows.cpp
       FROM [[for (uint16_t* line : {r, g, b}) keep_last(line, piece_.made);]]
       TO [[]]
       ROWS *of_wide_rows_are_as_the_rules_say/abgr
       PROGRAM checked_test)

mutant(rgb_above_white_not_clamped
       FILE kernel/lines_colour.h
       FROM [[V::add_signed_to_limit(doubled, doubled)]]
       TO [[V::add_words(doubled, doubled)]]
       ROWS lines.*
       PROGRAM checked_test
       BACKEND avx2)
