// The GUI data that the build makes: what the operator gets to see of it.

#include <gtest/gtest.h>

#include <algorithm>

#include "support/string_table.h"
#include "support/system_settings.h"
#include "tests/support/device_folder.h"
#include "tools/font_reader.h"
#include "tools/host_file.h"
#include "tools/text_fit.h"

namespace {

struct Language {
    std::string name;
    std::string face;
};
// In the order of their numbers.
const Language LANGUAGES[] = {
    {"en", "SegoeUI_24px"}, {"fr", "SegoeUI_24px"},  {"pt", "SegoeUI_24px"},
    {"sp", "SegoeUI_24px"}, {"jp", "MeiryoUI_36px"}, {"zh", "FangSong_36px"},
    {"du", "SegoeUI_24px"},
};

std::string contentOf(const std::string& path) {
    std::string content;
    std::string error;
    EXPECT_TRUE(readHostFile(path, content, error)) << error;
    return content;
}

FontData fontOf(const std::string& face) {
    FontData font;
    std::string error;
    EXPECT_TRUE(readFont(std::string(GUIDATA) + "fonts/" + face + ".fnt", font, error)) << error;
    return font;
}

std::vector<TextEntry> textsOf(const std::string& language, MessageList& messages) {
    std::string error;
    const std::string folder = LANG_SOURCES;
    const auto keys = parseScreenKeys(contentOf(folder + "keys.txt"), "keys.txt", error);
    EXPECT_TRUE(keys) << error;
    std::vector<TextEntry> entries =
        parseTextSource(contentOf(folder + language + ".txt"), language, *keys, messages);
    for (const Language& known : LANGUAGES) {
        if (known.name == language)
            checkTexts(entries, language, *keys, fontOf(known.face), messages);
    }
    return entries;
}

TEST(GuiData, ShowsEveryTextWithoutComplaint) {
    for (const Language& language : LANGUAGES) {
        MessageList messages;
        EXPECT_EQ(textsOf(language.name, messages).size(), 10U);
        EXPECT_EQ(messages.errors, std::vector<std::string>{}) << language.name;
        EXPECT_EQ(messages.warnings, std::vector<std::string>{}) << language.name;
    }
}

TEST(GuiData, IsReadByTheDeviceAsItWasWritten) {
    const DeviceFolder device;
    SystemSettings::instance().dataFolder = "/data/";
    for (const std::string file : {"numerals", "en", "fr", "pt", "sp", "jp", "zh", "du"}) {
        const std::string name = "lang/StringTable_" + file + ".txt";
        device.write("data/" + name, contentOf(GUIDATA + name));
    }
    for (int number = 0; number < 7; ++number) {
        StringTable::instance().setLanguage(number);
        MessageList messages;
        for (const TextEntry& entry : textsOf(LANGUAGES[number].name, messages))
            EXPECT_EQ(StringTable::instance().lookup(entry.key), entry.text) << entry.key;
        EXPECT_EQ(StringTable::instance().lookup("STR_NUMERAL_7"), u"7");
    }
}

// The first and the last column with ink of `word` in a text that begins with `before`.
std::pair<int, int> inkOf(const FontData& font, const std::string& page,
                          const std::u16string& before, const std::u16string& word) {
    int pen = TEXT_START + static_cast<int>(drawnWidth(before, font));
    int first = 1024;
    int last = 0;
    for (const char16_t character : word) {
        const Glyph& glyph = font.glyphs.at(character);
        for (int row = 0; row < glyph.height; ++row) {
            for (int column = 0; column < glyph.width; ++column) {
                const int index =
                    (glyph.y + row) * static_cast<int>(font.atlasSize) + glyph.x + column;
                constexpr unsigned char visible = 30;
                if (static_cast<unsigned char>(page[static_cast<std::size_t>(index)]) < visible)
                    continue;
                first = std::min(first, pen + column);
                last = std::max(last, pen + column);
            }
        }
        pen += glyph.xadvance;
    }
    return {first, last};
}

TEST(GuiData, PutsTheWordsStartAndStopIntoTheMiddleOfTheirMarkers) {
    struct Marker {
        std::string key;
        std::u16string word;
        int left;
        int width;
    };
    const Marker markers[] = {{"STR_PRESSSTARTTOUPDATE", u"START", 135, 112},
                              {"STR_PRESSSTOPTOCANCEL", u"STOP", 135, 93}};
    const FontData font = fontOf("SegoeUI_24px");
    const std::string page = contentOf(std::string(GUIDATA) + "fonts/SegoeUI_24px_0.raw");
    MessageList messages;
    for (const TextEntry& entry : textsOf("en", messages)) {
        for (const Marker& marker : markers) {
            if (entry.key != marker.key)
                continue;
            const std::u16string before = entry.text.substr(0, entry.text.find(marker.word));
            const auto [first, last] = inkOf(font, page, before, marker.word);
            const int leftMargin = first - marker.left;
            const int rightMargin = marker.left + marker.width - 1 - last;
            EXPECT_NEAR(leftMargin, rightMargin, 1) << marker.key;
            EXPECT_GE(std::min(leftMargin, rightMargin), 3) << marker.key;
        }
    }
    // Both markers cover the rows 8 to 43 below their texts.
    const Glyph& letter = font.glyphs.at(u'T');
    EXPECT_EQ(letter.yoffset - 8, 43 - (letter.yoffset + letter.height - 1));
}

TEST(GuiData, KeepsTheLinesOfTheScreenApart) {
    for (const std::string face : {"SegoeUI_13px", "MeiryoUI_24px", "FangSong_24px"})
        EXPECT_LE(fontOf(face).lineHeight, 22U) << face;
    for (const std::string face : {"SegoeUI_24px", "MeiryoUI_36px", "FangSong_36px"})
        EXPECT_LE(fontOf(face).lineHeight, 50U) << face;
}

TEST(GuiData, HasADarkBackgroundUnderTheTexts) {
    const std::string picture = contentOf(std::string(GUIDATA) + "KSTRL-menubg4.raw");
    ASSERT_EQ(picture.size(), 1024U * 1024U);
    unsigned brightest = 0;
    for (const char pixel : picture)
        brightest = std::max<unsigned>(brightest, static_cast<unsigned char>(pixel));
    EXPECT_GT(brightest, 30U);
    EXPECT_LT(brightest, 96U);
}

}  // namespace
