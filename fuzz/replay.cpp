// Runs a fuzzer over the files of a folder, in every build: each defect that was
// found stays fixed, and each change is tested with the whole corpus.
//
// usage: fuzz_NAME FOLDER
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FilesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::ranges::sort(files);
  return files;
}

std::vector<std::uint8_t> BytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(stream),
                                  std::istreambuf_iterator<char>()};
  if (stream.bad() || bytes.size() != fs::file_size(file)) {
    throw std::runtime_error("cannot read " + file.string());
  }
  return bytes;
}

void Replay(const fs::path& folder) {
  const std::vector<fs::path> files = FilesIn(folder);
  if (files.empty()) throw std::runtime_error("no input in " + folder.string());
  for (const fs::path& file : files) {
    // Told before, since the program may end in it.
    std::printf("%s\n", file.filename().c_str());
    std::fflush(stdout);
    const std::vector<std::uint8_t> bytes = BytesOf(file);
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
  }
  std::printf("%zu inputs\n", files.size());
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: fuzz_NAME FOLDER\n", stdout);
    return 2;
  }
  try {
    Replay(arguments[1]);
  } catch (const std::exception& problem) {
    std::printf("%s\n", problem.what());
    return 1;
  }
  return 0;
}
