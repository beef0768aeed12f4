// An output that appears whole or not at all: written beside its place and moved there at the end. Where nothing can be
// written beside it, because the directory takes no new files, it is written in place.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace morvane::tool {

class output_file {
 public:
  // "-" is standard output. Pipes and devices are written in place too.
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
  // Cuts it off behind so many bytes and puts it in its place.
  void keep(std::int64_t bytes);

  // Whether what was handed on stays where it is.
  bool is_in_place() const { return temporary_.empty(); }

 private:
  void open_in_place(const std::string& path);
  // False where the directory takes no new files.
  bool open_beside();
  void put_in_place();

  std::string name_;
  std::string place_;            // where the file will stand, links followed
  std::string temporary_;        // empty when written in place
  std::FILE* stream_ = nullptr;  // null when finished
};

// Fails when what was printed did not reach standard output.
void flush_standard_output();

}  // namespace morvane::tool
