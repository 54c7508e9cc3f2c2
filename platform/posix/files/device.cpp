#include "platform/posix/files/device.h"

#include <algorithm>
#include <cstdlib>

#include "platform/posix/files/flush.h"
#include "platform/utf.h"

namespace {

std::string& root() {
    static std::string& folder = *new std::string([] {
        const char* variable = std::getenv("UPDATER_DEVICE");
        return variable != nullptr && *variable != '\0' ? variable : "device";
    }());
    return folder;
}

bool isForbidden(char16_t character) {
    constexpr std::u16string_view FORBIDDEN = u"\"*:<>?|";
    return character < 0x20 || FORBIDDEN.find(character) != FORBIDDEN.npos;
}

bool isRelative(std::u16string_view path) {
    return path.find_first_of(host::SEPARATORS) != 0;
}

// Windows drops dots and blanks at the end of a path, and a single dot before a separator.
std::u16string_view withoutEnd(std::u16string_view name, bool isLast) {
    if (isLast)
        return name.substr(0, name.find_last_not_of(u". ") + 1);
    const bool singleDot = name.size() > 1 && name.back() == u'.' && name[name.size() - 2] != u'.';
    return name.substr(0, name.size() - (singleDot ? 1 : 0));
}

}  // namespace

const std::string& deviceRoot() {
    return root();
}

void setDeviceRoot(const std::string& folder) {
    root() = folder;
    host::forgetDisks();
}

namespace host {

bool endsInSeparator(LPCWSTR path) {
    const std::u16string_view text(path);
    return !text.empty() && (text.back() == u'/' || text.back() == u'\\');
}

std::string toHostPath(LPCWSTR path) {
    const std::u16string_view text(path);
    static const std::string CURRENT_FOLDER = ".";
    const std::string& base = isRelative(text) ? CURRENT_FOLDER : deviceRoot();
    std::string hostPath;
    hostPath.reserve(base.size() + text.size() + 1);
    hostPath = base;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of(SEPARATORS, start), text.size());
        const std::u16string_view part = text.substr(start, end - start);
        if (part == u"..") {
            if (hostPath.size() > base.size())
                hostPath.erase(hostPath.rfind('/'));
        } else if (const auto name = withoutEnd(part, end == text.size());
                   !name.empty() && name != u".") {
            hostPath += '/';
            appendUtf8(hostPath, name);
        }
        start = end + 1;
    }
    return hostPath;
}

DWORD resolveName(LPCWSTR path, std::string& hostPath) {
    const std::u16string_view text(path);
    if (text.empty() || text.size() >= MAX_PATH)
        return ERROR_PATH_NOT_FOUND;
    if (std::any_of(text.begin(), text.end(), isForbidden))
        return ERROR_INVALID_NAME;
    hostPath = toHostPath(path);
    return ERROR_SUCCESS;
}

}  // namespace host
