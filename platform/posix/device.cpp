#include "platform/posix/device.h"

#include <sys/stat.h>

#include <cstdlib>

#include "platform/posix/clock.h"
#include "platform/posix/utf.h"

namespace {

std::string& root() {
    static std::string& folder = *new std::string([] {
        const char* variable = std::getenv("UPDATER_DEVICE");
        return variable != nullptr && *variable != '\0' ? variable : "device";
    }());
    return folder;
}

constexpr char16_t SEPARATORS[] = u"/\\";

bool isRelative(std::u16string_view path) {
    return path.find_first_of(SEPARATORS) != 0;
}

// Whether the first `length` characters of `path`, which a separator follows, name a link.
bool isLink(std::string& path, std::size_t length) {
    struct stat status {};
    path[length] = '\0';
    const bool found = ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
    path[length] = '/';
    return found;
}

}  // namespace

const std::string& deviceRoot() {
    return root();
}

void setDeviceRoot(const std::string& folder) {
    root() = folder;
    host::forgetTimeZone();
}

namespace host {

std::string resolveOnText(LPCWSTR path) {
    const std::u16string_view text(path);
    static const std::string currentFolder = ".";
    const std::string& base = isRelative(text) ? currentFolder : deviceRoot();
    std::string host;
    host.reserve(base.size() + text.size() + 1);
    host = base;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of(SEPARATORS, start), text.size());
        const std::u16string_view part = text.substr(start, end - start);
        if (part == u"..") {
            if (host.size() > base.size())
                host.erase(host.rfind('/'));
        } else if (!part.empty() && part != u".") {
            host += '/';
            appendUtf8(host, part);
        }
        start = end + 1;
    }
    return host;
}

DWORD resolve(LPCWSTR path, std::string& host) {
    const std::u16string_view text(path);
    if (text.empty() || text.size() >= MAX_PATH)
        return ERROR_PATH_NOT_FOUND;
    host = resolveOnText(path);
    if (isRelative(text))
        return ERROR_SUCCESS;
    const std::size_t drive = host.find('/', deviceRoot().size() + 1);
    if (drive == std::string::npos)
        return ERROR_SUCCESS;
    for (std::size_t end = host.find('/', drive + 1); end != std::string::npos;
         end = host.find('/', end + 1)) {
        if (isLink(host, end))
            return ERROR_ACCESS_DENIED;
    }
    return ERROR_SUCCESS;
}

}  // namespace host
