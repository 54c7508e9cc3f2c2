#include "tools/updatekey/write/targets.h"

#include <algorithm>
#include <stdexcept>

#include "tools/host/trial_device.h"
#include "tools/updatekey/check/prediction.h"

namespace fs = std::filesystem;

namespace {

bool same(const fs::path& a, const fs::path& b) {
    std::error_code error;
    return fs::equivalent(a, b, error) && !error;
}

// Whether a folder is `place` or holds it.
bool holds(const fs::path& folder, const fs::path& place) {
    fs::path part = fs::absolute(place).lexically_normal();
    for (; part.has_relative_path(); part = part.parent_path())
        if (same(folder, part))
            return true;
    return same(folder, part);
}

bool sameDisk(const Volume& volume, const fs::path& place, const std::vector<Volume>& volumes) {
    const std::optional<Volume> other = volumeOf(place, volumes);
    return other && (same(other->folder, volume.folder) ||
                     (!volume.disk.empty() && other->disk == volume.disk));
}

}  // namespace

void requireDifferentFolders(const fs::path& key, const std::vector<fs::path>& folders) {
    for (auto folder = folders.begin(); folder != folders.end(); ++folder) {
        const auto twin = std::find_if(std::next(folder), folders.end(),
                                       [&](const fs::path& other) { return same(*folder, other); });
        if (twin != folders.end())
            throw std::runtime_error(folder->generic_string() + " and " + twin->generic_string() +
                                     " are the same stick; nothing was written");
        if (holds(*folder, key) || holds(key, *folder))
            throw std::runtime_error(folder->generic_string() +
                                     " holds the key itself, or is in it; nothing was written");
    }
}

std::string whyNotWritten(const fs::path& folder, const fs::path& key,
                          const std::vector<Volume>& volumes, bool anyFolder) {
    const fs::path root = systemFolder();
    if (!fs::is_directory(folder))
        return "there is no such folder; is the stick mounted?";
    for (const fs::path& vital : {root, homeFolder()})
        if (same(folder, vital))
            return "this is no stick but the folder " + vital.generic_string() +
                   " of this computer";
    if (anyFolder)
        return {};
    const std::optional<Volume> volume = volumeOf(folder, volumes);
    if (volume && same(root, volume->folder))
        return "this is a folder of this computer's system, not a stick; \"updatekey sticks\" "
               "lists the sticks";
    if (!volume || !same(folder, volume->folder))
        return "no stick is mounted there; \"updatekey sticks\" lists the sticks";
    for (const fs::path& vital : {root, homeFolder(), key})
        if (sameDisk(*volume, vital, volumes))
            return "this disk also holds " + vital.generic_string() + "; use another one";
    if (!volume->removable)
        return "this is not on a removable or USB disk; --not-a-stick writes to it all the same";
    if (volume->fileSystem != "FAT32")
        return "the stick has the file system " + volume->fileSystem +
               ", and the instrument reads FAT32; format it with FAT32";
    return {};
}

std::vector<Stick> listSticks(const fs::path& systemRoot) {
    std::vector<Stick> sticks;
    const std::vector<Volume> volumes = mountedVolumes(systemRoot);
    for (const Volume& volume : volumes) {
        if (!volume.removable)
            continue;
        Stick stick{volume, {}, "", whyNotWritten(volume.folder, {}, volumes, false)};
        try {
            stick.room = roomOn(volume.folder);
            const TrialDevice device(volume.folder);
            const Prediction prediction = lookAtKey();
            stick.update = !prediction.accepted         ? ""
                           : prediction.version.empty() ? "unknown"
                                                        : prediction.version;
        } catch (const fs::filesystem_error& error) {
            stick.problem = error.code() == std::errc::read_only_file_system
                                ? "it is write-protected"
                                : error.code().message();
        }
        sticks.push_back(stick);
    }
    return sticks;
}
