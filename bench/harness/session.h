// One run of the program: its options and its results so far.
#ifndef BENCH_HARNESS_SESSION_H
#define BENCH_HARNESS_SESSION_H

#include <string>
#include <vector>

#include "bench/harness/results.h"
#include "bench/harness/rounds.h"

namespace bench {

struct Session {
  Pace pace = {0.015, 5};
  bool quick = false;
  std::vector<Result> results;
  std::vector<std::string> failures;  // rows that could not run
  std::vector<std::string> remarks;
};

Session& CurrentSession();

}  // namespace bench

#endif
