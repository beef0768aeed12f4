// How much memory there is.
#pragma once

#include <cstdint>
#include <string>

namespace morvane::tool {

// Fails where the system has less to give. Systems that promise more memory than they have would end the command
// without a word later on. What they tell stands in files below the root.
void require_memory(std::int64_t bytes, const std::string& root = "");

}  // namespace morvane::tool
