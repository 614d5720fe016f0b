// vetrix as the recorder plays it. Its texts are plain ASCII.
#include <algorithm>
#include <cstdio>
#include <sstream>
#include <stdexcept>

#include "tests/support/recorder/recorder.h"

using recorder::Current;
using recorder::Join;
using recorder::Text;

namespace {

// Files beyond this are only booked, never written to.
constexpr std::uint64_t kLargestView = 1 << 24;

}  // namespace

namespace vetrix {

struct MemoryMappedFile::Impl {
  std::string name;
  std::uint64_t size = 0;
  std::vector<unsigned char> bytes;
};

MemoryMappedFile::MemoryMappedFile() : impl_(new Impl) {
  Current().Own(this, "file", [this] { delete impl_; });
  Current().Enter("MemoryMappedFile", "");
}

MemoryMappedFile::~MemoryMappedFile() {
  Current().Enter("~MemoryMappedFile", "");
  Current().Disown(this);
  delete impl_;
}

void MemoryMappedFile::Init(const std::string& name, std::uint64_t size, std::uint32_t mode) {
  if (Current().Enter("Init", Join(Text(name), Text(size), Text(mode)))) {
    throw std::runtime_error("no file");
  }
  impl_->name = name;
  impl_->size = Current().script.fileSize != 0 ? Current().script.fileSize : size;
  impl_->bytes.resize(std::min(size, kLargestView));
}

// Failing means a null address.
void* MemoryMappedFile::GetAddress() {
  if (Current().Enter("GetAddress", "")) return nullptr;
  Current().Name(impl_->bytes.data(), "view");
  return impl_->bytes.data();
}

std::uint64_t MemoryMappedFile::Size() const {
  return impl_->size;
}

void MemoryMappedFile::UnmapMemory() {
  Current().Enter("UnmapMemory", "");
}

void MemoryMappedFile::CloseFileHandleIfPossible() {
  Current().Enter("CloseFileHandleIfPossible", "");
}

void MemoryMappedFile::Reset() {
  Current().Enter("Reset", "");
}

struct oUTF16StringStream::Impl {
  std::ostringstream stream;
};

oUTF16StringStream::oUTF16StringStream() : impl_(new Impl) {
}

oUTF16StringStream::~oUTF16StringStream() {
  delete impl_;
}

oUTF16StringStream& oUTF16StringStream::operator<<(bool value) {
  impl_->stream << value;
  return *this;
}

oUTF16StringStream& oUTF16StringStream::operator<<(std::int32_t value) {
  impl_->stream << value;
  return *this;
}

void oUTF16StringStream::boolalpha() {
  impl_->stream << std::boolalpha;
}

std::u16string oUTF16StringStream::str() const {
  const std::string text = impl_->stream.str();
  return {text.begin(), text.end()};
}

bool oUTF16StringStream::fail() const {
  return impl_->stream.fail();
}

bool oUTF16StringStream::bad() const {
  return impl_->stream.bad();
}

struct iUTF16StringStream::Impl {
  std::istringstream stream;
};

iUTF16StringStream::iUTF16StringStream(std::u16string const& text)
    : impl_(new Impl{std::istringstream(utility::UTF16to8(text))}) {
}

iUTF16StringStream::~iUTF16StringStream() {
  delete impl_;
}

iUTF16StringStream& iUTF16StringStream::operator>>(bool& value) {
  impl_->stream >> value;
  return *this;
}

iUTF16StringStream& iUTF16StringStream::operator>>(std::int32_t& value) {
  impl_->stream >> value;
  return *this;
}

void iUTF16StringStream::boolalpha() {
  impl_->stream >> std::boolalpha;
}

bool iUTF16StringStream::fail() const {
  return impl_->stream.fail();
}

bool iUTF16StringStream::bad() const {
  return Current().script.inputIsBad || impl_->stream.bad();
}

namespace utility {

std::string UTF16to8(std::u16string const& text) {
  std::string narrow;
  for (const char16_t c : text) narrow += static_cast<char>(c);
  return narrow;
}

std::u16string UTF8to16(std::string const& text) {
  return {text.begin(), text.end()};
}

std::u16string NumberToString(std::int32_t value) {
  Current().Enter("NumberToString", Text(value));
  return UTF8to16(std::to_string(value));
}

std::u16string NumberToString(double value, int minDigits, int maxDigits, NumberFlags flags,
                              int style) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", maxDigits, value);
  Current().Enter("NumberToString", Join(std::string(text), Text(minDigits), Text(maxDigits),
                                         Text(static_cast<std::uint32_t>(flags)), Text(style)));
  return UTF8to16(text);
}

std::u16string ReplaceInString(std::u16string const& text, std::u16string const& r0,
                               std::u16string const& r1, std::u16string const& r2,
                               std::u16string const& r3, std::u16string const& r4,
                               std::u16string const& r5, std::u16string const& r6,
                               std::u16string const& r7, std::u16string const& r8,
                               std::u16string const& r9) {
  Current().Enter("ReplaceInString",
                  Join(Text(text), Text(r0), Text(r1), Text(r2), Text(r3), Text(r4), Text(r5),
                       Text(r6), Text(r7), Text(r8), Text(r9)));
  const std::u16string* texts[] = {&r0, &r1, &r2, &r3, &r4, &r5, &r6, &r7, &r8, &r9};
  std::u16string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t next = text[i] == u'@' && i + 1 < text.size() ? text[i + 1] : u'\0';
    if (next == u'@') {
      result += u'@';
      ++i;
    } else if (next >= u'0' && next <= u'9') {
      result += *texts[next - u'0'];
      ++i;
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace utility

namespace debug {

DebugDatabase::DebugDatabase() : impl_(nullptr) {
}

DebugDatabase::~DebugDatabase() = default;

DebugDatabase& DebugDatabase::Instance() {
  static DebugDatabase database;
  Current().Enter("Instance", "");
  return database;
}

std::string DebugDatabase::GetEntry(std::string const& key, std::string const& defaultText) {
  Current().Enter("GetEntry", Join(Text(key), Text(defaultText)));
  const auto& settings = Current().script.settings;
  const auto found = settings.find(key);
  return found != settings.end() ? found->second : defaultText;
}

}  // namespace debug
}  // namespace vetrix
