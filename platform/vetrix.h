// vetrix, the core library: the classes and functions that PXL imports.
//
// Memory-mapped files, UTF-16 string streams, conversion and formatting of
// text, and the database of debug settings. C++20.
#ifndef VETRIX_H
#define VETRIX_H

#include <cstdint>
#include <string>

// VETRIX_EXPORTS: vetrix or its replacement is being built. VETRIX_STATIC: all is
// linked into one program. Neither: vetrix is imported.
#if defined(VETRIX_STATIC)
#define VETRIX_API
#elif defined(_WIN32) && defined(VETRIX_EXPORTS)
#define VETRIX_API __declspec(dllexport)
#elif defined(_WIN32)
#define VETRIX_API __declspec(dllimport)
#else
#define VETRIX_API __attribute__((visibility("default")))
#endif

namespace vetrix {

// A file whose whole content can be mapped into memory. Failures throw
// std::runtime_error or a class derived from it. PXL allocates these objects
// itself, so their size is part of the interface: always one pointer.
class VETRIX_API MemoryMappedFile {
 public:
  MemoryMappedFile();
  ~MemoryMappedFile();
  MemoryMappedFile(const MemoryMappedFile&) = delete;
  MemoryMappedFile& operator=(const MemoryMappedFile&) = delete;

  // Creates the file. `name` is a label, `size` is in bytes.
  void Init(const std::string& name, std::uint64_t size, std::uint32_t mode);
  // Maps the whole file, if it is not mapped yet, and returns its address.
  void* GetAddress();
  std::uint64_t Size() const;
  // Removes the view; the content stays in the file.
  void UnmapMemory();
  void CloseFileHandleIfPossible();
  // Discards view and file.
  void Reset();

 private:
  struct Impl;
  Impl* impl_ = nullptr;
};

// Formats values as UTF-16 text, always in the classic locale.
class VETRIX_API oUTF16StringStream {
 public:
  oUTF16StringStream();
  ~oUTF16StringStream();
  oUTF16StringStream(const oUTF16StringStream&) = delete;
  oUTF16StringStream& operator=(const oUTF16StringStream&) = delete;

  oUTF16StringStream& operator<<(bool value);
  oUTF16StringStream& operator<<(std::int32_t value);
  // Switches to the word form of booleans.
  void boolalpha();
  std::u16string str() const;
  bool fail() const;
  bool bad() const;

 private:
  struct Impl;
  Impl* impl_ = nullptr;
};

// Parses values from UTF-16 text by the rules of a standard input stream.
class VETRIX_API iUTF16StringStream {
 public:
  explicit iUTF16StringStream(std::u16string const& text);
  ~iUTF16StringStream();
  iUTF16StringStream(const iUTF16StringStream&) = delete;
  iUTF16StringStream& operator=(const iUTF16StringStream&) = delete;

  iUTF16StringStream& operator>>(bool& value);
  iUTF16StringStream& operator>>(std::int32_t& value);
  // Switches to the word form of booleans.
  void boolalpha();
  bool fail() const;
  bool bad() const;

 private:
  struct Impl;
  Impl* impl_ = nullptr;
};

namespace utility {

// Ill-formed input becomes U+FFFD.
VETRIX_API std::string UTF16to8(std::u16string const& text);
VETRIX_API std::u16string UTF8to16(std::string const& text);

enum class NumberFlags : std::uint32_t { Empty = 0 };
VETRIX_API std::u16string NumberToString(std::int32_t value);
VETRIX_API std::u16string NumberToString(double value, int minDigits, int maxDigits,
                                         NumberFlags flags, int style);

// Replaces @0 to @9 by the ten texts; "@@" becomes one "@".
VETRIX_API std::u16string ReplaceInString(std::u16string const& text, std::u16string const& r0,
                                          std::u16string const& r1, std::u16string const& r2,
                                          std::u16string const& r3, std::u16string const& r4,
                                          std::u16string const& r5, std::u16string const& r6,
                                          std::u16string const& r7, std::u16string const& r8,
                                          std::u16string const& r9);

}  // namespace utility

namespace debug {

// The process-wide store of debug settings, keyed by name.
class VETRIX_API DebugDatabase {
 public:
  static DebugDatabase& Instance();
  DebugDatabase(const DebugDatabase&) = delete;
  DebugDatabase& operator=(const DebugDatabase&) = delete;

  // Returns the stored text of the entry, or the default text without an entry.
  std::string GetEntry(std::string const& key, std::string const& defaultText);

 private:
  DebugDatabase();
  ~DebugDatabase();
  struct Impl;
  Impl* impl_ = nullptr;
};

}  // namespace debug
}  // namespace vetrix

#endif
