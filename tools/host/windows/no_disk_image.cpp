// Images of sticks need programs that Windows lacks.

#include <stdexcept>

#include "tools/updatekey/make/disk_image.h"

ImageReport makeImage(const ImageOptions&, const CheckOptions&) {
    throw std::runtime_error(
        "disk images are made on Linux only; write the key to sticks with \"updatekey write\"");
}

bool mayBeImage(const std::filesystem::path& path) {
    return std::filesystem::is_regular_file(path);
}

void unpackImage(const std::filesystem::path& image, const std::filesystem::path&) {
    throw std::runtime_error(image.generic_string() +
                             " is a file, and disk images are read on Linux only; write the image "
                             "to a stick and give its drive, such as E:");
}
