// TRC, Q and TXT as the recorder plays them.
#include "platform/Q.h"
#include "platform/TRC.h"
#include "platform/TXT.h"
#include "tests/support/recorder/recorder.h"

using recorder::Current;
using recorder::Hex;
using recorder::Join;
using recorder::Text;

void TRC_Log(std::int32_t level, const char* category, const char* event, const char* text) {
  Current().Enter("TRC_Log", Join(Text(level), Text(category), Text(event), Text(text)));
}

std::int32_t Q_CheckVersions(std::uint32_t reportCode, std::int32_t headerVersion) {
  Current().Enter("Q_CheckVersions", Join(Hex(reportCode), Text(headerVersion)));
  return Current().script.versionsOfQ;
}

std::int32_t TXT_CheckVersions(std::uint32_t reportCode, std::int32_t headerVersion) {
  Current().Enter("TXT_CheckVersions", Join(Hex(reportCode), Text(headerVersion)));
  return Current().script.versionsOfTXT;
}
