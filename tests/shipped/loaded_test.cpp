// The shipped library, loaded by name as a plug-in host would.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "PXL.h"
#include "tests/support/system/shared_library.h"

namespace {

std::vector<std::string> ExportedNames() {
  std::ifstream file(EXPORTS_FILE);
  std::vector<std::string> names;
  for (std::string name; std::getline(file, name);) names.push_back(name);
  return names;
}

// Loaded once and not unloaded: the libraries underneath keep what they hold
// for as long as the process lives.
class LoadedLibrary : public ::testing::Test {
 protected:
  LoadedLibrary() {
    static std::string problem;
    static void* const loaded = LoadSharedLibrary(LIBRARY_FILE, problem);
    library_ = loaded;
    problem_ = problem;
  }

  template <typename Function>
  Function* Find(const char* name) {
    return reinterpret_cast<Function*>(FindExported(library_, name));
  }

  void* library_;
  std::string problem_;
};

}  // namespace

TEST_F(LoadedLibrary, HasEveryExportedName) {
  ASSERT_NE(library_, nullptr) << problem_;
  const auto names = ExportedNames();
  EXPECT_EQ(names.size(), 30U);
  for (const std::string& name : names)
    EXPECT_NE(FindExported(library_, name.c_str()), nullptr) << name;
}

TEST_F(LoadedLibrary, HidesWhatIsItsOwn) {
  ASSERT_NE(library_, nullptr) << problem_;
  for (const char* name : {"PXLp_CheckWorld", "PXLp_ComputeGeometry", "PXLp_IsPoolFrame",
                           "PXLp_ReleaseWorld", "PXLp_Blit64", "PXLp_BuildConversionTables"}) {
    EXPECT_EQ(FindExported(library_, name), nullptr) << name;
  }
}

TEST_F(LoadedLibrary, ServesAHostThatFoundItsFunctionsByName) {
  ASSERT_NE(library_, nullptr) << problem_;
  const auto* state = static_cast<const PXL_ModuleState*>(FindExported(library_, "PXLp_G"));
  EXPECT_EQ(state->bornMark, 0U);
  EXPECT_EQ(Find<decltype(PXL_PkgObjectVersion)>("PXL_PkgObjectVersion")(), 0x001F000EU);
  EXPECT_EQ(Find<decltype(PXL_Birth)>("PXL_Birth")(3), PXL_Err_NONE);
  EXPECT_EQ(state->bornMark, 0xBECCAU);

  const Rect rect{0, 0, 10, 10};
  PXL_WorldHandle worldH = nullptr;
  ASSERT_EQ(Find<decltype(PXL_NewWorld)>("PXL_NewWorld")(nullptr, PXL_Flag_CLEAR, &rect, 128, 0,
                                                         nullptr, &worldH),
            0);
  EXPECT_EQ(state->worldCount, 1);
  EXPECT_EQ((*worldH)->pixels.rowBytes, 160);
  EXPECT_EQ((*worldH)->pixels.frameSize, 1620U);
  EXPECT_EQ(Find<decltype(PXL_DisposeWorld)>("PXL_DisposeWorld")(worldH), PXL_Err_NONE);
  EXPECT_EQ(Find<decltype(PXL_Death)>("PXL_Death")(), PXL_Err_NONE);
  EXPECT_EQ(state->bornMark, 0U);
}

TEST(PublicRecords, HaveTheirSizes) {
  EXPECT_EQ(sizeof(PXL_World), 112U);
  EXPECT_EQ(sizeof(PXL_PixelBuffer), 56U);
  EXPECT_EQ(sizeof(PXL_PixelProvider), 40U);
  EXPECT_EQ(sizeof(PXL_ModuleState), 12U);
}
