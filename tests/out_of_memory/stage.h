// Plays a call of the module with the stand-in host while memory runs out, and
// checks the state before and after it.
#ifndef TESTS_OUT_OF_MEMORY_STAGE_H
#define TESTS_OUT_OF_MEMORY_STAGE_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "K_host.h"
#include "PXL.h"
#include "QDE_host.h"
#include "tests/support/host/kept_reports.h"
#include "tests/support/host/leak_check.h"

struct Stage {
  PXL_WorldHandle worldH = nullptr;
  PXL_WorldHandle otherH = nullptr;
  void* frame = nullptr;
  std::uint64_t frameSize = 0;
  std::uint8_t flag = 9;
  PXL_World before{};  // the record of `worldH` before the call
};

enum class ExpectedReports {
  EachFailure,  // a status that is not 0 is reported
  Always,       // every call makes a report
  Never
};

struct Scenario {
  std::string name;
  std::function<void(Stage&)> prepare;
  std::function<std::int32_t(Stage&)> run;
  std::set<std::int32_t> statuses;  // those that a shortage may lead to
  ExpectedReports reports = ExpectedReports::EachFailure;
  // Further checks after the call.
  std::function<void(const Stage&, std::int32_t status)> check = [](const Stage&, std::int32_t) {};
  std::int32_t undisturbed = 0;  // the status when nothing is short

  [[nodiscard]] Scenario Giving(std::int32_t status) const {
    Scenario giving = *this;
    giving.undisturbed = status;
    return giving;
  }
};
std::ostream& operator<<(std::ostream& stream, const Scenario& scenario);

std::vector<Scenario> AllScenarios();
// Those in which a mapped file is made, mapped, unmapped or disposed of.
std::vector<Scenario> MappedScenarios();
// Creates a World of that kind.
std::int32_t MakeAMappedFile(Stage& stage);

// The failures of one call of the module: begun before it and ended after it.
class InjectedFailures {
 public:
  virtual ~InjectedFailures() = default;
  virtual void Begin() = 0;
  virtual void End() = 0;
  // How many there were.
  [[nodiscard]] virtual std::int64_t Failures() const = 0;
};

// So many allocations of the call succeed, and the next ones fail.
class FailingAllocations : public InjectedFailures {
 public:
  FailingAllocations(std::int64_t successes, std::int64_t failures)
      : successes_(successes), failures_(failures) {}
  void Begin() override;
  void End() override;
  [[nodiscard]] std::int64_t Failures() const override;

 private:
  std::int64_t successes_;
  std::int64_t failures_;
};

// More than any scenario makes.
constexpr std::size_t kMostReports = 16;

struct Played {
  std::int32_t status = 0;
  bool threw = false;  // out of memory, as an exception
  std::int64_t failures = 0;
  std::size_t reports = 0;
};

// Plays a scenario from the beginning to the end with the failures in its call,
// and checks all that has to be so.
Played Play(const Scenario& scenario, InjectedFailures& injected);

// The holdings of host, module and process.
struct Levels {
  Holdings holdings;
  std::int32_t worlds;
  std::set<int> descriptors;
  bool operator==(const Levels&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const Levels& levels);
Levels CurrentLevels();

// All that is kept for re-use and can be let go of.
void EmptyCaches();

#endif
