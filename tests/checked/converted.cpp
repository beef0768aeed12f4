#include "checked/converted.h"

#include "rules/convert.h"

namespace morvane::tests {

namespace {

constexpr std::uint8_t untouched = 0xa5;

std::uint32_t seed_of(const conversion_case& c) {
  return static_cast<std::uint32_t>(c.width * 131 + c.height * 17 + c.source_lies * 77);
}

}  // namespace

std::string text_of(const conversion_case& c) {
  const auto colour_text = [](const colour& of) {
    const std::string range = of.in ? *of.in == rules::range::full ? " full" : " video" : "";
    return std::to_string(number_of(of.of)) + range;
  };
  return std::string(c.from) + " (" + colour_text(c.as.source) + ") to " + std::string(c.to) + " (" +
         colour_text(c.as.destination) + "), " + std::to_string(c.width) + "x" + std::to_string(c.height) + ", " +
         (c.as.how.chroma_filter == rules::filter::nearest ? "nearest" : "linear") +
         (c.as.how.chroma_siting == rules::siting::center ? " center" : " left") +
         (c.as.how.background ? " over a background" : "") + ", lying " + std::to_string(c.source_lies) + " and " +
         std::to_string(c.destination_lies) + (c.streams ? ", streaming" : "");
}

expectation_of_pair::expectation_of_pair(rooms& in, const conversion_case& c)
    : in_(in),
      case_(c),
      source_(in.source, c.from, c.width, c.height, geometry_of(c.source_lies), 0),
      expected_(c.to, c.width, c.height) {
  source_.fill_at_random(seed_of(c));
  rules::picture source = source_.of();
  source.of = c.as.source.of;
  source.in = c.as.source.in;
  expected_.of().of = c.as.destination.of;
  expected_.of().in = c.as.destination.in;
  rules::convert(source, expected_.of(), c.as.how);
  const morvane_description from = described(source), to = described(expected_.of());
  morvane_options how = options_of(c.as.how);
  how.stores = c.streams ? MORVANE_STREAMING : MORVANE_CACHED;
  plan_ = morvane_plan_create(&from, &to, &how, nullptr);
}

expectation_of_pair::~expectation_of_pair() {
  morvane_plan_destroy(plan_);
}

std::string expectation_of_pair::run(const fenced_picture& made, const band& rows) {
  const morvane_picture source = source_.planes(), destination = made.planes();
  const std::int64_t bytes = morvane_plan_scratch_bytes(plan_);
  const bool at_end = case_.source_lies % 2 == 0;
  void* scratch = in_.scratch.place(static_cast<std::size_t>(bytes), at_end, case_.destination_lies % 5);
  morvane_error e{};
  const int signal = run_guarded([&] {
    if (rows.first == 0 && rows.rows == case_.height)
      morvane_plan_run(plan_, &source, &destination, scratch, bytes, &e);
    else
      morvane_plan_run_rows(plan_, &source, &destination, rows.first, rows.rows, scratch, bytes, &e);
  });
  if (signal != 0) return "it reads or writes beyond a plane";
  return e.code == MORVANE_OK ? "" : e.message;
}

std::string expectation_of_pair::wrong_with(std::span<const band> bands) {
  if (plan_ == nullptr) return "there is no plan";
  const fenced_picture made(in_.destination, case_.to, case_.width, case_.height, geometry_of(case_.destination_lies),
                            untouched);
  for (const band& rows : bands)
    if (const std::string problem = run(made, rows); !problem.empty()) return problem;
  return made.difference(expected_);
}

std::string expectation_of_pair::wrong_with_one_run() {
  const band all = {0, case_.height};
  return wrong_with({&all, 1});
}

}  // namespace morvane::tests
