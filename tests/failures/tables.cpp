// Tables that several operations share.
#include "tests/failures/operation.h"

namespace {

// An exception inside a report loses it; K reports that exception instead.
Table LostReport(const std::string& call, int nth, std::int32_t status) {
  return {{.call = call,
           .nth = nth,
           .ways = {Way::ThrowsException},
           .result = {.status = status, .reports = 1}},
          {.call = call,
           .nth = nth,
           .ways = {Way::ThrowsLong, Way::ThrowsZero, Way::ThrowsText},
           .result = {.status = status, .reports = 0}}};
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Result& result) {
  if (result.exit == Exit::Throws) {
    stream << "an exception";
  } else {
    stream << "status " << result.status;
  }
  return stream << ", " << result.reports << " reports, " << result.lost << " lost";
}

Operation Operation::WithoutMoves() const {
  Operation still = *this;
  still.moves = false;
  return still;
}

Operation Operation::OrOfTwo(const std::vector<Result>& results) const {
  Operation more = *this;
  more.ofTwo.insert(more.ofTwo.end(), results.begin(), results.end());
  return more;
}

Table operator+(Table first, const Table& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

Table MemoryReportTable(std::int32_t status, int numbers) {
  Table table = LostReport("K_ZStringToUTF16String", 1, status);
  for (int nth = 1; nth <= numbers; ++nth) {
    table = table + LostReport("NumberToString", nth, status);
  }
  return table + LostReport("ReplaceInString", 1, status) + LostReport("K_ReportError", 1, status);
}

Table SettingsTable() {
  const std::vector<Way> anything = {Way::ThrowsException, Way::ThrowsLong, Way::ThrowsZero,
                                     Way::ThrowsText};
  const Result passesOut = {.status = PXL_Err_NONE, .reports = 0, .exit = Exit::Throws};
  return {{.call = "Instance", .nth = 1, .ways = anything, .result = passesOut},
          {.call = "Instance", .nth = 1, .ways = {Way::NewFirstKey}, .result = passesOut},
          {.call = "GetEntry", .nth = 1, .ways = anything, .result = passesOut},
          {.call = "Instance", .nth = 2, .ways = anything, .result = passesOut},
          {.call = "Instance", .nth = 2, .ways = {Way::NewSecondKey}, .result = passesOut},
          {.call = "GetEntry", .nth = 2, .ways = anything, .result = passesOut}};
}

// One failed attempt is made good by the second.
Table FrameTable(const std::string& allocator, std::int32_t failure, int reports) {
  return {{.call = "K_PurgeLoop",
           .nth = 1,
           .ways = {Way::GivesUp, Way::GivesNothing},
           .result = {.status = failure, .reports = reports}},
          {.call = allocator, .nth = 1, .ways = {Way::Fails}, .result = kSuccess},
          {.call = allocator,
           .nth = 1,
           .ways = {Way::FailsFromHere},
           .result = {.status = failure, .reports = reports}}};
}

Rect RectOfThePool(std::int32_t depth, int moreRows) {
  const int rows = 190 * 32 / depth + moreRows;
  return {0, 0, static_cast<std::int16_t>(rows), 420};
}

std::vector<Operation> AllOperations() {
  std::vector<Operation> all;
  const auto add = [&](const std::string& subject, const std::vector<Operation>& operations) {
    for (Operation operation : operations) {
      operation.name = subject + operation.name;
      all.push_back(operation);
    }
  };
  add("CreationOf", CreationOperations());
  add("Creation", RefusedCreationOperations());
  add("DisposalOf", DisposalOperations());
  add("", LockOperations());
  add("", UpdateOperations());
  add("", OtherOperations());
  return all;
}

std::string OperationName(const ::testing::TestParamInfo<Operation>& info) {
  return info.param.name;
}
