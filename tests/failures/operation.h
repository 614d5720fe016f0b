// An operation of the module, with the expected result of every failure inside it.
#ifndef TESTS_FAILURES_OPERATION_H
#define TESTS_FAILURES_OPERATION_H

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "tests/support/module/contract.h"
#include "tests/support/module/ways.h"

// A call of the log, counted by name from 1 at the start of the operation.
struct Fault {
  std::string call;
  int nth;
  Way way;
};

// The surroundings of an operation: the Worlds that exist before it or that it
// creates, and the failures that belong to its circumstances.
class OperationFixture : public Contract {
 public:
  using Contract::BeBorn;
  using Contract::CallerHandle;
  using Contract::Make;
  using Contract::Record;

  PXL_WorldHandle worldH = nullptr;
  PXL_WorldHandle otherH = nullptr;
  PXL_WorldHandle outH = nullptr;
  PXL_PixelProvider* provider = nullptr;  // of a World that is disposed of
  void* frame = nullptr;
  std::uint64_t frameSize = 0;
  std::uint8_t flag = 9;
  Rect wanted{};  // the bounds that a creation or an update asks for
  std::vector<Fault> circumstances;

  recorder::Script& Script() { return recorder_.script; }
};

enum class Exit { Returns, Throws };

struct Result {
  std::int32_t status;
  int reports;
  Exit exit = Exit::Returns;
  int lost = 0;  // blocks that the contract lets go
  bool operator==(const Result&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const Result& result);

inline constexpr Result kSuccess = {.status = PXL_Err_NONE, .reports = 0};

// One line of the table: these ways of failing of this call lead to this result.
struct Line {
  std::string call;
  int nth;
  std::vector<Way> ways;
  Result result;
};
using Table = std::vector<Line>;

enum class Effect { None, Creates, Refuses, Disposes, Locks, Unlocks, Updates };

struct Operation {
  std::string name;
  Effect effect;
  std::function<void(OperationFixture&)> prepare;
  std::function<std::int32_t(OperationFixture&)> run;
  Result result;  // without a further failure
  Table table;
  // Results that only two failures together have.
  std::vector<Result> ofTwo = {};
  // Whether every call moves the records. A provider's address of the frame is
  // good only where they stay.
  bool moves = true;

  [[nodiscard]] Operation WithoutMoves() const;
  // The same with outcomes that only two failures together have.
  [[nodiscard]] Operation OrOfTwo(const std::vector<Result>& results) const;
};

inline std::ostream& operator<<(std::ostream& stream, const Operation& operation) {
  return stream << operation.name;
}

// Bounds of a frame that is just large enough for the pool, and a few rows more.
Rect RectOfThePool(std::int32_t depth, int moreRows = 0);

// One list after the other.
Table operator+(Table first, const Table& second);

// The report of an image that is too large: the status is that of the operation,
// even if the report fails.
Table MemoryReportTable(std::int32_t status, int numbers);
// The first frame of the process reads the settings.
Table SettingsTable();
Table FrameTable(const std::string& allocator, std::int32_t failure, int reports);

std::vector<Operation> CreationOperations();
std::vector<Operation> RefusedCreationOperations();
std::vector<Operation> DisposalOperations();
std::vector<Operation> LockOperations();
std::vector<Operation> UpdateOperations();
std::vector<Operation> OtherOperations();

// All of the above, with distinct names.
std::vector<Operation> AllOperations();
std::string OperationName(const ::testing::TestParamInfo<Operation>& info);

#endif
