#include "tests/golden/picture.h"

#include <png.h>

#include <cstdlib>

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
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = picture.width;
    image.height = picture.height;
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, path.c_str(), 0, picture.rgb.data(), 0, nullptr) != 0;
}

std::size_t differentPixels(const Picture& actual, const Picture& expected, int tolerance) {
    std::size_t count = 0;
    for (std::size_t i = 0; i + 2 < actual.rgb.size(); i += 3) {
        bool differs = false;
        for (std::size_t channel = i; channel < i + 3; ++channel)
            differs |= std::abs(actual.rgb[channel] - expected.rgb[channel]) > tolerance;
        count += differs ? 1 : 0;
    }
    return count;
}
