#include "support/system_settings.h"

SystemSettings& SystemSettings::instance() {
    static SystemSettings settings;
    return settings;
}
