// The languages of the updater's screen. The program, the tools, the tests and the build, which
// parses the rows of this file, all use this table. docs/firmware-engineers-guide.md describes how
// to add a language.
#pragma once

#include <cstdint>
#include <iterator>
#include <string>

// The script of a language determines its faces.
enum class Script { Latin, Japanese, Chinese };

struct Language {
    int32_t number;      // LANGUAGE of the configuration store
    const char* name;    // in English
    const char* suffix;  // of its string table
    Script script;
};

// Sorted by number, from 0 and without gaps.
// clang-format off
constexpr Language LANGUAGES[] = {
    {0, "English", "en", Script::Latin},
    {1, "French", "fr", Script::Latin},
    {2, "Portuguese", "pt", Script::Latin},
    {3, "Spanish", "sp", Script::Latin},
    {4, "Japanese", "jp", Script::Japanese},
    {5, "Chinese", "zh", Script::Chinese},
    {6, "Dutch", "du", Script::Latin},
};
// clang-format on
constexpr auto LANGUAGE_COUNT = static_cast<int32_t>(std::size(LANGUAGES));

// Returns null for an unknown number.
constexpr const Language* findLanguage(int32_t number) {
    return number >= 0 && number < LANGUAGE_COUNT ? &LANGUAGES[number] : nullptr;
}

// The suffix of the string table that all languages share.
constexpr const char* NUMERALS = "numerals";

// The name of a string table's file in the "lang/" folder of the GUI data.
inline std::string stringTableFile(const std::string& suffix) {
    return "StringTable_" + suffix + ".txt";
}
