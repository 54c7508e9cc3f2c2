// A test fixture: a device with an installation and a key, which can run an update.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/logger.h"
#include "tests/helpers/device_folder.h"
#include "update/updater.h"

class UpdateOnDevice : public ::testing::Test {
  protected:
    static constexpr const char* APPLICATION = "FlashDisk/VELD/KSTRL/";
    static constexpr const char* KEY = "USB HD/VELD/";

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

    std::string log() const { return device.read("FlashDisk/VELD/Updater-log.txt"); }

    DeviceFolder device;
};
