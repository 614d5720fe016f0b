// The module's localisable texts, and files that translate them.
#ifndef TESTS_INTEGRATION_ZSTRINGS_H
#define TESTS_INTEGRATION_ZSTRINGS_H

#include <map>
#include <string>
#include <vector>

// Texts by their keys.
using Texts = std::map<std::string, std::string>;

// All ZStrings in a compiled library, with their default texts: those of the
// catalogue and those of the code, which no other list has.
Texts ZStringsIn(const std::string& libraryFile);

// The texts of a translation file.
Texts TranslationIn(const std::string& path);

// The placeholders of a text: print conversions in their order, then those
// with numbers, sorted.
std::vector<std::string> PlaceholdersOf(const std::string& text);

// A pseudo-translation, which shows untranslated texts and proves that longer
// texts and other scripts work: accented within Mac OS Roman and beyond it,
// longer, in brackets; placeholders and markup are kept.
std::string PseudoText(const std::string& text);
// A translation of all the texts into it.
std::string PseudoLocale(const Texts& texts);

#endif
