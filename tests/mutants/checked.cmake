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
       FROM [["scratch_bytes", scratch_bytes, needed, "is %lld]]
       TO [["scratch_bytes", needed, scratch_bytes, "is %lld]]
       ROWS checked_errors.of_every_code_say_all
       PROGRAM checked_test)

mutant(bands_begin_at_any_row
       FILE checked/interface.cpp
       FROM [[first >= height || first % unit != 0]]
       TO [[first >= height]]
       ROWS checked_errors.bands_and_scratch_memory
       PROGRAM checked_test)

mutant(short_plane_noticed_behind_the_scratch_memory
       FILE checked/interface.cpp
       FROM [[  if (const problem p = check_pictures(plan, source_picture, destination_picture); is_wrong(p)) return answer(p, error);
  const int64_t bytes = checked::scratch_bytes(plan.way);]]
       TO [[  const int64_t bytes = checked::scratch_bytes(plan.way);
  void* volatile early = std::malloc(static_cast<size_t>(bytes));
  std::free(early);
  if (const problem p = check_pictures(plan, source_picture, destination_picture); is_wrong(p)) return answer(p, error);]]
       ROWS checked_memory.is_not_taken_by_a_call_that_is_refused
       PROGRAM allocations_test)

mutant(memory_for_every_run
       FILE checked/interface.cpp
       FROM [[  const int64_t needed = checked::scratch_bytes(plan->way);]]
       TO [[  const int64_t needed = checked::scratch_bytes(plan->way);
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
       FROM [[if (cached_[place] == row) return lines;]]
       TO [[if (cached_[place] >= 0) return lines;]]
       ROWS *are_as_the_rules_say/y_uv_420
       PROGRAM checked_test)

mutant(chroma_kept_from_run_to_run
       FILE checked/rows.cpp
       FROM [[  int cached_[3] = {-1, -1, -1};]]
       TO [[  inline static int cached_[3] = {-1, -1, -1};]]
       ROWS *checked_threads.share_a_plan/y_uv_420
       PROGRAM threads_test)

mutant(no_sample_behind_the_last_one
       FILE checked/rows.cpp
       FROM [[line[count] = line[count - 1];
  }]]
       TO [[}]]
       ROWS *are_as_the_rules_say/uyvy
       PROGRAM checked_test)
