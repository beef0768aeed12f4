// What each subcommand is told, and what it does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "frames.h"

namespace morvane::tool {

struct listing_options {
  std::string name;  // of the formats to list; all of them where it is empty
  bool json = false;
};

struct info_options {
  std::string file;  // may be empty
  std::string format;
  std::string size;
  bool json = false;
};

// Words as they were given; empty where they were not.
struct colour_options {
  std::string matrix;
  std::string range;
  std::string rgb_range;
  std::string background;
  bool nearest = false;
  std::optional<bool> center;
};

// Frames that are written.
struct output_options {
  file_list output;
  stride_list destination_strides;
  std::optional<std::int64_t> frames;
  int threads = 1;
  bool y4m = false;
  bool keep = false;
};

struct convert_options : colour_options, output_options {
  file_list input;
  std::string from;
  std::string to;
  std::string size;
  std::string crop;
  std::string to_matrix;
  std::string to_range;
  std::string via;
  bool allow_irregular = false;
  bool rescale = false;
  std::string stores;
  stride_list source_strides;
  std::int64_t skip = 0;
  bool verbose = false;
  bool time = false;
};

struct pattern_options : colour_options, output_options {
  std::string name;
  std::string format;
  std::string size;
};

struct show_options {
  file_list input;
  std::string output;
  std::string format;
  std::string size;
  std::string plane;
  stride_list strides;
  std::string matrix;
  std::string range;
  std::int64_t frame = 0;
};

struct compare_options {
  file_list first;
  file_list second;
  std::string format;
  std::string size;
  // One for both files, or one for each. A PNG has its own, unless there are two of them.
  std::vector<stride_list> strides;
  std::vector<std::int64_t> skips;
  std::optional<std::int64_t> frames;
  bool json = false;
};

void list_formats(const listing_options& options);
void list_conversions(const listing_options& options);
void info(const info_options& options);
void convert(const convert_options& options);
void pattern(const pattern_options& options);
void show(const show_options& options);
bool compare(const compare_options& options);  // true when identical

}  // namespace morvane::tool
