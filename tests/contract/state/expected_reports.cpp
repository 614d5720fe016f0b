// The calls that a report makes.
#include "tests/contract/state/expected_reports.h"

#include "state/messages/Messages.h"

namespace {

std::string Quoted(const std::string& text) {
  std::string quoted(1, '"');
  quoted += text;
  return quoted += '"';
}

std::string Number(const std::string& digits) {
  std::string number(1, 'u');
  return number += Quoted(digits);
}

std::string Substitution(const std::string& text, const Calls& numbers) {
  std::string call = "ReplaceInString(u" + Quoted(text);
  for (const std::string& number : numbers) call.append(", ").append(Number(number));
  for (std::size_t i = numbers.size(); i < 10; ++i) call += ", u\"\"";
  return call + ")";
}

std::string Sent(const std::string& code, const std::string& text) {
  return "K_ReportError(" + code + ", 8, u" + Quoted(text) + ")";
}

}  // namespace

Calls Together(const std::vector<Calls>& parts) {
  Calls all;
  for (const Calls& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

Calls DamagedWorldReport(const std::string& code) {
  return {"K_ZLookupLStrCache(54, 0, 0)",
          "Kp_ReportQuexErrString(" + code + ", 8, 2, \"checking world\")"};
}

Calls ShortageReport(const std::string& code, int width, int height, int bitsPerChannel) {
  const std::string head = "Unable to allocate enough memory to render the current frame (";
  const std::string tail =
      " bpc). Either decrease the memory requirements for the rendering of this frame, or install "
      "more RAM. (12805). For more information, see " PXLp_HELP_PAGE;
  const std::string w = std::to_string(width);
  const std::string h = std::to_string(height);
  const std::string bits = std::to_string(bitsPerChannel);
  return {"K_ZStringToUTF16String(\"$$$/OV/PXL/CannotAllocateEnoughMemory=" + head +
              "@0 x @1 @@ @2" + tail + "\")",
          "NumberToString(" + w + ")",
          "NumberToString(" + h + ")",
          "NumberToString(" + bits + ")",
          Substitution(head + "@0 x @1 @@ @2" + tail, {w, h, bits}),
          Sent(code, head + w + " x " + h + " @ " + bits + tail)};
}

Calls LimitReport(const std::string& code, int width, int height, int bitsPerChannel,
                  const std::string& gigabytes) {
  const std::string head = "Image buffers of size ";
  const std::string tail =
      " GB) exceed internal limits. Decrease the memory requirements for the rendering of this "
      "frame. (12804). For more information, see " PXLp_HELP_PAGE;
  const std::string w = std::to_string(width);
  const std::string h = std::to_string(height);
  const std::string bits = std::to_string(bitsPerChannel);
  const std::string form = head + "@0 x @1 @@ @2 bpc (@3" + tail;
  return {"K_ZStringToUTF16String(\"$$$/OV/PXL/MemoryLimitReached=" + form + "\")",
          "NumberToString(" + w + ")",
          "NumberToString(" + h + ")",
          "NumberToString(" + bits + ")",
          "NumberToString(" + gigabytes + ", 1, 1, 0, 31)",
          Substitution(form, {w, h, bits, gigabytes}),
          Sent(code, head + w + " x " + h + " @ " + bits + " bpc (" + gigabytes + tail)};
}

Calls BufferReport(const std::string& code, int error) {
  const std::string number = std::to_string(error);
  return {"K_ZLookupLStrCache(27, 0, 0)", "Kp_SysEnglishError(" + number + ")",
          "Kp_ReportError(" + code + ", 8 error " + number + " \"changing pixel buffer.\")"};
}
