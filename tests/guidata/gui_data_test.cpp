// Whether each language that the build makes shows all of its texts, on the device too.

#include <gtest/gtest.h>

#include "support/string_table.h"
#include "support/system_settings.h"
#include "tests/helpers/device_folder.h"
#include "tools/guidata/font_reader.h"
#include "tools/guidata/host_file.h"
#include "tools/guidata/text_fit.h"

namespace {

std::string contentOf(const std::string& path) {
    std::string content;
    std::string error;
    EXPECT_TRUE(readHostFile(path, content, error)) << error;
    return content;
}

TEST(GuiData, ShowsEveryTextWithoutComplaintAndIsReadByTheDeviceAsItWasWritten) {
    // In the order of their numbers.
    const std::pair<const char*, const char*> languages[] = {
        {"en", "SegoeUI_24px"}, {"fr", "SegoeUI_24px"},  {"pt", "SegoeUI_24px"},
        {"sp", "SegoeUI_24px"}, {"jp", "MeiryoUI_36px"}, {"zh", "FangSong_36px"},
        {"du", "SegoeUI_24px"}};
    const DeviceFolder device;
    std::filesystem::copy(GUIDATA "lang", device.root() / "lang");
    SystemSettings::instance().dataFolder = "/";
    std::string error;
    const ScreenKeys keys = screenKeys();
    int number = 0;
    for (const auto& [language, face] : languages) {
        const std::string source = contentOf(std::string(LANG_SOURCES) + language + ".txt");
        MessageList messages;
        FontData font;
        EXPECT_TRUE(readFont(std::string(GUIDATA) + "fonts/" + face + ".fnt", font, error));
        const auto entries = parseTextSource(source, language, keys, messages);
        EXPECT_EQ(entries.size(), 10U);
        checkTexts(entries, language, keys, font, messages);
        EXPECT_EQ(messages.errors, std::vector<std::string>{});
        EXPECT_EQ(messages.warnings, std::vector<std::string>{});

        StringTable::instance().setLanguage(number++);
        for (const TextEntry& entry : entries)
            EXPECT_EQ(StringTable::instance().lookup(entry.key), entry.text) << entry.key;
        EXPECT_EQ(StringTable::instance().lookup("STR_NUMERAL_7"), u"7");
    }
}

}  // namespace
