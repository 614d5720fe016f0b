// Which ways of failing each imported call has.
#include "tests/support/module/ways.h"

#include <map>
#include <set>
#include <stdexcept>
#include <utility>

#include "PXL.h"
#include "tests/support/recorder/recorder.h"

namespace {

using Ways = std::vector<Way>;

const Ways kThrows = {Way::ThrowsException, Way::ThrowsLong, Way::ThrowsZero, Way::ThrowsText};
const Ways kAllocates = {Way::Fails, Way::FailsFromHere};
const Ways kRefuses = {Way::Fails};
const Ways kDraws = {Way::Fails, Way::MemoryFull};

const std::map<std::string, Ways> kWays = {
    {"new", kAllocates},
    {"malloc", kAllocates},
    {"K_AllocateRecycledPtr", kAllocates},
    {"K_AllocateHandleClear", kRefuses},
    {"K_PurgeLoop", {Way::GivesUp, Way::GivesNothing, Way::GivesCode}},
    {"K_CheckVersions", kRefuses},
    {"Q_CheckVersions", kRefuses},
    {"TXT_CheckVersions", kRefuses},
    {"Kp_ReportQuexErrString", {Way::Answers99}},
    {"K_TranslateAndReportException",
     {Way::AnswersZero, Way::ThrowsException, Way::ThrowsLong, Way::ThrowsZero, Way::ThrowsText}},
    {"K_ZStringToUTF16String", kThrows},
    {"K_ReportError", kThrows},
    {"NumberToString", kThrows},
    {"ReplaceInString", kThrows},
    {"Instance", kThrows},
    {"GetEntry", kThrows},
    {"Init", kThrows},
    {"GetAddress",
     {Way::Fails, Way::FailsFromHere, Way::ThrowsException, Way::ThrowsLong, Way::ThrowsZero,
      Way::ThrowsText}},
    {"UnmapMemory", kThrows},
    {"CloseFileHandleIfPossible", kThrows},
    {"Reset", kThrows},
    {"NewGWorld", kDraws},
    {"UpdateGWorld", kDraws},
    {"LockPixels", kRefuses},
    {"NewEmptyHandle", kRefuses},
    {"QDE_GetGWorld32PixmapFormat", kRefuses},
    {"QDE_SetGWorld32PixmapFormat", kRefuses},
};

// These return no failure, and throw nothing.
const std::set<std::string> kNeverFail = {"HLock",
                                          "HUnlock",
                                          "K_FreeHandle",
                                          "K_GetRecycledPtrBaseAddress",
                                          "K_FreeRecycledPtr",
                                          "K_AccountAllocation",
                                          "K_AccountSystemAllocation",
                                          "K_PurgeHandlesAndCompact",
                                          "K_Beep",
                                          "K_ZLookupLStrCache",
                                          "K_ReportFailedVerification",
                                          "Kp_ReportErrString",
                                          "Kp_ReportError",
                                          "Kp_SysEnglishError",
                                          "TRC_Log",
                                          "free",
                                          "MemoryMappedFile",  // fails by the `new` inside it
                                          "~MemoryMappedFile",
                                          "DisposeGWorld",
                                          "GetGWorldDevice",
                                          "GetPortPixMap",
                                          "GetPixBaseAddr",
                                          "UnlockPixels",
                                          "GetPort",
                                          "MacSetPort",
                                          "GetGDevice",
                                          "SetGDevice",
                                          "GetPortBitMapForCopyBits",
                                          "CopyBits",
                                          "MacOffsetRect",
                                          "TickCount",
                                          "QDE_ForceBitmapCreationBitfields",
                                          "QDE_ConvertBitsFast"};

const std::map<Way, const char*> kNames = {
    {Way::Fails, "fails"},
    {Way::FailsFromHere, "fails from here on"},
    {Way::MemoryFull, "finds memory full"},
    {Way::GivesUp, "gives up"},
    {Way::GivesNothing, "gives nothing"},
    {Way::GivesCode, "succeeds with a code"},
    {Way::NoMap, "finds no map"},
    {Way::Answers99, "answers 99"},
    {Way::AnswersZero, "answers 0"},
    {Way::ThrowsException, "throws an exception"},
    {Way::ThrowsLong, "throws a long"},
    {Way::ThrowsZero, "throws a long of 0"},
    {Way::ThrowsText, "throws a text"},
    {Way::NewProvider, "no memory for the provider"},
    {Way::NewName, "no memory for the file's name"},
    {Way::NewNumberedName, "no memory for the name's number"},
    {Way::NewFile, "no memory for the file object"},
    {Way::NewInsideFile, "no memory inside the file object"},
    {Way::NewFirstKey, "no memory for the first key"},
    {Way::NewSecondKey, "no memory for the second key"},
};

const std::map<Way, recorder::Thrower> kThrowers = {
    {Way::ThrowsException, [] { throw std::runtime_error("thrown"); }},
    {Way::ThrowsLong, [] { throw 4321L; }},
    {Way::ThrowsZero, [] { throw 0L; }},
    {Way::ThrowsText, [] { throw "thrown"; }},
};

// The name's text takes 20 bytes, and 39 once its number is added; the keys of
// the settings are 18 and 23 characters long.
const std::map<Way, std::size_t> kNewSizes = {
    {Way::NewProvider, sizeof(PXL_PixelProvider)},
    {Way::NewName, 20},
    {Way::NewNumberedName, 39},
    {Way::NewFile, sizeof(vetrix::MemoryMappedFile)},
    {Way::NewInsideFile, 64},
    {Way::NewFirstKey, 19},
    {Way::NewSecondKey, 24},
};

// Where a failing call gets its error from.
void SetErrors(Way way) {
  recorder::Script& script = recorder::Current().script;
  const std::int16_t error = way == Way::MemoryFull ? kLayerMemoryFull : kLayerError;
  script.newGWorldError = error;
  script.updateGWorldError = error;
}

void SetAnswers(const std::string& name) {
  recorder::Script& script = recorder::Current().script;
  if (name == "K_CheckVersions") script.versionsOfK = 5;
  if (name == "Q_CheckVersions") script.versionsOfQ = 5;
  if (name == "TXT_CheckVersions") script.versionsOfTXT = 5;
  if (name.ends_with("PixmapFormat")) script.pixmapFormatError = kLayerError;
}

std::int32_t RunAttempts(K_PurgeAttempt attempt, void* context, std::int32_t codeOfSuccess) {
  for (int round = 0; round <= recorder::Current().script.purgeRounds; ++round) {
    std::uint8_t done = 0;
    const std::int32_t code = attempt(context, &done);
    if (done == 1) return code != 0 ? code : codeOfSuccess;
  }
  return 4;
}

// The next loop makes no attempt, or returns a code after a success.
void ScriptLoop(Way way) {
  recorder::Current().script.purgeLoop = [way, next = true](std::uint64_t, K_PurgeAttempt attempt,
                                                            void* context) mutable {
    const bool odd = std::exchange(next, false);
    if (odd && way == Way::GivesUp) return 4;
    if (odd && way == Way::GivesNothing) return 0;
    return RunAttempts(attempt, context, odd ? 9 : 0);
  };
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, Way way) {
  return stream << kNames.at(way);
}

std::vector<Way> WaysOf(const std::string& name) {
  const auto found = kWays.find(name);
  if (found != kWays.end()) return found->second;
  if (!kNeverFail.contains(name)) throw std::logic_error("an unknown call: " + name);
  return {};
}

std::vector<std::string> ImportedCalls() {
  std::vector<std::string> calls(kNeverFail.begin(), kNeverFail.end());
  for (const auto& [name, ways] : kWays) {
    if (name != "new") calls.push_back(name);
  }
  return calls;
}

bool IsThrow(Way way) {
  return kThrowers.contains(way);
}

void FailCurrentCall(const std::string& name, Way way) {
  recorder::Recorder& recorder = recorder::Current();
  if (IsThrow(way)) return recorder.Throw(name, kThrowers.at(way));
  if (kNewSizes.contains(way)) return recorder::FailNewOf(kNewSizes.at(way));
  switch (way) {
    case Way::GivesUp:
    case Way::GivesNothing:
    case Way::GivesCode:
      return ScriptLoop(way);
    case Way::NoMap:
      recorder.script.surfaceWithoutMap = true;
      return;
    case Way::Answers99:
      recorder.script.quexErrString = [](std::int32_t) { return 99; };
      return;
    case Way::AnswersZero:
      recorder.script.translatedException = 0;
      return;
    default:
      SetErrors(way);
      SetAnswers(name);
      recorder.Fail(name);
  }
}

bool IsReport(const std::string& name) {
  return std::set<std::string>{
      "Kp_ReportErrString", "Kp_ReportQuexErrString",     "Kp_ReportError",
      "K_ReportError",      "K_ReportFailedVerification", "K_TranslateAndReportException"}
      .contains(name);
}
