#include "tools/updatekey/key_source.h"

#include <stdexcept>

#include "tools/updatekey/make/disk_image.h"

namespace fs = std::filesystem;

KeySource::KeySource(const fs::path& key) : folder_(fs::absolute(key)) {
    if (fs::is_directory(key))
        return;
    if (!mayBeImage(key))
        throw std::runtime_error(key.generic_string() +
                                 " does not exist; give the folder with the content of the USB "
                                 "stick, or a disk image of it");
    unpacked_.emplace(fs::temp_directory_path() / "updatekey-image");
    folder_ = unpacked_->path();
    unpackImage(key, folder_);
}
