// A fixture with a catalogue whose texts tests translate.
#ifndef TESTS_STAND_INS_K_TRANSLATION_FIXTURE_H
#define TESTS_STAND_INS_K_TRANSLATION_FIXTURE_H

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "K_host.h"
#include "TRC_host.h"

// Restores the default texts at the end.
class Translation : public testing::Test {
 protected:
  Translation() { TRC_SetSink(Keep, &log_); }
  ~Translation() override {
    K_SetTranslation(nullptr, nullptr, 0);
    TRC_SetSink(nullptr, nullptr);
  }

  // The reason why a translation is malformed; empty when it is not.
  static std::string ProblemOf(const std::string& text) {
    char problem[256] = "unset";
    const bool good = K_SetTranslation(text.c_str(), problem, sizeof problem) != 0;
    EXPECT_EQ(good, problem[0] == '\0');
    return problem;
  }
  static void Use(const std::string& text) { EXPECT_EQ(ProblemOf(text), ""); }

  const char* Lookup(std::int32_t index) const {
    return K_ZLookupLStrCache(&catalogue_, index, 0, 0);
  }
  std::string Text(std::int32_t index) const { return K_TextToUTF8(Lookup(index)); }

  std::array<K_LStrEntry, 7> entries_ = {{
      {"$$$/t/0=", {0, 0, 0}},
      {"$$$/t/1=checking world", {0, 0, 0}},
      {"$$$/t/2=can#{rsquo}t: %d x %d.", {0, 0, 0}},
      {"$$$/t/3=leaked ^^L1 Worlds.", {0, 0, 0}},
      {"$$$/t/4=@0 x @1 @@ @2", {0, 0, 0}},
      {"$$$/t/5=%s (%5.1f %%)", {0, 0, 0}},
      {nullptr, {~std::uintptr_t{0}, ~std::uintptr_t{0}, 0}},
  }};
  K_LStrCatalogue catalogue_ = {"test", entries_.size(), entries_.data(), 0};
  std::vector<std::string> log_;

 private:
  static void Keep(std::int32_t level, const char*, const char*, const char* text, void* context) {
    if (level >= TRC_Level_PROBLEM)
      static_cast<std::vector<std::string>*>(context)->push_back(text);
  }
};

#endif
