// The translation in force.
#ifndef K_TRANSLATIONS_H
#define K_TRANSLATIONS_H

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "host/K/texts/translation_file.h"

namespace k {

class Translations {
 public:
  // Never destroyed.
  static Translations& Instance();

  void Replace(TranslatedTexts texts);

  // Changes with each replacement, and is never 0.
  std::uintptr_t Generation() const { return generation_; }

  // The 8-bit translation of a ZString. None when there is none, or when its
  // placeholders differ from those of the default text, which is logged once.
  std::optional<std::string> Find(std::string_view zstring);

 private:
  struct Match {
    std::string text;
    bool refused;
    bool firstTime;
  };
  std::optional<Match> Compare(std::string_view key, std::string_view zstring);

  std::atomic<std::uintptr_t> generation_{1};
  std::mutex mutex_;
  TranslatedTexts texts_;
  std::set<std::string, std::less<>> refused_;
};

}  // namespace k

#endif
