// What the checked interface allocates: a plan and the scratch memory of one call, and nothing while a plan is run or a
// call is refused. Where there is no memory, it says so, keeps nothing and writes nothing.
#include <array>

#include "backend/choice.h"
#include "catalogue/formats.h"
#include "checked/attempt.h"
#include "checker/checker.h"
#include "counted_allocations.h"

namespace morvane::tests {
namespace {

TEST(checked_memory, is_not_taken_by_a_run) {
  const std::array<options, 3> hows = {
      options{}, {.filter = filter::nearest}, {.siting = siting::center, .background = color{9, 8, 7}}};
  int runs = 0;
  on_every_backend([&](Processing::Morvane::backend::kind) {
    for (const catalogue::format& from : catalogue::formats)
      for (const catalogue::format& to : catalogue::formats)
        for (const options& how : hows) {
          const description source_is{.format = from.id, .width = 19, .height = 5, .range = range::full};
          const description result_is{.format = to.id, .width = 19, .height = 5, .matrix = matrix::bt601};
          const morvane_description c_source = source_is, c_result = result_is;
          const morvane_options c_how = how;
          morvane_plan* plan = morvane_plan_create(&c_source, &c_result, &c_how, nullptr);
          if (plan == nullptr) continue;
          image source(source_is), result(result_is);
          const morvane_picture in = source.picture(), out = result.picture();
          std::vector<std::uint8_t> scratch(static_cast<std::size_t>(morvane_plan_scratch_bytes(plan)));
          const auto bytes = static_cast<std::int64_t>(scratch.size());
          const int before = allocations();
          morvane_error e;
          EXPECT_EQ(morvane_plan_run(plan, &in, &out, scratch.data(), bytes, &e), MORVANE_OK);
          EXPECT_EQ(morvane_plan_run_rows(plan, &in, &out, 2, 2, scratch.data(), bytes, &e), MORVANE_OK);
          EXPECT_EQ(morvane_plan_run_rows(plan, &in, &out, 1, 0, scratch.data(), bytes, &e), MORVANE_ROWS);
          EXPECT_EQ(allocations() - before, 0) << from.name << " to " << to.name;
          morvane_plan_destroy(plan);
          ++runs;
        }
  });
  EXPECT_GT(runs, 3 * 1000);
}

// Short cuts, entry points by name, with rows of their own too, and threads.
TEST(checked_memory, is_not_taken_by_a_run_without_lines) {
  struct direct_way {
    const char* from;
    const char* to;
    options how;
  };
  const direct_way ways[] = {{"bgra", "bgra", {}},
                             {"uyvy", "yuy2", {}},
                             {"v210", "uyvy", {.via = "v210::uyvy"}},
                             {"y_uv_420", "bgra", {.threads = 3}},
                             {"bgra", "bgra", {.threads = 3}},
                             {"bgra", "bgra", {.stores = stores::streaming}},
                             {"y_uv_420", "bgra64", {.stores = stores::streaming}}};
  for (const direct_way& w : ways) {
    const description from{.format = format_named(w.from), .width = 96, .height = 64};
    const description to{.format = format_named(w.to), .width = 96, .height = 64};
    const plan p(from, to, w.how);
    image source(from), result(to);
    const morvane_picture in = source.picture(), out = result.picture();
    std::vector<std::uint8_t> scratch(p.scratch_bytes());
    const int before = allocations();
    for (int i = 0; i < 10; ++i) p.run(in, out, scratch.data(), scratch.size());
    EXPECT_EQ(allocations() - before, 0) << w.from << " to " << w.to;
  }
}

// Those that were started before are joined. The C library keeps something of the first threads for later ones.
TEST(checked_memory, that_is_missing_for_a_thread_is_an_error) {
  attempt a;
  a.how.threads = 4;
  morvane_plan_destroy(morvane_plan_create(&a.from, &a.to, &a.how, nullptr));
  int refused = 0;
  for (int requests = 0;; ++requests) {
    const int held = held_allocations();
    morvane_error e = smeared_error();
    {
      const scarce_memory memory(requests);
      morvane_plan_destroy(morvane_plan_create(&a.from, &a.to, &a.how, &e));
    }
    EXPECT_EQ(held_allocations(), held) << requests;
    if (e.code == MORVANE_OK) break;
    EXPECT_EQ(e.code, MORVANE_NO_MEMORY);
    if (std::string(e.argument) == "options.threads") ++refused;
  }
  EXPECT_GE(refused, 4);
}

TEST(checked_memory, is_not_taken_by_layouts_and_names) {
  const morvane_description d = description{.format = format_named("v210"), .width = 1 << 30, .height = 7};
  morvane_layout layout{};
  layout.struct_size = sizeof layout;
  const int before = allocations();
  EXPECT_EQ(morvane_lay_out(&d, 64, &layout, nullptr), MORVANE_OK);
  EXPECT_NE(morvane_format_named("bgra"), 0);
  EXPECT_NE(morvane_format_name(morvane_format_at(0)), nullptr);
  EXPECT_EQ(allocations() - before, 0);
}

TEST(checked_memory, is_not_taken_by_a_call_that_is_refused) {
  std::array<std::uint8_t, 8> read{}, written{};
  const morvane_description wide = description{.format = format_named("y"), .width = 1 << 28, .height = 1};
  const morvane_picture source{sizeof source, {read.data()}, {1 << 28}, {8}};
  const morvane_picture destination{sizeof destination, {written.data()}, {1 << 28}, {1 << 28}};
  const int before = allocations();
  morvane_error e;
  EXPECT_EQ(morvane_convert(&wide, &source, &wide, &destination, nullptr, &e), MORVANE_PLANE_TOO_SHORT);
  EXPECT_EQ(allocations() - before, 0);
}

// Fails the first request, then the second, and so on, up to the call that all of them suffice for. `call` keeps
// nothing; what it answers is checked when there is memory again.
template <class Call, class Check>
int requests_of(Call call, Check check_refusal) {
  for (int requests = 0;; ++requests) {
    const int held = held_allocations();
    morvane_error e = smeared_error();
    {
      const scarce_memory memory(requests);
      call(&e);
    }
    EXPECT_EQ(held_allocations(), held) << "memory is lost after " << requests << " requests";
    if (e.code == MORVANE_OK) return requests;
    EXPECT_EQ(refusal_of(e), (refusal{MORVANE_NO_MEMORY, "memory", 0, e.needed}));
    EXPECT_EQ(e.message, "memory for " + std::to_string(e.needed) + " bytes is not there");
    check_refusal(e);
  }
}

TEST(checked_memory, that_is_missing_for_a_plan_is_an_error) {
  const attempt a;
  const int requests =
      requests_of([&](morvane_error* e) { morvane_plan_destroy(morvane_plan_create(&a.from, &a.to, &a.how, e)); },
                  [](const morvane_error& e) { EXPECT_GT(e.needed, 0); });
  EXPECT_GT(requests, 1);
}

TEST(checked_memory, that_is_missing_for_a_call_is_an_error) {
  attempt a;
  morvane_plan* plan = morvane_plan_create(&a.from, &a.to, &a.how, nullptr);
  const std::int64_t scratch = morvane_plan_scratch_bytes(plan);
  morvane_plan_destroy(plan);
  const int requests =
      requests_of([&](morvane_error* e) { morvane_convert(&a.from, &a.source, &a.to, &a.destination, &a.how, e); },
                  [&](const morvane_error& e) {
                    EXPECT_EQ(e.needed, scratch);
                    a.expect_fields(e);
                  });
  EXPECT_EQ(requests, 1);
}

TEST(checked_memory, that_is_missing_is_answered_without_an_error_too) {
  attempt a;
  std::int32_t code = MORVANE_OK;
  morvane_plan* plan = nullptr;
  {
    const scarce_memory none(0);
    code = morvane_convert(&a.from, &a.source, &a.to, &a.destination, &a.how, nullptr);
    plan = morvane_plan_create(&a.from, &a.to, &a.how, nullptr);
  }
  EXPECT_EQ(code, MORVANE_NO_MEMORY);
  EXPECT_EQ(plan, nullptr);
}

}  // namespace
}  // namespace morvane::tests
