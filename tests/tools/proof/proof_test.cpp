// The proof detects routines that are faulty on purpose.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdint>
#include <cstring>

#include "tools/proof/difference.h"
#include "tools/proof/digest.h"
#include "tools/proof/fenced_memory.h"
#include "tools/proof/floats.h"
#include "tools/proof/inputs.h"
#include "tools/proof/overlaps.h"
#include "tools/proof/shapes.h"
#include "tools/proof/values.h"
#include "tools/proof/verdict.h"
#include "transfer/kernels/conversion_tables.h"

using proof::Finding;
using proof::Run;
using proof::Subject;
using ::testing::AllOf;
using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::Optional;
using ::testing::StartsWith;

namespace {

using Byte = unsigned char;

Subject Named(const std::vector<Subject>& subjects, const std::string& name) {
  for (const Subject& subject : subjects) {
    if (subject.name == name) return subject;
  }
  ADD_FAILURE() << "no " << name;
  return {};
}

Subject Conversion(const std::string& name) {
  PXLp_BuildConversionTables();
  return Named(proof::ConversionSubjects(simd::Level::Baseline), "baseline " + name);
}

Subject Routine(const std::string& name) {
  return Named(proof::RoutineSubjects(simd::Level::Baseline), "baseline " + name);
}

// The subject with a fault: `spoil` is called after each run with the source, the
// destination and the count.
template <typename Spoil>
Subject Spoilt(Subject subject, Spoil spoil) {
  subject.run = [run = subject.run, spoil](const void* source, void* destination,
                                           std::size_t count) {
    run(source, destination, count);
    spoil(static_cast<const Byte*>(source), static_cast<Byte*>(destination), count);
  };
  return subject;
}

const char* const kConversions[] = {"8 to 16", "8 to float", "16 to 8", "float to 8"};

}  // namespace

TEST(Proof, FindsNothingWrongWithThePlainLoops) {
  for (const Subject& subject :
       {Conversion("8 to float, caching"), Conversion("float to 8, streaming"),
        Routine("copy, caching"), Routine("fill, streaming"), Routine("reversal of bytes")}) {
    EXPECT_EQ(proof::Check(subject), std::nullopt);
  }
}

TEST(Proof, KnowsEveryRoutineOfALevel) {
  std::vector<std::string> names;
  for (const Subject& s : proof::SubjectsOf(simd::Level::Baseline)) names.push_back(s.name);
  EXPECT_THAT(names,
              ::testing::ElementsAre("baseline 8 to 16, caching", "baseline 8 to 16, streaming",
                                     "baseline 8 to float, caching",
                                     "baseline 8 to float, streaming", "baseline 16 to 8, caching",
                                     "baseline 16 to 8, streaming", "baseline float to 8, caching",
                                     "baseline float to 8, streaming", "baseline copy, caching",
                                     "baseline copy, streaming", "baseline fill, caching",
                                     "baseline fill, streaming", "baseline reversal of bytes"));
}

TEST(Proof, SeesALastLaneThatIsOffByOne) {
  for (const std::string name : kConversions) {
    const Subject subject = Conversion(name + ", streaming");
    const std::size_t size = subject.destination.elementBytes;
    const auto lastOfVector = [size](const Byte*, Byte* destination, std::size_t count) {
      if (count >= 16) ++destination[15 * size];
    };
    EXPECT_THAT(proof::CheckShapes(Spoilt(subject, lastOfVector)),
                Optional(AllOf(StartsWith(subject.name + ": 16 elements, source at "),
                               HasSubstr(": byte " + std::to_string(15 * size) + " is 0x"))));
  }
}

TEST(Proof, SeesAByteThatIsWrittenBehindTheRun) {
  for (const Subject& subject :
       {Conversion("8 to float, caching"), Routine("copy, streaming"), Routine("fill, caching")}) {
    const std::size_t size = subject.destination.elementBytes;
    // Only inside the memory, where no fence is.
    const auto one = [size](const Byte*, Byte* destination, std::size_t count) {
      Byte* end = destination + count * size;
      if (std::bit_cast<std::uintptr_t>(end) % 4096 != 0) *end = static_cast<Byte>(~*end);
    };
    EXPECT_THAT(proof::CheckShapes(Spoilt(subject, one)),
                Optional(HasSubstr(": byte 1 behind the run is 0x")));
  }
}

TEST(Proof, SeesAByteThatIsWrittenBeforeTheRun) {
  const auto one = [](const Byte*, Byte* destination, std::size_t) {
    if (std::bit_cast<std::uintptr_t>(destination) % 4096 != 0) destination[-3] ^= 1;
  };
  EXPECT_THAT(proof::CheckShapes(Spoilt(Conversion("16 to 8, caching"), one)),
              Optional(HasSubstr(": byte 3 before the run is 0x")));
}

TEST(Proof, SeesAChangedSource) {
  const auto change = [](const Byte* source, Byte*, std::size_t count) {
    Byte* writable = nullptr;
    std::memcpy(&writable, &source, sizeof source);
    if (count == 40) ++writable[7];
  };
  EXPECT_THAT(proof::CheckShapes(Spoilt(Conversion("8 to 16, caching"), change)),
              Optional(HasSubstr(": byte 7 of the source is 0x")));
}

