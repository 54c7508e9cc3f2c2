// Starts the program on POSIX systems: prepares the process, builds the command line and calls the
// entry routine.

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/entry_point.h"
#include "platform/instrument_screen.h"
#include "platform/posix/command_line.h"
#include "platform/posix/files/device.h"
#include "platform/posix/signals.h"
#include "platform/posix/window/display_end.h"

namespace {

constexpr int EXIT_DEVICE_IN_USE = 3;

constexpr char HELP[] = R"(Usage: updater [/auto]
  or:  updater [FIRST;SECOND]
  or:  updater --help | --version

Updates the application and the GUI data of a simulated Kestrel instrument from an update key, and
starts the application again. With /auto the update starts as soon as an update key is found.

A folder simulates the device's file system:
  FlashDisk/VELD/KSTRL/       the installed application (KSTRL.exe is started after an update)
  FlashDisk/VELD/ORBUI/data/  the GUI data, including the updater's fonts, texts and background
  FlashDisk/VELD/Updater-log.txt   the log of the last run
  USB HD/VELD/                the update key: KSTRL/, ORBUI/data/ and kstrXReleaseNotes.txt;
                              no key is plugged in while this folder is missing
  registry.reg                the registry; LANGUAGE (a number) in
                              HKEY_LOCAL_MACHINE\SOFTWARE\VELD\KESTREL\SYSTEM_CONFIG

Environment:
  UPDATER_DEVICE   the device folder (default: "device" in the current folder)
  UPDATER_SCREEN   the size of the screen, WIDTHxHEIGHT (default: %dx%d)
  DISPLAY          the X display on which the window is shown

Keys:
  Home        START: begin the update
  End         STOP: cancel and start the application
  Backspace   exit without starting the application
  F1 to F6    the keys of the service sequence, which also exits
After a failed update any key starts the application. When the window is closed, or on Ctrl-C,
SIGTERM or SIGHUP, the updater finishes the current step and exits.

Exit codes:
  0     the updater was left, or the application was started
  1     the display cannot be drawn on; the output says why
  3     another updater runs on the device folder; nothing was changed
  4     the display or the window was lost, or the display does not answer
  255   no window can be made
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

// Locks the device folder for as long as the process runs: two updaters at once would move each
// other's folders. Returns false when another one holds it. The application that is started does
// not inherit the lock.
bool lockDevice() {
    const int folder = ::open(deviceRoot().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    // A file system without locks, or a folder that cannot be read, does not keep the updater from
    // its work.
    return ::flock(folder, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace

int main(int argc, char** argv) {
    openStandardStreams();
    host::ignoreSignalsOfWrites();
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        std::printf(HELP, instrument::SCREEN_WIDTH, instrument::SCREEN_HEIGHT);
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
    if (!lockDevice()) {
        std::fprintf(stderr, "updater: another updater runs on the device folder \"%s\"\n",
                     deviceRoot().c_str());
        return EXIT_DEVICE_IN_USE;
    }
    host::onDisplayLost = logDisplayLost;
    host::turnSignalsIntoCloseRequests();
    host::setCommandLine(argc, argv);
    return runUpdater();
}
