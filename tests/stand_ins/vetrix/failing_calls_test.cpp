// Tests of mapped files while calls to the system fail: each call, for each
// reason, alone and together with the next.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <system_error>

#include "host/vetrix/files/backing_file_posix.h"
#include "tests/stand_ins/vetrix/mapped_file_fixture.h"
#include "tests/support/failing_system_calls/file_calls_posix.h"

namespace {

using failing_system_calls::Failure;
using vetrix::MemoryMappedFile;

const std::map<std::string, std::vector<int>> kErrors = {
    {"getrlimit", {EFAULT}},
    {"open", {EACCES, EMFILE, ENFILE, ENOENT, ENOSPC, EOPNOTSUPP, EISDIR, EROFS, EIO, EINTR}},
    {"mkostemp", {EACCES, EMFILE, ENFILE, ENOENT, ENOSPC, EROFS, EIO, EINTR}},
    {"unlink", {EACCES, EBUSY, EIO, EROFS, EINTR}},
    {"posix_fallocate", {ENOSPC, EFBIG, EIO, EOPNOTSUPP, EDQUOT, EINTR}},
    {"ftruncate", {EIO, EINTR}},
    {"close", {EIO, EINTR}},
    {"mmap", {ENOMEM, EACCES, EAGAIN, ENODEV}},
    {"munmap", {ENOMEM}}};

// Counts of the cases, printed at the end.
struct Numbers {
  int calls = 0;
  int pairs = 0;
  int exceptions = 0;
};
Numbers numbers;

class PrintedNumbers : public testing::Environment {
  void TearDown() override {
    std::printf("%d calls to the system failed, and %d pairs of neighbours; %d exceptions\n",
                numbers.calls, numbers.pairs, numbers.exceptions);
  }
};
const testing::Environment* const kPrintedNumbers =
    testing::AddGlobalTestEnvironment(new PrintedNumbers);

struct Life {
  const char* name;
  std::function<void(MemoryMappedFile& file)> live;
  std::vector<Failure> always = {};  // fails in each case
};

std::ostream& operator<<(std::ostream& stream, const Life& life) {
  return stream << life.name;
}

void Init(MemoryMappedFile& file) {
  file.Init("a", kSize, kMode);
}

void Write(MemoryMappedFile& file) {
  std::memset(file.GetAddress(), 0x5A, kSize);
}

class FailingCalls : public testing::TestWithParam<Life> {
 protected:
  using Calls = std::vector<std::string>;

  Calls Live(const std::vector<Failure>& failures);
  void CheckWhatIsLeft();

