#include "tools/guidata/raw_image.h"

#include <png.h>

#include <algorithm>
#include <stdexcept>

std::vector<uint8_t> luminanceSquare(const std::string& path, uint32_t side) {
    png_image picture{};
    picture.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&picture, path.c_str()) == 0)
        throw std::runtime_error(path + ": " + picture.message);
    if (picture.width > side || picture.height > side) {
        png_image_free(&picture);
        throw std::runtime_error(path + ": has " + std::to_string(picture.width) + " x " +
                                 std::to_string(picture.height) + " pixels; the square has only " +
                                 std::to_string(side) + " x " + std::to_string(side));
    }
    picture.format = PNG_FORMAT_GRAY;
    const png_color black{0, 0, 0};
    const std::size_t width = picture.width;
    std::vector<uint8_t> pixels(width * picture.height);
    if (png_image_finish_read(&picture, &black, pixels.data(), 0, nullptr) == 0)
        throw std::runtime_error(path + ": " + picture.message);
    std::vector<uint8_t> square(std::size_t{side} * side);
    for (std::size_t row = 0; row < picture.height; ++row)
        std::copy_n(pixels.data() + row * width, width, square.data() + row * side);
    return square;
}
