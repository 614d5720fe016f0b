// The catalogue as a host finds it.
#include "tests/support/host/whole.h"

class Catalogue : public Whole {
 protected:
  static std::string Text(int index) { return K_ZLookupLStrCache(PXL_G_zref, index, 0, 0); }
};

TEST_F(Catalogue, IsLookedUpByTheHostAsWell) {
  EXPECT_EQ(Text(0), "");
  EXPECT_EQ(Text(1), "PXL unborn.");
  EXPECT_EQ(Text(24), "can\xD5t change world depth.");
  EXPECT_EQ(Text(62), "leaked ^^L1 PXL_Worlds.");
  EXPECT_EQ(Text(24), "can\xD5t change world depth.");
}

TEST_F(Catalogue, EndsAfterItsSixtyEightTexts) {
  EXPECT_EQ(std::string(PXL_G_zref->moduleName), "PXL");
  EXPECT_EQ(PXL_G_zref->count, 69U);
  EXPECT_EQ(PXL_G_zref->entries[68].key, nullptr);
  EXPECT_EQ(PXL_G_zref->entries[68].cache[0], UINTPTR_MAX);
}
