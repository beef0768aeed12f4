// A file or pipe that is read from where it stands to its end. "-" is standard input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::tool {

class input_file {
 public:
  explicit input_file(const std::string& path);
  input_file(input_file&& other) noexcept;
  input_file& operator=(input_file&&) = delete;
  ~input_file();

  const std::string& name() const { return name_; }
  // How many bytes follow, where that is known: in files, not in pipes and devices.
  std::optional<std::int64_t> size() const { return size_; }

  bool at_end();
  // Whether these bytes come next; they are still to be read then.
  bool begins_with(std::string_view bytes);
  // The next byte; -1 at the end.
  int get();
  // As many bytes as there are, up to these; fewer at the end alone.
  std::int64_t read(std::uint8_t* into, std::int64_t bytes);
  // Passes over bytes of a file of known size.
  void pass(std::int64_t bytes);

 private:
  std::size_t read_some(std::uint8_t* into, std::size_t bytes);
  bool fill_buffer_behind(std::size_t kept);

  std::string name_;
  int descriptor_;
  std::optional<std::int64_t> size_;
  std::vector<std::uint8_t> buffer_;
  std::size_t buffer_start_ = 0;
};

}  // namespace morvane::tool
