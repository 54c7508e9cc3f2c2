// Tests that the program exits correctly in every way that it can, controlled by real key presses:
// the exit code, the processes ended and started, the output, and the files afterwards.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/posix/files/read_file.h"
#include "tests/blackbox/virtual_display.h"
#include "tests/helpers/device_folder.h"
#include "tools/host/child_process.h"

namespace {

// A device with version 1 installed and a key with version 2 to plug in.
class Ending : public ::testing::Test {
  protected:
    void SetUp() override {
        installApplication("FlashDisk/VELD/KSTRL", "1");
        device.write("FlashDisk/VELD/ORBUI/data/bg.raw", "picture 1");
    }

    // Installs the stub of the instrument's application, with a version file beside it.
    void installApplication(const std::string& folder, const std::string& version) const {
        device.write(folder + "/version.txt", version);
        std::filesystem::copy_file(STANDIN_PROGRAM, device.root() / folder / "KSTRL.exe");
    }

    void plugIn() const {
        // The folder is renamed when it is complete, because a mounted key is complete from the
        // start.
        const std::string hidden = "USB HD/being-written";
        installApplication(hidden + "/KSTRL", "2");
        device.write(hidden + "/ORBUI/data/bg.raw", "picture 2");
        device.write(hidden + "/ORBUI/data/lang/en.txt", "texts 2");
        device.write(hidden + "/kstrXReleaseNotes.txt", "KSTRL Release 2\nnotes\n");
        std::filesystem::rename(device.root() / hidden, device.root() / "USB HD/VELD");
    }

    std::string installedVersion(const std::string& folder = "KSTRL") const {
        return device.read("FlashDisk/VELD/" + folder + "/version.txt");
    }

    std::string log() const { return device.read("FlashDisk/VELD/Updater-log.txt"); }

    void expectUpdated() const {
        EXPECT_EQ(installedVersion(), "2");
        EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI"), (Tree{{"data/", ""},
                                                             {"data/bg.raw", "picture 2"},
                                                             {"data/lang/", ""},
                                                             {"data/lang/en.txt", "texts 2"}}));
        EXPECT_FALSE(device.exists("FlashDisk/VELD/Update"));
        EXPECT_NE(log().find("\n  ** Warning ** Update succeeded at 2"), std::string::npos);
    }

    std::vector<pid_t> applications() const { return processesOf(device.root()); }

    // Starts the program and waits for its log, which is written after the window is set up.
    // UPDATER_UNDER_TEST names another build of it, for instance one that runs in an emulator.
    void start(const char* argument = "") {
        const char* const other = std::getenv("UPDATER_UNDER_TEST");
        const std::string program = other != nullptr ? other : UPDATER_PROGRAM;
        updater.emplace(std::vector<std::string>{program, argument}, onTheDisplay);
        ASSERT_TRUE(waitUntil([this] { return !log().empty(); }));
    }

    // Whether these keys end the program with exit code 0.
    bool endsBy(const std::string& keys) {
        return display.pressUntil(keys, [this] { return !updater->isRunning(); }) &&
               updater->waitForEnd() == 0;
    }
    bool updatesBy(const std::string& keys) const {
        return display.pressUntil(keys, [this] { return device.exists("FlashDisk/VELD/Update"); });
    }

    // How often the program has waited, which is about 20 times in a frame.
    int64_t waits() const {
        const std::string name = "\nvoluntary_ctxt_switches:";
        const std::string status =
            host::readFile("/proc/" + std::to_string(updater->id()) + "/status");
        return std::stoll(status.substr(status.find(name) + name.size()));
    }

    DeviceFolder device;
    VirtualDisplay display;
    const ChildProcess::Variables onTheDisplay = {{"UPDATER_DEVICE", device.root()},
                                                  {"UPDATER_SCREEN", "640x480"},
                                                  {"DISPLAY", display.name()}};
    std::optional<ChildProcess> updater;
};

