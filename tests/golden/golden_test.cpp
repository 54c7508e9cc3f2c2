// Tests that each screen, drawn with the GUI data of the simulated device, looks like the picture
// of it that a person has approved.

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "platform/posix/call_hook.h"
#include "support/languages.h"
#include "tests/helpers/device_folder.h"
#include "tests/helpers/offscreen_context.h"
#include "ui/simple_ui.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t WIDTH = 1024;
constexpr std::size_t HEIGHT = 768;

// Other driver versions may round differently. A changed letter has more pixels than this limit.
constexpr int TOLERATED_LEVELS = 24;
constexpr std::size_t TOLERATED_PIXELS = 60;

struct Screenshot {
    const char* language;
    int number;
    const char* state;
};

std::ostream& operator<<(std::ostream& out, const Screenshot& screenshot) {
    return out << screenshot.language << "-" << screenshot.state;
}

constexpr const char* STATES[] = {"waiting",  "ready",  "updating",
                                  "complete", "failed", "failed-restart"};

std::vector<Screenshot> allScreenshots() {
    std::vector<Screenshot> all;
    for (const char* state : {"background", "waiting-restart", "ready-restart", "updating-restart",
                              "state-5-restart", "state-9-restart"})
        all.push_back({"en", 0, state});
    for (const Language& language : LANGUAGES)
        for (const char* state : STATES)
            all.push_back({language.suffix, language.number, state});
    return all;
}

// Sets the engine's state, because the screen also draws a state that the engine never enters.
struct Engine : Updater {
    using Updater::state;
};
struct Screen : SimpleUI {
    void enter(int32_t state) { updater.*(&Engine::state) = state; }
};

// Quantises to steps of 17 levels, which keeps the files small and is below the tolerance.
uint8_t coarse(uint8_t level) {
    return static_cast<uint8_t>((level + 8) / 17 * 17);
}

using Picture = std::vector<uint8_t>;  // RGB, from the top left

png_image header() {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = WIDTH;
    image.height = HEIGHT;
    image.format = PNG_FORMAT_RGB;
    return image;
}

// Returns an empty picture when the file cannot be read or has another size.
Picture readPng(const std::string& path) {
    Picture picture(WIDTH * HEIGHT * 3);
    png_image image = header();
    const bool begun = png_image_begin_read_from_file(&image, path.c_str()) != 0;
    image.format = PNG_FORMAT_RGB;
    const bool fits = begun && PNG_IMAGE_SIZE(image) == picture.size();
    return fits && png_image_finish_read(&image, nullptr, picture.data(), 0, nullptr) ? picture
                                                                                      : Picture();
}

bool writePng(const Picture& picture, const std::string& path) {
    png_image image = header();
    return png_image_write_to_file(&image, path.c_str(), 0, picture.data(), 0, nullptr) != 0;
}

// Counts the pixels that differ by more than the tolerance in any channel.
std::size_t differentPixels(const Picture& actual, const Picture& expected) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < actual.size(); i += 3) {
        const auto differs = [&](std::size_t at) {
            return std::abs(actual[at] - expected[at]) > TOLERATED_LEVELS;
        };
        count += differs(i) || differs(i + 1) || differs(i + 2) ? 1 : 0;
    }
    return count;
}

Picture screenPicture() {
    Picture picture;
    Picture drawn(WIDTH * HEIGHT * 4);
    glReadPixels(0, 0, WIDTH, HEIGHT, GL_RGBA, GL_UNSIGNED_BYTE, drawn.data());
    for (std::size_t y = HEIGHT; y-- > 0;)
        for (std::size_t x = 0; x < WIDTH; ++x)
            std::transform(&drawn[(y * WIDTH + x) * 4], &drawn[(y * WIDTH + x) * 4] + 3,
                           std::back_inserter(picture), coarse);
    return picture;
}

// Makes one context for the whole process, because GL programs stay cached for as long.
bool hasContext() {
    static const bool MADE = makeOffscreenContext(WIDTH, HEIGHT);
    return MADE;
}

