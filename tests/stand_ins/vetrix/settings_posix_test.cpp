// Tests of settings files that are pipes or devices, whose reading may never end.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <random>
#include <string>

#include "vetrix_host.h"

namespace {

void ExpectNoRegularFile(const std::string& path) {
  testing::internal::CaptureStderr();
  EXPECT_FALSE(vetrix::host::LoadSettingsFile(path));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vetrix: the settings file " + path + " is not a regular file\n");
  EXPECT_TRUE(vetrix::host::Settings().empty());
  vetrix::host::LoadSettingsText("");
}

}  // namespace

TEST(SettingsFile, ThatIsADeviceIsNotRead) {
  ExpectNoRegularFile("/dev/zero");
}

TEST(SettingsFile, ThatIsAPipeIsNotWaitedFor) {
  const std::string pipe =
      testing::TempDir() + "vetrix_pipe_" + std::to_string(std::random_device{}());
  ASSERT_EQ(mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
  ExpectNoRegularFile(pipe);
  std::filesystem::remove(pipe);
}