  TemporaryFolder folder_;
  ScopedVariable variable_{"VETRIX_MAPPED_DIR", folder_.Path()};
};

bool IsNamedIn(const std::string& message, const std::vector<Failure>& failures) {
  return std::ranges::any_of(failures, [&message](const Failure& failure) {
    const std::string reason = std::generic_category().message(failure.error);
    return message.find(reason) != std::string::npos;
  });
}

// Runs the life with these failures. Returns the calls it made.
FailingCalls::Calls FailingCalls::Live(const std::vector<Failure>& failures) {
  std::vector<Failure> all = GetParam().always;
  all.insert(all.end(), failures.begin(), failures.end());
  Calls calls;
  {
    MemoryMappedFile file;
    failing_system_calls::Begin(all);
    try {
      GetParam().live(file);
    } catch (const std::system_error& problem) {
      ++numbers.exceptions;
      EXPECT_TRUE(IsNamedIn(problem.what(), failures)) << problem.what();
      EXPECT_EQ(std::string(problem.what()).find('\n'), std::string::npos);
    }
    calls = failing_system_calls::Calls();
    EXPECT_EQ(failing_system_calls::Failures(), all.size());
    failing_system_calls::End();
  }
  CheckWhatIsLeft();
  return calls;
}

// Only a name that cannot be removed stays, with an empty file.
void FailingCalls::CheckWhatIsLeft() {
  for (const auto& left : std::filesystem::directory_iterator(folder_.Path())) {
    EXPECT_EQ(std::filesystem::file_size(left.path()), 0U);
    EXPECT_GE(failing_system_calls::Failures(), GetParam().always.size() + 2) << left.path();
    std::filesystem::remove(left.path());
  }
  // A view that could not be unmapped is unmapped with the next file.
  {
    MemoryMappedFile next;
    Init(next);
    Write(next);
    EXPECT_EQ(static_cast<const char*>(next.GetAddress())[kSize - 1], 0x5A);
  }
  EXPECT_EQ(failing_system_calls::OpenDescriptors(), 0U);
  EXPECT_EQ(failing_system_calls::Views(), 0U);
}

std::vector<Failure> FailuresOf(const std::vector<std::string>& calls, std::size_t nth) {
  std::vector<Failure> failures;
  if (nth > calls.size()) return failures;
  for (const int error : kErrors.at(calls[nth - 1])) failures.push_back({nth, error});
  return failures;
}

TEST_P(FailingCalls, LoseNothing) {
  const Calls undisturbed = Live({});
  ASSERT_FALSE(undisturbed.empty());
  for (std::size_t nth = GetParam().always.size() + 1; nth <= undisturbed.size(); ++nth) {
    for (const Failure& first : FailuresOf(undisturbed, nth)) {
      SCOPED_TRACE(undisturbed[nth - 1] + ": " + std::strerror(first.error));
      const Calls disturbed = Live({first});
      ++numbers.calls;
      for (const Failure& second : FailuresOf(disturbed, nth + 1)) {
        SCOPED_TRACE("and then " + disturbed[nth] + ": " + std::strerror(second.error));
        Live({first, second});
        ++numbers.pairs;
      }
    }
  }
}

const Life kLives[] = {
    {"IsOnlyMade", Init},
    {"IsMadeAndReset",
     [](MemoryMappedFile& file) {
       Init(file);
       file.Reset();
     }},
    {"IsResetWhileMapped",
     [](MemoryMappedFile& file) {
       Init(file);
       Write(file);
       file.Reset();
     }},
    {"IsUnmappedAndMappedAgain",
     [](MemoryMappedFile& file) {
       Init(file);
       Write(file);
       file.UnmapMemory();
       EXPECT_EQ(static_cast<const char*>(file.GetAddress())[kSize - 1], 0x5A);
       file.UnmapMemory();
       file.Reset();
     }},
    {"IsMadeAfterAnother",
     [](MemoryMappedFile& file) {
       Init(file);
       Write(file);
       file.Reset();
       Init(file);
       Write(file);
       file.Reset();
     }},
    {"NeedsAName",
     [](MemoryMappedFile& file) {
       Init(file);
       Write(file);
       file.Reset();
     },
     {{1, EOPNOTSUPP}}},
};

INSTANTIATE_TEST_SUITE_P(OfAFileThat, FailingCalls, testing::ValuesIn(kLives),
                         [](const auto& tested) { return tested.param.name; });

class StuckView : public MappedFile {
 protected:
  using Calls = std::vector<std::string>;

  StuckView() {
    Init(file_);
    Write(file_);
    failing_system_calls::Begin({{1, ENOMEM}});
  }
  ~StuckView() override { failing_system_calls::End(); }
};

TEST_F(StuckView, IsReportedAndStays) {
  try {
    file_.UnmapMemory();
    ADD_FAILURE() << "nothing was thrown";
  } catch (const std::system_error& problem) {
    EXPECT_STREQ(problem.what(), "cannot unmap 'a': Cannot allocate memory");
  }
  EXPECT_EQ(static_cast<const char*>(file_.GetAddress())[0], 0x5A);
  file_.UnmapMemory();
  EXPECT_EQ(failing_system_calls::Views(), 0U);
}

TEST_F(StuckView, GoesWithTheNextFileAndItsSpaceAtOnce) {
  file_.Reset();
  EXPECT_EQ(failing_system_calls::Calls(), (Calls{"munmap", "ftruncate", "close"}));
  EXPECT_EQ(failing_system_calls::Views(), 1U);
  EXPECT_EQ(failing_system_calls::OpenDescriptors(), 0U);
  Init(file_);
  failing_system_calls::Begin({});
  file_.Reset();
  EXPECT_EQ(failing_system_calls::Calls(), (Calls{"munmap", "close"}));
  EXPECT_EQ(failing_system_calls::Views(), 0U);
  EXPECT_EQ(failing_system_calls::OpenDescriptors(), 0U);
}

}  // namespace
