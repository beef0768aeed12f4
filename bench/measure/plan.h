// The list of all that is measured: each row in every place, on every backend, by the other libraries and on two
// threads.
#pragma once

#include <functional>
#include <regex>
#include <string>
#include <vector>

#include "measure/measurement.h"
#include "peers/peers.h"

namespace morvane::bench {

struct planned {
  measurement what{};  // without its times
  workload load{};
  std::function<job(const arena&)> set_up{};
};

struct request {
  std::vector<std::regex> filters{};  // each of them is found in the run_name of what is wanted
  bool backends_alone = false;        // no other library, no second thread
};

std::vector<planned> make_plan(const std::vector<row>& rows, const std::vector<peer>& peers, const request& wanted);

// The names of this processor's backends, narrowest first, the library's own choice last.
std::vector<std::string> backend_names();

}  // namespace morvane::bench
