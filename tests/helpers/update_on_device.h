// A test fixture: a device with an installation and a key, which can run an update.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/logger.h"
#include "tests/helpers/log_text.h"
#include "update/updater.h"

class UpdateOnDevice : public ::testing::Test {
  protected:
    static constexpr const char* APPLICATION = "FlashDisk/VELD/KSTRL/";
    static constexpr const char* KEY = "USB HD/VELD/";
    // What a complete update leaves, in the words of expectUpdate.
    static constexpr const char* UPDATED =
        " KSTRL/KSTRL.exe=2 KSTRL_old/KSTRL.exe=1 ORBUI/data/bg.raw=2 ORBUI_old/data/bg.raw=1";

    void SetUp() override {
        device.write("FlashDisk/VELD/KSTRL/KSTRL.exe", "application 1");
        device.write("FlashDisk/VELD/ORBUI/data/bg.raw", "picture 1");
        device.write("USB HD/VELD/KSTRL/KSTRL.exe", "application 2");
        device.write("USB HD/VELD/ORBUI/data/bg.raw", "picture 2");
        Logger::instance().setPath("/FlashDisk/VELD/Updater-log.txt");
    }

    // Runs an update until it ends. Returns the final state.
    static int32_t run() {
        constexpr int MOST_STEPS = 200000;
        Updater updater;
        updater.pollMedia();
        updater.startUpdate();
        for (int i = 0; i < MOST_STEPS && updater.getState() == Updating; ++i)
            updater.step();
        return updater.getState();
    }

    // What is in the folder of the installation: a blank before each file, with the last character
    // of its content, and before each empty folder.
    std::string left() const {
        std::string left;
        for (const auto& [name, bytes] : device.tree("FlashDisk/VELD")) {
            const bool isFolder = name.back() == '/';
            if (isFolder ? device.tree("FlashDisk/VELD/" + name).empty() : name != keylayout::LOG)
                left += " " + name + (isFolder ? "" : "=" + bytes.substr(bytes.size() - 1));
        }
        return left;
    }

    // Runs an update. Checks how it ends, all that the log says of it, with a semicolon after each
    // error, and all that it leaves.
    void expectUpdate(const std::string& says, const std::string& leaves) const {
        Logger::instance().setPath("/log.txt");
        const bool succeeds = says.rfind("Update failed.") == std::string::npos;
        EXPECT_EQ(run(), succeeds ? UpdateComplete : UpdateFailed);
        std::string log = logMessages(device, "log.txt");
        for (const auto& [part, shorter] :
             {std::pair<std::string, const char*>{"/FlashDisk/VELD/", ""},
              {"\n    *** ERROR *** ", ""},
              {"\n\n", "; "},
              {"  ** Warning ** ", ""}})
            for (std::size_t at = 0; (at = log.find(part, at)) != std::string::npos;)
                log.replace(at, part.size(), shorter);
        const std::size_t time = log.find(" at 20");
        if (time != std::string::npos)
            log.erase(time, log.find('\n', time) + 1 - time);
        EXPECT_EQ(log, says);
        EXPECT_EQ(left(), leaves);
    }

    std::string log() const { return device.read("FlashDisk/VELD/Updater-log.txt"); }

    DeviceFolder device;
};
