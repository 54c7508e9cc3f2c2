#include "tests/helpers/scratch.h"

#include <cstdlib>

namespace fs = std::filesystem;

fs::path makeScratchFolder() {
    std::string pattern = (fs::temp_directory_path() / "updater-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr)
        std::abort();
    return pattern;
}

void removeScratchFolder(const fs::path& folder) {
    std::error_code error;
    fs::remove_all(folder, error);
}
