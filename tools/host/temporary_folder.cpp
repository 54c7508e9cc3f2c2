#include "tools/host/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

namespace {

fs::path makeFolder(const fs::path& stem) {
    std::string pattern = stem.string() + "-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("cannot make the folder " + pattern + ": " +
                                 std::generic_category().message(errno));
    return pattern;
}

}  // namespace

TemporaryFolder::TemporaryFolder(const fs::path& stem) : path_(fs::canonical(makeFolder(stem))) {}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    fs::remove_all(path_, error);
    if (!error)
        return;
    for (fs::recursive_directory_iterator entry(path_, error), end; entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored))
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(path_, error);
}
