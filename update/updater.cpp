// The update procedure: staging, one file per step, and the swap.

#include "update/updater.h"

#include "platform/win32.h"
#include "support/file_util.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "support/text.h"
#include "support/time_util.h"
#include "update/file_tree.h"

namespace {

// Moves a folder. Returns 0; on failure logs the error and returns 1.
int moveFolder(const std::string& from, const std::string& to) {
    if (MoveFileW(widen(from).c_str(), widen(to).c_str()) != 0)
        return 0;
    const DWORD error = GetLastError();
    Logger::instance().error("Error %d ::MoveFile: %s -> %s :", static_cast<int>(error),
                             from.c_str(), to.c_str());
    return 1;
}

}  // namespace

int32_t Updater::getState() {
    return state;
}

std::string Updater::getCurrentFile() {
    return filesToCopy.empty() ? std::string() : filesToCopy.front();
}

int32_t Updater::getProgress() {
    if (filesToCopy.empty())
        return copyDone ? 100 : 0;
    const auto remaining = static_cast<uint32_t>(filesToCopy.size());
    return static_cast<int32_t>(static_cast<float>(totalFiles - remaining) * 100.0F /
                                static_cast<float>(totalFiles));
}

std::string Updater::staged(const std::string& path) const {
    return staging() + PATH_SEPARATOR + path;
}

void Updater::startUpdate() {
    buildFileLists();
    state = Updating;
    // The results are not checked: the staging folders of an interrupted update exist already and
    // are used again.
    CreateDirectoryW(widen(flashRoot).c_str(), nullptr);
    CreateDirectoryW(widen(staging()).c_str(), nullptr);
    for (const std::string& folder : foldersToCreate)
        CreateDirectoryW(widen(staged(folder)).c_str(), nullptr);
}

void Updater::step() {
    if (!isMediaReady() || finished)
        return;
    if (copyDone)
        finishUpdate();
    else
        copyNextFile();
}

// Queues the files directly in `folder`, a path relative to the key's folder.
void Updater::listFiles(const std::string& folder) {
    for (const FileEntry& file : listDirectory(keyRoot() + folder, false, true))
        filesToCopy.push_back(folder + file.name);
}

void Updater::addComponentFolder(const std::string& name) {
    componentFolders.push_back(name);
    foldersToCreate.push_back(name + "/");
    listFiles(name + "/");
}

void Updater::buildFileLists() {
    const std::string guiData = keylayout::GUI_DATA;
    addComponentFolder(keylayout::APPLICATION);
    foldersToCreate.push_back(std::string(keylayout::GUI) + "/");
    foldersToCreate.push_back(guiData);
    listFiles(guiData);
    // GUI data has one level of subfolders; deeper ones are not copied. Kept.
    for (const FileEntry& entry : listDirectory(keyRoot() + guiData, true, false)) {
        const std::string subfolder = guiData + entry.name + PATH_SEPARATOR;
        foldersToCreate.push_back(subfolder);
        listFiles(subfolder);
    }
    totalFiles = static_cast<uint32_t>(filesToCopy.size());
}

void Updater::copyNextFile() {
    if (filesToCopy.empty())
        return;
    const std::string& file = filesToCopy.front();
    const std::string destination = staged(file);
    // The result is not checked: the update carries on with the remaining files. Kept.
    CopyFileW(widen(keyRoot() + file).c_str(), widen(destination).c_str(), FALSE);
    clearReadOnly(destination);
    filesToCopy.pop_front();
    if (filesToCopy.empty())
        copyDone = true;
}

void Updater::finishUpdate() {
    int error = 0;
    std::vector<std::string> names = componentFolders;
    names.emplace_back(keylayout::GUI);

    for (const std::string& name : names) {
        const std::string live = flashRoot + name;
        const std::string backup = live + keylayout::BACKUP_SUFFIX;
        // Overwrites the flag of the previous folder, so only the last folder's errors decide. A
        // folder that could not be moved out of the staging folder still fails the update, because
        // the removal below then fails. Kept.
        error = deleteTree(backup + PATH_SEPARATOR);
        if (moveFolder(live, backup) != 0)
            error = 1;
        if (moveFolder(staged(name), live) != 0)
            error = 1;
    }

    Logger& log = Logger::instance();
    if (RemoveDirectoryW(widen(staging()).c_str()) == 0) {
        const DWORD removeError = GetLastError();
        log.error("Error %d ::RemoveDirectory(%s)", static_cast<int>(removeError),
                  staging().c_str());
        log.error("Update failed.");
        state = UpdateFailed;
    } else if (error == 0) {
        SYSTEMTIME now{};
        GetLocalTime(&now);
        // Success is logged as a warning. Kept.
        log.warning("Update succeeded at %s", formatTime(now).c_str());
        state = UpdateComplete;
    } else {
        log.error("Update failed.");
        state = UpdateFailed;
    }
    finished = true;
}
