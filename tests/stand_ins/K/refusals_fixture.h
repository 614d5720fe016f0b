// A fixture that keeps the log lines of refused allocations.
#ifndef TESTS_STAND_INS_K_REFUSALS_FIXTURE_H
#define TESTS_STAND_INS_K_REFUSALS_FIXTURE_H

#include <string>
#include <vector>

#include "TRC_host.h"
#include "tests/stand_ins/K/memory_fixture.h"
#include "tests/support/host/group_files.h"

inline constexpr std::uint64_t kMiB = 1 << 20;
inline K_MemoryRefusals Refusals() {
  K_MemoryRefusals refusals{};
  K_GetMemoryRefusals(&refusals);
  return refusals;
}

class Refused : public MemoryTest {
 protected:
  Refused() {
    group_.Read();
    TRC_SetSink(Keep, &log_);
    TRC_SetLevel(TRC_Level_NOTE);
  }
  ~Refused() override {
    TRC_SetLevel(TRC_Level_PROBLEM);
    TRC_SetSink(nullptr, nullptr);
  }

  // Sets no limit, also where the machine has limits of its own.
  const GroupFiles group_{"/group"};
  const K_MemoryRefusals before_ = Refusals();
  std::vector<std::string> log_;

 private:
  // Calls K, as a sink may.
  static void Keep(std::int32_t, const char* category, const char* event, const char* text,
                   void* context) {
    K_CountHandles();
    Statistics();
    static_cast<std::vector<std::string>*>(context)->push_back(std::string(category) + " " + event +
                                                               ": " + text);
  }
};

#endif
