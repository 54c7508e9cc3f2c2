#include "tests/golden/picture.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <sstream>

Picture readPng(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
        return {};
    image.format = PNG_FORMAT_RGB;
    Picture picture{image.width, image.height, std::vector<uint8_t>(PNG_IMAGE_SIZE(image))};
    if (png_image_finish_read(&image, nullptr, picture.rgb.data(), 0, nullptr) == 0)
        return {};
    return picture;
}

bool writePng(const Picture& picture, const std::string& path) {
    using Color = std::array<uint8_t, 3>;
    std::map<Color, std::size_t> numbers;
    std::vector<uint8_t> palette;
    std::vector<uint8_t> pixels;
    for (std::size_t i = 0; i + 2 < picture.rgb.size(); i += 3) {
        const Color color = {picture.rgb[i], picture.rgb[i + 1], picture.rgb[i + 2]};
        const auto [entry, isNew] = numbers.emplace(color, numbers.size());
        if (isNew)
            palette.insert(palette.end(), color.begin(), color.end());
        pixels.push_back(static_cast<uint8_t>(entry->second));
    }
    if (numbers.size() > 256)
        return false;
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = picture.width;
    image.height = picture.height;
    image.format = PNG_FORMAT_RGB_COLORMAP;
    image.colormap_entries = static_cast<png_uint_32>(numbers.size());
    return png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0, palette.data()) != 0;
}

std::string Difference::report() const {
    std::ostringstream text;
    text << pixels << " pixels differ, by up to " << greatest << " levels";
    if (pixels > 0)
        text << ", from (" << left << ", " << top << ") to (" << right << ", " << bottom << ")";
    return text.str();
}

Difference compare(const Picture& actual, const Picture& expected, int tolerance) {
    Difference difference;
    difference.picture = {actual.width, actual.height, std::vector<uint8_t>(actual.rgb.size())};
    for (std::size_t i = 0; i + 2 < actual.rgb.size(); i += 3) {
        int greatest = 0;
        for (std::size_t channel = i; channel < i + 3; ++channel)
            greatest = std::max(greatest, std::abs(actual.rgb[channel] - expected.rgb[channel]));
        difference.greatest = std::max(difference.greatest, greatest);
        if (greatest == 0)
            continue;
        const bool counts = greatest > tolerance;
        std::fill_n(&difference.picture.rgb[i], 3, static_cast<uint8_t>(counts ? 0xFF : 0x60));
        if (!counts)
            continue;
        const uint32_t x = static_cast<uint32_t>(i / 3 % actual.width);
        const uint32_t y = static_cast<uint32_t>(i / 3 / actual.width);
        ++difference.pixels;
        difference.left = std::min(difference.left, x);
        difference.top = std::min(difference.top, y);
        difference.right = std::max(difference.right, x);
        difference.bottom = std::max(difference.bottom, y);
    }
    return difference;
}
