#include "tests/failures/operation.h"

namespace {

// Something thrown inside a report loses it; K tells of an exception instead.
Table LostReport(const std::string& call, int nth, std::int32_t status) {
  return {{call, nth, {Way::ThrowsException}, {status, 1}},
          {call, nth, {Way::ThrowsLong, Way::ThrowsZero, Way::ThrowsText}, {status, 0}}};
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
  const Result passesOut = {0, 0, Exit::Throws};
  return {{"Instance", 1, anything, passesOut},
          {"Instance", 1, {Way::NewFirstKey}, passesOut},
          {"GetEntry", 1, anything, passesOut},
          {"Instance", 2, anything, passesOut},
          {"Instance", 2, {Way::NewSecondKey}, passesOut},
          {"GetEntry", 2, anything, passesOut}};
}

// One failed attempt is made good by the second.
Table FrameTable(const std::string& allocator, std::int32_t failure, int reports) {
  return {{"K_PurgeLoop", 1, {Way::GivesUp, Way::GivesNothing}, {failure, reports}},
          {allocator, 1, {Way::Fails}, {0, 0}},
          {allocator, 1, {Way::FailsFromHere}, {failure, reports}}};
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
