// Release notes that nobody wrote by hand.

#include "tests/support/update_on_device.h"

namespace {

class HostileNotes : public UpdateOnDevice {
  protected:
    void poll(const std::string& notes) {
        device.write(KEY + std::string("kstrXReleaseNotes.txt"), notes);
        updater.pollMedia();
        EXPECT_TRUE(updater.isMediaReady());
    }

    static constexpr std::size_t TEN_MEGABYTES = 10'000'000;
    Updater updater;
};

TEST_F(HostileNotes, OfTenMegabytesInShortLines) {
    std::string notes;
    while (notes.size() < TEN_MEGABYTES)
        notes += "a line of no interest\n";
    poll(notes);
    EXPECT_EQ(updater.getMessageLines().size(), notes.size() / 22);
}

TEST_F(HostileNotes, OfOneLineWithoutAnEnd) {
    poll(std::string(TEN_MEGABYTES, 'x'));
    EXPECT_EQ(updater.getUpdateVersion().size(), TEN_MEGABYTES);
    EXPECT_TRUE(updater.getMessageLines().empty());
}

TEST_F(HostileNotes, OfNulBytes) {
    poll(std::string(1000, '\0') + "\n" + std::string(10, '\0'));
    EXPECT_EQ(updater.getUpdateVersion(), std::string(1000, '\0'));
    EXPECT_EQ(updater.getMessageLines().size(), 1U);
}

}  // namespace
