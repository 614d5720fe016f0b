// One way of doing a row's work, as the clock sees it.
#ifndef BENCH_SUBJECTS_CONTENDER_H
#define BENCH_SUBJECTS_CONTENDER_H

#include <cstddef>
#include <functional>
#include <string>

namespace bench {

// Does the work so many times.
using Work = std::function<void(std::size_t calls)>;

// `call` is compiled into the loop, so that nothing but itself is timed.
template <class Call>
Work Repeat(Call call) {
  return [call](std::size_t calls) {
    for (std::size_t i = 0; i < calls; ++i) call();
  };
}

enum class Role {
  Ours,
  Limit,      // what the memory allows: the fastest of these is the row's limit
  Peer,       // another library
  Plain,      // the plain loop
  Reference,  // what a goal compares ours with besides these
};

// How near a peer comes to our bits. Errors are in units of the destination:
// the lowest bit of whole numbers, or floats.
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
