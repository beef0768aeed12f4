#include "hot_loops.h"

#include <algorithm>
#include <optional>

namespace morvane::bench {

namespace {

// The places that an instruction takes in the list.
struct span_of_loop {
  std::size_t first = 0;
  std::size_t last = 0;

  bool holds(const span_of_loop& other) const {
    return first <= other.first && other.last <= last && (first != other.first || last != other.last);
  }
};

std::int64_t signed_field(std::uint32_t opcode, int lowest_bit, int bits) {
  const std::int64_t field = (opcode >> lowest_bit) & ((std::uint32_t{1} << bits) - 1);
  const std::int64_t sign = std::int64_t{1} << (bits - 1);
  return (field ^ sign) - sign;
}

// Where a direct branch may go.
std::optional<std::uint64_t> branch_target(const counted_instruction& i) {
  const std::uint32_t op = i.opcode;
  std::optional<std::int64_t> words;
  if ((op & 0xff000010) == 0x54000000 || (op & 0x7e000000) == 0x34000000)  // b.cond, cbz, cbnz
    words = signed_field(op, 5, 19);
  else if ((op & 0x7e000000) == 0x36000000)  // tbz, tbnz
    words = signed_field(op, 5, 14);
  else if ((op & 0xfc000000) == 0x14000000)  // b
    words = signed_field(op, 0, 26);
  if (!words) return {};
  return i.address + static_cast<std::uint64_t>(4 * *words);
}

bool is_call(std::uint32_t op) {
  return (op & 0xfc000000) == 0x94000000 || (op & 0xfffffc1f) == 0xd63f0000;  // bl, blr
}

std::vector<span_of_loop> spans(const std::vector<counted_instruction>& all) {
  std::vector<span_of_loop> result;
  for (std::size_t last = 0; last < all.size(); ++last) {
    const std::optional<std::uint64_t> target = branch_target(all[last]);
    if (!target || *target > all[last].address) continue;
    const auto first = std::lower_bound(all.begin(), all.end(), *target,
                                        [](const auto& i, std::uint64_t address) { return i.address < address; });
    // A branch that was never taken leads to no loop.
    if (first->address != *target || all[last].count < 2) continue;
    result.push_back({static_cast<std::size_t>(first - all.begin()), last});
  }
  return result;
}

// What runs in at least every second iteration belongs to the body.
loop loop_of(const std::vector<counted_instruction>& all, const span_of_loop& s) {
  loop result{.iterations = all[s.last].count};
  for (std::size_t i = s.first; i <= s.last; ++i) {
    if (2 * all[i].count < result.iterations) continue;
    result.body.push_back(all[i].opcode);
    result.executed += all[i].count;
  }
  return result;
}

}  // namespace

std::uint64_t total(const std::vector<counted_instruction>& all) {
  std::uint64_t result = 0;
  for (const counted_instruction& i : all) result += i.count;
  return result;
}

std::vector<loop> find_hot_loops(const std::vector<counted_instruction>& all) {
  const std::vector<span_of_loop> found = spans(all);
  std::vector<loop> result;
  for (const span_of_loop& s : found) {
    if (std::any_of(found.begin(), found.end(), [&s](const span_of_loop& other) { return s.holds(other); })) continue;
    loop l = loop_of(all, s);
    if (std::none_of(l.body.begin(), l.body.end(), is_call)) result.push_back(std::move(l));
  }
  std::sort(result.begin(), result.end(), [](const loop& a, const loop& b) { return a.executed > b.executed; });
  return result;
}

}  // namespace morvane::bench