TEST(Proof, CheckTakesShapesOverlapsAndValues) {
  const auto wrongShape = [](const Byte*, Byte* destination, std::size_t count) {
    if (count == 9) ++destination[0];
  };
  EXPECT_THAT(proof::Check(Spoilt(Routine("fill, caching"), wrongShape)),
              Optional(HasSubstr(": 9 elements, ")));
  const auto wrongOverlap = [](const Byte* source, Byte* destination, std::size_t count) {
    if (source + 1 == destination && count > 1) ++destination[1];
  };
  EXPECT_THAT(proof::Check(Spoilt(Routine("copy, caching"), wrongOverlap)),
              Optional(HasSubstr(" bytes up by 1: ")));
  const auto wrongValue = [](const Byte* source, Byte* destination, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      if (std::memcmp(source + i * 4, "\0\0\x80\x7F", 4) == 0) ++destination[i];
    }
  };
  EXPECT_THAT(proof::Check(Spoilt(Conversion("float to 8, caching"), wrongValue)),
              Optional(HasSubstr(": the element 0x7F800000, ")));
}

TEST(Proof, SeesWhatIsWrongAtOneAlignmentOnly) {
  const auto atOne = [](const Byte*, Byte* destination, std::size_t count) {
    if (std::bit_cast<std::uintptr_t>(destination) % 64 == 37 && count > 200) ++destination[0];
  };
  EXPECT_THAT(proof::CheckShapes(Spoilt(Conversion("float to 8, streaming"), atOne)),
              Optional(HasSubstr("201 elements, source at 0 and destination at 37 of 64: byte 0")));
}

TEST(Proof, SeesAFillThatDropsAWord) {
  const auto drop = [](const Byte*, Byte* destination, std::size_t count) {
    if (count > 1000) std::memset(destination + count * 4 - 4, 0, 4);
  };
  EXPECT_THAT(proof::CheckShapes(Spoilt(Routine("fill, streaming"), drop)),
              Optional(StartsWith("baseline fill, streaming: 1021 elements")));
}

TEST(Proof, SeesOneValueInOnePlace) {
  const auto spoil = [](const Byte* source, Byte* destination, std::size_t count) {
    for (std::size_t i = 77; i < count; i += 256) {
      std::uint16_t value = 0;
      std::memcpy(&value, source + i * 2, 2);
      if (value == 0x80C1) ++destination[i];
    }
  };
  EXPECT_THAT(proof::CheckValues(Spoilt(Conversion("16 to 8, caching"), spoil)),
              Optional(StartsWith("baseline 16 to 8, caching: the element 0x80C1, ")));
}

TEST(Proof, SeesOneValueInShortRuns) {
  const auto spoil = [](const Byte* source, Byte* destination, std::size_t count) {
    if (count == 3 && source[2] == 200) ++destination[2 * 4];
  };
  EXPECT_THAT(proof::CheckValues(Spoilt(Conversion("8 to float, caching"), spoil)),
              Optional(StartsWith("baseline 8 to float, caching: the element 0xC8, in runs of 3")));
}

// The results of the processors' conversions and minima for NaN and for values beyond
// the range of integers.
TEST(Proof, TriesTheFloatsThatProcessorsTreatInTheirOwnWays) {
  for (const std::uint32_t odd :
       {0x7FC00000U, 0xFFC00000U, 0x7F800001U, 0x7F800000U, 0xFF800000U, 0x80000000U, 0x00000001U,
        0x80000001U, 0x4B008081U, 0xCB008081U, 0x3F800000U, 0x3F7FFFFFU, 0x7F7FFFFFU}) {
    const auto spoil = [odd](const Byte* source, Byte* destination, std::size_t count) {
      for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, source + i * 4, 4);
        if (bits == odd) ++destination[i];
      }
    };
    EXPECT_THAT(proof::CheckValues(Spoilt(Conversion("float to 8, caching"), spoil)),
                Optional(HasSubstr(": the element " + proof::Hex(odd, 8) + ", ")));
  }
}

TEST(Proof, SeesOneFloatOfAll) {
  const auto spoil = [](const Byte* source, Byte* destination, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      std::uint32_t bits = 0;
      std::memcpy(&bits, source + i * 4, 4);
      if (bits == 0x3F123456) ++destination[i];
    }
  };
  const Subject right = Conversion("float to 8, caching");
  const std::vector<Finding> findings =
      proof::CheckFloats({right, Spoilt(right, spoil)}, {0x3F10, 4}, [](std::uint32_t) {});
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[0], std::nullopt);
  EXPECT_EQ(findings[1],
            "baseline float to 8, caching: the float 0x3F123456 is 0x92, should be 0x91");
}

