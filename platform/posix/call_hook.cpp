#include "platform/posix/call_hook.h"

#include <utility>

#include "platform/utf.h"

void setCallHook(CallHook hook) {
    host::callHook = std::move(hook);
}

namespace host {

CallHook callHook;

std::string hookArgument(LPCWSTR text) {
    return text != nullptr ? toUtf8(text) : "(null)";
}

}  // namespace host
