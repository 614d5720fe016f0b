// Where a call of the module with the stand-in host is played while memory runs
// out, and what has to be so before and after it.
#ifndef TESTS_OUT_OF_MEMORY_STAGE_H
#define TESTS_OUT_OF_MEMORY_STAGE_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "K_host.h"
#include "PXL.h"
#include "QDE_host.h"

struct Stage {
  PXL_WorldHandle worldH = nullptr;
  PXL_WorldHandle otherH = nullptr;
  void* frame = nullptr;
  std::uint64_t frameSize = 0;
  std::uint8_t flag = 9;
  PXL_World before{};  // the record of `worldH` before the call
};

enum class Reports {
  EachFailure,  // a status that is not 0 is reported
  Always,       // there is a report whatever happens
  Never
};

struct Scenario {
  std::string name;
  std::function<void(Stage&)> prepare;
  std::function<std::int32_t(Stage&)> run;
  std::set<std::int32_t> statuses;  // what a shortage may make of it
  Reports reports = Reports::EachFailure;
  // What holds afterwards beside what always does.
  std::function<void(const Stage&, std::int32_t status)> check = [](const Stage&, std::int32_t) {};
  std::int32_t undisturbed = 0;  // what the call gives when nothing is short

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

// What goes wrong in one call: begins and ends around it, and knows how often it
// struck.
class Trouble {
 public:
  virtual ~Trouble() = default;
  virtual void Begin() = 0;
  virtual void End() = 0;
  [[nodiscard]] virtual std::int64_t Failures() const = 0;
};

// The shortage of one call: so many allocations succeed, and so many fail.
class Lack : public Trouble {
 public:
  Lack(std::int64_t successes, std::int64_t failures)
      : successes_(successes), failures_(failures) {}
  void Begin() override;
  void End() override;
  [[nodiscard]] std::int64_t Failures() const override;

 private:
  std::int64_t successes_;
  std::int64_t failures_;
};

struct Played {
  std::int32_t status = 0;
  bool threw = false;  // out of memory, as an exception
  std::int64_t failures = 0;
  int reports = 0;
};

// Plays a scenario from the beginning to the end with the trouble in its call,
// and checks all that has to be so.
Played Play(const Scenario& scenario, Trouble& trouble);

// What a host would count of its own, and what the system counts of it.
struct Levels {
  std::uint64_t handles;
  std::uint64_t poolBlocks;
  std::uint64_t surfaces;
  std::int64_t application;
  std::int64_t system;
  std::int32_t worlds;
  std::set<int> descriptors;
  bool operator==(const Levels&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const Levels& levels);
Levels CurrentLevels();

// All that is kept for re-use and can be let go of.
void EmptyCaches();

#endif
