#include "report/pairs.h"

#include <algorithm>
#include <cmath>

#include "report/text.h"

namespace morvane::bench {

namespace {

using figure = std::function<std::optional<double>(const pair_measurement&)>;

class judge {
 public:
  judge(const targets& aims, std::vector<miss>& found) : aims_(aims), found_(found) {}

  void each(const pair_measurement& m) {
    if (m.goes_by_lines()) hold(m, "of memcpy", m.share_of_memcpy(), aims_.pairs.share_of_memcpy);
    hold(m, "of swscale, nearest", m.times_nearest(), aims_.never_slower());
    hold(m, "of swscale, bilinear", m.times_bilinear(), aims_.never_slower());
    hold(m, "times a tiny picture", m.times_tiny(), aims_.pairs.times_tiny_picture);
    hold(m, "on two threads", m.gain_of_two_threads, aims_.pairs.two_threads, in_cache);
  }

  void median(const std::optional<spread>& of, const std::string& target, double wanted) {
    if (of && of->median() < wanted)
      found_.push_back(made("median of pairs", full_hd, target, of->median(), wanted, ""));
  }

 private:
  const targets& aims_;
  std::vector<miss>& found_;

  void hold(const pair_measurement& m, const std::string& target, std::optional<double> reached, double wanted,
            const size& nominal = full_hd) {
    if (!reached || *reached >= wanted) return;
    const bool is_noise = *reached >= wanted - aims_.noise;
    found_.push_back(made(m.name(), nominal, target, *reached, wanted,
                          is_noise ? aims_.within_noise : aims_.pairs.why(m.source, m.destination)));
  }

