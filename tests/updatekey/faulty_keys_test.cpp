// Each faulty key raises its findings, and the device does with it what was predicted.

#include <gtest/gtest.h>

#include "support/logger.h"
#include "tests/support/device_folder.h"
#include "tests/updatekey/faulty_keys.h"
#include "tests/updatekey/sound_key.h"
#include "tools/updatekey/check.h"
#include "update/updater.h"

// Called by the test framework.
static void PrintTo(const FaultyKey& key, std::ostream* out) {
    *out << key.name;
}

namespace {

namespace fs = std::filesystem;

struct Outcome {
    int32_t state;
    std::string version;
    Tree installed;
};

// What the engine as it is in the updater does with the key that is plugged into the device.
Outcome update(const DeviceFolder& device) {
    Logger::instance().setPath("/FlashDisk/VELD/Updater-log.txt");
    Updater updater;
    updater.pollMedia();
    if (updater.isMediaReady()) {
        updater.startUpdate();
        for (int frame = 0; frame < 1000 && updater.getState() == Updating; ++frame)
            updater.step();
    }
    Outcome outcome{updater.getState(), toDisplay(updater.getUpdateVersion()), {}};
    for (const std::string folder : {"KSTRL", "ORBUI"})
        for (const auto& [path, bytes] : device.tree("FlashDisk/VELD/" + folder))
            if (path.back() != '/')
                outcome.installed["VELD/" + folder + "/" + path] = bytes;
    return outcome;
}

std::set<std::string> codesOf(const Findings& findings) {
    std::set<std::string> codes;
    for (const Finding& finding : findings)
        codes.insert(finding.code);
    return codes;
}

class FaultyKeys : public ::testing::TestWithParam<FaultyKey> {};

TEST_P(FaultyKeys, AreFoundAndDoOnTheDeviceAsPredicted) {
    const FaultyKey& faulty = GetParam();
    DeviceFolder device;
    const fs::path key = device.root() / "USB HD";
    writeSoundKey(key);
    faulty.spoil(key);
    device.write("FlashDisk/VELD/KSTRL/KSTRL.exe", "old application");
    device.write("FlashDisk/VELD/ORBUI/data/old", "old data");

    const CheckReport report = checkKey(key, {});
    EXPECT_EQ(codesOf(report.findings), faulty.findings);
    EXPECT_EQ(report.prediction.seen, faulty.seen);

    const Outcome outcome = update(device);
    EXPECT_EQ(outcome.state, report.prediction.state);
    EXPECT_EQ(outcome.version, report.prediction.version);
    if (!faulty.seen) {
        EXPECT_EQ(outcome.installed.count("VELD/ORBUI/data/old"), 1U);
        return;
    }
    Tree predicted;
    for (const std::string& path : report.prediction.copied)
        predicted[path] = readFile(key / path);
    EXPECT_EQ(outcome.installed, predicted);
}

std::string testName(const ::testing::TestParamInfo<FaultyKey>& info) {
    std::string name;
    for (const char c : info.param.name)
        name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, FaultyKeys, ::testing::ValuesIn(faultyKeys()), testName);

}  // namespace
