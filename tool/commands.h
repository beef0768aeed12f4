// What each subcommand is told, and what it does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace morvane::tool {

struct listing_options {
  bool json = false;
};

struct info_options {
  std::string format;
  std::string size;
  bool json = false;
};

struct convert_options {
  std::string input;
  std::string output;
  std::string from;
  std::string to;
  std::string size;
  std::string crop;
  std::optional<int> matrix;
  std::string via;
  bool allow_irregular = false;
  std::optional<std::int64_t> source_stride;
  std::optional<std::int64_t> destination_stride;
  std::int64_t skip = 0;
  std::optional<std::int64_t> frames;
  int threads = 1;
  bool pad = false;
  bool verbose = false;
  bool time = false;
};

struct show_options {
  std::string input;
  std::string output;
  std::string format;
  std::string size;
  std::string plane;
  std::optional<std::int64_t> stride;
  int matrix = 709;
  std::int64_t frame = 0;
};

struct compare_options {
  std::string first;
  std::string second;
  std::string format;
  std::string size;
  bool json = false;
};

void list_formats(const listing_options& options);
void list_conversions(const listing_options& options);
void info(const info_options& options);
void convert(const convert_options& options);
void show(const show_options& options);
bool compare(const compare_options& options);  // true when identical

}  // namespace morvane::tool
