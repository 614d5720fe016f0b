// Tests that the file behind mapped memory, which has a name on Windows, cannot be
// opened by others.
#include <windows.h>

#include <filesystem>

#include "host/utf8_path.h"
#include "tests/stand_ins/vetrix/mapped_file_fixture.h"

namespace {

namespace fs = std::filesystem;

fs::path OnlyFileIn(const std::string& folder) {
  const fs::directory_iterator first(PathOfUtf8(folder));
  const fs::path path = first != fs::directory_iterator() ? first->path() : fs::path();
  EXPECT_EQ(std::distance(first, fs::directory_iterator()), 1);
  return path;
}

TEST_F(MappedFile, IsGoneWhenItIsClosed) {
  file_.Init("a", kSize, kMode);
  EXPECT_EQ(fs::file_size(OnlyFileIn(folder_.Path())), kSize);
  file_.GetAddress();
  file_.Reset();
  EXPECT_TRUE(folder_.IsEmpty());
}

TEST_F(MappedFile, CannotBeOpenedByAnybodyElse) {
  file_.Init("a", kSize, kMode);
  const fs::path path = OnlyFileIn(folder_.Path());
  constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  EXPECT_EQ(CreateFileW(path.c_str(), GENERIC_READ, kAll, nullptr, OPEN_EXISTING, 0, nullptr),
            INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
}

TEST_F(MappedFile, IsMadeInAFolderWhoseNameNeedsUnicode) {
  const std::string folder = folder_.Path() + "/\xE6\x97\xA5\xE6\x9C\xAC \xC3\xA9";
  fs::create_directory(PathOfUtf8(folder));
  const ScopedVariable variable("VETRIX_MAPPED_DIR", folder);
  EXPECT_EQ(ProblemOf(file_, "a", kSize), "");
  EXPECT_TRUE(fs::exists(OnlyFileIn(folder)));
}

TEST_F(MappedFile, CannotBeMadeInAFolderThatIsNotThere) {
  const std::string folder = folder_.Path() + "\\nowhere";
  const ScopedVariable nowhere("VETRIX_MAPPED_DIR", folder);
  const std::string problem = ProblemOf(file_, "a", kSize);
  EXPECT_EQ(problem.find("cannot make a file in " + folder + ": "), 0U) << problem;
  EXPECT_EQ(file_.Size(), 0U);
}

// The file must be deleted with the process also after a crash.
[[noreturn]] void EndSuddenlyWithAFile(const std::string& folder) {
  const ScopedVariable variable("VETRIX_MAPPED_DIR", folder);
  vetrix::MemoryMappedFile file;
  file.Init("a", kSize, kMode);
  file.GetAddress();
  TerminateProcess(GetCurrentProcess(), fs::is_empty(folder) ? 1 : 9);
  std::abort();
}

using MappedFileDeathTest = MappedFile;

TEST_F(MappedFileDeathTest, LeavesNothingBehindAfterASuddenEnd) {
  EXPECT_EXIT(EndSuddenlyWithAFile(folder_.Path()), testing::ExitedWithCode(9), "");
  EXPECT_TRUE(folder_.IsEmpty());
}

}  // namespace
