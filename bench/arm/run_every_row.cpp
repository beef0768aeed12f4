// morvane_run_every_row: on 64-bit Arm, runs every row of the benchmark and every peer once on 1920x16, between two
// marks for the plugin that counts instructions, and prints a line for each:
//   number TAB conversion TAB runner TAB function TAB agreement TAB pixels
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "backend/choice.h"
#include "marks.h"
#include "peers/peers.h"

namespace {

using namespace morvane::bench;

namespace backend = Processing::Morvane::backend;

int jobs = 0;

void mark(std::uint64_t what, int job) {
  syscall(mark_system_call, mark_option, what, job, 0, 0);
}

void count(const row& r, std::int64_t pixels, std::string_view runner, std::string_view function,
           std::string_view label, const job& work) {
  work();  // a library may look at the processor when it is first called
  mark(mark_begin, jobs);
  work();
  mark(mark_end, jobs);
  std::cout << jobs++ << '\t' << r.name << '\t' << runner << '\t' << function << '\t' << label << '\t' << pixels
            << '\n';
}

}  // namespace

int main() {
  const std::vector<row> rows = all_rows();
  const std::vector<peer> peers = all_peers();
  std::vector<workload> workloads;
  for (const row& r : rows) workloads.push_back(make_workload(r, {in_cache}));
  const arena memory(workloads);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const row& r = rows[i];
    const std::int64_t pixels = workloads[i].pixels();
    const morvane::catalogue::call call = memory.prepare(workloads[i]);
    count(r, pixels, backend::name(backend::chosen()), "", "", make_job(*r.conversion, call));
    for (const peer& p : peers)
      if (p.serves(r.name)) count(r, pixels, p.library, p.function, name_of(observed_agreement(r, p)), p.prepare(call));
  }
  return EXIT_SUCCESS;
}
