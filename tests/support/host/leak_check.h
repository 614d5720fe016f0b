// The holdings of the stand-in host, and a check that a test leaves as many as it
// found.
#ifndef TESTS_SUPPORT_HOST_LEAK_CHECK_H
#define TESTS_SUPPORT_HOST_LEAK_CHECK_H

#include <cstdint>
#include <ostream>

struct Holdings {
  std::uint64_t handles;
  std::uint64_t poolBlocks;
  std::uint64_t surfaces;
  std::int64_t applicationBytes;  // as booked with K
  std::int64_t systemBytes;
  bool operator==(const Holdings&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const Holdings& holdings);
Holdings CurrentHoldings();

// Fails the test if the holdings at its end differ from those at its beginning.
class LeakCheck {
 public:
  LeakCheck() = default;
  LeakCheck(const LeakCheck&) = delete;
  LeakCheck& operator=(const LeakCheck&) = delete;
  ~LeakCheck();

 private:
  Holdings before_ = CurrentHoldings();
};

#endif
