// Any picture to any other: what a conversion that is not an entry point of the library must compute.
#pragma once

#include <string_view>

#include "rules/picture.h"

namespace morvane::tests::rules {

// Whether a picture of the one format can become one of the other.
bool convertible(std::string_view source, std::string_view destination);

// Throws where the formats are not convertible or the pictures differ in size.
void convert(const picture& source, const picture& destination, const options& asked);

}  // namespace morvane::tests::rules
