// The update engine: finds an update key, and replaces the installed folders by the key's.
//
// An update stages a copy of the key's folders on the flash disk, one file per step, and then swaps
// each installed folder for its staged copy; the folder replaced stays as a backup with "_old"
// behind its name until the next update. Nothing is rolled back and nothing is tried twice. All of
// it runs on the caller's thread.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

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

    // Looks for a valid key: "KSTRL" with a file in it, "ORBUI/data/" with anything in it. When
    // there is one, the engine is ready, and the version and the release notes have been read.
    virtual void pollMedia();

    // Whether the last look found a valid key.
    virtual bool isMediaReady();

    // The lines of the release notes.
    virtual std::vector<std::string> getMessageLines();

    // The update's version as the first line of the release notes gives it; empty without notes.
    virtual std::string& getUpdateVersion();

    // The file that the next step copies, relative to the key's folder; empty when none is left.
    virtual std::string getCurrentFile();

    // One of UpdateState.
    virtual int32_t getState();

    // Files copied, in per cent of all files, 0 to 100.
    virtual int32_t getProgress();

    // Lists what the key holds and makes the staging folders. Not guarded against a second call.
    virtual void startUpdate();

    // One step of the update: copies a file, or finishes once all are copied. Harmless at any time.
    virtual void step();

    // Appends the lines of the release notes to those at hand; pollMedia calls it.
    virtual void readReleaseNotes();

  protected:
    virtual void addComponentFolder(const std::string& name);
    virtual void buildFileLists();
    virtual void copyNextFile();
    virtual void finishUpdate();

    std::string usbRoot = "/USB HD/";
    std::string flashRoot = "/FlashDisk/VELD/";
    std::string makerFolder = "VELD/";
    std::string releaseNotesName = "kstrXReleaseNotes.txt";
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
    bool isKeyValid() const;
    void listFiles(const std::string& folder);
};
