// Texts and numbers: conversions between UTF-8, UTF-16 and K's 8-bit texts, texts
// with places to be filled, and numbers to and from text.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "K_host.h"
#include "fuzz/bytes.h"
#include "fuzz/demand.h"
#include "fuzz/utf8.h"
#include "platform/K.h"
#include "platform/vetrix.h"

namespace {

using fuzz::Bytes;
using fuzz::Demand;
using vetrix::utility::UTF16to8;
using vetrix::utility::UTF8to16;

std::u16string TakeUTF16(Bytes& bytes) {
  std::u16string text;
  for (std::size_t length = bytes.Byte(); length > 0 && !bytes.Empty(); --length) {
    text += static_cast<char16_t>(bytes.Take<std::uint16_t>());
  }
  return text;
}

bool IsSurrogate(char16_t unit, unsigned first) {
  return unit >= first && unit < first + 0x400;
}

bool IsWellFormed(const std::u16string& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsSurrogate(text[i], 0xDC00)) return false;
    if (!IsSurrogate(text[i], 0xD800)) continue;
    if (++i == text.size() || !IsSurrogate(text[i], 0xDC00)) return false;
  }
  return true;
}

// ---- Between encodings

void CheckUTF8(Bytes& bytes) {
  const std::string text = bytes.Rest();
  const std::u16string wide = UTF8to16(text);
  Demand(IsWellFormed(wide), "UTF-16 that is none came of UTF-8");
  const std::string back = UTF16to8(wide);
  Demand((back == text) == fuzz::IsUTF8(text), "sound UTF-8 has changed, or other has not");
  Demand(fuzz::IsUTF8(back), "UTF-8 that is none came back");
  Demand(UTF8to16(back) == wide, "UTF-8 changes a second time");
}

void CheckUTF16(Bytes& bytes) {
  const std::u16string text = TakeUTF16(bytes);
  const std::string narrow = UTF16to8(text);
  Demand(fuzz::IsUTF8(narrow), "UTF-8 that is none came of UTF-16");
  const std::u16string back = UTF8to16(narrow);
  Demand(back.size() == text.size(), "UTF-16 has another length");
  Demand((back == text) == IsWellFormed(text), "sound UTF-16 has changed, or other has not");
}

// ---- K's 8-bit texts

void CheckThatItFits(const std::string& text, std::size_t size) {
  const std::string whole = K_TextToUTF8(text.c_str());
  // No more memory than that, so that a write beyond it is found.
  std::vector<char> place(size);
  const std::uint64_t length = K_TextToUTF8(text.c_str(), place.data(), size);
  Demand(length == whole.size(), "another length than that of the whole");
  if (size == 0) return;
  const auto* end = static_cast<const char*>(std::memchr(place.data(), 0, size));
  Demand(end != nullptr, "a text without an end");
  const std::string part(place.data());
  Demand(whole.starts_with(part) && fuzz::IsUTF8(part), "a part that is none");
  // A character has up to four bytes.
  Demand(part.size() == whole.size() || part.size() + 4 >= size, "more would have fitted");
}

void CheckMacRoman(Bytes& bytes) {
  const std::size_t size = bytes.Byte();
  const std::string text = bytes.Rest();
  Demand(fuzz::IsUTF8(K_TextToUTF8(text.c_str())), "UTF-8 that is none came of Mac Roman");
  CheckThatItFits(text, size);
  const std::u16string wide = K_ZStringToUTF16String(text.c_str());
  Demand(IsWellFormed(wide), "UTF-16 that is none came of a ZString");
}

// A report is decoded and passed on as one line.
void CheckReport(Bytes& bytes) {
  const auto take = [](const K_Report* report, void* context) {
    const std::string text = report->text;
    Demand(text.find('\n') == std::string::npos, "a report of several lines");
    Demand(fuzz::IsUTF8(text), "a report that is no UTF-8");
    ++*static_cast<int*>(context);
  };
  int reports = 0;
  K_SetReportSink(take, &reports);
  const auto error = bytes.Take<std::int32_t>();
  const std::string text = bytes.Rest();
  Kp_ReportErrString(0x70001, 8, text.c_str());
  Kp_ReportQuexErrString(0x70001, 8, error, text.c_str());
  K_ReportFailedVerification(0x70001, error, 0, text.c_str());
  K_ReportError(0x70001, 8, K_ZStringToUTF16String(text.c_str()));
  Kp_G_err_buf = error;
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, "%s", text.c_str());
  Kp_SysEnglishError(error);
  Kp_ReportError(0x70001, 8);
  K_SetReportSink(nullptr, nullptr);
  Demand(reports == 5, "a report that was not told, or told twice");
}

