#include "tests/contract/faults/operation.h"

namespace {

// Something thrown inside a report loses it; K tells of an exception instead.
Table LostReport(const std::string& call, int nth, std::int32_t status) {
  return {{call, nth, {Way::ThrowsException}, {status, 1}},
          {call, nth, {Way::ThrowsLong, Way::ThrowsZero, Way::ThrowsText}, {status, 0}}};
}

}  // namespace

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
