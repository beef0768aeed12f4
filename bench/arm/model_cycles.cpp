// morvane_model_cycles JOBS COUNTS DIRECTORY: joins what morvane_run_every_job printed with what the plugin counted,
// has llvm-mca model the hot loops of every job, and writes DIRECTORY/arm.json and DIRECTORY/arm.csv.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "hot_loops.h"

namespace {

namespace fs = std::filesystem;
using namespace morvane::bench;

constexpr std::array<const char*, 2> processors = {"neoverse-n1", "neoverse-v1"};

// Loops that ran fewer of a job's instructions are left out.
constexpr double least_share = 0.01;

struct job {
  std::string conversion{};
  std::string runner{};
  std::string function{};
  std::string agreement{};
  double pixels = 0;
};

std::vector<job> read_jobs(const fs::path& file) {
  std::ifstream in(file);
  std::vector<job> result;
  for (std::string line; std::getline(in, line);) {
    std::istringstream fields(line);
    std::string number, pixels;
    job j;
    for (std::string* field : {&number, &j.conversion, &j.runner, &j.function, &j.agreement, &pixels})
      std::getline(fields, *field, '\t');
    j.pixels = std::stod(pixels);
    result.push_back(j);
  }
  if (result.empty()) throw std::runtime_error("no jobs in " + file.string());
  return result;
}

// By number of the job.
std::map<std::size_t, std::vector<counted_instruction>> read_counts(const fs::path& file) {
  std::ifstream in(file);
  std::map<std::size_t, std::vector<counted_instruction>> result;
  std::vector<counted_instruction>* current = nullptr;
  for (std::string line; std::getline(in, line);) {
    std::istringstream fields(line);
    if (line.starts_with("job ")) {
      current = &result[std::stoul(line.substr(4))];
      continue;
    }
    counted_instruction i;
    fields >> std::hex >> i.address >> std::dec >> i.count >> std::hex >> i.opcode;
    if (current == nullptr || !fields) throw std::runtime_error("cannot read " + file.string());
    current->push_back(i);
  }
  return result;
}

std::string output_of(const std::string& command) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  if (!pipe) throw std::runtime_error("cannot run " + command);
  std::string result;
  std::array<char, 4096> block;
  for (std::size_t n; (n = std::fread(block.data(), 1, block.size(), pipe.get())) > 0;) result.append(block.data(), n);
  return result;
}

// llvm-mca reads assembly, and llvm-mc makes that of opcodes.
class model {
 public:
  explicit model(fs::path directory) : directory_(std::move(directory)) {}

  // Cycles of one iteration, one figure for each of the processors.
  const std::array<double, 2>& cycles_of(const std::vector<std::uint32_t>& body) {
    const auto known = known_.find(body);
    return known != known_.end() ? known->second : known_.emplace(body, run(body)).first->second;
  }

 private:
  fs::path directory_;
  std::map<std::vector<std::uint32_t>, std::array<double, 2>> known_{};

  std::array<double, 2> run(const std::vector<std::uint32_t>& body) const {
    const fs::path opcodes = directory_ / "loop.hex";
    const fs::path assembly = directory_ / "loop.s";
    std::ofstream hex(opcodes);
    hex << std::hex;
    for (const std::uint32_t opcode : body) {
      for (int shift = 0; shift < 32; shift += 8) hex << "0x" << ((opcode >> shift) & 0xff) << ' ';
      hex << '\n';
    }
    hex.close();
    std::ofstream(assembly) << output_of("llvm-mc-19 --disassemble --triple=aarch64 --mattr=+all '" + opcodes.string() +
                                         "'");
    // The difference of two lengths leaves out how the loop begins and ends.
    constexpr int few = 100;
    constexpr int many = 300;
    std::array<double, 2> result{};
    for (std::size_t p = 0; p < processors.size(); ++p)
      result[p] =
          (total_cycles(assembly, processors[p], many) - total_cycles(assembly, processors[p], few)) / (many - few);
    return result;
  }

  static double total_cycles(const fs::path& assembly, const std::string& processor, int iterations) {
    const std::string command = "llvm-mca-19 --mtriple=aarch64 --mcpu=" + processor +
                                " --iterations=" + std::to_string(iterations) + " --json '" + assembly.string() + "'";
    return nlohmann::json::parse(output_of(command)).at("CodeRegions").at(0).at("SummaryView").at("TotalCycles");
  }
};

nlohmann::ordered_json figures_of(const job& j, const std::vector<counted_instruction>& counts, model& m) {
  const auto executed = static_cast<double>(total(counts));
  std::array<double, 2> cycles{};
  double modelled = 0;
  std::size_t longest = 0;
  for (const loop& l : find_hot_loops(counts)) {
    if (static_cast<double>(l.executed) < least_share * executed) break;
    if (modelled == 0) longest = l.body.size();
    const std::array<double, 2>& of_iteration = m.cycles_of(l.body);
    for (std::size_t p = 0; p < processors.size(); ++p)
      cycles[p] += of_iteration[p] * static_cast<double>(l.iterations);
    modelled += static_cast<double>(l.executed);
  }
  return {{"conversion", j.conversion},
          {"runner", j.runner},
          {"function", j.function},
          {"agreement", j.agreement},
          {"instructions_per_pixel", executed / j.pixels},
          {"neoverse_n1_cycles_per_pixel", cycles[0] / j.pixels},
          {"neoverse_v1_cycles_per_pixel", cycles[1] / j.pixels},
          {"modelled_share", modelled / executed},
          {"hottest_loop_instructions", longest}};
}

void write_csv(std::ostream& out, const nlohmann::ordered_json& list) {
  const char* separator = "";
  for (const auto& [name, value] : list.front().items()) {
    out << separator << name;
    separator = ",";
  }
  for (const nlohmann::ordered_json& entry : list) {
    separator = "\n";
    for (const auto& [name, value] : entry.items()) {
      out << separator << value.dump();
      separator = ",";
    }
  }
  out << '\n';
}

void run(const std::vector<std::string>& arguments) {
  if (arguments.size() != 3) throw std::runtime_error("usage: morvane_model_cycles JOBS COUNTS DIRECTORY");
  const fs::path directory = arguments[2];
  const std::vector<job> jobs = read_jobs(arguments[0]);
  const auto counts = read_counts(arguments[1]);
  model m(directory);
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const auto& [number, instructions] : counts) list.push_back(figures_of(jobs.at(number), instructions, m));
  std::ofstream(directory / "arm.json") << list.dump(2) << '\n';
  std::ofstream csv(directory / "arm.csv");
  write_csv(csv, list);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    run({argv + 1, argv + argc});
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    std::cerr << "bench: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
