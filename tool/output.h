// An output that appears whole or not at all: written beside its place and moved there at the end.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <string>

namespace morvane::tool {

// What messages call it.
std::string output_name(const std::string& path);

class output_file {
 public:
  // "-" is standard output. Pipes and devices are written in place. Where a file may be written but nothing may be put
  // beside it, it is written elsewhere and copied at the end.
  explicit output_file(const std::string& path);
  ~output_file();
  output_file(const output_file&) = delete;
  output_file& operator=(const output_file&) = delete;

  std::FILE* stream() const { return stream_; }
  const std::string& name() const { return name_; }

  void write(const void* bytes, std::size_t count);

  // Hands on what was written.
  void flush() const;

  // Everything was written: sees that it has arrived.
  void finish();
  // Finishes and puts the file in its place. Of several files, finish all before the first of them is put there.
  void commit();
  // Commits its first bytes and drops the rest, which may not have arrived.
  void keep(std::int64_t bytes);

  // Whether what was handed on stays where it is.
  bool is_in_place() const { return temporary_.empty() && !copies_; }

 private:
  output_file() = default;

  void open_in_place(const std::string& path);
  void open_beside(mode_t mode);
  void open_elsewhere();
  void copy();
  [[noreturn]] void fail() const;

  std::string name_;
  std::string place_;            // where the file will stand, links followed
  std::string temporary_;        // empty when written in place
  std::FILE* stream_ = nullptr;  // null when finished
  bool copies_ = false;          // from elsewhere to its place
};

// Fails when what was printed did not reach standard output.
void flush_standard_output();

}  // namespace morvane::tool
