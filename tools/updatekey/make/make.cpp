#include "tools/updatekey/make/make.h"

#include <algorithm>
#include <stdexcept>

#include "tools/host/file_time.h"
#include "tools/host/folder_tree.h"
#include "tools/host/host_file.h"
#include "tools/host/temporary_folder.h"
#include "tools/host/volume.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/check/names.h"
#include "tools/updatekey/make/manifest.h"
#include "tools/updatekey/make/notes_text.h"
#include "tools/updatekey/values.h"

namespace fs = std::filesystem;

namespace {

void require(bool condition, const std::string& message) {
    if (!condition)
        throw std::runtime_error(message);
}

// The key is created beside `out` and then renamed, which is impossible for a mount point.
void requireFree(const fs::path& out) {
    if (!fs::exists(out)) {
        fs::create_directories(out.parent_path());
        return;
    }
    require(fs::is_directory(out) && fs::is_empty(out),
            out.generic_string() + " already exists; give a new or an empty folder");
    require(!isMountPoint(out),
            out.generic_string() +
                " is a mounted storage device; make the key in another folder, and copy it to the "
                "device with \"updatekey write\"");
}

// Makes the copy readable and writable. It stays executable, so that a rehearsal can start it.
void copyFile(const fs::path& from, const fs::path& to) {
    fs::copy_file(from, to);
    const bool runs = (fs::status(from).permissions() & fs::perms::owner_exec) != fs::perms::none;
    fs::permissions(to, static_cast<fs::perms>(runs ? 0755 : 0644));
}

// Copies a folder without its junk files, which are added to `leftOut`. Links are copied, so that
// the check reports them; a special file, such as a pipe, throws std::runtime_error.
void copyTree(const fs::path& from, const fs::path& to, std::vector<std::string>& leftOut) {
    fs::create_directories(to);
    for (const TreeEntry& entry : readTree(from)) {
        if (isJunkPath(parentOf(entry.path)))
            continue;
        if (isJunkPath(nameOf(entry.path)))
            leftOut.push_back((from / entry.path).generic_string());
        else if (entry.kind == TreeEntry::Kind::Folder)
            fs::create_directory(to / entry.path);
        else if (entry.kind == TreeEntry::Kind::File)
            copyFile(from / entry.path, to / entry.path);
        else if (entry.kind == TreeEntry::Kind::Link)
            fs::copy_symlink(from / entry.path, to / entry.path);
        else
            throw std::runtime_error((from / entry.path).generic_string() +
                                     " is neither a file nor a folder");
    }
}

// Returns the time for all files of the key: an even number of seconds, because FAT32 stores times
// with a resolution of two seconds.
time_t keyTime(const MakeOptions& options) {
    const int64_t epoch = sourceDateEpoch();
    const time_t time =
        epoch >= 0 ? static_cast<time_t>(epoch)
                   : std::max({changeTime(options.notes), newestChange(options.application),
                               newestChange(options.guiData)});
    return time - time % 2;
}

void setTimes(const fs::path& folder, time_t time) {
    for (const TreeEntry& entry : readTree(folder))
        setChangeTime(folder / entry.path, time);
    setChangeTime(folder, time);
}

}  // namespace

MakeReport makeKey(const MakeOptions& options, const CheckOptions& check) {
    for (const fs::path& folder : {options.application, options.guiData})
        require(fs::is_directory(folder), folder.generic_string() + " is not a folder");
    const auto holdsGuiData = [](const fs::path& folder) {
        return fs::is_directory(folder / "lang") && fs::is_directory(folder / "fonts");
    };
    require(!holdsGuiData(options.application) || holdsGuiData(options.guiData),
            "--app names the GUI data; are --app and --gui swapped?");
    const fs::path data = options.guiData / fs::path(keylayout::GUI_DATA).parent_path().filename();
    require(holdsGuiData(options.guiData) || !holdsGuiData(data),
            "--gui names the folder above the GUI data; give " + data.generic_string());
    const fs::path out = fs::absolute(options.out / "").parent_path();
    requireFree(out);
    require(fs::is_regular_file(options.notes), options.notes.generic_string() + " is not a file");
    const std::string notes = composeNotes(readHostFile(options.notes), options.version);

    MakeReport report;
    const TemporaryFolder temporary(out);
    const fs::path& key = temporary.path();
    copyTree(options.application, key / keypaths::APPLICATION, report.leftOut);
    copyTree(options.guiData, key / keypaths::GUI_DATA, report.leftOut);
    writeHostFile(key / keypaths::NOTES, notes);
    report.check = checkKey(key, check);
    if (hasErrors(report.check.findings))
        return report;

    writeHostFile(key / MANIFEST_NAME, toText(computeManifest(key)));
    report.check.manifest = ManifestState::Matches;
    fs::permissions(key, static_cast<fs::perms>(0755));
    setTimes(key, keyTime(options));
    fs::remove(out);  // an empty folder
    fs::rename(key, out);
    report.written = true;
    return report;
}
