// Looks up catalogue texts. An entry's first cache word is the address of its
// text, the second the generation of translations that the text is from. A
// default text without markup is not copied: it is the end of the key.
#include <atomic>
#include <cstdint>
#include <mutex>
#include <new>
#include <optional>
#include <set>
#include <string>

#include "host/K/texts/translations.h"
#include "host/K/texts/zstring.h"
#include "host/immortal.h"
#include "platform/K.h"

namespace {

struct MadeTexts {
  std::mutex mutex;             // also for writing the cache words
  std::set<std::string> texts;  // none is removed, since callers keep addresses
};

// Never destroyed: catalogues point into it until the process ends.
MadeTexts& TheTexts() {
  static Immortal<MadeTexts> texts;
  return *texts;
}
// Made while the library is loaded: later there may be no memory for it.
[[maybe_unused]] const MadeTexts& kLoadedTexts = TheTexts();

K_LStrEntry* FindEntry(const K_LStrCatalogue* catalogue, std::int32_t index) {
  if (catalogue == nullptr || catalogue->entries == nullptr || index < 0) return nullptr;
  const auto position = static_cast<std::uintptr_t>(index);
  if (position >= catalogue->count) return nullptr;
  K_LStrEntry* entry = &catalogue->entries[position];
  return entry->key != nullptr ? entry : nullptr;
}

// The text of an entry; none when it is the end of the key.
std::optional<std::string> MakeText(const char* key) {
  if (auto translation = k::Translations::Instance().Find(key)) return translation;
  const std::string_view text = k::TextAfterKey(key);
  if (!k::HasMarkup(text)) return std::nullopt;
  return k::ExpandMarkup(text);
}

using CacheWord = std::atomic_ref<std::uintptr_t>;

// Needs no lock: the generation is written after the text. A text newer than the
// generation is valid, too.
const char* CachedText(K_LStrEntry& entry, std::uintptr_t generation) {
  if (CacheWord(entry.cache[1]).load(std::memory_order_acquire) != generation) return nullptr;
  return reinterpret_cast<const char*>(CacheWord(entry.cache[0]).load(std::memory_order_relaxed));
}

const char* KeepText(K_LStrEntry& entry, std::uintptr_t generation,
                     const std::optional<std::string>& made) {
  MadeTexts& kept = TheTexts();
  const std::lock_guard lock(kept.mutex);
  const char* text =
      made ? kept.texts.insert(*made).first->c_str() : k::TextAfterKey(entry.key).data();
  CacheWord(entry.cache[0])
      .store(reinterpret_cast<std::uintptr_t>(text), std::memory_order_relaxed);
  CacheWord(entry.cache[1]).store(generation, std::memory_order_release);
  return text;
}

}  // namespace

const char* K_ZLookupLStrCache(const K_LStrCatalogue* catalogue, std::int32_t index, std::int32_t,
                               std::int32_t) {
  K_LStrEntry* entry = FindEntry(catalogue, index);
  if (entry == nullptr) return "";
  const std::uintptr_t generation = k::Translations::Instance().Generation();
  const char* cached = CachedText(*entry, generation);
  if (cached != nullptr) return cached;
  try {
    return KeepText(*entry, generation, MakeText(entry->key));
  } catch (const std::bad_alloc&) {
    // The default text with its markup; a later lookup tries again.
    return k::TextAfterKey(entry->key).data();
  }
}
