#include "support/system_config.h"

#include "support/languages.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "support/text.h"

namespace {

constexpr std::size_t TEXT_BUFFER_LENGTH = 512;

void warnGetting(const WideString& valueName) {
    Logger::instance().warning("Error getting registry key [%s].", narrow(valueName).c_str());
}

void warnSetting(const WideString& valueName) {
    Logger::instance().warning("Error setting registry key [%s].", narrow(valueName).c_str());
}

void closeAfterReading(HKEY key, const WideString& valueName) {
    if (RegCloseKey(key) != ERROR_SUCCESS)
        Logger::instance().warning("Error closing registry key [%s].", narrow(valueName).c_str());
}

}  // namespace

SystemConfig& SystemConfig::instance() {
    static SystemConfig config;
    return config;
}

bool SystemConfig::openKey(REGSAM access, HKEY& key) {
    return RegOpenKeyExW(rootKey_, subkeyPath_.c_str(), 0, access, &key) == ERROR_SUCCESS;
}

int32_t SystemConfig::getDword(const WideString& valueName) {
    HKEY key{};
    if (!openKey(KEY_READ, key))
        return -1;
    int32_t value = -1;
    DWORD size = sizeof value;
    int32_t stored = 0;
    if (RegQueryValueExW(key, valueName.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(&stored),
                         &size) == ERROR_SUCCESS)
        value = stored;
    else
        warnGetting(valueName);
    closeAfterReading(key, valueName);
    return value;
}

std::string SystemConfig::getString(const WideString& valueName) {
    HKEY key{};
    if (!openKey(KEY_READ, key))
        return {};
    WideString text;
    // One character more than the registry may fill, because a stored text may lack its terminator.
    WCHAR buffer[TEXT_BUFFER_LENGTH + 1] = {};
    DWORD size = TEXT_BUFFER_LENGTH * sizeof(WCHAR);
    if (RegQueryValueExW(key, valueName.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(buffer),
                         &size) == ERROR_SUCCESS)
        text = buffer;
    else
        warnGetting(valueName);
    closeAfterReading(key, valueName);
    return narrow(text);
}

void SystemConfig::setDword(const WideString& valueName, int32_t value) {
    setValue(valueName, REG_DWORD, &value, sizeof value);
}

void SystemConfig::setString(const WideString& valueName, const std::string& text) {
    const WideString wide = widen(text);
    setValue(valueName, REG_SZ, wide.c_str(), (wide.size() + 1) * sizeof(WCHAR));
}

void SystemConfig::setValue(const WideString& valueName, DWORD type, const void* data,
                            std::size_t size) {
    HKEY key{};
    if (!openKey(KEY_WRITE, key))
        return;
    if (RegSetValueExW(key, valueName.c_str(), 0, type, static_cast<const BYTE*>(data),
                       static_cast<DWORD>(size)) != ERROR_SUCCESS)
        warnSetting(valueName);
    // A failed close logs the setter's message. Kept.
    if (RegCloseKey(key) != ERROR_SUCCESS)
        warnSetting(valueName);
    // The registry is a hive file: the flush makes the change survive a power cut.
    RegFlushKey(HKEY_LOCAL_MACHINE);
}

int32_t SystemConfig::getInRange(const WideString& valueName, int32_t lowest, int32_t highest) {
    const int32_t value = getDword(valueName);
    return value >= lowest && value <= highest ? value : 0;
}

int32_t SystemConfig::getLanguage() {
    return getInRange(LANGUAGE, 0, LANGUAGE_COUNT - 1);
}
int32_t SystemConfig::getSystemUnits() {
    return getInRange(SYSTEM_UNITS, 0, 1);
}
int32_t SystemConfig::getLastAppMode() {
    return getInRange(LAST_APP_MODE, 0, 5);
}
int32_t SystemConfig::getDisplayTheme() {
    return getInRange(DISPLAY_THEME, 0, 7);
}
// A missing value reads as -1, which is a valid zone. Kept.
int32_t SystemConfig::getTimeZone() {
    return getInRange(TIME_ZONE, -12, 13);
}

void SystemConfig::setLanguage(int32_t value) {
    setDword(LANGUAGE, value);
}
void SystemConfig::setSystemUnits(int32_t value) {
    setDword(SYSTEM_UNITS, value);
}
void SystemConfig::setLastAppMode(int32_t value) {
    setDword(LAST_APP_MODE, value);
}
void SystemConfig::setDisplayTheme(int32_t value) {
    setDword(DISPLAY_THEME, value);
}
void SystemConfig::setTimeZone(int32_t value) {
    setDword(TIME_ZONE, value);
}

std::string SystemConfig::getWifiNetworkName() {
    return getString(WIFI_NETWORK_NAME);
}
std::string SystemConfig::getWindowsHostName() {
    return getString(WINDOWS_HOST_NAME);
}
std::string SystemConfig::getWindowsDomainName() {
    return getString(WINDOWS_DOMAIN_NAME);
}
std::string SystemConfig::getWindowsUserName() {
    return getString(WINDOWS_USER_NAME);
}

void SystemConfig::setWifiNetworkName(const std::string& text) {
    setString(WIFI_NETWORK_NAME, text);
}
void SystemConfig::setWindowsHostName(const std::string& text) {
    setString(WINDOWS_HOST_NAME, text);
}
void SystemConfig::setWindowsDomainName(const std::string& text) {
    setString(WINDOWS_DOMAIN_NAME, text);
}
void SystemConfig::setWindowsUserName(const std::string& text) {
    setString(WINDOWS_USER_NAME, text);
}
