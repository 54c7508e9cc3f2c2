// Starts the program on POSIX systems: prepares the process, builds the command line and calls the
// entry routine.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "platform/entry_point.h"
#include "platform/posix/command_line.h"
#include "platform/posix/device.h"
#include "platform/posix/signals.h"

namespace {

constexpr const char* HELP = R"(Usage: updater [/auto]
       updater [FIRST;SECOND]
       updater --help | --version

Updates the application and the GUI data of a simulated Kestrel instrument from an update key, and
starts the application again. With /auto the update starts by itself as soon as a key is found.

The device is a folder:
  FlashDisk/VELD/KSTRL/       the installed application (KSTRL.exe is started after an update)
  FlashDisk/VELD/ORBUI/data/  its GUI data, the updater's fonts, texts and background among them
  FlashDisk/VELD/Updater-log.txt   what the last run did
  USB HD/VELD/                the update key: KSTRL/, ORBUI/data/ and kstrXReleaseNotes.txt;
                              there is no key as long as this is absent
  registry.reg                the registry; LANGUAGE (a number) below
                              HKEY_LOCAL_MACHINE\SOFTWARE\VELD\KESTREL\SYSTEM_CONFIG

Environment:
  UPDATER_DEVICE   the device folder (default: "device" in the current folder)
  UPDATER_SCREEN   the size of the screen, WIDTHxHEIGHT (default: 1024x768)
  DISPLAY          the X display on which the window is shown

Keys:
  Home        START: begin the update
  End         STOP: give up and start the application
  Backspace   leave without starting anything
  F1 to F6    the service sequence
After a failed update any key starts the application.
Closing the window, Ctrl-C, SIGTERM and SIGHUP leave as soon as the step in hand is done.
)";

// Opens /dev/null for closed standard streams. Otherwise the next file opened, such as the log,
// would get the stream's number and receive the program's output.
void openStandardStreams() {
    int stream = 0;
    do
        stream = ::open("/dev/null", O_RDWR);
    while (stream >= 0 && stream <= STDERR_FILENO);
    ::close(stream);
}

}  // namespace

int main(int argc, char** argv) {
    openStandardStreams();
    host::ignoreSignalsOfWrites();
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        std::fputs(HELP, stdout);
        return 0;
    }
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::puts("updater " UPDATER_VERSION);
        return 0;
    }
    // Line buffered, so that all output is visible after a sudden end.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    struct stat status {};
    if (::stat(deviceRoot().c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        std::fprintf(stderr,
                     "updater: the device folder \"%s\" does not exist (see UPDATER_DEVICE in "
                     "updater --help)\n",
                     deviceRoot().c_str());
    host::turnSignalsIntoCloseRequests();
    host::setCommandLine(argc, argv);
    return runUpdater();
}
