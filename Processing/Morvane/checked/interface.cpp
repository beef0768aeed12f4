// The functions of the C interface: every argument is checked, then the way is taken.
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <system_error>
#include <vector>

#include "direct.h"
#include "layout.h"
#include "run.h"
#include "streamed.h"

namespace checked = Processing::Morvane::checked;
using checked::answer;
using checked::is_wrong;
using checked::problem;

struct morvane_plan {
  checked::way way;
  std::vector<std::string> steps;
  std::vector<std::string> losses;
  std::unique_ptr<checked::crew> hands;
};

namespace {

problem choose(const morvane_options* options, checked::choices& result) {
  result = {};
  if (options == nullptr) return checked::none();
  const morvane_options& o = *options;
  const bool is_of_first_version = o.struct_size == offsetof(morvane_options, stores);
  if (const problem p = checked::check_size("options.struct_size", o.struct_size, sizeof o);
      is_wrong(p) && !is_of_first_version)
    return p;
  if (o.filter != MORVANE_LINEAR && o.filter != MORVANE_NEAREST)
    return checked::wrong(MORVANE_OPTION, "options.filter", o.filter, MORVANE_LINEAR,
                          "is %d, not 0 (linear) or 1 (nearest)", static_cast<int>(o.filter));
  if (o.siting != MORVANE_LEFT && o.siting != MORVANE_CENTER)
    return checked::wrong(MORVANE_OPTION, "options.siting", o.siting, MORVANE_LEFT, "is %d, not 0 (left) or 1 (center)",
                          static_cast<int>(o.siting));
  result.filter = checked::chroma_filter{o.filter == MORVANE_NEAREST};
  result.siting = checked::kernel::siting{o.siting == MORVANE_CENTER};
  constexpr int32_t most_threads = 256;
  if (o.threads < 0 || o.threads > most_threads)
    return checked::wrong(MORVANE_OPTION, "options.threads", o.threads, most_threads, "is %d, not from 0 to %d",
                          static_cast<int>(o.threads), static_cast<int>(most_threads));
  const int32_t stores = is_of_first_version ? MORVANE_CACHED : o.stores;
  if (stores < MORVANE_CACHED || stores > MORVANE_BY_SIZE)
    return checked::wrong(MORVANE_OPTION, "options.stores", stores, MORVANE_CACHED,
                          "is %d, not 0 (cached), 1 (streaming) or 2 (by size)", static_cast<int>(stores));
  result.stores = static_cast<checked::store_kind>(stores);
  result.has_via = o.via != nullptr;
  result.has_background = o.has_background != 0;
  for (int i = 0; i < 3; ++i) result.background[i] = o.background[i];
  return checked::none();
}

problem hire(const int32_t threads, morvane_plan& plan) {
  if (threads > 1 && !checked::crew::can_be_hired)
    return checked::wrong(MORVANE_OPTION, "options.threads", threads, 1, "is %d, and there are no threads here",
                          static_cast<int>(threads));
  const problem too_many = checked::wrong(MORVANE_NO_MEMORY, "options.threads", threads, 0,
                                          "is %d, and so many cannot be started", static_cast<int>(threads));
  try {
    if (threads > 1) plan.hands = std::make_unique<checked::crew>(threads);
  } catch (const std::system_error&) {
    return too_many;
  } catch (const std::bad_alloc&) {
    return too_many;
  }
  return checked::none();
}

problem make_plan(const morvane_description* source, const morvane_description* destination,
                  const morvane_options* options, morvane_plan& plan) {
  checked::shape from, to;
  checked::choices how;
  morvane_layout layout;
  if (const problem p = checked::describe(source, "source", from); is_wrong(p)) return p;
  if (const problem p = checked::describe(destination, "destination", to); is_wrong(p)) return p;
  if (const problem p = checked::lay_out(from, 0, layout); is_wrong(p)) return p;
  if (const problem p = checked::lay_out(to, 0, layout); is_wrong(p)) return p;
  if (const problem p = choose(options, how); is_wrong(p)) return p;
  if (const problem p = checked::find_way(from, to, how, plan.way); is_wrong(p)) return p;
  if (options == nullptr || options->via == nullptr) {
    checked::find_short_cut(plan.way);
    plan.way.decoded = checked::find_decoder(plan.way);
    plan.way.encoded = checked::find_encoder(plan.way);
    plan.way.regrouped = checked::find_regrouping(plan.way);
  } else {
    const checked::named_entry_point wish = {options->via, options->allow_irregular != 0, options->rescale != 0};
    if (const problem p = checked::find_via(wish, plan.way); is_wrong(p)) return p;
  }
  plan.way.streams = checked::streams(plan.way, how.stores);
  plan.way.scratch_bytes = checked::scratch_bytes_of(plan.way);
  return options == nullptr ? checked::none() : hire(options->threads, plan);
}

int32_t hands_of(const morvane_plan& plan) {
  return plan.hands == nullptr ? 1 : plan.hands->hands();
}

int64_t scratch_bytes_of(const morvane_plan& plan) {
  return hands_of(plan) * plan.way.scratch_bytes;
}

problem check_band(const morvane_plan& plan, const int32_t first, const int32_t rows) {
  const int32_t height = plan.way.from.height;
  const int32_t unit = checked::row_granularity(plan.way);
  if (first < 0 || first >= height || first % unit != 0)
    return checked::wrong(MORVANE_ROWS, "first", first, unit, "is %d, not a multiple of %d from 0 to %d",
                          static_cast<int>(first), static_cast<int>(unit), static_cast<int>(height - 1));
  if (rows < 1 || rows > height - first || (rows % unit != 0 && rows != height - first))
    return checked::wrong(MORVANE_ROWS, "rows", rows, unit, "is %d, not a multiple of %d up to the %d rows that follow",
                          static_cast<int>(rows), static_cast<int>(unit), static_cast<int>(height - first));
  return checked::none();
}

problem check_pictures(const morvane_plan& plan, const morvane_picture* source, const morvane_picture* destination) {
  if (const problem p = checked::fits(plan.way.from, source, "source"); is_wrong(p)) return p;
  if (const problem p = checked::fits(plan.way.to, destination, "destination"); is_wrong(p)) return p;
  return checked::are_apart(plan.way.from, *source, plan.way.to, *destination);
}

// Memory behind what is needed is not used, so it may be anybody's.
problem check_scratch(const morvane_plan& plan, const morvane_picture& source, const morvane_picture& destination,
                      const checked::scratch_memory& scratch, const int64_t needed) {
  if (scratch.data == nullptr && needed > 0) return checked::wrong(MORVANE_NULL, "scratch", 0, needed, "is null");
  if (scratch.bytes < needed)
    return checked::wrong(MORVANE_SCRATCH, "scratch_bytes", scratch.bytes, needed, "is %lld, and %lld are needed",
                          static_cast<long long>(scratch.bytes), static_cast<long long>(needed));
  return checked::is_apart({scratch.data, needed}, plan.way.from, source, plan.way.to, destination);
}

problem run(const morvane_plan& plan, const morvane_picture* source, const morvane_picture* destination,
            const checked::scratch_memory& scratch) {
  if (const problem p = check_pictures(plan, source, destination); is_wrong(p)) return p;
  const int64_t needed = scratch_bytes_of(plan);
  if (const problem p = check_scratch(plan, *source, *destination, scratch, needed); is_wrong(p)) return p;
  checked::run_all(plan.way, plan.hands.get(), *source, *destination, scratch.data);
  return checked::none();
}

problem run_rows(const morvane_plan& plan, const morvane_picture* source, const morvane_picture* destination,
                 const int32_t first, const int32_t rows, const checked::scratch_memory& scratch) {
  if (const problem p = check_pictures(plan, source, destination); is_wrong(p)) return p;
  if (const problem p = check_band(plan, first, rows); is_wrong(p)) return p;
  const int64_t needed = plan.way.scratch_bytes;
  if (const problem p = check_scratch(plan, *source, *destination, scratch, needed); is_wrong(p)) return p;
  checked::run_band(plan.way, *source, *destination, first, rows, scratch.data);
  return checked::none();
}

problem no_memory(const int64_t needed) {
  return checked::wrong(MORVANE_NO_MEMORY, "memory", 0, needed, "for %lld bytes is not there",
                        static_cast<long long>(needed));
}

const char* text_at(const std::vector<std::string>& texts, const int32_t index) {
  return index >= 0 && static_cast<size_t>(index) < texts.size() ? texts[static_cast<size_t>(index)].c_str() : nullptr;
}

}  // namespace

