// Detection of an update key, and its release notes.

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "platform/input_limits.h"
#include "support/file_util.h"
#include "support/line_reader.h"
#include "update/updater.h"

namespace {

bool contains(const std::vector<FileEntry>& entries, const std::string& name) {
    return std::any_of(entries.begin(), entries.end(),
                       [&](const FileEntry& entry) { return entry.name == name; });
}

}  // namespace

bool Updater::isKeyValid() const {
    const auto folders = listDirectory(keyRoot(), true, false);
    if (!contains(folders, keylayout::GUI) || !contains(folders, keylayout::APPLICATION))
        return false;
    const auto guiData = listDirectory(keyRoot() + keylayout::GUI_DATA, true, true);
    const auto application = listDirectory(keyRoot() + keylayout::APPLICATION + "/", false, true);
    return !guiData.empty() && !application.empty();
}

void Updater::pollMedia() {
    mediaReady = isKeyValid();
    if (!mediaReady)
        return;
    state = ReadyToUpdate;

    LineReader notes(keyRoot() + releaseNotesName, limits::RELEASE_NOTES);
    notes.readLine(updateVersion);
    // Wherever the prefix occurs in the line, its length is cut from the front of the line. Kept.
    if (updateVersion.rfind(keylayout::VERSION_PREFIX) != std::string::npos)
        updateVersion = updateVersion.substr(std::strlen(keylayout::VERSION_PREFIX));
    readReleaseNotes();
}

void Updater::readReleaseNotes() {
    LineReader notes(keyRoot() + releaseNotesName, limits::RELEASE_NOTES);
    if (!notes.isOpen()) {
        std::printf("Release notes not found.\n");
        return;
    }
    // A last line without a line feed is dropped. Kept.
    std::string line;
    while (notes.readLine(line))
        messageLines.push_back(line);
}

bool Updater::isMediaReady() {
    return mediaReady;
}

std::vector<std::string> Updater::getMessageLines() {
    return messageLines;
}

std::string& Updater::getUpdateVersion() {
    return updateVersion;
}
