// The results of the rows.
#ifndef BENCH_HARNESS_RESULTS_H
#define BENCH_HARNESS_RESULTS_H

#include <string>
#include <vector>

#include "bench/harness/row.h"
#include "bench/subjects/contender.h"

namespace bench {

struct Measured {
  Role role;
  std::string name;
  double ms;
  double spread;
  Exactness exactness;
};

struct Result {
  RowName name;
  std::vector<Measured> all;

  // The fastest of a role, or null when there is none.
  const Measured* Fastest(Role role) const;
  const Measured& Ours() const { return *Fastest(Role::Ours); }
  // The largest of the figures that the verdict compares: ours, the limit, the
  // reference and the fastest peer.
  double Spread() const;
  // Limit over ours: 1 is as fast as can be. 0 without limit.
  double Ratio() const;
};

// A peer's exactness in words, for inputs from 0 to full scale where it is not
// exact; empty for none.
std::string TextOf(const Exactness& exactness);

}  // namespace bench

#endif
