#include "recorder.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

#include "backend/dispatch.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;
namespace kernel = Processing::Morvane::format_conversion::kernel;

std::function<void(const line_call&)> take_call;

template <class Kernel, class... All>
consteval std::size_t place_in(kernel::kernel_list<All...>) {
  const bool is_here[] = {std::is_same_v<Kernel, All>...};
  return static_cast<std::size_t>(std::find(std::begin(is_here), std::end(is_here), true) - std::begin(is_here));
}

struct call_reader {
  line_call call;
  std::size_t planes = 0;

  void read(std::uint8_t* plane) { read(static_cast<const std::uint8_t*>(plane)); }
  void read(const std::uint8_t* plane) { call.plane.at(planes++) = reinterpret_cast<std::uintptr_t>(plane); }
  void read(int count) { call.count = count; }
  template <class Kernel>
  void read([[maybe_unused]] const Kernel& k) {
    if constexpr (requires { k.streams; }) call.streams = k.streams;
  }
};

template <class Kernel, class Function = kernel::line_function<Kernel>>
struct recorded;

template <class Kernel, class Answer, class... Argument>
struct recorded<Kernel, Answer(Argument...)> {
  static Answer line(Argument... arguments) {
    call_reader reader;
    reader.call.kernel = place_in<Kernel>(backend::all_kernels());
    (reader.read(arguments), ...);
    take_call(reader.call);
    if constexpr (!std::is_void_v<Answer>) return Answer{1};
  }
};

template <class... Kernel>
consteval backend::line_table table_for(kernel::kernel_list<Kernel...>) {
  return {{&recorded<Kernel>::line}...};
}

template <class... Kernel>
consteval std::size_t size_of(kernel::kernel_list<Kernel...>) {
  return sizeof...(Kernel);
}

constexpr backend::line_table recording_lines = table_for(backend::all_kernels());

// Small planes of any bytes.
struct planes_of_call {
  static constexpr int stride = 64;
  std::array<std::array<std::uint8_t, 8 * stride>, 2 * catalogue::max_planes> bytes{};

  catalogue::call call() {
    catalogue::call c;
    for (std::size_t i = 0; i < catalogue::max_planes; ++i) {
      c.source.data[i] = bytes[i].data();
      c.destination.data[i] = bytes[catalogue::max_planes + i].data();
      c.source.stride[i] = c.destination.stride[i] = stride;
    }
    c.xres = c.yres = 2;
    return c;
  }
};

}  // namespace

std::size_t number_of_kernels() {
  return size_of(backend::all_kernels());
}

recorder::recorder(std::function<void(const line_call&)> take) : lines_before_(backend::lines_in_use) {
  take_call = std::move(take);
  backend::lines_in_use = &recording_lines;
}

recorder::~recorder() {
  backend::lines_in_use = static_cast<const backend::line_table*>(lines_before_);
  take_call = nullptr;
}

std::set<std::size_t> kernels_of(const catalogue::conversion& row) {
  std::set<std::size_t> kernels;
  const recorder recording([&](const line_call& line) { kernels.insert(line.kernel); });
  planes_of_call planes;
  for (const int argument : {0, 1, 601, 709})
    for (bool report = false; bool* const opaque : {static_cast<bool*>(nullptr), &report}) {
      catalogue::call c = planes.call();
      c.argument = argument;
      c.opaque = opaque;
      row.convert(c);
    }
  return kernels;
}

}  // namespace morvane::tests
