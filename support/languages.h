// The languages of the updater's screen. A new one is a row here and a file of its texts in
// data/lang/, named after its suffix: the program, the tools, the tests and the build, which reads
// the rows of this file, take it from here.
#pragma once

#include <cstdint>
#include <iterator>
#include <string>

// The writing of a language decides on its faces.
enum class Script { latin, japanese, chinese };

struct Language {
    int32_t number;      // LANGUAGE of the configuration store
    const char* name;    // in English
    const char* suffix;  // of its string table
    Script script;
};

// By number, from 0 and without a gap.
// clang-format off
constexpr Language LANGUAGES[] = {
    {0, "English", "en", Script::latin},
    {1, "French", "fr", Script::latin},
    {2, "Portuguese", "pt", Script::latin},
    {3, "Spanish", "sp", Script::latin},
    {4, "Japanese", "jp", Script::japanese},
    {5, "Chinese", "zh", Script::chinese},
    {6, "Dutch", "du", Script::latin},
};
// clang-format on
constexpr auto LANGUAGE_COUNT = static_cast<int32_t>(std::size(LANGUAGES));

// Null for a number that no language has.
constexpr const Language* findLanguage(int32_t number) {
    return number >= 0 && number < LANGUAGE_COUNT ? &LANGUAGES[number] : nullptr;
}

// The suffix of the table that every language shares.
constexpr const char* NUMERALS = "numerals";

// The file of a string table in the "lang/" folder of the GUI data.
inline std::string stringTableFile(const std::string& suffix) {
    return "StringTable_" + suffix + ".txt";
}
