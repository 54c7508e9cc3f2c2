// The program as scripts use it: exit codes, JSON, and the version.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "tests/support/device_folder.h"
#include "tests/updatekey/sound_key.h"

namespace {

namespace fs = std::filesystem;

struct Ended {
    int code;
    std::string output;
};

Ended updatekey(const std::string& arguments) {
    const std::string command = std::string(UPDATEKEY_PROGRAM) + " " + arguments + " 2>/dev/null";
    Ended run{-1, {}};
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    std::array<char, 4096> buffer{};
    while (const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), pipe))
        run.output.append(buffer.data(), got);
    const int status = ::pclose(pipe);
    run.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

class Program : public ::testing::Test {
  protected:
    Program() : key(work.root() / "key") { writeSoundKey(key); }

    DeviceFolder work;
    fs::path key;
};

TEST_F(Program, TellsByItsExitCode) {
    EXPECT_EQ(updatekey("check " + key.string()).code, 0);
    EXPECT_EQ(updatekey("info " + key.string()).code, 0);
    EXPECT_EQ(updatekey("--help").code, 0);
    EXPECT_EQ(updatekey("--version").output, "updatekey " UPDATEKEY_VERSION "\n");
    EXPECT_EQ(updatekey("").code, 2);
    EXPECT_EQ(updatekey("check").code, 2);
    EXPECT_EQ(updatekey("check /nowhere/at/all").code, 2);
    EXPECT_EQ(updatekey("check --languages 7 " + key.string()).code, 2);
    EXPECT_EQ(updatekey("check --flash-size 1kb " + key.string()).code, 1);
    fs::remove(key / "VELD/KSTRL/KSTRL.exe");
    EXPECT_EQ(updatekey("check " + key.string()).code, 1);
}

TEST_F(Program, WritesNothingButJsonWhenAsked) {
    fs::remove(key / "VELD/kstrXReleaseNotes.txt");
    writeFile(key / "VELD/KSTRL/k\xC3\xA4the", "x");
    writeFile(key / "VELD/KSTRL/plugins/a\xFF", "x");
    const Ended run = updatekey("--json check " + key.string());
    const nlohmann::json check = nlohmann::json::parse(run.output);
    EXPECT_EQ(check["state"], "UpdateComplete");
    EXPECT_EQ(check["version"], "");
    EXPECT_EQ(check["notCopied"].size(), 1U);
    EXPECT_EQ(check["copied"][2], "VELD/KSTRL/k\xC3\xA4the");
    EXPECT_EQ(check["findings"][0]["severity"], "error");
    const nlohmann::json info =
        nlohmann::json::parse(updatekey("info " + key.string() + " --json").output);
    EXPECT_EQ(info["application"]["files"], 4);
}

TEST_F(Program, MakesAKeyThatItFindsGood) {
    const std::string maker = (key / "VELD").string();
    const std::string out = (work.root() / "out").string();
    const std::string make = "make --app " + maker + "/KSTRL --gui " + maker +
                             "/ORBUI/data --notes " + maker +
                             "/kstrXReleaseNotes.txt --version 2.14.3 " + out;
    EXPECT_EQ(updatekey(make).code, 0);
    EXPECT_EQ(updatekey("check " + out).code, 0);
    EXPECT_EQ(updatekey(make).code, 2) << "it is there already";
}

}  // namespace
