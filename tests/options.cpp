#include "options.h"

namespace morvane::tests {

namespace {

bool is_thin = false;
bool is_every_width = false;
bool is_each_kernel_once = false;

}  // namespace

bool thin() {
  return is_thin;
}

void set_thin(bool on) {
  is_thin = on;
}

bool thin_widths() {
  return is_thin && !is_every_width;
}

void set_every_width(bool on) {
  is_every_width = on;
}

bool each_kernel_once() {
  return is_each_kernel_once;
}

void set_each_kernel_once(bool on) {
  is_each_kernel_once = on;
}

}  // namespace morvane::tests
