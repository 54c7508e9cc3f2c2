#include "tools/host/temporary_folder.h"

#include <chrono>
#include <random>
#include <stdexcept>
#include <thread>

namespace fs = std::filesystem;

namespace {

fs::path makeFolder(const fs::path& stem) {
    constexpr const char* CHARACTERS = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::random_device random;
    for (int tries = 0; tries < 100; ++tries) {
        fs::path folder = stem;
        folder += "-";
        for (int i = 0; i < 8; ++i)
            folder += CHARACTERS[random() % 36];
        std::error_code error;
        const bool made = fs::create_directory(folder, error);
        if (error)
            throw std::runtime_error("cannot make the folder " + folder.generic_string() + ": " +
                                     error.message());
        if (!made)
            continue;
        fs::permissions(folder, fs::perms::owner_all);
        return fs::canonical(folder);
    }
    throw std::runtime_error("cannot make a folder beside " + stem.generic_string());
}

// Another thread may still write to the folder, and a program that was ended may not have gone yet.
void deletePatiently(const fs::path& folder) {
    for (int tries = 0; tries < 100 && !deleteFolder(folder); ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

}  // namespace

TemporaryFolder::TemporaryFolder(const fs::path& stem)
    : path_(makeFolder(stem)), leftover_([folder = path_] { deletePatiently(folder); }) {}

TemporaryFolder::~TemporaryFolder() {
    deletePatiently(path_);
}

bool deleteFolder(const fs::path& folder) {
    std::error_code error;
    fs::remove_all(folder, error);
    if (!error)
        return true;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (!entry->is_symlink(ignored))
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(folder, error);
    return !error;
}
