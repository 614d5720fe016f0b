// A file that appears under its name only when it is complete.
#ifndef TOOLS_PXL_SYSTEM_OUTPUT_FILE_H
#define TOOLS_PXL_SYSTEM_OUTPUT_FILE_H

#include <ext/stdio_filebuf.h>
#include <filesystem>
#include <istream>

namespace pxl {

// Throws Failure when no file of that name can be created.
void CheckOutputPlace(const std::filesystem::path& path);

// Throws UsageError when the output would replace the input.
void RefuseInput(const std::filesystem::path& output, const std::filesystem::path& input);

class OutputFile {
 public:
  // Opens a temporary file, for writing and reading, in the folder of `path`. Throws
  // Failure, named after `path`.
  explicit OutputFile(const std::filesystem::path& path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile() = default;

  std::iostream& stream() { return stream_; }
  // Renames the file to its final name; replaces a file of that name. Throws Failure.
  void Commit();

 private:
  // Removes the file in its destructor, unless the path is empty.
  struct Temporary {
    Temporary() = default;
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary();
    std::filesystem::path path;
  };
  using Buffer = __gnu_cxx::stdio_filebuf<char>;

  std::filesystem::path name_;    // as on the command line
  std::filesystem::path target_;  // behind symbolic links
  Temporary temporary_;           // until it is committed
  // The file is not opened a second time by its name: in a folder where others may
  // write, it could have become the name of another file.
  Buffer buffer_;
  std::iostream stream_{&buffer_};
};

}  // namespace pxl

#endif
