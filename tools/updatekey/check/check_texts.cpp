// Checks the string tables: each language must have the ten texts of the updater's screen. Its face
// must have their characters, each text must fit its line, and START and STOP their markers.

#include <algorithm>
#include <map>

#include "platform/input_limits.h"
#include "render/faces.h"
#include "support/string_table.h"
#include "support/system_settings.h"
#include "support/utf16_reader.h"
#include "tools/host/trial_device.h"
#include "tools/updatekey/check/checks.h"
#include "tools/updatekey/check/screen_fit.h"
#include "ui/screen_layout.h"

namespace {

const std::string LANG = keypaths::GUI_DATA + "/lang/";

// How the screen uses a text of the string tables.
struct TextUse {
    int rightEdge = 0;  // right limit of the text in pixels, the smallest of all states
    WideString suffix;  // the longest text that the screen appends to it
};

std::map<std::string, TextUse> screenTexts() {
    std::map<std::string, TextUse> texts;
    for (const layout::Text& text : layout::TEXTS) {
        const TextUse use = {layout::rightEdge(text), text.suffix};
        TextUse& known = texts.emplace(text.key, use).first->second;
        known.rightEdge = std::min(known.rightEdge, use.rightEdge);
    }
    return texts;
}

// Describes the encoding fault of a table, if any. The device reads tables as UTF-16LE.
std::string encodingFault(const std::string& bytes) {
    std::size_t zerosFirst = 0;
    std::size_t zerosSecond = 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        zerosFirst += bytes[i] == '\0' ? 1U : 0U;
        zerosSecond += bytes[i + 1] == '\0' ? 1U : 0U;
    }
    if (zerosFirst > zerosSecond)
        return "is UTF-16 with the higher byte first (big-endian)";
    return zerosSecond == 0 && bytes.size() > 2 ? "is not UTF-16; perhaps it is UTF-8"
                                                : std::string();
}

void checkLineEnds(KeyUnderCheck& key, const std::string& name) {
    Utf16Reader file(TrialDevice::usbRoot() + LANG + name, limits::STRING_TABLE);
    WideString line;
    int number = 0;
    while (file.readLine(line)) {
        ++number;
        const bool ended = line.size() >= 2 && line.compare(line.size() - 2, 2, TEXT("\r\n")) == 0;
        if (ended || line[0] == TEXT('#'))
            continue;
        const std::string fault =
            line.back() == TEXT('\n')
                ? " ends with a line feed alone; the device removes the last character of its "
                  "text; end lines with CR LF"
                : " does not end with CR LF within " + std::to_string(Utf16Reader::MAX_LINE) +
                      " characters; the device cuts its text; shorten it or end it";
        return key.add("table-line-end", LANG + name, "line " + std::to_string(number) + fault);
    }
}

// Reports a table that contains the texts of another language: one whose texts equal the English
// ones.
void checkLanguage(KeyUnderCheck& key, const Language& language) {
    StringTable& table = StringTable::instance();
    std::map<std::string, WideString> texts;
    for (const auto& [name, use] : screenTexts())
        texts[name] = table.lookup(name);
    table.setLanguage(0);
    std::size_t same = 0;
    for (const auto& [name, text] : texts)
        same += text == table.lookup(name) && text != StringTable::NO_TEXT ? 1U : 0U;
    if (2 * same > texts.size())
        key.add("table-language", LANG + stringTableFile(language.suffix),
                "has " + std::to_string(same) +
                    " texts that equal the English ones; check whether it is the table of " +
                    std::string(language.name));
}

void checkTable(KeyUnderCheck& key, const Language& language) {
    const std::string path = LANG + stringTableFile(language.suffix);
    const std::string textFace = faceName(language.script, layout::TEXT_FONT_SIZE);
    const FontData face = loadKeyFace(textFace);
    const StringTable& table = StringTable::instance();
    std::set<WCHAR> missing;
    const auto warn = [&](const char* code, const std::string& text, const std::string& fault) {
        if (!fault.empty())
            key.add(code, path, text + " " + fault);
    };
    for (const auto& [name, use] : screenTexts()) {
        const WideString& shown = table.lookup(name);
        if (shown.empty() || shown == StringTable::NO_TEXT) {
            key.add("text-missing", path, "has no text for " + name);
            continue;
        }
        if (face.glyphs.empty())
            continue;
        const DrawnText drawn = drawnText(face, shown + use.suffix);
        missing.insert(drawn.missing.begin(), drawn.missing.end());
        warn("text-too-wide", name, widthFault(drawn, use.rightEdge));
        warn("text-off-marker", name, markerFault(name, shown, drawn));
    }
    const DrawnText note = drawnText(face, layout::RESTART_NOTE);
    warn("text-too-wide", "the restart note", widthFault(note, layout::NOTES_EDGE));
    if (!missing.empty())
        key.add("text-missing-glyph", path,
                textFace + " has no glyph for " + listCharacters(missing));
}

}  // namespace

void checkTexts(KeyUnderCheck& key) {
    SystemSettings::instance().dataFolder = TrialDevice::usbRoot() + keypaths::GUI_DATA + "/";
    const std::string numerals = stringTableFile(NUMERALS);
    if (key.find(LANG + numerals) == nullptr)
        key.add("numerals-missing", LANG + numerals,
                "is missing; the device reads it for every language");
    else
        checkLineEnds(key, numerals);
    for (const int32_t number : key.options.languages) {
        const Language& language = *findLanguage(number);
        const std::string file = stringTableFile(language.suffix);
        if (key.find(LANG + file) == nullptr) {
            key.add("table-missing", LANG + file,
                    "is missing; the updater's screen would have no texts in this language");
            continue;
        }
        const std::string encoding = encodingFault(key.read(LANG + file));
        if (!encoding.empty()) {
            key.add("table-encoding", LANG + file,
                    encoding + "; make it with stringtable, in UTF-16 with the lower byte first");
            continue;
        }
        checkLineEnds(key, file);
        StringTable::instance().setLanguage(number);
        checkTable(key, language);
        if (number != 0 && key.find(LANG + stringTableFile(LANGUAGES[0].suffix)) != nullptr)
            checkLanguage(key, language);
    }
}
