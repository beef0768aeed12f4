// Rows of planes whose samples are packed in words, to lines of working samples and back. A null line is that of what
// is unused.
#pragma once

#include "stored.h"

namespace Processing::Morvane::checked {

void split_tens(const stored_plane& p, const uint8_t* row, const item_lines& to, int groups, bool fills_words);
void join_tens(const stored_plane& p, const item_lines& from, uint8_t* row, int groups, bool fills_words);

}  // namespace Processing::Morvane::checked
