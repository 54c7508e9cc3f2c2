#include "tools/updatekey/check/prediction.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "support/open_file.h"
#include "support/path_constants.h"
#include "support/text.h"
#include "tools/host/printable.h"
#include "tools/host/trial_device.h"
#include "update/key_layout.h"
#include "update/updater.h"

namespace {

class ObservedUpdater : public Updater {
  public:
    explicit ObservedUpdater(Prediction& prediction) : prediction_(prediction) {
        usbRoot = TrialDevice::usbRoot();
        flashRoot = TrialDevice::flashRoot();
    }

  protected:
    // Missing notes are a finding of the check; the engine would also print a message.
    void readReleaseNotes() override {
        if (openFile(usbRoot + makerFolder + releaseNotesName, TEXT("rb")) != nullptr)
            Updater::readReleaseNotes();
    }

    void copyNextFile() override {
        const std::string file = getCurrentFile();
        Updater::copyNextFile();
        const std::string staged = keylayout::STAGING + PATH_SEPARATOR + file;
        const std::size_t length = std::strlen(keylayout::FLASH_ROOT) + staged.size();
        std::string relative = latin1ToUtf8(keylayout::MAKER_FOLDER + file);
        std::replace(relative.begin(), relative.end(), '\\', '/');
        // A copied file is deleted at once, so that the disk needs space for one file only.
        const bool arrived =
            length < MAX_PATH && DeleteFileW(widen(flashRoot + staged).c_str()) != FALSE;
        if (!arrived && length < MAX_PATH && flashRoot.size() + staged.size() >= MAX_PATH)
            throw std::runtime_error(flashRoot + staged +
                                     " is too long a path for the trial run; set TMP to a folder "
                                     "with a shorter one");
        (arrived ? prediction_.copied : prediction_.lost).insert(relative);
    }

  private:
    Prediction& prediction_;
};

Prediction observe(bool updates, const Progress& progress) {
    Prediction prediction;
    ObservedUpdater updater(prediction);
    updater.pollMedia();
    prediction.accepted = updater.isMediaReady();
    prediction.notes = updater.getMessageLines();
    prediction.version = latin1ToUtf8(updater.getUpdateVersion());
    if (updates && prediction.accepted)
        updater.startUpdate();
    while (updater.getState() == Updating) {
        updater.step();
        if (progress)
            progress(updater.getProgress());
    }
    prediction.state = updater.getState();
    // Two names on the key can be the same to the device, which then copies that file twice.
    for (const std::string& file : prediction.copied)
        prediction.lost.erase(file);
    return prediction;
}

}  // namespace

Prediction predict(const Progress& progress) {
    return observe(true, progress);
}

Prediction lookAtKey() {
    return observe(false, {});
}

const char* stateName(int32_t state) {
    // There is no default label, so that the compiler warns about a new state.
    switch (static_cast<UpdateState>(state)) {
        case WaitingForMedia:
            return "WaitingForMedia";
        case ReadyToUpdate:
            return "ReadyToUpdate";
        case Updating:
            return "Updating";
        case UpdateComplete:
            return "UpdateComplete";
        case UpdateFailed:
            return "UpdateFailed";
        case MainAppNotFound:
            return "MainAppNotFound";
    }
    return "unknown";
}
