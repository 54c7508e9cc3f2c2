// Tests that the generated fonts can show all texts of every language, and that the device reads
// the generated string tables correctly.

#include <gtest/gtest.h>

#include "render/faces.h"
#include "support/string_table.h"
#include "support/system_settings.h"
#include "tests/helpers/device_folder.h"
#include "tools/guidata/font_reader.h"
#include "tools/guidata/text_fit.h"
#include "tools/host/host_file.h"
#include "ui/screen_layout.h"

namespace {

TEST(GuiData, ShowsEveryTextAndIsReadBackUnchanged) {
    const DeviceFolder device;
    std::filesystem::copy(GUIDATA "lang", device.root() / "lang");
    SystemSettings::instance().dataFolder = "/";
    const ScreenKeys keys = screenKeys();
    for (const Language& known : LANGUAGES) {
        const std::string language = known.suffix;
        const std::string face = faceName(known.script, layout::TEXT_FONT_SIZE);
        const std::string source = readHostFile(LANG_SOURCES + language + ".txt");
        const FontData font = readFont(std::string(GUIDATA) + "fonts/" + face + ".fnt");
        const auto entries = parseTextSource(source, language, keys);
        EXPECT_EQ(entries.size(), keys.size());
        EXPECT_EQ(checkTexts(entries, language, keys, font), std::vector<std::string>{});

        StringTable::instance().setLanguage(known.number);
        for (const TextEntry& entry : entries)
            EXPECT_EQ(StringTable::instance().lookup(entry.key), entry.text) << entry.key;
        EXPECT_EQ(StringTable::instance().lookup("STR_NUMERAL_7"), u"7");
    }
}

}  // namespace
