// Fuzzes the reader of registry files: what is read, and a value that is set, must be read again
// from the text that is written.

#include <cstdlib>

#include "platform/registry_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string key = "HKEY_LOCAL_MACHINE\\K";
    host::Registry registry = host::Registry::fromText(bytes);
    registry.keys[key]["V"] = {REG_DWORD, "\1\2\3\4"};
    const std::string text = registry.toText();
    const host::Registry again = host::Registry::fromText(text);
    const host::RegistryValue* value = again.find(key, "V");
    if (again.lostLine != 0 || again.toText() != text || value == nullptr || value->data[3] != 4)
        std::abort();
    return 0;
}