TEST_F(Ending, ServiceKeysAndSignalsExitWithoutStartingTheApplication) {
    const std::string teardown =
        "eglDestroyContext SUCCESS\neglDestroySurface SUCCESS\neglTerminate SUCCESS\n";
    const std::pair<const char*, std::string> ways[] = {
        {"BackSpace", ""},
        {"Return F1 F4 F4 F3 F6 F6 F5 F2 F2 F1 F1 F3 F3 F5", teardown + "DestroyWindow SUCCESS\n"},
        {"SIGTERM", teardown},
    };
    for (const auto& [keys, printed] : ways) {
        SCOPED_TRACE(keys);
        start();
        if (keys == std::string("SIGTERM"))
            ::kill(updater->id(), SIGTERM);
        else
            EXPECT_TRUE(endsBy(keys));
        EXPECT_EQ(updater->waitForEnd(), 0);
        EXPECT_EQ(updater->output(), printed);
        EXPECT_TRUE(applications().empty());
        std::filesystem::remove(device.root() / "FlashDisk/VELD/Updater-log.txt");
    }
}

TEST_F(Ending, TheCloseButtonExitsWithAllCallsInOrder) {
    ChildProcess application({device.root() / "FlashDisk/VELD/KSTRL/KSTRL.exe"});
    ChildProcess traced({TRACED_PROGRAM}, onTheDisplay);
    ASSERT_TRUE(waitUntil([&] { return !log().empty() || !traced.isRunning(); }));
    EXPECT_EQ(display.closeWindow(), "640x480");
    EXPECT_EQ(traced.waitForEnd(), 0);
    EXPECT_EQ(traced.output(),
              "CreateToolhelp32Snapshot 2 0\n"
              "OpenProcess 2035711 0\n"
              "TerminateProcess 0\n"
              "CloseHandle\n"
              "CloseHandle\n"
              "CreateToolhelp32Snapshot 2 0\n"
              "CloseHandle\n"
              "RegisterClassW EGLWndClass\n"
              "CreateWindowExW EGLWndClass 147587072\n"
              "ShowWindow 1\n"
              "GetSystemMetrics 0\n"
              "GetSystemMetrics 1\n"
              "SetWindowLongW -16 -2147483648\n"
              "SetWindowPos 0 0 640 480 32\n"
              "SetForegroundWindow\n"
              "ShowWindow 1\n"
              "Sleep 2\n"
              "TranslateMessage\n"
              "DispatchMessageW\n"
              "DestroyWindow\n"
              "PostQuitMessage 0\n"
              "TranslateMessage\n"
              "eglDestroyContext SUCCESS\n"
              "eglDestroySurface SUCCESS\n"
              "eglTerminate SUCCESS\n"
              "DestroyWindow\n");
    EXPECT_FALSE(application.isRunning());
}

TEST_F(Ending, StopDuringAnUpdateAbandonsIt) {
    plugIn();
    for (int i = 0; i < 5000; ++i)
        device.write("USB HD/VELD/ORBUI/data/lang/f" + std::to_string(i));
    start();
    ASSERT_TRUE(updatesBy("Home"));
    EXPECT_TRUE(endsBy("End"));
    EXPECT_TRUE(waitUntil([this] { return applications().size() == 1; }));
    EXPECT_EQ(installedVersion(), "1");
    EXPECT_TRUE(device.exists("FlashDisk/VELD/Update"));
    EXPECT_EQ(log().find("succeeded"), std::string::npos);
}

TEST_F(Ending, ACompleteUpdateStartsTheNewApplication) {
    plugIn();
    start();
    EXPECT_FALSE(device.exists("FlashDisk/VELD/Update"));
    EXPECT_TRUE(endsBy("Home"));
    expectUpdated();
    EXPECT_EQ(installedVersion("KSTRL_old"), "1");
    EXPECT_TRUE(waitUntil([this] { return applications().size() == 1; }));
}

