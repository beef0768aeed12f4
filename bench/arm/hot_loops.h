// Finds the loops in which a program spent its instructions, in the counts of the instructions alone.
#pragma once

#include <cstdint>
#include <vector>

namespace morvane::bench {

// One instruction of 64-bit Arm that ran.
struct counted_instruction {
  std::uint64_t address = 0;
  std::uint64_t count = 0;
  std::uint32_t opcode = 0;
};

struct loop {
  std::vector<std::uint32_t> body{};  // opcodes, the branch back to the first one last
  std::uint64_t iterations = 0;
  std::uint64_t executed = 0;  // instructions, in all iterations
};

// The innermost loops without calls, those that ran most instructions first. `all` is in the order of addresses.
std::vector<loop> find_hot_loops(const std::vector<counted_instruction>& all);

std::uint64_t total(const std::vector<counted_instruction>& all);

}  // namespace morvane::bench
