// Search of the conversions' graph: formats are its nodes, catalogue rows its edges.
#include "route.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

#include "errors.h"
#include "names.h"
#include "picture.h"

namespace morvane::tool {

namespace {

using catalogue::conversion;
using catalogue::format;
using steps = std::vector<const conversion*>;

constexpr std::array matrices = {709, 601, 2020};

struct rules {
  int matrix;
  bool irregular;
};

bool has_matrix(const conversion& c, int matrix) {
  return c.colors == catalogue::matrix::none ||
         std::any_of(std::begin(catalogue::matrices), std::end(catalogue::matrices),
                     [&](catalogue::matrix m) { return catalogue::number_of(m) == matrix && offers(c, m); });
}

bool usable(const conversion& c, rules r) {
  return has_matrix(c, r.matrix) && (r.irregular || c.irregular.empty());
}

const format& in_catalogue(const format_info& f) {
  return *catalogue::find_format(f.name);
}

bool has_color(const format& f) {
  return f.model == catalogue::color_model::ycbcr || f.model == catalogue::color_model::rgb;
}

bool loses(const conversion& c) {
  const format& from = *catalogue::find_format(c.source);
  const format& to = *catalogue::find_format(c.destination);
  return (from.alpha && !to.alpha) || (has_color(from) && !has_color(to));
}

// One loss weighs more than any chain of steps, and one irregular step more than any chain of losses.
int weight(const conversion& c) {
  constexpr int loss = 100;
  constexpr int irregular = 100 * loss;
  return 1 + (loses(c) ? loss : 0) + (c.irregular.empty() ? 0 : irregular);
}

int weight(const steps& way) {
  int sum = 0;
  for (const conversion* c : way) sum += weight(*c);
  return sum;
}

std::size_t index_of(const format& f) {
  return static_cast<std::size_t>(&f - catalogue::formats.data());
}

constexpr int unreached = std::numeric_limits<int>::max();

using distances = std::array<int, catalogue::formats.size()>;

int& at(distances& d, std::string_view format_name) {
  return d[index_of(*catalogue::find_format(format_name))];
}

// Luma or alpha made into a picture, which is not the one that the source had.
bool regains_color(const format& source, const conversion& c) {
  return has_color(source) && !has_color(*catalogue::find_format(c.source)) &&
         has_color(*catalogue::find_format(c.destination));
}

bool is_step(const format& source, const conversion& c, rules r) {
  return !c.source.empty() && c.source != c.destination && usable(c, r) && !regains_color(source, c);
}

// Distances from the source to every format. Rounds over the whole catalogue, which is short, until nothing gets
// nearer.
distances explore(const format& source, rules r) {
  distances reached;
  reached.fill(unreached);
  at(reached, source.name) = 0;
  for (bool improved = true; improved;) {
    improved = false;
    for (const conversion& c : catalogue::conversions) {
      if (!is_step(source, c, r)) continue;
      const int from = at(reached, c.source);
      int& to = at(reached, c.destination);
      if (from == unreached || from + weight(c) >= to) continue;
      to = from + weight(c);
      improved = true;
    }
  }
  return reached;
}

// The earliest row of the catalogue that ends a shortest way to the format.
const conversion& last_step(const format& source, distances& reached, std::string_view format_name, rules r) {
  for (const conversion& c : catalogue::conversions)
    if (c.destination == format_name && is_step(source, c, r) && at(reached, c.source) != unreached &&
        at(reached, c.source) + weight(c) == at(reached, format_name))
      return c;
  throw std::logic_error("a format was reached by no conversion");
}

std::optional<steps> shortest(const format& source, const format& destination, rules r) {
  distances reached = explore(source, r);
  if (at(reached, destination.name) == unreached) return std::nullopt;
  steps way;
  for (std::string_view name = destination.name; name != source.name; name = way.front()->source)
    way.insert(way.begin(), &last_step(source, reached, name, r));
  return way;
}

std::optional<steps> shortest_through(const conversion& via, const format& source, const format& destination, rules r) {
  std::optional<steps> before = shortest(source, *catalogue::find_format(via.source), r);
  const std::optional<steps> after = shortest(*catalogue::find_format(via.destination), destination, r);
  if (!before || !after) return std::nullopt;
  before->push_back(&via);
  before->insert(before->end(), after->begin(), after->end());
  return before;
}

int matrix_of(const conversion& via, std::optional<int> asked) {
  if (asked && !has_matrix(via, *asked)) wrong_arguments(via.name, " does not use the BT.", *asked, " matrix");
  if (asked) return *asked;
  for (const int matrix : matrices)
    if (has_matrix(via, matrix)) return matrix;
  return matrices.front();
}

route route_via(const format& source, const format& destination, const route_wish& wish) {
  std::optional<route> best;
  for (const conversion* via : conversions_named(wish.via)) {
    if (via->source.empty()) wrong_arguments(via->name, " fills a picture and converts none");
    const int matrix = matrix_of(*via, wish.matrix);
    std::optional<steps> way = shortest_through(*via, source, destination, {matrix, wish.allow_irregular});
    if (way && (!best || weight(*way) < weight(best->steps))) best = route{&source, *std::move(way), matrix};
  }
  if (!best) wrong_arguments(wish.via, " is on no route from ", source.name, " to ", destination.name);
  return *best;
}

route copy_of(const format& f, int matrix) {
  route result{&f, {}, matrix};
  for (const conversion& c : catalogue::conversions)
    if (c.source == f.name && c.destination == f.name && c.irregular.empty() && result.steps.empty())
      result.steps.push_back(&c);
  return result;
}

// Says why there is no route, and what would open one.
[[noreturn]] void no_route(const format& source, const format& destination, rules r) {
  const std::string ends = text("from ", source.name, " to ", destination.name);
  if (!r.irregular)
    if (const std::optional<steps> way = shortest(source, destination, {r.matrix, true}))
      for (const conversion* c : *way)
        if (!c->irregular.empty())
          wrong_arguments("only an irregular conversion leads ", ends, ": ", c->name, " ", c->irregular,
                          "; --allow-irregular uses it");
  for (const int other : matrices)
    if (other != r.matrix && shortest(source, destination, {other, r.irregular}))
      wrong_arguments("no conversion leads ", ends, " with the BT.", r.matrix, " matrix; --matrix ", other, " has one");
  wrong_arguments("no conversion leads ", ends);
}

bool rescales(const conversion* c) {
  return c->extra == catalogue::argument::rescale;
}

route route_of(const format& source, const format& destination, const route_wish& wish) {
  if (!wish.via.empty()) return route_via(source, destination, wish);
  const rules r{wish.matrix.value_or(709), wish.allow_irregular};
  if (&source == &destination) return copy_of(source, r.matrix);
  std::optional<steps> way = shortest(source, destination, r);
  if (!way) no_route(source, destination, r);
  return {&source, *std::move(way), r.matrix};
}

}  // namespace

std::vector<const format*> route::formats() const {
  std::vector<const format*> result = {first};
  for (const conversion* c : steps) result.push_back(catalogue::find_format(c->destination));
  return result;
}

const format_info& route::source() const {
  return info_of(first->id);
}

const format_info& route::destination() const {
  return info_of(formats().back()->id);
}

route find_route(const format_info& source, const format_info& destination, const route_wish& wish) {
  route result = route_of(in_catalogue(source), in_catalogue(destination), wish);
  const bool can_rescale = std::any_of(result.steps.begin(), result.steps.end(), rescales);
  if (wish.rescale && !can_rescale)
    wrong_arguments("no conversion from ", source.name, " to ", destination.name,
                    " rescales luma: ", described(result));
  result.rescale = wish.rescale;
  return result;
}

std::optional<route> find_route_to_rgb(const format_info& from, int matrix) {
  const format& source = in_catalogue(from);
  std::optional<route> best;
  for (const bool alpha : {source.alpha, !source.alpha})
    for (const format& f : catalogue::formats) {
      if (!fits_png(info_of(f.id)) || f.alpha != alpha) continue;
      std::optional<steps> way = shortest(source, f, {matrix, false});
      if (way && (!best || weight(*way) < weight(best->steps))) best = route{&source, *std::move(way), matrix};
    }
  return best;
}

extent padded_size(extent size, const route& way) {
  const auto rounded_up = [](int length, int multiple) { return (length + multiple - 1) / multiple * multiple; };
  extent multiple{1, 1};
  for (const format* f : way.formats())
    multiple = {std::lcm(multiple.width, f->width_multiple), std::lcm(multiple.height, f->height_multiple)};
  return {rounded_up(size.width, multiple.width), rounded_up(size.height, multiple.height)};
}

std::string described(const route& way) {
  if (way.steps.empty()) return text(way.first->name, " as it is, without a conversion");
  std::vector<std::string> parts;
  for (const conversion* c : way.steps)
    parts.push_back(text(c->source, " -> ", c->destination, " by ", c->name,
                         c->colors == catalogue::matrix::none ? "" : text(" with BT.", way.matrix),
                         way.rescale && rescales(c) ? " with rescaled luma" : ""));
  return joined(parts);
}

}  // namespace morvane::tool
