#include "report/used_pairs.h"

#include <algorithm>

#include "report/html_pairs.h"
#include "report/html_table.h"
#include "report/text.h"

namespace morvane::bench {

namespace {

constexpr std::size_t at_full_hd = 1;
static_assert(sizes[at_full_hd] == full_hd);

std::string_view mark_of(agreement a) {
  switch (a) {
    case agreement::same_bytes:
      return "=";
    case agreement::close:
      return "\u2248";
    case agreement::other_algorithm:
      return "\u2260";
  }
  return {};
}

// The function of a library beside which the plan gains least; null where it has none.
const peer_of_pair* fastest(const pair_beside_peers& m, std::string_view library, std::size_t s) {
  const peer_of_pair* result = nullptr;
  for (const peer_of_pair& p : m.peers)
    if (p.library == library && (result == nullptr || m.times(p, s) < m.times(*result, s))) result = &p;
  return result;
}

std::optional<spread> times_of(const used_pairs& all, std::string_view library, std::size_t s) {
  std::vector<spread::value> values;
  for (const pair_beside_peers& m : all)
    if (const peer_of_pair* p = fastest(m, library, s)) values.push_back({m.times(*p, s), m.name()});
  return values.empty() ? std::nullopt : std::optional(spread(std::move(values)));
}

std::string filter_of(const peer_of_pair& p) {
  return p.like.chroma == filter::nearest ? "nearest" : "linear";
}

std::vector<column> columns_of(std::string_view group) {
  std::vector<column> result;
  for (const size& s : sizes) result.push_back({name_of(s), std::string(group)});
  return result;
}

void write_shares(std::ostream& out, const used_pairs& all, const targets& aims) {
  table t(out, {{"from"}, {"to"}, {"steps"}}, columns_of("share of memcpy"));
  for (const pair_beside_peers& m : all) {
    t.begin();
    t.word(m.source);
    t.word(m.destination);
    t.sentence(joined(m.steps));
    for (std::size_t s = 0; s < sizes.size(); ++s)
      t.number(fixed(m.share_of_memcpy(s)), m.share_of_memcpy(s) < aims.pairs.used.share_of_memcpy[s]);
    t.end();
  }
}

void write_peers(std::ostream& out, const used_pairs& all, const targets& aims) {
  table t(out, {{"from"}, {"to"}, {"library"}, {"function"}, {"agreement"}, {"chroma"}}, columns_of("times as fast"));
  for (const pair_beside_peers& m : all)
    for (const peer_of_pair& p : m.peers) {
      t.begin();
      for (const std::string& word : {m.source, m.destination, p.library, p.function}) t.word(word);
      t.word(name_of(p.like.label));
      t.word(filter_of(p));
      for (std::size_t s = 0; s < sizes.size(); ++s)
        t.number(fixed(m.times(p, s)), m.times(p, s) < aims.never_slower());
      t.end();
    }
}

}  // namespace

std::vector<miss> misses(const used_pairs& all, const targets& aims) {
  std::vector<miss> result;
  for (const pair_beside_peers& m : all)
    for (std::size_t s = 0; s < sizes.size(); ++s) {
      const auto hold = [&](const std::string& target, double reached, double wanted) {
        if (reached >= wanted) return;
        const bool is_noise = reached >= wanted - aims.noise;
        result.push_back({m.name(),
                          {sizes[s]},
                          target,
                          reached,
                          wanted,
                          std::string(is_noise ? aims.within_noise : aims.pairs.why(m.source, m.destination))});
      };
      hold("of memcpy", m.share_of_memcpy(s), aims.pairs.used.share_of_memcpy[s]);
      for (const peer_of_pair& p : m.peers)
        hold("of " + p.library + ", " + p.function, m.times(p, s), aims.never_slower());
    }
  return result;
}

std::vector<pair_figure> summary(const used_pairs& all, const targets& aims) {
  std::vector<pair_figure> result;
  for (std::size_t s = 0; s < sizes.size() && !all.empty(); ++s) {
    std::vector<spread::value> shares;
    for (const pair_beside_peers& m : all) shares.push_back({m.share_of_memcpy(s), m.name()});
    result.push_back({"share of memcpy at " + name_of(sizes[s]), spread(std::move(shares)), 0,
                      aims.pairs.used.share_of_memcpy[s], 2});
  }
  for (const std::string_view library : libraries_of_pairs)
    for (std::size_t s = 0; s < sizes.size(); ++s)
      if (std::optional<spread> times = times_of(all, library, s))
        result.push_back({"times as fast as " + std::string(library) + " at " + name_of(sizes[s]), std::move(*times), 0,
                          aims.never_slower(), 2});
  return result;
}

std::vector<std::string> counts_of_labels(const used_pairs& all) {
  std::vector<std::string> result;
  for (const std::string_view library : libraries_of_pairs) {
    std::vector<std::string> counts;
    for (const agreement label : {agreement::same_bytes, agreement::close, agreement::other_algorithm}) {
      std::size_t count = 0;
      for (const pair_beside_peers& m : all)
        for (const peer_of_pair& p : m.peers) count += p.library == library && p.like.label == label;
      if (count > 0) counts.push_back(std::to_string(count) + " " + std::string(name_of(label)));
    }
    if (!counts.empty()) result.push_back(std::string(library) + ": " + joined(counts));
  }
  return result;
}

std::string table_of(const used_pairs& all) {
  std::string result = "| pair |";
  std::string line = "|---|";
  const auto add_column = [&](std::string_view title) {
    result.append(" ").append(title).append(" |");
    line += "---|";
  };
  for (const size& s : sizes) add_column(name_of(s));
  for (const std::string_view library : libraries_of_pairs) add_column(library);
  result += "\n" + line + "\n";
  for (const pair_beside_peers& m : all) {
    result += "| `" + m.name() + "` |";
    for (std::size_t s = 0; s < sizes.size(); ++s) result += " " + fixed(m.share_of_memcpy(s)) + " |";
    for (const std::string_view library : libraries_of_pairs) {
      if (const peer_of_pair* p = fastest(m, library, at_full_hd))
        result.append(" ").append(fixed(m.times(*p, at_full_hd), 1)).append(" ").append(mark_of(p->like.label));
      result += " |";
    }
    result += "\n";
  }
  return result;
}

void write_csv(std::ostream& out, const used_pairs& all) {
  out << "source,destination,size,nanoseconds,nearest_nanoseconds,memcpy_nanoseconds,share_of_memcpy,library,function,"
         "agreement,filter,library_nanoseconds,times\n";
  for (const pair_beside_peers& m : all)
    for (std::size_t s = 0; s < sizes.size(); ++s) {
      const std::string plan = m.source + "," + m.destination + "," + name_of(sizes[s]) + "," +
                               fixed(m.nanoseconds[s], 1) + "," + fixed(m.nearest_nanoseconds[s], 1) + "," +
                               fixed(m.copy_nanoseconds[s], 1) + "," + fixed(m.share_of_memcpy(s), 4) + ",";
      if (m.peers.empty()) out << plan << ",,,,,\n";
      for (const peer_of_pair& p : m.peers)
        out << plan << p.library << ",\"" << p.function << "\"," << name_of(p.like.label) << ',' << filter_of(p) << ','
            << fixed(p.nanoseconds[s], 1) << ',' << fixed(m.times(p, s), 4) << '\n';
    }
}

void write_used_pairs(std::ostream& out, const used_pairs& all, const targets& aims) {
  if (all.empty()) return;
  out << "<h2>The pairs that people use most</h2>\n<p>Plans of the checked interface with linear chroma beside memcpy, "
         "and beside every other library that has the pair, then with the filter, siting and matrix whose result is "
         "nearest to that library's. One thread each. "
      << name_of(in_cache) << " is one picture that stays in the caches; larger ones come from memory.</p>\n<ul>\n";
  for (const pair_figure& f : summary(all, aims)) out << "<li>" << escaped(sentence(f)) << "</li>\n";
  for (const std::string& line : counts_of_labels(all)) out << "<li>" << escaped(line) << "</li>\n";
  out << "</ul>\n";
  write_misses(out, misses(all, aims));
  out << "<details><summary>Every pair</summary>\n";
  write_shares(out, all, aims);
  out << "</details>\n<details><summary>Every function of another library</summary>\n";
  write_peers(out, all, aims);
  out << "</details>\n";
}

}  // namespace morvane::bench