TEST_F(Ending, AutoModeWaitsForACompleteKey) {
    start("/auto");
    device.makeFolder("USB HD/VELD/KSTRL");
    device.write("USB HD/VELD/ORBUI/data/bg.raw", "picture 2");
    const int64_t before = waits();
    EXPECT_TRUE(waitUntil([&] { return waits() > before + 100; }));
    EXPECT_TRUE(updater->isRunning());
    EXPECT_FALSE(device.exists("FlashDisk/VELD/Update"));
    device.write("version.txt", "2");
    std::filesystem::rename(device.root() / "version.txt",
                            device.root() / "USB HD/VELD/KSTRL/version.txt");
    EXPECT_TRUE(waitUntil([this] { return installedVersion() == "2"; }));

    // The key contains no application, so STOP exits without starting one.
    EXPECT_TRUE(updater->isRunning());
    EXPECT_TRUE(endsBy("End"));
    EXPECT_TRUE(applications().empty());
}

TEST_F(Ending, EndsTheRunningApplicationsFirst) {
    const std::filesystem::path folder = device.root() / "FlashDisk/VELD/KSTRL";
    for (const char* const other : {"KSTRLLF.exe", "kstrl.exe"})
        std::filesystem::copy_file(STANDIN_PROGRAM, folder / other);
    ChildProcess first({folder / "KSTRL.exe"});
    ChildProcess second({folder / "KSTRL.exe"});
    ChildProcess third({folder / "KSTRLLF.exe"});
    ChildProcess otherCase({folder / "kstrl.exe"});
    ChildProcess onTheHost({STANDIN_PROGRAM});

    start();
    EXPECT_TRUE(
        waitUntil([&] { return !first.isRunning() && !second.isRunning() && !third.isRunning(); }));
    EXPECT_TRUE(otherCase.isRunning());
    EXPECT_TRUE(onTheHost.isRunning());
}

// If the X connection had the number of a closed standard stream, output would corrupt it.
TEST_F(Ending, AClosedPipeOrAFileSizeLimitDoesNotEndAnUpdate) {
    plugIn();
    device.write("USB HD/VELD/KSTRL/large.dll");
    std::filesystem::resize_file(device.root() / "USB HD/VELD/KSTRL/large.dll", 64'000'000);
    for (const char* const stream : {"2>&-", "2> >(exit)"}) {
        ChildProcess limited(
            {"bash", "-c", std::string("ulimit -f 10000; exec \"$0\" /auto ") + stream,
             UPDATER_PROGRAM},
            {{"DISPLAY", display.name()}, {"UPDATER_DEVICE", device.root()}});
        EXPECT_EQ(limited.waitForEnd(), 0) << stream;
        expectUpdated();
    }
}

TEST_F(Ending, WithoutAWindowConfigItExitsWithCode1) {
    ChildProcess::Variables variables = onTheDisplay;
    variables["EGL_PLATFORM"] = "surfaceless";
    ChildProcess surfaceless({UPDATER_PROGRAM, "/auto"}, variables);
    EXPECT_EQ(surfaceless.waitForEnd(), 1);
    EXPECT_EQ(surfaceless.output(), "No matching EGL configs found!\n");
}

TEST_F(Ending, WrongVariablesAndHelpPrintClearMessages) {
    const std::pair<std::string, bool> folders[] = {
        {"/nowhere/at all", false}, {"/etc/passwd", false}, {device.root(), true}};
    for (const auto& [folder, exists] : folders) {
        ChildProcess lost(
            {UPDATER_PROGRAM},
            {{"DISPLAY", ""}, {"UPDATER_DEVICE", folder}, {"UPDATER_SCREEN", "640x480px"}});
        EXPECT_EQ(lost.waitForEnd(), 255);
        EXPECT_EQ(lost.errors().find('"' + folder + "\" does not exist") == std::string::npos,
                  exists);
        EXPECT_NE(lost.errors().find("UPDATER_SCREEN is \"640x480px\", which is no size"),
                  std::string::npos);
    }
    ChildProcess help({UPDATER_PROGRAM, "--help"}, {{"DISPLAY", ""}});
    EXPECT_EQ(help.waitForEnd(), 0);
    for (const char* word : {"UPDATER_DEVICE", "UPDATER_SCREEN", "/auto", "Home", "End", "USB HD"})
        EXPECT_NE(help.output().find(word), std::string::npos) << word;
}

}  // namespace
