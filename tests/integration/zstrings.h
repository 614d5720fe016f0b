// The module's localisable texts, and files that translate them.
#ifndef TESTS_INTEGRATION_ZSTRINGS_H
#define TESTS_INTEGRATION_ZSTRINGS_H

#include <map>
#include <string>
#include <vector>

// Texts by their keys.
using Texts = std::map<std::string, std::string>;

// All ZStrings in a compiled library, with their default texts: of the
// catalogue, and of the code, from which nobody else can tell them.
Texts ZStringsIn(const std::string& libraryFile);

// What a translation file holds.
Texts TranslationIn(const std::string& path);

// The placeholders of a text: print conversions in their order, then those
// with numbers, sorted.
std::vector<std::string> PlaceholdersOf(const std::string& text);

// A language that nobody speaks, for seeing what is translated and whether
// longer texts and other scripts get through: accented within Mac OS Roman and
// beyond it, longer, in brackets; placeholders and markup are kept.
std::string PseudoText(const std::string& text);
// A translation of all the texts into it.
std::string PseudoLocale(const Texts& texts);

#endif
