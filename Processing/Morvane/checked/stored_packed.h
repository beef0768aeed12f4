// Rows of planes with words of several samples, deep pairs and floats, to lines of working samples and back. A null
// line is that of what is unused.
#pragma once

#include "stored.h"

namespace Processing::Morvane::checked {

void split_tens(const stored_plane& p, const uint8_t* row, const item_lines& to, int groups, bool fills_words);
void join_tens(const stored_plane& p, const item_lines& from, uint8_t* row, int groups, bool fills_words);

// Streams of bits, and pairs of 4:2:2 in words.
void split_stream(const stored_plane& p, const uint8_t* row, const component_lines& to, int groups, bool fills_words);
void join_stream(const stored_plane& p, const component_lines& from, uint8_t* row, int groups, bool fills_words);
void split_deep_pairs(const stored_plane& p, const uint8_t* row, const component_lines& to, int groups);
void join_deep_pairs(const stored_plane& p, const component_lines& from, uint8_t* row, int groups);

void split_floats(const stored_plane& p, const uint8_t* row, const component_lines& to, int groups);
void join_floats(const stored_plane& p, const component_lines& from, uint8_t* row, int groups);

}  // namespace Processing::Morvane::checked
