// What the rows must reach, and why some cannot, as bench/targets.json says it.
#pragma once

#include <array>
#include <filesystem>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "measure/pairs.h"
#include "measure/workload.h"

namespace morvane::bench {

enum class traffic {
  writes_only,
  writes_most,  // at least three bytes for two that it reads
};

// The rows that a target or a reason is for: those with everything that it names. `{}` is for all of them.
struct selector {
  std::vector<std::string> rows{};         // "rows": names, one of which is the row's
  std::optional<kind> what{};              // "kind"
  std::vector<std::string> source{};       // "source": formats
  std::vector<std::string> destination{};  // "destination": formats
  std::optional<traffic> moved{};          // "traffic": "writes_only" or "writes_most"

  bool selects(const row& r) const;
};

// An entry of "kinds", of which there is one for each kind: its name in tables, and the shares of memcpy that its tight
// planes must reach, in the order of `sizes`.
struct kind_target {
  kind what{};
  std::string title{};
  std::array<double, sizes.size()> share_of_memcpy{};
};

// An entry of "libraries": how many times as fast as another library some rows must be at one size.
struct library_target {
  selector about{};
  std::string title{};
  std::string library{};
  size nominal{};
  double least = 0;
};

// An entry of "reasons": a sentence that says what bounds some rows.
struct reason {
  selector about{};
  std::string because{};
};

// "used": the pairs that people use most, and what each of them must reach.
struct used_targets {
  std::array<double, sizes.size()> share_of_memcpy{};  // in the order of `sizes`; 0: nothing
  std::vector<format_pair> pairs{};                    // every source of a list to every other destination of it
};

// What pairs of formats must reach through the checked interface, at full_hd.
struct pair_targets {
  double share_of_memcpy = 0;         // each pair that goes by lines
  double median_share_of_memcpy = 0;  // all of these together
  double median_of_swscale = 0;       // times as fast, beside the setting that is faster; each pair: never slower
  double times_tiny_picture = 0;      // how many times as long as a picture with next to no rows
  double two_threads = 0;             // times as fast as one, at in_cache
  std::vector<format_pair> on_threads{};
  used_targets used{};
  std::vector<reason> reasons{};  // which name sources and destinations alone

  std::string_view why(std::string_view source, std::string_view destination) const;
};

// Where several entries are for one row, the first counts.
struct targets {
  double library_megabytes = 0;   // the shared library without symbols
  double noise = 0;               // what the machine itself makes of two runs of the same code
  double least_of_tight = 0;      // padded, odd and unaligned planes against tight ones, at full_hd
  double least_of_long_rows = 0;  // short_rows against those of in_cache, both padded
  std::vector<kind_target> kinds{};
  std::vector<library_target> libraries{};
  std::vector<std::string> touch_next_to_nothing{};  // rows whose speed says nothing, so they have no target
  std::string within_noise{};                        // the reason of a target that is missed by no more than noise
  std::vector<reason> speed{};
  std::vector<reason> short_rows{};
  std::vector<std::string> examples{};  // the rows of docs/performance.md
  pair_targets pairs{};

  // Null for a row that has no target.
  const kind_target* of(const row& r) const;
  // Beside another library or a narrower backend.
  double never_slower() const { return 1 - noise; }
  double least_beside(const row& r, std::string_view library, const size& nominal) const;
  // Empty where nothing is known.
  std::string_view why(const row& r) const;
  std::string_view why_in_short_rows(const row& r) const;
};

// Throws one line that names the place where the text is not as described above, or a name that does not exist.
targets read_targets(std::istream& in, const std::string& name_of_file);
targets read_targets(const std::filesystem::path& file);

}  // namespace morvane::bench
