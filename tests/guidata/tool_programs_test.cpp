// Tests that a faulty source stops the build: the exit codes and messages of the tools, and that
// they leave no incomplete file.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "tests/helpers/device_folder.h"
#include "tools/screen_keys.h"

namespace {

class ToolPrograms : public ::testing::Test, protected DeviceFolder {
  protected:
    // Runs a tool in the test's folder and returns its exit code.
    int run(const std::string& command) {
        const std::string line =
            "cd '" + root().string() + "' && '" TOOLS + command + " > out 2> err";
        const int status = std::system(line.c_str());  // NOLINT(cert-env33-c): our own line
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(ToolPrograms, StringtableRejectsFaultySources) {
    std::string texts;
    for (const auto& [key, use] : screenKeys())
        texts += key + " A text that is too wide to end in front of the release notes\n";
    write("a.txt", texts);
    const std::string face = " --language en --fonts '" GUIDATA "fonts'";
    EXPECT_EQ(run("stringtable' a.txt --output t" + face), 0);
    for (const std::string key : {"STR_PRESSSTOPTOCANCEL", "STR_UDPATEFAILED"})
        EXPECT_NE(read("err").find(key + " ends at x "), std::string::npos);
    EXPECT_NE(read("err").find("STR_PRESSSTOPTOCANCEL does not contain STOP"), std::string::npos);
    for (const std::string key : {"STR_KESTRELUPDATER", "STR_PLEASEINSERTUPDATEKEY"})
        EXPECT_EQ(read("err").find(key), std::string::npos);
    EXPECT_EQ(read("t").substr(0, 2), "\xFF\xFE");

    write("b.txt", texts.substr(texts.find('\n') + 1) + "STR_B text\n");
    EXPECT_EQ(run("stringtable' b.txt --output u" + face), 2);
    const std::string place = "b.txt:" + std::to_string(screenKeys().size());
    EXPECT_NE(read("err").find("\n" + place + ": STR_B is not a key of the screen\n"),
              std::string::npos);
    EXPECT_NE(read("err").find("\nb.txt: STR_KESTRELAPPNOTFOUND is missing\n"), std::string::npos);
    EXPECT_FALSE(exists("u"));

    EXPECT_EQ(run("stringtable' absent.txt --output u"), 2);
    EXPECT_EQ(read("err"), "stringtable: absent.txt: cannot be read: No such file or directory\n");
    EXPECT_EQ(run("stringtable' a.txt --output absent/u"), 2);
    EXPECT_EQ(read("err"), "stringtable: absent/u: cannot be written: No such file or directory\n");
}

TEST_F(ToolPrograms, FontbakeIncludesTheCharactersOfTheTexts) {
    write("a.txt", "# \xE6\x9B\xB4\nSTR_A\t\xE6\x96\xB0\xE3\x82\x92\n");
    write("kerning.txt", "AV -100\n");
    const std::string bake =
        "fontbake' --em 20 --line-height 30 --base 22 --name x --texts a.txt "
        "--kerning kerning.txt --font ";
    EXPECT_EQ(run(bake + FONT_JAPANESE), 0);
    EXPECT_EQ(read("err"), "");
    EXPECT_TRUE(exists("x.kern") && exists("x_0.raw"));
    EXPECT_EQ(run("fontbake' --dump x.fnt"), 0);
    const std::string dump = read("out");
    // A character used by a text, one of Latin-1, one used in a comment only, and the tab after a
    // key.
    const std::pair<int, bool> baked[] = {{26032, true}, {255, true}, {26356, false}, {9, false}};
    for (const auto& [code, isBaked] : baked)
        EXPECT_EQ(dump.find("{\"id\":" + std::to_string(code) + ",") != std::string::npos, isBaked);

    EXPECT_EQ(run(bake + FONT_JAPANESE " --max-page 32"), 2);
    EXPECT_EQ(read("err"), "fontbake: x: the glyphs do not fit on pages of 32 pixels\n");
    EXPECT_EQ(run(bake + FONT_LATIN), 0);
    EXPECT_NE(read("err").find("no glyph for U+65B0"), std::string::npos);
    write("kerning.txt", "AV\n");
    EXPECT_EQ(run(bake + FONT_LATIN), 2);
    EXPECT_EQ(read("err").substr(0, 25), "fontbake: kerning.txt:1: ");
}

}  // namespace
