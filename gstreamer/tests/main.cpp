#include <gst/gst.h>
#include <gtest/gtest.h>

#include "element.h"

int main(int count, char** arguments) {
  gst_init(&count, &arguments);
  testing::InitGoogleTest(&count, arguments);
  if (!morvane::gstreamer::register_element(nullptr)) return 1;
  return RUN_ALL_TESTS();
}
