// The audible signal, and the count of its calls.
#include <atomic>
#include <cstdint>

#include "K_host.h"
#include "host/K/system/streams.h"

namespace {

std::atomic<std::uint64_t> theBeeps{0};

}  // namespace

void K_Beep() {
  ++theBeeps;
  k::RingBell();
}

std::uint64_t K_CountBeeps() {
  return theBeeps;
}