  static miss made(const std::string& name, const size& nominal, const std::string& target, double reached,
                   double wanted, std::string_view why) {
    return {.row = name,
            .where = {nominal},
            .target = target,
            .reached = reached,
            .wanted = wanted,
            .why = std::string(why)};
  }
};

// Of the deepest samples that are no floats.
constexpr int most_bits = 16;

// Floats come after them.
int depth_of(const catalogue::format& f) {
  return catalogue::is_float(f.planes[0].sample) ? most_bits + 1 : f.planes[0].depth();
}

std::string_view name_of(catalogue::color_model model) {
  switch (model) {
    case catalogue::color_model::ycbcr:
      return "YCbCr";
    case catalogue::color_model::rgb:
      return "RGB";
    case catalogue::color_model::luma:
      return "luma";
    case catalogue::color_model::chroma:
      return "chroma";
    case catalogue::color_model::alpha:
      return "alpha";
  }
  return {};
}

std::string group_of(const catalogue::format& f) {
  const int depth = depth_of(f);
  return std::string(name_of(f.model)) + (depth > most_bits ? ", floats" : ", " + std::to_string(depth) + " bits");
}

// Formats of one colour model stand together, and shallow ones before deep ones.
std::vector<const catalogue::format*> in_order(const measured_pairs& all) {
  std::vector<const catalogue::format*> result;
  for (const catalogue::format& f : catalogue::formats)
    if (std::any_of(all.begin(), all.end(),
                    [&f](const pair_measurement& m) { return m.source == f.name || m.destination == f.name; }))
      result.push_back(&f);
  constexpr catalogue::color_model models[] = {catalogue::color_model::ycbcr, catalogue::color_model::luma,
                                               catalogue::color_model::rgb, catalogue::color_model::chroma,
                                               catalogue::color_model::alpha};
  const auto place = [&models](const catalogue::format* f) {
    return std::pair(std::find(std::begin(models), std::end(models), f->model), depth_of(*f));
  };
  std::stable_sort(result.begin(), result.end(),
                   [&place](const auto* a, const auto* b) { return place(a) < place(b); });
  return result;
}

std::string times_text(const std::optional<double>& times) {
  return times ? fixed(*times, 1) + " times as fast" : "none";
}

std::string tip_of(const pair_measurement& m) {
  std::string result = m.source + " to " + m.destination + "\n" + fixed(m.share_of_memcpy()) + " of memcpy, " +
                       fixed(m.gigabytes_per_second(), 1) + " GB/s\nin cache: " + fixed(m.share_in_cache()) +
                       " of memcpy";
  if (m.times_swscale())
    result += "\nbeside swscale, nearest chroma: " + times_text(m.times_nearest()) +
              "\nbeside swscale, linear chroma: " + times_text(m.times_bilinear());
  return result;
}

// The formats on both axes, and a cell for each pair.
matrix matrix_of(const measured_pairs& all, const figure& value) {
  matrix result{.rows_are = "from", .columns_are = "to"};
  const std::vector<const catalogue::format*> formats = in_order(all);
  for (const catalogue::format* f : formats) result.rows.push_back({std::string(f->name), group_of(*f)});
  result.columns = result.rows;
  const auto index = [&formats](const std::string& name) {
    return static_cast<std::size_t>(
        std::find_if(formats.begin(), formats.end(), [&name](const auto* f) { return f->name == name; }) -
        formats.begin());
  };
  for (const pair_measurement& m : all)
    result.cells.push_back({index(m.source), index(m.destination), value(m), tip_of(m)});
  std::sort(result.cells.begin(), result.cells.end(), [](const matrix::cell& a, const matrix::cell& b) {
    return std::pair(a.row, a.column) < std::pair(b.row, b.column);
  });
  return result;
}

// Colours for values that must reach `aim`: two below it, and four from there on.
std::vector<matrix::step> steps_around(double aim, double lower, const std::vector<double>& higher, int digits) {
  const auto from_to = [digits](double a, double b) { return fixed(a, digits) + " to " + fixed(b, digits); };
  std::vector<matrix::step> result = {{0, "below2", "less than " + fixed(lower, digits)},
                                      {lower, "below1", from_to(lower, aim)}};
  double from = aim;
  for (std::size_t i = 0; i < higher.size(); from = higher[i], ++i)
    result.push_back({from, "above" + std::to_string(i + 1), from_to(from, higher[i])});
  result.push_back({from, "above" + std::to_string(higher.size() + 1), fixed(from, digits) + " and more"});
  return result;
}

}  // namespace

spread::spread(std::vector<value> values) : ascending_(std::move(values)) {
  std::stable_sort(ascending_.begin(), ascending_.end(),
                   [](const value& a, const value& b) { return a.figure < b.figure; });
}

double spread::median() const {
  std::vector<double> figures;
  for (const value& v : ascending_) figures.push_back(v.figure);
  return bench::median(std::move(figures));
}

std::size_t spread::below(double figure) const {
  return static_cast<std::size_t>(std::partition_point(ascending_.begin(), ascending_.end(),
                                                       [figure](const value& v) { return v.figure < figure; }) -
                                  ascending_.begin());
}

std::optional<spread> spread_of(const measured_pairs& all, const figure& of) {
  std::vector<spread::value> values;
  for (const pair_measurement& m : all)
    if (const std::optional<double> value = of(m)) values.push_back({*value, m.name()});
  return values.empty() ? std::nullopt : std::optional(spread(std::move(values)));
}

std::optional<spread> shares_of_memcpy(const measured_pairs& all) {
  return spread_of(all, [](const pair_measurement& m) {
    return m.goes_by_lines() ? std::optional(m.share_of_memcpy()) : std::nullopt;
  });
}

std::optional<spread> times_swscale(const measured_pairs& all) {
  return spread_of(all, &pair_measurement::times_swscale);
}

std::vector<miss> misses(const measured_pairs& all, const targets& aims) {
  std::vector<miss> result;
  judge j(aims, result);
  j.median(shares_of_memcpy(all), "of memcpy", aims.pairs.median_share_of_memcpy);
  j.median(times_swscale(all), "of swscale", aims.pairs.median_of_swscale);
  for (const pair_measurement& m : all) j.each(m);
  return result;
}

std::string picture_of_shares(const measured_pairs& all, const targets& aims, matrix::tips told) {
  if (all.empty()) return {};
  matrix m = matrix_of(all, [](const pair_measurement& p) { return p.share_of_memcpy(); });
  m.title = "Any picture to any other, " + name_of(full_hd) + ", as a share of memcpy that moves as many bytes";
  m.explanation =
      "1.00 is as fast as a plain copy. Frames come from memory and go there. Blank: formats that have nothing in "
      "common.";
  m.told = told;
  const double aim = m.aim = aims.pairs.share_of_memcpy;
  const double middle = aims.pairs.median_share_of_memcpy;
  m.steps = steps_around(aim, aim / 2, {middle, middle + 0.15, middle + 0.35}, 2);
  return draw(m);
}

std::string picture_beside_swscale(const measured_pairs& all, const targets& aims, matrix::tips told) {
  if (!times_swscale(all)) return {};
  matrix m = matrix_of(all, &pair_measurement::times_swscale);
  m.title = "Any picture to any other, " + name_of(full_hd) + ": how many times as fast as swscale";
  m.explanation =
      "One thread each; swscale with accurate rounding, and with nearest or bilinear chroma, whichever is "
      "faster. Blank: formats that have nothing in common.";
  m.grey_means = "not in swscale";
  const double third = std::cbrt(aims.pairs.median_of_swscale);
  m.told = told;
  m.aim = 1;
  m.steps = steps_around(m.aim, 0.5, {third, third * third, aims.pairs.median_of_swscale}, 1);
  return draw(m);
}

}  // namespace morvane::bench
