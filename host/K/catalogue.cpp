// Lookup of catalogue texts. An entry's first cache word is the address of the
// text, its second the generation of translations that it was looked up in. A
// default text without markup is used where it stands, at the end of its key.
#include <cstdint>
#include <mutex>
#include <optional>
#include <set>
#include <string>

#include "platform/K.h"
#include "translations.h"
#include "zstring.h"

namespace {

struct MadeTexts {
  std::mutex mutex;             // for the cache words as well
  std::set<std::string> texts;  // none goes, since callers may still hold it
};

// Never destroyed: catalogues point into it until the process is gone.
MadeTexts& TheTexts() {
  static auto* const texts = new MadeTexts;
  return *texts;
}

K_LStrEntry* FindEntry(const K_LStrCatalogue* catalogue, std::int32_t index) {
  if (catalogue == nullptr || catalogue->entries == nullptr || index < 0) return nullptr;
  const auto position = static_cast<std::uintptr_t>(index);
  if (position >= catalogue->count) return nullptr;
  K_LStrEntry* entry = &catalogue->entries[position];
  return entry->key != nullptr ? entry : nullptr;
}

// The text where it is not simply the end of the key.
std::optional<std::string> MakeText(const char* key) {
  if (auto translation = k::Translations::Instance().Find(key)) return translation;
  const std::string_view text = k::TextAfterKey(key);
  if (!k::HasMarkup(text)) return std::nullopt;
  return k::ExpandMarkup(text);
}

const char* CachedText(const K_LStrEntry& entry, std::uintptr_t generation) {
  const std::lock_guard lock(TheTexts().mutex);
  return entry.cache[1] == generation ? reinterpret_cast<const char*>(entry.cache[0]) : nullptr;
}

const char* KeepText(K_LStrEntry& entry, std::uintptr_t generation,
                     const std::optional<std::string>& made) {
  MadeTexts& kept = TheTexts();
  const std::lock_guard lock(kept.mutex);
  const char* text =
      made ? kept.texts.insert(*made).first->c_str() : k::TextAfterKey(entry.key).data();
  entry.cache[0] = reinterpret_cast<std::uintptr_t>(text);
  entry.cache[1] = generation;
  return text;
}

}  // namespace

const char* K_ZLookupLStrCache(const K_LStrCatalogue* catalogue, std::int32_t index, std::int32_t,
                               std::int32_t) {
  K_LStrEntry* entry = FindEntry(catalogue, index);
  if (entry == nullptr) return "";
  const std::uintptr_t generation = k::Translations::Instance().Generation();
  const char* cached = CachedText(*entry, generation);
  return cached != nullptr ? cached : KeepText(*entry, generation, MakeText(entry->key));
}