// The simulated device's background is so smooth that a wrong row length would not be visible in
// it.
TEST(Background, IsReadInRowsOf1024Pixels) {
    ASSERT_TRUE(hasContext());
    constexpr std::size_t COLUMN = 700;
    const DeviceFolder device;
    std::string bytes(std::size_t{1} << 20, '\0');
    for (std::size_t i = COLUMN; i < bytes.size(); i += 1024)
        bytes[i] = '\xFF';
    device.write("FlashDisk/VELD/ORBUI/data/KSTRL-menubg4.raw", bytes);
    SimpleUI screen;
    screen.init(WIDTH, HEIGHT);
    screen.draw();
    EXPECT_EQ(screenPicture()[COLUMN * 3], 255);
    EXPECT_EQ(screenPicture()[((HEIGHT - 1) * WIDTH + COLUMN) * 3], 255);
}

class Golden : public testing::TestWithParam<Screenshot> {
  protected:
    static void SetUpTestSuite() { ASSERT_TRUE(hasContext()); }

    // A device without an application to launch.
    void SetUp() override {
        const std::string data = "FlashDisk/VELD/ORBUI/data";
        device.makeFolder(data);
        for (const char* folder : {"fonts", "lang"})
            fs::copy(std::string(GUIDATA) + folder, device.root() / data / folder);
        if (GetParam().state == std::string("background"))
            fs::copy(std::string(GUIDATA) + "KSTRL-menubg4.raw", device.root() / data);
        device.write("FlashDisk/VELD/KSTRL/version.txt");
        device.setLanguage(GetParam().number);
        setCallHook([](const HookedCall& call) -> DWORD {
            return std::string(call.name) == "Sleep" ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
        });
        screen.init(WIDTH, HEIGHT);
    }

    void plugIn(bool withNotes) const {
        for (const char* file : {"KSTRL/a", "KSTRL/b", "ORBUI/data/c"})
            device.write(std::string("USB HD/VELD/") + file);
        if (withNotes)
            device.write(
                "USB HD/VELD/kstrXReleaseNotes.txt",
                "KSTRL Release 2.14.3\n\nNew in this release:\n- Antenna 400 MHz: new table\n"
                "- Quick (100%) & safe, \"as before\"\n");
    }

    // "-restart" after a state means that the application could not be started.
    void reach(const std::string& state) {
        const auto begins = [&](const char* start) { return state.rfind(start, 0) == 0; };
        if (begins("state-")) {
            screen.enter(state[6] - '0');
        } else if (!begins("waiting")) {
            const bool ready = begins("ready") || begins("background");
            plugIn(ready);
            screen.tick();
            if (!ready)
                update(begins("failed"), begins("updating") ? 1 : begins("complete") ? 5 : 4);
        }
        if (state.find("-restart") != std::string::npos)
            screen.onKey(VK_END);
    }

    void update(bool fails, int frames) {
        // An unexpected folder in the staging folder makes its removal, and so the update, fail.
        if (fails)
            device.write("FlashDisk/VELD/Update/stray/x");
        screen.onKey(VK_HOME);
        for (int i = 0; i < frames; ++i)
            screen.tick();
    }

    DeviceFolder device;
    Screen screen;
};

TEST_P(Golden, MatchesThePicture) {
    const std::string name = GetParam().language + std::string("-") + GetParam().state;
    const std::string file = GOLDENS + name + ".png";
    reach(GetParam().state);
    glClear(GL_COLOR_BUFFER_BIT);
    screen.draw();
    const Picture actual = screenPicture();
    if (std::getenv("RENEW_GOLDENS") != nullptr) {
        ASSERT_TRUE(writePng(actual, file)) << file;
        return;
    }

    const Picture expected = readPng(file);
    ASSERT_EQ(expected.size(), actual.size()) << file << " is missing, or of another size";
    const std::size_t different = differentPixels(actual, expected);
    if (different <= TOLERATED_PIXELS)
        return;
    writePng(actual, RESULTS + name + ".png");
    ADD_FAILURE() << different << " pixels differ between\n  " << file << " and\n  " << RESULTS
                  << name << ".png";
}

INSTANTIATE_TEST_SUITE_P(Screens, Golden, testing::ValuesIn(allScreenshots()),
                         [](const testing::TestParamInfo<Screenshot>& shot) {
                             std::string name =
                                 std::string(shot.param.language) + "_" + shot.param.state;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

}  // namespace
