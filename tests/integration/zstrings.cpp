// Finds the texts of a library in its file.
#include "tests/integration/zstrings.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

namespace {

const std::regex& PlaceholderPattern() {
  static const std::regex pattern(R"(%[^A-Za-z%]*[A-Za-z%]|@@|@[0-9]|\^\^[A-Z][0-9])");
  return pattern;
}

const std::regex& KeptPattern() {
  static const std::regex pattern(
      R"(%[^A-Za-z%]*[A-Za-z%]|@@|@[0-9]|\^\^[A-Z][0-9]|#\{[a-z]+\}|https://\S+)");
  return pattern;
}

std::string ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

const std::map<char, std::string>& Accents() {
  static const std::map<char, std::string> accents = {
      {'a', "\u00E5"}, {'c', "\u0107"}, {'d', "\u010F"}, {'e', "\u00E9"}, {'i', "\u00EE"},
      {'l', "\u0142"}, {'n', "\u00F1"}, {'o', "\u00F8"}, {'r', "\u0159"}, {'s', "\u0161"},
      {'t', "\u0167"}, {'u', "\u00FC"}, {'w', "\u0175"}, {'y', "\u00FF"}, {'z', "\u017E"},
      {'A', "\u00C5"}, {'I', "\u0130"}, {'U', "\u00DC"}, {'W', "\u0174"}};
  return accents;
}

std::string Accented(const std::string& text) {
  std::string result;
  for (const char c : text) {
    const auto accent = Accents().find(c);
    result += accent != Accents().end() ? accent->second : std::string(1, c);
  }
  return result;
}

}  // namespace

Texts ZStringsIn(const std::string& libraryFile) {
  const std::string bytes = ReadBytes(libraryFile);
  Texts texts;
  for (std::size_t at = bytes.find("$$$/"); at != std::string::npos;
       at = bytes.find("$$$/", at + 1)) {
    const std::string zstring = bytes.c_str() + at;
    const std::size_t equals = zstring.find('=');
    if (equals == std::string::npos) continue;
    texts[zstring.substr(0, equals)] = zstring.substr(equals + 1);
  }
  return texts;
}

Texts TranslationIn(const std::string& path) {
  std::istringstream lines(ReadBytes(path));
  Texts texts;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t equals = line.find('=');
    if (line.starts_with("$$$/")) {
      texts[Trimmed(line.substr(0, equals))] = Trimmed(line.substr(equals + 1));
    }
  }
  return texts;
}

std::vector<std::string> PlaceholdersOf(const std::string& text) {
  std::vector<std::string> found;
  const auto first = std::sregex_iterator(text.begin(), text.end(), PlaceholderPattern());
  for (auto match = first; match != std::sregex_iterator(); ++match) found.push_back(match->str());
  std::erase(found, "@@");
  const auto conversion = [](const std::string& placeholder) { return placeholder[0] == '%'; };
  std::sort(std::stable_partition(found.begin(), found.end(), conversion), found.end());
  return found;
}

std::string PseudoText(const std::string& text) {
  if (text.empty()) return "";
  std::string result = "[";
  auto from = text.begin();
  const auto first = std::sregex_iterator(text.begin(), text.end(), KeptPattern());
  for (auto match = first; match != std::sregex_iterator(); ++match) {
    const auto kept = text.begin() + match->position();
    result += Accented({from, kept}) + match->str();
    from = kept + match->length();
  }
  return result + Accented({from, text.end()}) + std::string(text.size() / 3 + 1, '~') + "]";
}

std::string PseudoLocale(const Texts& texts) {
  std::string file;
  for (const auto& [key, text] : texts) file += key + " = " + PseudoText(text) + "\n";
  return file;
}
