// The user settings that the instrument's programs share in the registry.
//
// Reading returns a fallback when a value is missing, unreadable or out of range. Writing checks no
// range, and is lost when the registry key does not exist. The updater reads the language only.
#pragma once

#include <cstdint>
#include <string>

#include "platform/win32.h"

class SystemConfig {
  public:
    // The process-wide store, made on first use. Each operation opens and closes the key itself.
    static SystemConfig& instance();

    // Returns the number stored under `valueName`, or -1. A failure is logged, except when the
    // registry key itself is missing.
    int32_t getDword(const WideString& valueName);
    void setDword(const WideString& valueName, int32_t value);

    // Returns the text stored under `valueName`, at most 511 characters, or an empty text.
    std::string getString(const WideString& valueName);
    void setString(const WideString& valueName, const std::string& text);

    int32_t getLanguage();      // one of LANGUAGES, else 0
    int32_t getSystemUnits();   // 0 to 1, else 0
    int32_t getLastAppMode();   // 0 to 5, else 0
    int32_t getDisplayTheme();  // 0 to 7, else 0
    int32_t getTimeZone();      // -12 to 13 hours, else 0; -1 when missing
    void setLanguage(int32_t value);
    void setSystemUnits(int32_t value);
    void setLastAppMode(int32_t value);
    void setDisplayTheme(int32_t value);
    void setTimeZone(int32_t value);

    std::string getWifiNetworkName();
    std::string getWindowsHostName();
    std::string getWindowsDomainName();
    std::string getWindowsUserName();
    void setWifiNetworkName(const std::string& text);
    void setWindowsHostName(const std::string& text);
    void setWindowsDomainName(const std::string& text);
    void setWindowsUserName(const std::string& text);

  private:
    SystemConfig() = default;

    bool openKey(REGSAM access, HKEY& key);
    int32_t getInRange(const WideString& valueName, int32_t lowest, int32_t highest);
    void setValue(const WideString& valueName, DWORD type, const void* data, std::size_t size);

    HKEY rootKey_ = HKEY_LOCAL_MACHINE;
    WideString subkeyPath_ = TEXT("SOFTWARE\\VELD\\KESTREL\\SYSTEM_CONFIG");
};
