#include "tools/updatekey/write/stick_writer.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <system_error>

#include "tools/host/checksum.h"
#include "tools/host/folder_tree.h"
#include "tools/host/host_file.h"
#include "tools/host/interrupt.h"
#include "tools/host/medium.h"
#include "tools/host/temporary_folder.h"
#include "tools/host/volume.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/check/names.h"

namespace fs = std::filesystem;

namespace {

using keypaths::UNFINISHED;

// The name of the folder of the old update while its place is taken. The device ignores it.
const std::string PREVIOUS = keypaths::MAKER + ".previous";

[[noreturn]] void fail(const std::string& reason) {
    throw std::runtime_error(reason);
}

// Explains a failed call to the person with the stick.
std::string reasonOf(const fs::filesystem_error& error) {
    const std::error_code code = error.code();
    const std::string path = error.path1().generic_string();
    if (code == std::errc::no_space_on_device)
        return "the stick is full; delete other files from it, or use a larger one";
    if (code == std::errc::read_only_file_system)
        return "the stick is write-protected; look for a switch on it, or use another one";
    for (const std::errc gone : {std::errc::no_such_file_or_directory, std::errc::no_such_device,
                                 std::errc::no_such_device_or_address, std::errc::io_error})
        if (code == gone)
            return "the stick was pulled out, or is defective (at " + path + ")";
    return "cannot write " + path + ": " + code.message();
}

// Reports the progress of writing and reading back. 100 percent is reported only at the very end.
class Meter {
  public:
    Meter(uint64_t total, Progress progress) : total_(total), progress_(std::move(progress)) {}
    void add(uint64_t bytes) {
        done_ += bytes;
        progress_(total_ == 0 ? 99 : static_cast<int>(done_ * 99 / total_));
    }
    void finish() { progress_(100); }

  private:
    uint64_t total_;
    uint64_t done_ = 0;
    Progress progress_;
};

// Finds an entry without regard to case, as FAT and the device do; an empty path when there is
// none.
fs::path find(const fs::path& folder, const std::string& name) {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
        if (foldCase(entry.path().filename().generic_string()) == foldCase(name))
            return entry.path();
    // Windows finds nothing at all in the root folder of an empty stick, not even ".".
    if (error && error != std::errc::no_such_file_or_directory)
        throw fs::filesystem_error("", folder, error);
    return {};
}

// The names, without case, of what an update has directly in its folder.
std::set<std::string> partsOf(const fs::path& update) {
    std::set<std::string> names;
    for (const char* const name :
         {keylayout::APPLICATION, keylayout::GUI, keylayout::RELEASE_NOTES})
        names.insert(foldCase(name));
    for (const fs::directory_entry& entry : fs::directory_iterator(update))
        names.insert(foldCase(entry.path().filename().generic_string()));
    return names;
}

// Completes a replacement: moves what is no part of an update from the old folder to the new one,
// and deletes the rest. Without a new folder, the old one gets its name back. Returns the names of
// what was moved.
std::vector<std::string> leavePrevious(const fs::path& stick) {
    std::vector<std::string> kept;
    const fs::path previous = find(stick, PREVIOUS);
    const fs::path update = stick / keypaths::MAKER;
    if (previous.empty())
        return kept;
    if (!fs::exists(update)) {
        fs::rename(previous, update);
        return kept;
    }
    const std::set<std::string> parts = partsOf(update);
    for (const TreeEntry& entry : readTree(previous)) {
        if (!parentOf(entry.path).empty() || parts.count(foldCase(entry.path)) != 0)
            continue;
        fs::rename(previous / entry.path, update / entry.path);
        kept.push_back(entry.path);
    }
    if (!deleteFolder(previous))
        fail("cannot delete " + previous.generic_string());
    return kept;
}

bool holdsUpdate(const fs::path& folder) {
    return !find(folder, keylayout::APPLICATION).empty() || !find(folder, keylayout::GUI).empty();
}

void requireRoom(const fs::path& stick, const std::vector<TreeEntry>& files, bool besideAnother) {
    const Room room = roomOn(stick);
    uint64_t needed = 0;
    for (const TreeEntry& entry : files)
        needed +=
            std::max<uint64_t>(1, (entry.size + room.cluster - 1) / room.cluster) * room.cluster;
    if (needed > room.free)
        fail("the stick is full: " + std::to_string(needed) + " bytes are needed" +
             (besideAnother ? " beside the update on it" : "") + ", and " +
             std::to_string(room.free) + " are free; delete " +
             (besideAnother ? keypaths::MAKER + "/ or other files" : "other files") +
             " from it, or use a larger one");
}

}  // namespace

std::vector<std::string> writeStick(const fs::path& key, const Manifest& manifest,
                                    const fs::path& stick, bool replace,
                                    const Progress& progress) try {
    // What an interrupted run left.
    leavePrevious(stick);
    const fs::path stray = find(stick, UNFINISHED);
    if (!stray.empty() && !deleteFolder(stray))
        fail("cannot delete " + stray.generic_string());

    const fs::path old = find(stick, keypaths::MAKER);
    const bool holdsOld = !old.empty() && holdsUpdate(old);
    if (holdsOld && !replace)
        fail("the stick already contains an update, in " + keypaths::MAKER +
             "/; add --replace to replace it");
    const std::vector<TreeEntry> files = readTree(key / keypaths::MAKER);
    requireRoom(stick, files, holdsOld);

    const fs::path unfinished = stick / UNFINISHED;
    const Leftover leftover([unfinished] { deleteFolder(unfinished); });
    fs::create_directory(unfinished);
    uint64_t bytes = 0;
    for (const TreeEntry& entry : files) {
        bytes += entry.size;
        if (entry.kind == TreeEntry::Kind::Folder)
            fs::create_directory(unfinished / entry.path);
    }
    Meter meter(2 * bytes, progress);
    const auto onStick = [&](const std::string& path) {
        return unfinished / path.substr(keypaths::MAKER.size() + 1);
    };
    for (const auto& [path, checksum] : manifest)
        copyToMedium(key / path, onStick(path),
                     [&](const char*, std::size_t size) { meter.add(size); });
    flushMedium(stick);
    for (const auto& [path, checksum] : manifest) {
        Checksum onMedium;
        readFromMedium(onStick(path), [&](const char* piece, std::size_t size) {
            onMedium.add(piece, size);
            meter.add(size);
        });
        if (onMedium.text() != checksum)
            fail(path + " differs when it is read back; do not use this stick");
    }
    writeHostFile(stick / MANIFEST_NAME, toText(manifest));
    if (!old.empty())
        fs::rename(old, stick / PREVIOUS);
    fs::rename(unfinished, stick / keypaths::MAKER);
    flushMedium(stick);
    std::vector<std::string> kept = leavePrevious(stick);
    flushMedium(stick);
    meter.finish();
    return kept;
} catch (const fs::filesystem_error& error) {
    fail(reasonOf(error));
}
