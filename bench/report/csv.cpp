#include "report/csv.h"

#include "report/steps.h"
#include "report/text.h"

namespace morvane::bench {

namespace {

// Some functions are described with a comma.
std::string in_quotes(std::string_view text) {
  std::string result = "\"";
  return result.append(text).append("\"");
}

std::string in_full(std::optional<double> value) {
  return value ? fixed(*value, 4) : "";
}

// How many times as fast a backend is as another one; blank for what is no backend on one thread.
std::string over(const results& r, const row& which, const measurement& m, const std::string& backend) {
  const measurement* other = r.find(which, m.where, backend);
  return other == nullptr || m.is_peer || m.threads > 1 ? "" : fixed(times_as_fast(m, *other), 3);
}

// The next narrower backend; nothing for the narrowest.
std::string narrower_than(const results& r, const std::string& backend) {
  for (const step& s : steps_of(r))
    if (s.wider == backend) return s.narrower;
  return {};
}

}  // namespace

void write_csv(std::ostream& out, const results& r, const targets& aims) {
  out << "conversion,kind,runner,function,agreement,size,shape,threads,pixels,bytes,nanoseconds,gigabytes_per_second,"
         "nanoseconds_per_pixel,memcpy_nanoseconds,share_of_memcpy,over_"
      << r.backends().front() << ",over_narrower\n";
  for (const row& which : r.rows()) {
    const kind_target* t = aims.of(which);
    for (const measurement& m : r.all()) {
      if (m.row != which.name) continue;
      out << in_quotes(m.row) << ',' << in_quotes(t ? t->title : "") << ',' << m.runner << ',' << in_quotes(m.function)
          << ',' << (m.is_peer ? name_of(m.label) : "") << ',' << name_of(m.where.nominal) << ','
          << name_of(m.where.memory) << ',' << m.threads << ',' << m.pixels << ',' << m.bytes << ','
          << fixed(m.nanoseconds, 1) << ',' << fixed(m.gigabytes_per_second(), 3) << ','
          << fixed(m.nanoseconds_per_pixel(), 5) << ',' << fixed(m.copy_nanoseconds, 1) << ','
          << fixed(m.share_of_memcpy(), 4) << ',' << over(r, which, m, r.backends().front()) << ','
          << over(r, which, m, narrower_than(r, m.runner)) << '\n';
    }
  }
}

void write_csv(std::ostream& out, const measured_pairs& all) {
  out << "source,destination,steps,pixels,bytes,nanoseconds,nearest_nanoseconds,gigabytes_per_second,"
         "memcpy_nanoseconds,share_of_memcpy,share_in_cache,tiny_nanoseconds,times_swscale_nearest,"
         "times_swscale_bilinear,gain_of_two_threads\n";
  for (const pair_measurement& m : all)
    out << m.source << ',' << m.destination << ',' << in_quotes(joined(m.steps)) << ',' << m.pixels << ',' << m.bytes
        << ',' << fixed(m.nanoseconds, 1) << ',' << fixed(m.nearest_nanoseconds, 1) << ','
        << fixed(m.gigabytes_per_second(), 3) << ',' << fixed(m.copy_nanoseconds, 1) << ','
        << in_full(m.share_of_memcpy()) << ',' << in_full(m.share_in_cache()) << ','
        << (m.tiny_nanoseconds ? fixed(*m.tiny_nanoseconds, 1) : "") << ',' << in_full(m.times_nearest()) << ','
        << in_full(m.times_bilinear()) << ',' << in_full(m.gain_of_two_threads) << '\n';
}

}  // namespace morvane::bench
