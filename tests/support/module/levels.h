// Tests that are run for each level of processor.
#ifndef TESTS_SUPPORT_MODULE_LEVELS_H
#define TESTS_SUPPORT_MODULE_LEVELS_H

#include <algorithm>
#include <cctype>
#include <string>

#include "simd/processor_level.h"
#include "tests/support/module/born_module.h"

// A level that this processor lacks is skipped.
class EachLevel : public BornModule, public ::testing::WithParamInterface<simd::Level> {
 protected:
  void SetUp() override {
    if (GetParam() > simd::ProcessorLevel()) {
      GTEST_SKIP() << "this processor has no " << simd::NameOf(GetParam());
    }
  }
};

inline std::string LevelName(const ::testing::TestParamInfo<simd::Level>& info) {
  std::string name = simd::NameOf(info.param);
  std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0; });
  return name;
}

#endif
