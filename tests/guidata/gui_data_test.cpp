// Whether each language that the build makes shows all of its texts, on the device too.

#include <gtest/gtest.h>

#include "support/string_table.h"
#include "support/system_settings.h"
#include "tests/helpers/device_folder.h"
#include "tools/guidata/font_reader.h"
#include "tools/guidata/host_file.h"
#include "tools/guidata/text_fit.h"

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
    const std::string folder = LANG_SOURCES;
    const ScreenKeys keys = screenKeys();
    std::vector<TextEntry> entries =
        parseTextSource(contentOf(folder + language + ".txt"), language, keys, messages);
    for (const Language& known : LANGUAGES) {
        if (known.name == language)
            checkTexts(entries, language, keys, fontOf(known.face), messages);
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

}  // namespace
