// A fixture with mapped files in a new folder.
#ifndef TESTS_STAND_INS_VETRIX_MAPPED_FILE_FIXTURE_H
#define TESTS_STAND_INS_VETRIX_MAPPED_FILE_FIXTURE_H

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "platform/vetrix.h"
#include "tests/support/files/open_files.h"
#include "tests/support/system/variables.h"

inline constexpr std::uint64_t kSize = 100001;
inline constexpr std::uint32_t kMode = 101;

class MappedFile : public testing::Test {
 protected:
  TemporaryFolder folder_;
  ScopedVariable variable_{"VETRIX_MAPPED_DIR", folder_.Path()};
  vetrix::MemoryMappedFile file_;
};

// The text of the exception of an initialisation; empty when it succeeds.
inline std::string ProblemOf(vetrix::MemoryMappedFile& file, const std::string& name,
                             std::uint64_t size) {
  try {
    file.Init(name, size, kMode);
    return "";
  } catch (const std::runtime_error& problem) {
    return problem.what();
  }
}

#endif
