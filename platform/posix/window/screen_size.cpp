#include "platform/posix/window/screen_size.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "platform/instrument_screen.h"

namespace host {

namespace {

constexpr ScreenSize USUAL = {instrument::SCREEN_WIDTH, instrument::SCREEN_HEIGHT};

// Parses a number from 1 to 16384. Returns 0 for any other text.
int pixels(std::string_view text) {
    constexpr int LARGEST = 16384;
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && number > 0 && number <= LARGEST ? number : 0;
}

ScreenSize askedFor() {
    const char* const variable = std::getenv("UPDATER_SCREEN");
    if (variable == nullptr || *variable == '\0')
        return USUAL;
    const std::string_view text(variable);
    const std::size_t middle = text.find('x');
    if (middle != std::string_view::npos) {
        const ScreenSize size = {pixels(text.substr(0, middle)), pixels(text.substr(middle + 1))};
        if (size.width != 0 && size.height != 0)
            return size;
    }
    std::fprintf(stderr,
                 "updater: UPDATER_SCREEN is \"%s\", which is no size from 1x1 to 16384x16384; the "
                 "screen has %dx%d\n",
                 variable, USUAL.width, USUAL.height);
    return USUAL;
}

}  // namespace

ScreenSize screenSize() {
    static const ScreenSize SIZE = askedFor();
    return SIZE;
}

}  // namespace host
