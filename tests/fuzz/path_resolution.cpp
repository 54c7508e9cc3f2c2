// Fuzzes the resolution of device paths: every path must lead to a place in the device folder.

#include <cstdlib>

#include "platform/posix/files/device.h"
#include "platform/utf.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::u16string wide = host::toUtf16(bytes);
    // Names survive the conversion in both directions.
    if (host::toUtf8(wide) != bytes)
        std::abort();
    setDeviceRoot("/nowhere/device");
    const std::u16string path = u"/" + wide;
    const std::string hostPath = host::toHostPath(path.c_str());
    if (hostPath.compare(0, deviceRoot().size(), deviceRoot()) != 0 ||
        hostPath.find("/../") != std::string::npos || hostPath.find("//") != std::string::npos)
        std::abort();
    std::string resolved;
    host::resolveName(path.c_str(), resolved);
    return 0;
}
