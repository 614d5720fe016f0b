// The translation in force.
#include "host/K/texts/translations.h"

#include <utility>

#include "TRC_host.h"
#include "host/K/texts/placeholders.h"
#include "host/K/texts/zstring.h"
#include "host/immortal.h"

namespace k {
namespace {

// Made while the library is loaded: later there may be no memory for it.
[[maybe_unused]] const Translations& kLoadedTranslations = Translations::Instance();

}  // namespace

Translations& Translations::Instance() {
  // Never destroyed: texts may be looked up while the process ends.
  static Immortal<Translations> translations;
  return *translations;
}

void Translations::Replace(TranslatedTexts texts) {
  const std::lock_guard lock(mutex_);
  texts_ = std::move(texts);
  refused_.clear();
  ++generation_;
}

std::optional<Translations::Match> Translations::Compare(std::string_view key,
                                                         std::string_view zstring) {
  const std::lock_guard lock(mutex_);
  const auto found = texts_.find(key);
  if (found == texts_.end() || found->second.empty()) return std::nullopt;
  const bool refused = !HaveSamePlaceholders(found->second, TextAfterKey(zstring));
  const bool firstTime = refused && refused_.emplace(key).second;
  return Match{found->second, refused, firstTime};
}

std::optional<std::string> Translations::Find(std::string_view zstring) {
  const std::string_view key = KeyOf(zstring);
  if (key.empty()) return std::nullopt;
  std::optional<Match> match = Compare(key, zstring);
  if (!match) return std::nullopt;
  // Without the lock: the log's sink may look up a text.
  if (match->firstTime) {
    const std::string text = "the placeholders differ from the default text's: " + std::string(key);
    TRC_Log(TRC_Level_PROBLEM, "K", "translation", text.c_str());
  }
  if (match->refused) return std::nullopt;
  return std::move(match->text);
}

}  // namespace k
