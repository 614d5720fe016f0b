// The fixture of the contract tests: the module, alone with the recorder.
#ifndef TESTS_SUPPORT_MODULE_CONTRACT_H
#define TESTS_SUPPORT_MODULE_CONTRACT_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "PXL.h"
#include "platform/record_access.h"
#include "tests/support/recorder/recorder.h"

// Each test finds the module as it is when it has just been loaded, and an
// empty log.
class Contract : public ::testing::Test {
 protected:
  Contract();
  ~Contract() override;

  // The module and the recorder as they are at the start of a test.
  void Unload();
  // The module alone.
  static void UnloadModule();
  // Brings the module to life and forgets that it was logged.
  void BeBorn();
  void ForgetLog();
  [[nodiscard]] const std::vector<std::string>& Log() const;

  // A World in a handle that the module allocates, or null.
  PXL_WorldHandle Make(std::int32_t depth, const Rect& rect, std::uint32_t flags = 0);
  // A handle as a caller would supply it, filled with 0x5A.
  PXL_WorldHandle CallerHandle();
  [[nodiscard]] static PXL_World& Record(PXL_WorldHandle worldH) { return *RecordOf(worldH); }

  recorder::Recorder& recorder_;
};

// A rectangle at the origin.
Rect Sized(int width, int height);

#endif
