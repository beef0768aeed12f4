#include "report/table.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <string_view>

#include "report/text.h"

namespace morvane::bench {

namespace {

constexpr std::string_view titles[] = {"conversion", "size", "shape"};
constexpr std::string_view figures[] = {"GB/s", "of memcpy", "ns/pixel"};
constexpr int figure_width = 11;

// One line of the table: the words to the left, then the figures of each backend.
class line_writer {
 public:
  line_writer(std::ostream& out, const results& r) : out_(out) {
    for (const row& which : r.rows()) widths_[0] = std::max(widths_[0], which.name.size());
  }

  void words(std::string_view name, std::string_view size, std::string_view shape) {
    const std::string_view texts[] = {name, size, shape};
    for (std::size_t i = 0; i < std::size(texts); ++i)
      out_ << std::left << std::setw(static_cast<int>(widths_[i])) << texts[i] << (i < 2 ? "  " : "");
  }
  void figure(std::string_view text) { out_ << std::right << std::setw(figure_width) << text; }
  void heading(std::string_view text) {
    out_ << std::right << std::setw(figure_width * static_cast<int>(std::size(figures))) << text;
  }
  void end() { out_ << '\n'; }

 private:
  std::ostream& out_;
  std::size_t widths_[3] = {titles[0].size(), 9, 9};
};

// Those that the filters left.
std::vector<std::string> measured_backends(const results& r) {
  std::vector<std::string> result = r.backends();
  std::erase_if(result, [&r](const std::string& backend) {
    return std::none_of(r.all().begin(), r.all().end(), [&](const measurement& m) { return m.runner == backend; });
  });
  return result;
}

void write_head(line_writer& line, const std::vector<std::string>& backends) {
  line.words("", "", "");
  for (const std::string& backend : backends) line.heading(backend);
  line.end();
  line.words(titles[0], titles[1], titles[2]);
  for (std::size_t i = 0; i < backends.size(); ++i)
    for (const std::string_view title : figures) line.figure(title);
  line.end();
}

void write_figures(line_writer& line, const measurement* m) {
  line.figure(m ? fixed(m->gigabytes_per_second()) : "-");
  line.figure(m ? fixed(m->share_of_memcpy()) : "-");
  line.figure(m ? fixed(m->nanoseconds_per_pixel()) : "-");
}

}  // namespace

void write_table(std::ostream& out, const results& r) {
  const std::vector<std::string> backends = measured_backends(r);
  line_writer line(out, r);
  write_head(line, backends);
  for (const row& which : r.rows())
    for (const place& where : all_places()) {
      const auto missing = [&](const std::string& backend) { return r.find(which, where, backend) == nullptr; };
      if (std::all_of(backends.begin(), backends.end(), missing)) continue;
      line.words(which.name, name_of(where.nominal), name_of(where.memory));
      for (const std::string& backend : backends) write_figures(line, r.find(which, where, backend));
      line.end();
    }
}

void write_json(std::ostream& out, const results& r) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const measurement& m : r.all())
    list.push_back({{"conversion", m.row},
                    {"size", name_of(m.where.nominal)},
                    {"shape", name_of(m.where.memory)},
                    {"backend", m.runner},
                    {"bytes", m.bytes},
                    {"nanoseconds", m.nanoseconds},
                    {"gigabytes_per_second", m.gigabytes_per_second()},
                    {"share_of_memcpy", m.share_of_memcpy()},
                    {"nanoseconds_per_pixel", m.nanoseconds_per_pixel()}});
  out << list.dump(2) << '\n';
}

void write_table(std::ostream& out, const measured_pairs& all) {
  constexpr std::string_view titles_of_pairs[] = {"us",      "GB/s",     "of memcpy", "in cache",
                                                  "nearest", "bilinear", "tiny",      "2 threads"};
  std::size_t width = 0;
  for (const pair_measurement& m : all) width = std::max(width, m.name().size());
  const auto word = [&](std::string_view text) { out << std::left << std::setw(static_cast<int>(width)) << text; };
  const auto figure = [&](std::string_view text) { out << std::right << std::setw(figure_width) << text; };
  const auto number = [&](std::optional<double> value) { figure(value ? fixed(*value) : "-"); };
  word("pair");
  for (const std::string_view title : titles_of_pairs) figure(title);
  out << '\n';
  for (const pair_measurement& m : all) {
    word(m.name());
    figure(fixed(m.nanoseconds / 1000, 1));
    number(m.gigabytes_per_second());
    number(m.share_of_memcpy());
    number(m.share_in_cache());
    number(m.times_nearest());
    number(m.times_bilinear());
    figure(m.times_tiny() ? fixed(100 / *m.times_tiny(), 3) + " %" : "-");
    number(m.gain_of_two_threads);
    out << '\n';
  }
}

void write_json(std::ostream& out, const measured_pairs& all) {
  const auto or_null = [](std::optional<double> value) { return value ? nlohmann::ordered_json(*value) : nullptr; };
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const pair_measurement& m : all)
    list.push_back({{"source", m.source},
                    {"destination", m.destination},
                    {"steps", m.steps},
                    {"bytes", m.bytes},
                    {"nanoseconds", m.nanoseconds},
                    {"nearest_nanoseconds", m.nearest_nanoseconds},
                    {"gigabytes_per_second", m.gigabytes_per_second()},
                    {"share_of_memcpy", m.share_of_memcpy()},
                    {"share_in_cache", m.share_in_cache()},
                    {"tiny_nanoseconds", or_null(m.tiny_nanoseconds)},
                    {"times_swscale_nearest", or_null(m.times_nearest())},
                    {"times_swscale_bilinear", or_null(m.times_bilinear())},
                    {"gain_of_two_threads", or_null(m.gain_of_two_threads)}});
  out << list.dump(2) << '\n';
}

void write_table(std::ostream& out, const std::vector<store_measurement>& all) {
  std::size_t width = std::string_view("pair").size();
  for (const store_measurement& m : all) width = std::max(width, m.name().size());
  const auto line = [&](std::string_view name, const std::array<std::string, 5>& figures_of_line) {
    out << std::left << std::setw(static_cast<int>(width)) << name << ' ';
    for (const std::string& figure : figures_of_line) out << std::right << std::setw(figure_width) << figure;
    out << '\n';
  };
  line("pair", {"MB written", "cached", "streaming", "gain", "gain, read"});
  for (const store_measurement& m : all)
    line(m.name(), {fixed(static_cast<double>(m.bytes_written) * 1e-6, 1), fixed(m.cached_share_of_memcpy()),
                    fixed(m.streaming_share_of_memcpy()), fixed(m.gain()), fixed(m.gain_before_a_reader())});
}

void write_json(std::ostream& out, const std::vector<store_measurement>& all) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const store_measurement& m : all)
    list.push_back({{"source", m.source},
                    {"destination", m.destination},
                    {"bytes_written", m.bytes_written},
                    {"cached_nanoseconds", m.cached_nanoseconds},
                    {"streaming_nanoseconds", m.streaming_nanoseconds},
                    {"cached_and_read_nanoseconds", m.cached_and_read_nanoseconds},
                    {"streaming_and_read_nanoseconds", m.streaming_and_read_nanoseconds},
                    {"cached_share_of_memcpy", m.cached_share_of_memcpy()},
                    {"streaming_share_of_memcpy", m.streaming_share_of_memcpy()},
                    {"gain", m.gain()},
                    {"gain_before_a_reader", m.gain_before_a_reader()}});
  out << list.dump(2) << '\n';
}

}  // namespace morvane::bench
