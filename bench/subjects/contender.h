// One way to do a row's work, for timing.
#ifndef BENCH_SUBJECTS_CONTENDER_H
#define BENCH_SUBJECTS_CONTENDER_H

#include <cstddef>
#include <functional>
#include <string>

namespace bench {

// Repeats the work.
using Work = std::function<void(std::size_t calls)>;

// `call` is compiled into the loop, so that only its own time counts.
template <typename Call>
Work Repeat(Call call) {
  return [call](std::size_t calls) {
    for (std::size_t i = 0; i < calls; ++i) call();
  };
}

enum class Role {
  Ours,
  Limit,      // the same loads and stores: the fastest of these is the row's limit
  Peer,       // another library
  Plain,      // the plain loop
  Reference,  // any other time that a goal compares ours with
};

// The difference of a peer's results from ours. Errors are in units of the
// destination: the lowest bit of integers, or floats.
struct Exactness {
  bool known = false;  // whether there is something to compare
  bool exact = false;  // for all inputs
  double largestError = 0;
  double nominalError = 0;  // the largest for inputs from 0 to full scale
};

struct Contender {
  Role role;
  std::string name;
  Work work;
  Exactness exactness = {};
};

}  // namespace bench

#endif
