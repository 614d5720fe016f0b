// The files that a user may write: translations for K, and vetrix's settings.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "K_host.h"
#include "TRC_host.h"
#include "fuzz/bytes.h"
#include "fuzz/demand.h"
#include "fuzz/utf8.h"
#include "platform/K.h"
#include "platform/vetrix.h"
#include "vetrix_host.h"

namespace {

using fuzz::Bytes;
using fuzz::Demand;

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

bool IsOneLine(const std::string& text) {
  return std::ranges::none_of(text, IsControl) && fuzz::IsUTF8(text);
}

// ---- Translations

struct Used {
  const char* zstring;
  void (*use)(const char* text);
};

void Show(const char* text) {
  Demand(fuzz::IsUTF8(K_TextToUTF8(text)), "a text that cannot be shown");
}

// As modules print: placeholders that differ from the default text's fail here.
template <typename... Arguments>
void Print(const char* format, Arguments... arguments) {
  std::array<char, 1024> place{};
  const int length = std::snprintf(place.data(), place.size(), format, arguments...);
  Demand(length >= 0, "a text that cannot be printed with");
  Show(place.data());
}

constexpr std::array kUsed = {
    Used{"$$$/t/0=", Show},
    Used{"$$$/t/1=checking world", Show},
    Used{"$$$/t/2=can#{rsquo}t: %d x %d.", [](const char* text) { Print(text, 7, -9); }},
    Used{"$$$/t/3=leaked ^^L1 Worlds.", Show},
    Used{"$$$/t/4=@0 x @1 @@ @2", Show},
    Used{"$$$/t/5=%s (%5.1f %%)", [](const char* text) { Print(text, "pixels", 12.5); }},
};

// K keeps each text that was ever looked up, so that a process looks up no more than
// so many.
constexpr int kMostLookups = 300000;

void LookUp() {
  static std::array<K_LStrEntry, kUsed.size()> entries{};
  static int lookups = 0;
  for (std::size_t i = 0; i < kUsed.size(); ++i) {
    entries[i].key = kUsed[i].zstring;
    const std::u16string wide = K_ZStringToUTF16String(kUsed[i].zstring);
    Demand(fuzz::IsUTF8(vetrix::utility::UTF16to8(wide)), "a text that is no UTF-16");
    if (++lookups > kMostLookups) continue;
    const K_LStrCatalogue catalogue = {"fuzz", entries.size(), entries.data(), 0};
    const char* text = K_ZLookupLStrCache(&catalogue, static_cast<std::int32_t>(i), 0, 0);
    Demand(vetrix::utility::UTF8to16(K_TextToUTF8(text)) == wide, "one text, two translations");
    kUsed[i].use(text);
  }
}

void CheckTranslation(Bytes& bytes) {
  const std::size_t size = bytes.Byte();
  const std::string text = bytes.Rest();
  std::vector<char> place(size);
  const bool good = K_SetTranslation(text.c_str(), place.data(), size) != 0;
  if (size > 1) {
    const std::string problem(place.data());
    Demand(problem.size() < size && problem.empty() == good, "a problem that is none");
    Demand(IsOneLine(problem), "a problem that is no line of UTF-8");
    Demand(good || std::string("line ").starts_with(problem.substr(0, 5)), "a problem nowhere");
  }
  if (good) LookUp();
  K_SetTranslation(nullptr, nullptr, 0);
}

// ---- Settings

using Settings = std::map<std::string, std::string>;

Settings InForce() {
  Settings settings;
  for (const auto& [key, text] : vetrix::host::Settings()) {
    Demand(settings.emplace(key, text).second, "a key that is there twice");
    const std::string found = vetrix::debug::DebugDatabase::Instance().GetEntry(key, "\x01");
    Demand(found == text, "a setting that the database has not");
  }
  return settings;
}

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    std::array<char, 8> escape{};
    std::snprintf(escape.data(), escape.size(), "\\u%04X", static_cast<unsigned char>(c));
    const bool plain = !IsControl(c) && c != '"' && c != '\\';
    quoted += plain ? std::string(1, c) : escape.data();
  }
  return quoted + '"';
}

void CheckSettings(Bytes& bytes) {
  const std::string text = bytes.Rest();
  if (!vetrix::host::LoadSettingsText(text)) {
    Demand(vetrix::host::Settings().empty(), "settings of a file that cannot be read");
    return;
  }
  const Settings read = InForce();
  std::string written;
  for (const auto& [key, value] : read) {
    written.append(Quoted(key)).append(" = ").append(Quoted(value)).append("\n");
  }
  Demand(vetrix::host::LoadSettingsText(written), "settings that cannot be written back");
  Demand(InForce() == read, "settings that were written back and differ");
}

void TakeEvent(std::int32_t /*level*/, const char* /*category*/, const char* /*event*/,
               const char* text, void* /*context*/) {
  Demand(IsOneLine(text), "an event that is no line of UTF-8");
}

bool Begin() {
  fuzz::SilenceLibraries();
  TRC_SetSink(TakeEvent, nullptr);
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool begun = Begin();
  Bytes bytes(data, size);
  if (begun && bytes.Byte() % 2 == 0) {
    CheckTranslation(bytes);
  } else {
    CheckSettings(bytes);
  }
  return 0;
}
