// String streams of UTF-16 text, built on narrow ones: the standard library has no
// number formatting for char16_t, so a stream of it fails on every value.
#include <locale>
#include <sstream>

#include "platform/vetrix.h"

namespace vetrix {

struct oUTF16StringStream::Impl {
  Impl() { stream.imbue(std::locale::classic()); }
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
  return utility::UTF8to16(impl_->stream.str());
}

bool oUTF16StringStream::fail() const {
  return impl_->stream.fail();
}

bool oUTF16StringStream::bad() const {
  return impl_->stream.bad();
}

struct iUTF16StringStream::Impl {
  explicit Impl(const std::string& text) : stream(text) { stream.imbue(std::locale::classic()); }
  std::istringstream stream;
};

iUTF16StringStream::iUTF16StringStream(std::u16string const& text)
    : impl_(new Impl(utility::UTF16to8(text))) {
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
  return impl_->stream.bad();
}

}  // namespace vetrix
