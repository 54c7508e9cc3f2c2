// Fuzzes the formatting of log lines and traces: an argument must be written unchanged, up to the
// buffer's end, whatever percent signs it contains.

#include <cstdlib>

#include "support/logger.h"
#include "tests/fuzz/fuzz_device.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    static const FuzzDevice DEVICE;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string shown = std::string(text.c_str()).substr(0, MESSAGE_BUFFER_SIZE - 1);
    Logger& log = Logger::instance();
    log.setPath("/log.txt");
    log.error("%s", text.c_str());
    log.warning("%s", text.c_str());
    debugPrint("%s", text.c_str());
    const std::string file = DEVICE.read("log.txt");
    const std::string expected =
        "\n    *** ERROR *** " + shown + "\n\n  ** Warning ** " + shown + "\n";
    if (file.size() < expected.size() ||
        file.compare(file.size() - expected.size(), expected.size(), expected) != 0)
        std::abort();
    return 0;
}