int32_t morvane_lay_out(const morvane_description* description, const int64_t alignment, morvane_layout* layout,
                        morvane_error* error) {
  checked::shape s;
  if (const problem p = checked::describe(description, "description", s); is_wrong(p)) return answer(p, error);
  if (layout == nullptr) return answer(checked::wrong(MORVANE_NULL, "layout", 0, 0, "is null"), error);
  if (const problem p = checked::check_size("layout.struct_size", layout->struct_size, sizeof *layout); is_wrong(p))
    return answer(p, error);
  morvane_layout made;
  const problem p = checked::lay_out(s, alignment, made);
  if (!is_wrong(p)) *layout = made;
  return answer(p, error);
}

morvane_plan* morvane_plan_create(const morvane_description* source, const morvane_description* destination,
                                  const morvane_options* options, morvane_error* error) {
  try {
    auto plan = std::make_unique<morvane_plan>();
    if (answer(make_plan(source, destination, options, *plan), error) != MORVANE_OK) return nullptr;
    plan->steps = checked::steps_of(plan->way);
    plan->losses = checked::losses_of(plan->way);
    return plan.release();
  } catch (const std::bad_alloc&) {
    answer(no_memory(sizeof(morvane_plan)), error);
    return nullptr;
  }
}

void morvane_plan_destroy(morvane_plan* plan) {
  delete plan;
}

