// Lists of kernels. Each family of kernels ends with the list of its own; backend/kernels.h joins them.
#pragma once

namespace Processing::Morvane::format_conversion::kernel {

template <class... Kernel>
struct kernel_list {};

template <class... List>
struct joined_lists;

template <class... Kernel>
struct joined_lists<kernel_list<Kernel...>> {
  using type = kernel_list<Kernel...>;
};

template <class... First, class... Second, class... Rest>
struct joined_lists<kernel_list<First...>, kernel_list<Second...>, Rest...>
    : joined_lists<kernel_list<First..., Second...>, Rest...> {};

}  // namespace Processing::Morvane::format_conversion::kernel
