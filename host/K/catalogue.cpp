// Lookup of catalogue texts. An entry's first cache word is the address of the
// text once it was looked up; a text without markup is used where it stands, at
// the end of its key.
#include <cstdint>
#include <deque>
#include <mutex>
#include <new>
#include <string>

#include "platform/K.h"
#include "zstring.h"

namespace {

struct ExpandedTexts {
  std::mutex mutex;
  std::deque<std::string> texts;  // their addresses stay
};

// Never destroyed: catalogues point into it until the process is gone.
ExpandedTexts& TheTexts() {
  static auto* const texts = new ExpandedTexts;
  return *texts;
}

K_LStrEntry* FindEntry(const K_LStrCatalogue* catalogue, std::int32_t index) {
  if (catalogue == nullptr || catalogue->entries == nullptr || index < 0) return nullptr;
  const auto position = static_cast<std::uintptr_t>(index);
  if (position >= catalogue->count) return nullptr;
  K_LStrEntry* entry = &catalogue->entries[position];
  return entry->key != nullptr ? entry : nullptr;
}

const char* FindText(const char* key, std::deque<std::string>& expanded) {
  const std::string_view text = k::TextAfterKey(key);
  if (!k::HasMarkup(text)) return text.data();
  return expanded.emplace_back(k::ExpandMarkup(text)).c_str();
}

}  // namespace

const char* K_ZLookupLStrCache(const K_LStrCatalogue* catalogue, std::int32_t index, std::int32_t,
                               std::int32_t) {
  K_LStrEntry* entry = FindEntry(catalogue, index);
  if (entry == nullptr) return "";
  ExpandedTexts& expanded = TheTexts();
  const std::lock_guard lock(expanded.mutex);
  if (entry->cache[0] == 0) {
    entry->cache[0] = reinterpret_cast<std::uintptr_t>(FindText(entry->key, expanded.texts));
  }
  return reinterpret_cast<const char*>(entry->cache[0]);
}