const char* morvane_plan_step(const morvane_plan* plan, const int32_t index) {
  return plan == nullptr ? nullptr : text_at(plan->steps, index);
}

const char* morvane_plan_loss(const morvane_plan* plan, const int32_t index) {
  return plan == nullptr ? nullptr : text_at(plan->losses, index);
}

int64_t morvane_plan_scratch_bytes(const morvane_plan* plan) {
  return plan == nullptr ? 0 : scratch_bytes_of(*plan);
}

int32_t morvane_plan_row_granularity(const morvane_plan* plan) {
  return plan == nullptr ? 0 : checked::row_granularity(plan->way);
}

int32_t morvane_plan_run(const morvane_plan* plan, const morvane_picture* source, const morvane_picture* destination,
                         void* scratch, const int64_t scratch_bytes, morvane_error* error) {
  if (plan == nullptr) return answer(checked::wrong(MORVANE_NULL, "plan", 0, 0, "is null"), error);
  return answer(run(*plan, source, destination, {scratch, scratch_bytes}), error);
}

int32_t morvane_plan_run_rows(const morvane_plan* plan, const morvane_picture* source,
                              const morvane_picture* destination, const int32_t first, const int32_t rows,
                              void* scratch, const int64_t scratch_bytes, morvane_error* error) {
  if (plan == nullptr) return answer(checked::wrong(MORVANE_NULL, "plan", 0, 0, "is null"), error);
  return answer(run_rows(*plan, source, destination, first, rows, {scratch, scratch_bytes}), error);
}

int32_t morvane_convert(const morvane_description* source, const morvane_picture* source_picture,
                        const morvane_description* destination, const morvane_picture* destination_picture,
                        const morvane_options* options, morvane_error* error) {
  morvane_plan plan;
  if (const problem p = make_plan(source, destination, options, plan); is_wrong(p)) return answer(p, error);
  if (const problem p = check_pictures(plan, source_picture, destination_picture); is_wrong(p)) return answer(p, error);
  const int64_t bytes = scratch_bytes_of(plan);
  const std::unique_ptr<void, decltype(&std::free)> scratch(std::malloc(static_cast<size_t>(bytes)), &std::free);
  if (scratch == nullptr) return answer(no_memory(bytes), error);
  checked::run_all(plan.way, plan.hands.get(), *source_picture, *destination_picture, scratch.get());
  return answer(checked::none(), error);
}