// ---- Places to be filled

std::u16string Replaced(const std::u16string& text, const std::array<std::u16string, 10>& with) {
  std::u16string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t next = text[i] == u'@' && i + 1 < text.size() ? text[i + 1] : u' ';
    const bool digit = next >= u'0' && next <= u'9';
    if (digit) result += with.at(static_cast<std::size_t>(next - u'0'));
    if (!digit) result += text[i];
    if (digit || next == u'@') ++i;
  }
  return result;
}

void CheckReplacement(Bytes& bytes) {
  std::array<std::u16string, 10> with;
  for (std::u16string& text : with) text = UTF8to16(bytes.Text());
  const std::u16string text = UTF8to16(bytes.Rest());
  const std::u16string got =
      vetrix::utility::ReplaceInString(text, with[0], with[1], with[2], with[3], with[4], with[5],
                                       with[6], with[7], with[8], with[9]);
  Demand(got == Replaced(text, with), "a text was filled in another way");
}

// ---- Numbers

std::string Printed(double value, int digits) {
  std::array<char, 512> text{};
  std::snprintf(text.data(), text.size(), "%.*f", digits, value);
  return text.data();
}

// The result of `printf` without the trailing zeros.
std::string ExpectedNumber(double value, int least, int most) {
  least = std::min(std::max(least, 0), 100);
  most = std::min(std::max(most, least), 100);
  std::string text = Printed(value, most);
  const std::size_t point = text.find('.');
  if (point == std::string::npos) return text;
  const std::size_t shortest = point + 1 + static_cast<std::size_t>(least);
  while (text.size() > shortest && text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text;
}

void CheckNumber(Bytes& bytes) {
  const auto whole = bytes.Take<std::int32_t>();
  Demand(UTF16to8(vetrix::utility::NumberToString(whole)) == std::to_string(whole), "a number");
  const auto bits = bytes.Take<std::uint64_t>();
  double value = 0;
  std::memcpy(&value, &bits, sizeof value);
  const int least = bytes.Byte() % 4 == 0 ? bytes.Take<std::int32_t>() : bytes.Byte() % 8;
  const int most = bytes.Byte() % 4 == 0 ? bytes.Take<std::int32_t>() : bytes.Byte() % 8;
  const std::u16string text = vetrix::utility::NumberToString(
      value, least, most, vetrix::utility::NumberFlags::Empty, bytes.Take<std::int32_t>());
  // The two write NaN's sign and payload in ways of their own.
  if (value == value) Demand(UTF16to8(text) == ExpectedNumber(value, least, most), "a fraction");
}

void CheckStreams(Bytes& bytes) {
  const auto number = bytes.Take<std::int32_t>();
  const bool flag = bytes.Byte() % 2 == 0;
  const bool words = bytes.Byte() % 2 == 0;
  vetrix::oUTF16StringStream out;
  std::ostringstream plain;
  if (words) out.boolalpha();
  if (words) plain << std::boolalpha;
  out << number << flag;
  plain << number << flag;
  Demand(UTF16to8(out.str()) == plain.str() && !out.fail() && !out.bad(), "a written stream");

  const std::u16string text = UTF8to16(bytes.Rest());
  vetrix::iUTF16StringStream in(text);
  std::istringstream plainIn(UTF16to8(text));
  if (words) in.boolalpha();
  if (words) plainIn >> std::boolalpha;
  std::int32_t first = 1;
  std::int32_t plainFirst = 1;
  bool second = flag;
  bool plainSecond = flag;
  in >> first >> second;
  plainIn >> plainFirst >> plainSecond;
  Demand(first == plainFirst && second == plainSecond, "a value that was read");
  Demand(in.fail() == plainIn.fail() && in.bad() == plainIn.bad(), "the state of a stream");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr void (*kChecks[])(Bytes&) = {CheckUTF8,        CheckUTF16,  CheckMacRoman, CheckReport,
                                         CheckReplacement, CheckNumber, CheckStreams};
  Bytes bytes(data, size);
  kChecks[bytes.Below(std::size(kChecks))](bytes);
  return 0;
}
