// How a test program was started.
#pragma once

namespace morvane::tests {

// True when the program was started with --thin: for emulated processors and instrumented builds, which are slow.
bool thin();
void set_thin(bool on);

// True when --thin may leave widths out too. Started with --every-width beside it, all widths stay, and only their
// cases and the domains of values become fewer: what sanitizers look for depends on where a line ends.
bool thin_widths();
void set_every_width(bool on);

// True when the program was started with --each-kernel-once: of the rows that run the same kernel, one is enough.
bool each_kernel_once();
void set_each_kernel_once(bool on);

}  // namespace morvane::tests
