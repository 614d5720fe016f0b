// The program while each of its calls to the C library fails in turn: it reports the
// failure in one line and leaves no incomplete file, or its output is the same as
// without the failure.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>

#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"
#include "tools/pxl/sheets/label.h"

namespace fs = std::filesystem;

namespace {

using Files = std::map<std::string, std::string>;
using Calls = std::map<std::string, long>;

struct Job {
  std::vector<std::string> arguments;
  // The maximum of failing calls of one kind, spread over all of them.
  long mostAllocations;
  long mostOthers;
  int success = 0;
  int failure = 1;
};

struct Result {
  Outcome outcome;
  Files files;
};

// Calls of a kind, from the first to the last that may fail.
struct Range {
  std::string kind;
  long first;
  long last;
  long most;
};

bool Starts(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

// The program cannot do without these.
bool IsAlwaysFatal(const std::string& kind) {
  return kind == "write" || kind == "rename" || kind == "mkdir" || kind == "reserve";
}

// The number of calls of each kind; for a longer run by hand.
long LeastPoints() {
  const char* points = std::getenv("PXL_FAILING_POINTS");
  return points != nullptr ? std::strtol(points, nullptr, 10) : 0;
}

class FailingCalls : public testing::Test {
 protected:
  FailingCalls() {
    RunPxl({"convert", SamplePicture("astronaut.png"), "-o", Path("in.png"), "--depth", "32"});
    fs::copy_file(pxl::FontFile(), folder_ / "font.ttf");
    for (const std::string folder : {"out", "mapped"}) fs::create_directory(folder_ / folder);
  }

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  // Every kind of call fails; allocations only after those `before`.
  void ExpectSoundFailures(const Job& job, const Calls& before) {
    const Result good = Run(job, {"PXL_CALL_COUNTS", Path("counts")});
    ASSERT_EQ(good.outcome.code, job.success) << good.outcome.errors;
    std::cout << job.arguments.front() << ":";
    for (const auto& [kind, count] : ReadCounts()) {
      const bool memory = kind == "allocation";
      const auto earlier = memory ? before.find(kind) : before.end();
      const long first = earlier != before.end() ? earlier->second : 1;
      const long most = std::max(memory ? job.mostAllocations : job.mostOthers, LeastPoints());
      if (count > 0) FailEach(job, good, {kind, first, count, most});
    }
    std::cout << std::endl;
  }

  // The same without the allocations before the command line is parsed, which are the
  // same for every verb.
  void ExpectSoundFailures(const Job& job) {
    Run({{"--version"}, 0, 0}, {"PXL_CALL_COUNTS", Path("counts")});
    ExpectSoundFailures(job, ReadCounts());
  }

 private:
  Result Run(const Job& job, const Setting& setting) {
    for (const auto& entry : fs::directory_iterator(folder_ / "out")) fs::remove_all(entry);
    Result result;
    result.outcome = RunPxl(job.arguments, {{"VETRIX_MAPPED_DIR", Path("mapped")},
                                            {"PXL_FONT", Path("font.ttf")},
                                            {"LD_PRELOAD", PXL_FAILING_CALLS},
                                            setting});
    for (const auto& entry : fs::recursive_directory_iterator(folder_ / "out")) {
      if (entry.is_regular_file()) result.files[entry.path()] = ReadBytes(entry.path());
    }
    return result;
  }

  Calls ReadCounts() const {
    std::istringstream lines(ReadBytes(folder_ / "counts"));
    Calls calls;
    std::string kind;
    long count = 0;
    while (lines >> kind >> count) calls[kind] = count;
    return calls;
  }

  void FailEach(const Job& job, const Result& good, const Range& range) {
    const long steps = range.last - range.first;
    const long points = std::min(steps + 1, range.most);
    long failures = 0;
    for (long i = 0; i < points; ++i) {
      const long call = range.first + (points == 1 ? 0 : i * steps / (points - 1));
      if (FailOne(job, good, range.kind, call)) ++failures;
    }
    std::cout << " " << range.kind << " " << points << " of " << range.last << " (" << failures
              << " fatal)";
    EXPECT_TRUE(!IsAlwaysFatal(range.kind) || failures == points) << range.kind;
  }

  // Whether the program failed.
  bool FailOne(const Job& job, const Result& good, const std::string& kind, long call) {
    const std::string choice = kind + ":" + std::to_string(call);
    SCOPED_TRACE(job.arguments.front() + " with " + choice);
    const Result bad = Run(job, {"PXL_FAILING_CALL", choice});
    EXPECT_TRUE(fs::is_empty(folder_ / "mapped"));
    const bool failed = bad.outcome.code != job.success;
    if (failed) {
      ExpectFailure(job, good, bad, kind);
    } else {
      ExpectSame(good, bad);
    }
    return failed;
  }

  static void ExpectSame(const Result& good, const Result& bad) {
    EXPECT_EQ(bad.outcome.output, good.outcome.output);
    EXPECT_EQ(bad.outcome.errors, good.outcome.errors);
    EXPECT_TRUE(bad.files == good.files) << "another file";
  }

  void ExpectFailure(const Job& job, const Result& good, const Result& bad,
                     const std::string& kind) const {
    const Outcome& outcome = bad.outcome;
    const bool memory = kind == "allocation" && outcome.errors == "pxl: not enough memory\n";
    // Before the command line is parsed there is one code only.
    EXPECT_TRUE(outcome.code == job.failure || (memory && outcome.code == 2)) << outcome.code;
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: ")) << outcome.errors;
    EXPECT_TRUE(memory || NamesAFile(outcome.errors)) << outcome.errors;
    EXPECT_EQ(outcome.errors.find("damaged"), std::string::npos) << outcome.errors;
    for (const auto& [name, bytes] : bad.files) {
      const auto place = good.files.find(name);
      EXPECT_TRUE(place != good.files.end() && place->second == bytes) << name;
    }
    EXPECT_TRUE(Starts(good.outcome.output, outcome.output)) << outcome.output;
  }

  bool NamesAFile(const std::string& line) const {
    return Starts(line, "pxl: " + folder_.path().string()) ||
           Starts(line, "pxl: standard output: ");
  }

  TemporaryFolder folder_;
};

}  // namespace

TEST_F(FailingCalls, OfTheCommandLine) {
  ExpectSoundFailures({{"--version"}, 20, 8}, {});
}

TEST_F(FailingCalls, OfInfo) {
  ExpectSoundFailures({{"info", "--json", Path("in.png")}, 20, 8});
}

TEST_F(FailingCalls, OfConvert) {
  ExpectSoundFailures(
      {{"convert", Path("in.png"), "-o", Path("out/o.png"), "--depth", "64"}, 20, 8});
}

TEST_F(FailingCalls, OfConvertInMappedFiles) {
  ExpectSoundFailures(
      {{"convert", Path("in.png"), "-o", Path("out/o.exr"), "--depth", "128", "--mapped"}, 20, 8});
}

TEST_F(FailingCalls, OfConvertFromFloats) {
  RunPxl({"convert", Path("in.png"), "-o", Path("in.exr"), "--depth", "128"});
  ExpectSoundFailures(
      {{"convert", Path("in.exr"), "-o", Path("out/o.png"), "--depth", "32"}, 20, 8});
}

TEST_F(FailingCalls, OfSheet) {
  ExpectSoundFailures({{"sheet", Path("in.png"), "-o", Path("out/s.png")}, 6, 3});
}

TEST_F(FailingCalls, OfModes) {
  ExpectSoundFailures({{"modes", Path("in.png"), Path("in.png"), "-o", Path("out/m.png")}, 6, 3});
}

TEST_F(FailingCalls, OfDemo) {
  ExpectSoundFailures({{"demo", Path("in.png"), "-o", Path("out/demo")}, 6, 3});
}

TEST_F(FailingCalls, OfDiff) {
  const std::string other = Path("other.png");
  RunPxl({"convert", SamplePicture("astronaut.png"), "-o", other, "--depth", "8"});
  ExpectSoundFailures(
      {{"diff", Path("in.png"), other, "--any-channels", "-o", Path("out/d.png")}, 20, 8, 1, 2});
}
