// The machine that runs this program, and how it was built.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace morvane::bench {

// Pairs of a title and what there is to say: the processor, its caches, the compiler, the commit, the date.
std::vector<std::pair<std::string, std::string>> describe_machine(const std::string& commit);

std::string compiler();

// The processor alone, for one line of text.
std::string processor_name();

}  // namespace morvane::bench
