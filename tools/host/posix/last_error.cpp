#include <cerrno>
#include <system_error>

#include "tools/host/host_file.h"

std::string lastError() {
    return std::generic_category().message(errno);
}
