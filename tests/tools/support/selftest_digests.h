// The digests of `pxl selftest` without a difference.
#ifndef TESTS_TOOLS_SUPPORT_SELFTEST_DIGESTS_H
#define TESTS_TOOLS_SUPPORT_SELFTEST_DIGESTS_H

// Of the plain loops, and therefore of every level on every machine.
inline constexpr const char* LEVEL_DIGEST = "7f6bd7e85a8bad2f";
inline constexpr const char* BLIT_DIGEST = "a922527e02849a52";

#endif
