// A file that appears under its name only when it is complete.
#ifndef TOOLS_PXL_SYSTEM_OUTPUT_FILE_H
#define TOOLS_PXL_SYSTEM_OUTPUT_FILE_H

#include <ext/stdio_filebuf.h>
#include <filesystem>
#include <istream>

namespace pxl {

// Throws Failure when no file of that name can be put there.
void CheckOutputPlace(const std::filesystem::path& path);

// Throws UsageError when the output would take the place of the input.
void RefuseInput(const std::filesystem::path& output, const std::filesystem::path& input);

class OutputFile {
 public:
  // Opens a temporary file, to write and to read, in the folder of `path`. Throws Failure, named
  // after `path`, when that cannot be.
  explicit OutputFile(const std::filesystem::path& path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile() = default;

  std::iostream& stream() { return stream_; }
  // Gives the file its name, in place of any file that has it. Throws Failure.
  void Commit();

 private:
  // Removes the file of that name, if there is one, whatever else fails.
  struct Temporary {
    Temporary() = default;
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary();
    std::filesystem::path path;
  };
  using Buffer = __gnu_cxx::stdio_filebuf<char>;

  std::filesystem::path name_;    // as the user gave it
  std::filesystem::path target_;  // behind symbolic links
  Temporary temporary_;           // until it is committed
  // The file is not opened a second time by its name, which may have become that
  // of another file in a folder where others may write.
  Buffer buffer_;
  std::iostream stream_{&buffer_};
};

}  // namespace pxl

#endif
