// A plugin of the user-mode emulator (API 1): counts how often each instruction of the program runs between two marks.
//   qemu-aarch64 -plugin libmorvane_count_instructions.so,out=FILE ./program
// FILE then holds, for every job, a line "job NUMBER" and a line for each instruction that ran, by address:
//   address count opcode        all but the count in hexadecimal
// It serves programs of one thread.
#include <cinttypes>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>

#include "marks.h"

// What of the emulator's interface is used here; the emulator's package has no header for it.
extern "C" {
using qemu_plugin_id_t = std::uint64_t;
struct qemu_plugin_tb;
struct qemu_plugin_insn;
using translation_callback = void (*)(qemu_plugin_id_t, qemu_plugin_tb*);
using syscall_callback = void (*)(qemu_plugin_id_t, unsigned, std::int64_t, std::uint64_t, std::uint64_t, std::uint64_t,
                                  std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t);

void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t, translation_callback);
void qemu_plugin_register_vcpu_syscall_cb(qemu_plugin_id_t, syscall_callback);
std::size_t qemu_plugin_tb_n_insns(const qemu_plugin_tb*);
qemu_plugin_insn* qemu_plugin_tb_get_insn(const qemu_plugin_tb*, std::size_t);
std::uint64_t qemu_plugin_insn_vaddr(const qemu_plugin_insn*);
const void* qemu_plugin_insn_data(const qemu_plugin_insn*);
void qemu_plugin_register_vcpu_insn_exec_inline(qemu_plugin_insn*, int operation, void* target, std::uint64_t operand);

__attribute__((visibility("default"))) int qemu_plugin_version = 1;
__attribute__((visibility("default"))) int qemu_plugin_install(qemu_plugin_id_t, const void* info, int argc,
                                                               char** argv);
}

namespace {

using namespace morvane::bench;

constexpr int add_to_64_bits = 0;

struct instruction {
  std::uint64_t count = 0;
  std::uint32_t opcode = 0;
};

// By address. The emulator adds to the counts in place, and a map never moves what it holds.
std::map<std::uint64_t, instruction> instructions;
std::FILE* out = nullptr;

void on_translation(qemu_plugin_id_t, qemu_plugin_tb* block) {
  for (std::size_t i = 0; i < qemu_plugin_tb_n_insns(block); ++i) {
    qemu_plugin_insn* translated = qemu_plugin_tb_get_insn(block, i);
    instruction& known = instructions[qemu_plugin_insn_vaddr(translated)];
    std::memcpy(&known.opcode, qemu_plugin_insn_data(translated), sizeof known.opcode);
    qemu_plugin_register_vcpu_insn_exec_inline(translated, add_to_64_bits, &known.count, 1);
  }
}

void on_system_call(qemu_plugin_id_t, unsigned, std::int64_t number, std::uint64_t option, std::uint64_t what,
                    std::uint64_t job, std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t) {
  if (number != mark_system_call || option != mark_option) return;
  if (what == mark_end) {
    std::fprintf(out, "job %" PRIu64 "\n", job);
    for (const auto& [address, i] : instructions)
      if (i.count > 0) std::fprintf(out, "%" PRIx64 " %" PRIu64 " %" PRIx32 "\n", address, i.count, i.opcode);
    std::fflush(out);
  }
  for (auto& [address, i] : instructions) i.count = 0;
}

}  // namespace

int qemu_plugin_install(qemu_plugin_id_t id, const void*, int argc, char** argv) {
  for (int i = 0; i < argc; ++i)
    if (std::strncmp(argv[i], "out=", 4) == 0) out = std::fopen(argv[i] + 4, "w");
  if (out == nullptr) {
    std::fputs("count_instructions: cannot write the file of out=FILE\n", stderr);
    return 1;
  }
  qemu_plugin_register_vcpu_tb_trans_cb(id, on_translation);
  qemu_plugin_register_vcpu_syscall_cb(id, on_system_call);
  return 0;
}
