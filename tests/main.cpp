// The main function of all test programs: GoogleTest's, with --thin, --every-width and --each-kernel-once for slow
// machines, and the names of the backends that are tested.
#include <gtest/gtest.h>

#include <cstdio>
#include <string_view>

#include "backend/choice.h"
#include "options.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--thin") morvane::tests::set_thin(true);
    if (argument == "--every-width") morvane::tests::set_every_width(true);
    if (argument == "--each-kernel-once") morvane::tests::set_each_kernel_once(true);
  }
  std::printf("backends:");
  for (const auto backend : Processing::Morvane::backend::available())
    std::printf(" %s", Processing::Morvane::backend::name(backend));
  std::printf("\n");
  return RUN_ALL_TESTS();
}
