// Fuzzes the reader of string tables: no file may make it crash or read beyond the end.

#include "support/string_table.h"

#include "support/system_settings.h"
#include "tests/fuzz/fuzz_device.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    static const FuzzDevice DEVICE;
    SystemSettings::instance().dataFolder = "/";
    DEVICE.write("lang/StringTable_en.txt", data, size);
    StringTable& table = StringTable::instance();
    table.setLanguage(0);
    table.lookup("");
    table.lookup("STR_UDPATEFAILED");
    return 0;
}
