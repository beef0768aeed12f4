// Conversions that are a kernel and nothing else: they need no entry point of their own.
#pragma once

#include <utility>

#include "../format_conversion_frame.h"
#include "call.h"

namespace morvane::catalogue {

namespace detail {

template <class Kernel, std::size_t... s, std::size_t... d>
void convert_by_kernel(const call& c, std::index_sequence<s...>, std::index_sequence<d...>) {
  namespace fc = Processing::Morvane::format_conversion;
  fc::convert<Kernel>(c.xres, c.yres, fc::plane{c.source.data[s], c.source.stride[s]}...,
                      fc::plane{c.destination.data[d], c.destination.stride[d]}...);
}

}  // namespace detail

template <class Kernel>
inline constexpr entry_point entry_of_kernel = {[](const call& c) {
                                                  detail::convert_by_kernel<Kernel>(
                                                      c, std::make_index_sequence<Kernel::planes::sources>(),
                                                      std::make_index_sequence<Kernel::planes::destinations>());
                                                },
                                                false, false};

}  // namespace morvane::catalogue
