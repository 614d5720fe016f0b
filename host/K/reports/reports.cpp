// The report calls that modules import.
#include <array>
#include <cstring>
#include <new>
#include <string_view>

#include "K_host.h"
#include "host/K/reports/report_sink.h"
#include "host/K/system/system_errors.h"
#include "host/K/texts/mac_roman.h"
#include "platform/vetrix.h"

char Kp_G_buffer[1024];
std::int32_t Kp_G_err_buf;

namespace {

constexpr std::int32_t kFailed = 1;

std::string Text(const char* macRoman) {
  return macRoman != nullptr ? k::MacRomanToUTF8(macRoman) : std::string();
}

// Appends as much as fits to the text of the pending report.
void AppendToPending(std::string_view text) {
  const std::size_t used = std::strlen(Kp_G_buffer);
  const std::size_t room = sizeof Kp_G_buffer - 1 - used;
  const std::size_t length = text.copy(Kp_G_buffer + used, room);
  Kp_G_buffer[used + length] = '\0';
}

void ReportText(std::uint32_t code, std::uint16_t cls, std::int32_t error, const char* macRoman) {
  k::ReportMade(
      code, cls, error, [macRoman] { return Text(macRoman); },
      std::string_view(macRoman != nullptr ? macRoman : ""));
}

}  // namespace

void Kp_ReportErrString(std::uint32_t code, std::uint16_t cls, const char* text) {
  ReportText(code, cls, 0, text);
}

std::int32_t Kp_ReportQuexErrString(std::uint32_t code, std::uint16_t cls, std::int32_t error,
                                    const char* text) {
  ReportText(code, cls, error, text);
  return error;
}

void Kp_SysEnglishError(std::int32_t error) {
  if (Kp_G_buffer[0] != '\0') AppendToPending(" ");
  AppendToPending(k::EnglishError(error).data());
}

void Kp_ReportError(std::uint32_t code, std::uint16_t cls) {
  // A copy, since the sink may begin another report.
  std::array<char, sizeof Kp_G_buffer> text{};
  std::memcpy(text.data(), Kp_G_buffer, text.size() - 1);
  const std::int32_t error = Kp_G_err_buf;
  Kp_G_buffer[0] = '\0';
  Kp_G_err_buf = 0;
  ReportText(code, cls, error, text.data());
}

void K_ReportFailedVerification(std::uint32_t code, std::int32_t line, std::int32_t,
                                const char* text) {
  k::ReportMade(
      code, K_ReportClass_ERROR, 0,
      [=] { return "failed verification " + std::to_string(line) + ": " + Text(text); },
      std::string_view("failed verification"));
}

void K_ReportError(std::uint32_t code, std::uint16_t cls, const std::u16string& text) {
  const std::u16string_view plain = text;
  const auto converted = [&text] { return vetrix::utility::UTF16to8(text); };
  k::ReportMade(code, cls, 0, converted, plain);
}

std::int32_t K_TranslateAndReportException(const std::exception& exception) {
  const bool memory = dynamic_cast<const std::bad_alloc*>(&exception) != nullptr;
  const std::int32_t error = memory ? std::int32_t{K_Err_NO_MEMORY} : kFailed;
  // The text of an exception may be in any character set.
  const auto wellFormed = [&exception] {
    return vetrix::utility::UTF16to8(vetrix::utility::UTF8to16(exception.what()));
  };
  k::ReportMade(K_Code_EXCEPTION, K_ReportClass_ERROR, error, wellFormed,
                std::string_view(exception.what()));
  return error;
}
