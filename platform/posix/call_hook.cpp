#include "platform/posix/call_hook.h"

#include <utility>

#include "platform/posix/utf.h"

void setCallHook(CallHook hook) {
    posix::callHook = std::move(hook);
}

namespace posix {

CallHook callHook;

std::string hookArgument(LPCWSTR text) {
    return text != nullptr ? toUtf8(text) : "(null)";
}

}  // namespace posix