TEST(Proof, LeavesNoFloatOut) {
  std::atomic<std::uint64_t> count = 0;
  std::atomic<std::uint32_t> together = 0;
  const auto note = [&](const Byte* source, Byte*, std::size_t floats) {
    count += floats;
    for (std::size_t i = 0; i < floats; ++i) {
      std::uint32_t bits = 0;
      std::memcpy(&bits, source + i * 4, 4);
      together ^= bits * 0x9E3779B9U;
    }
  };
  std::uint32_t expected = 0;
  for (std::uint32_t bits = 0xFFFC0000U; bits != 0; ++bits) expected ^= bits * 0x9E3779B9U;
  proof::CheckFloats({Spoilt(Conversion("float to 8, caching"), note)}, {0xFFFC, 4},
                     [](std::uint32_t) {});
  EXPECT_EQ(count, 4U * 65536);
  EXPECT_EQ(together, expected);
  EXPECT_EQ(proof::kAllFloats.first, 0U);
  EXPECT_EQ(proof::kAllFloats.count, 65536U);
}

TEST(Proof, SeesACopyThatReadsWhatItHasWritten) {
  Subject subject = Routine("copy, caching");
  subject.run = [](const void* source, void* destination, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      static_cast<Byte*>(destination)[i] = static_cast<const volatile Byte*>(source)[i];
    }
  };
  EXPECT_EQ(proof::CheckShapes(subject), std::nullopt);
  EXPECT_THAT(proof::CheckOverlaps(subject),
              Optional(StartsWith("baseline copy, caching: 2 bytes up by 1: byte 2 ")));
}

TEST(Proof, HasADigestThatEveryByteChanges) {
  const std::vector<Subject> right = {Conversion("8 to 16, caching"), Routine("fill, caching")};
  std::vector<Subject> wrong = right;
  wrong[1] = Spoilt(wrong[1], [](const Byte*, Byte* destination, std::size_t count) {
    if (count == 33) destination[131] ^= 0x80;
  });
  EXPECT_EQ(proof::DigestOf(right), proof::DigestOf(right));
  EXPECT_NE(proof::DigestOf(right), proof::DigestOf(wrong));
}

// The published values of the hash.
TEST(Proof, HashesAsTheHashIsDefined) {
  proof::Digest digest;
  EXPECT_EQ(digest.Text(), "cbf29ce484222325");
  digest.Add("foobar", 6);
  EXPECT_EQ(digest.Text(), "85944171f73967e8");
}

TEST(Proof, FillsTheFencedMemoryToTheFences) {
  const proof::FencedMemory memory(5000);
  EXPECT_GE(memory.end() - memory.begin(), 5000);
  EXPECT_EQ(std::bit_cast<std::uintptr_t>(memory.begin()) % 64, 0U);
  EXPECT_EQ(std::bit_cast<std::uintptr_t>(memory.end()) % 64, 0U);
  EXPECT_THAT(std::vector<Byte>(memory.begin(), memory.end()), Each(0));
  std::fill(memory.begin(), memory.end(), static_cast<Byte>(1));
}

TEST(Verdicts, AreOneLineEach) {
  EXPECT_EQ(proof::Line({"AVX2", "85944171f73967e8", std::nullopt}),
            "AVX2      85944171f73967e8  ok");
  EXPECT_EQ(proof::Line({"AVX2", "85944171f73967e8", "AVX2 copy: 3 bytes"}),
            "AVX2      85944171f73967e8  differs: AVX2 copy: 3 bytes");
  EXPECT_EQ(proof::Line({"AVX-512", "", std::nullopt}), "AVX-512   not on this processor");
}

TEST(Verdicts, CompareTheDigestsOfTheLevelsThatAreThere) {
  std::vector<proof::Verdict> levels = {{"baseline", "a", {}}, {"b", "a", {}}, {"c", "", {}}};
  proof::CompareDigests(levels);
  EXPECT_TRUE(proof::AllEqual(levels));
  levels[1].digest = "b";
  proof::CompareDigests(levels);
  EXPECT_FALSE(proof::AllEqual(levels));
  EXPECT_EQ(levels[1].difference, "the digest is not that of baseline");
}

TEST(ProofDeathTest, CrashesAtAReadBeyondTheRun) {
  const auto beyond = [](const Byte* source, Byte*, std::size_t count) {
    static_cast<void>(static_cast<const volatile Byte*>(source)[count]);
  };
  EXPECT_DEATH(proof::CheckShapes(Spoilt(Conversion("8 to 16, caching"), beyond)), "");
}

TEST(ProofDeathTest, CrashesAtAReadBeforeTheRun) {
  const auto before = [](const Byte* source, Byte*, std::size_t) {
    static_cast<void>(static_cast<const volatile Byte*>(source)[-1]);
  };
  EXPECT_DEATH(proof::CheckShapes(Spoilt(Conversion("float to 8, streaming"), before)), "");
}

TEST(ProofDeathTest, CrashesAtAWriteBeyondTheRun) {
  const auto beyond = [](const Byte*, Byte* destination, std::size_t count) {
    volatile Byte* end = destination + count;
    *end = *end;  // leaves everything as it is
  };
  EXPECT_DEATH(proof::CheckShapes(Spoilt(Routine("copy, streaming"), beyond)), "");
}
