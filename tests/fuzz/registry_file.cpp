// Registry files: what was read reads the same once it has been written.

#include <cstdlib>

#include "platform/posix/registry_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string once = host::Registry::fromText(bytes).toText();
    const std::string twice = host::Registry::fromText(once).toText();
    if (once != twice)
        std::abort();
    return 0;
}
