// The registry calls, on the simulated device's registry file. Each call reads the file again.

#include <cstring>

#include "platform/posix/call_hook.h"
#include "platform/posix/registry/registry_file.h"
#include "platform/utf.h"

struct KeyHandle {
    std::string path;
    REGSAM access;
};

using host::errorFromHook;

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subkey, DWORD, REGSAM access, HKEY* opened) {
    if (const DWORD error = errorFromHook("RegOpenKeyExW", subkey, access))
        return static_cast<LSTATUS>(error);
    if (key != HKEY_LOCAL_MACHINE)
        return ERROR_INVALID_HANDLE;
    const std::string path = "HKEY_LOCAL_MACHINE\\" + host::toUtf8(subkey);
    host::Registry registry;
    if (const DWORD error = host::loadRegistry(registry))
        return static_cast<LSTATUS>(error);
    if (!registry.hasKey(path))
        return ERROR_FILE_NOT_FOUND;
    *opened = new KeyHandle{path, access};
    return ERROR_SUCCESS;
}

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, DWORD*, DWORD* type, BYTE* data, DWORD* size) {
    if (const DWORD error = errorFromHook("RegQueryValueExW", name))
        return static_cast<LSTATUS>(error);
    host::Registry registry;
    if (const DWORD error = host::loadRegistry(registry))
        return static_cast<LSTATUS>(error);
    const host::RegistryValue* value = registry.find(key->path, host::toUtf8(name));
    if (value == nullptr)
        return ERROR_FILE_NOT_FOUND;
    if (type != nullptr)
        *type = value->type;
    const DWORD room = *size;
    *size = static_cast<DWORD>(value->data.size());
    if (*size > room)
        return ERROR_MORE_DATA;
    if (*size > 0)
        std::memcpy(data, value->data.data(), *size);
    return ERROR_SUCCESS;
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD, DWORD type, const BYTE* data, DWORD size) {
    if (const DWORD error = errorFromHook("RegSetValueExW", name, type))
        return static_cast<LSTATUS>(error);
    constexpr REGSAM SET_VALUE = 0x2;
    if ((key->access & SET_VALUE) == 0)
        return ERROR_ACCESS_DENIED;
    host::Registry registry;
    if (const DWORD error = host::loadRegistry(registry))
        return static_cast<LSTATUS>(error);
    registry.keys[key->path][host::toUtf8(name)] = {type, std::string(data, data + size)};
    return static_cast<LSTATUS>(host::saveRegistry(registry));
}

// Frees the key even when the hook makes the call fail, because callers do not retry.
LSTATUS RegCloseKey(HKEY key) {
    const DWORD error = errorFromHook("RegCloseKey");
    if (key != HKEY_LOCAL_MACHINE)
        delete key;
    return static_cast<LSTATUS>(error);
}

// Nothing to flush: RegSetValueExW writes the file.
LSTATUS RegFlushKey(HKEY) {
    return static_cast<LSTATUS>(errorFromHook("RegFlushKey"));
}
