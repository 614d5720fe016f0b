// The progress bar.
#include "tools/pxl/system/progress.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

using pxl::Progress;

TEST(ProgressBar, WritesNothingWhereNobodyLooks) {
  std::ostringstream stream;
  {
    Progress bar(stream, 3, false);
    bar.Show(1);
    bar.Clear();
  }
  EXPECT_EQ(stream.str(), "");
}

TEST(ProgressBar, FillsWithWhatIsDone) {
  std::ostringstream stream;
  Progress bar(stream, 4, true);
  bar.Show(1);
  EXPECT_EQ(stream.str(), "\r[" + std::string(10, '#') + std::string(30, ' ') + "] 1/4");
}

TEST(ProgressBar, IsTakenAwayAtTheEnd) {
  std::ostringstream stream;
  std::make_unique<Progress>(stream, 2, true).reset();
  EXPECT_EQ(stream.str(), "\r\x1B[K");
}
