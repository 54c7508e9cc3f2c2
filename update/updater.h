// The update engine. It finds an update key and replaces the installed folders with those of the
// key.
//
// An update copies the key's folders to a staging folder on the flash disk, one file per step, and
// then swaps each installed folder for its staged copy. The replaced folder is kept as a backup,
// with "_old" appended to its name, until the next update. Nothing is rolled back and nothing is
// retried. Everything runs on the caller's thread.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "update/key_layout.h"

// The states of the engine, as the screen shows them.
enum UpdateState : int32_t {
    WaitingForMedia = 0,
    ReadyToUpdate = 1,
    Updating = 2,
    UpdateComplete = 3,
    UpdateFailed = 4,
    MainAppNotFound = 5,  // drawn by the screen, never entered by the engine
};

class Updater {
  public:
    Updater() = default;
    Updater(const Updater&) = delete;
    Updater& operator=(const Updater&) = delete;
    virtual ~Updater() = default;

    // Looks for a valid key: "KSTRL" with at least one file in it, and "ORBUI/data/" with at least
    // one entry. When there is one, reads its version and release notes and enters ReadyToUpdate.
    virtual void pollMedia();

    // Whether the last call of pollMedia found a valid key.
    virtual bool isMediaReady();

    // The lines of the release notes.
    virtual std::vector<std::string> getMessageLines();

    // The version from the first line of the release notes; empty when the notes cannot be read.
    virtual std::string& getUpdateVersion();

    // The file that the next step copies, relative to the key's folder; empty when all are copied.
    virtual std::string getCurrentFile();

    // One of UpdateState.
    virtual int32_t getState();

    // The percentage of files copied, 0 to 100.
    virtual int32_t getProgress();

    // Lists the key's files and creates the staging folders. A second call lists them again;
    // callers prevent it.
    virtual void startUpdate();

    // Copies one file, or finishes the update once all files are copied. Does nothing when no key
    // has been found or the update has finished.
    virtual void step();

    // Appends the lines of the release notes to those already read. Called by pollMedia.
    virtual void readReleaseNotes();

  protected:
    // Adds a folder and the files directly in it to the lists of the update.
    virtual void addComponentFolder(const std::string& name);

    // Fills the lists of folders to create and of files to copy.
    virtual void buildFileLists();

    // Copies the first file in the list and removes it from the list.
    virtual void copyNextFile();

    // Swaps the installed folders for the staged ones, and logs the outcome.
    virtual void finishUpdate();

    std::string usbRoot = keylayout::USB_ROOT;
    std::string flashRoot = keylayout::FLASH_ROOT;
    std::string makerFolder = keylayout::MAKER_FOLDER;
    std::string releaseNotesName = keylayout::RELEASE_NOTES;
    bool mediaReady = false;
    bool copyDone = false;
    bool finished = false;
    int32_t state = WaitingForMedia;
    std::string updateVersion = "No version detected.";
    std::vector<std::string> messageLines;
    std::vector<std::string> foldersToCreate;
    std::deque<std::string> filesToCopy;
    std::vector<std::string> componentFolders;
    uint32_t totalFiles = 0;

  private:
    std::string keyRoot() const { return usbRoot + makerFolder; }
    std::string staging() const { return flashRoot + keylayout::STAGING; }
    std::string staged(const std::string& path) const;
    bool isKeyValid() const;
    void listFiles(const std::string& folder);
};
