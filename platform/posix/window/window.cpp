// A window is an ordinary desktop window of the size of the device's screen, whatever frame and
// position the program requests. It is visible while its style has WS_VISIBLE, and receives no key
// presses while it has WS_DISABLED. Messages, including the quit message, are returned in the order
// in which they were posted.

#define GLFW_INCLUDE_NONE
#include "platform/posix/window/window.h"

#include <GLFW/glfw3.h>
#define GLFW_EXPOSE_NATIVE_X11
#include <GLFW/glfw3native.h>

#include <deque>
#include <map>
#include <string>

#include "platform/gles.h"
#include "platform/posix/call_hook.h"
#include "platform/posix/debug_output.h"
#include "platform/posix/last_error.h"
#include "platform/posix/signals.h"
#include "platform/posix/window/screen_size.h"

using host::fail;
using host::refusedDisplayCall;

struct WindowHandle {
    GLFWwindow* desktop;
    WNDPROC procedure;
    DWORD style;
};

namespace {

// The code of all keyboard keys that the program does not use; Windows leaves it unassigned.
constexpr WPARAM VK_OTHER = 0xE8;

// Marks a key that was already down: a repeated press, or a release.
constexpr LPARAM KEY_WAS_DOWN = LPARAM{1} << 30;

std::map<std::u16string, WNDPROC>& classes() {
    static auto& registered = *new std::map<std::u16string, WNDPROC>;
    return registered;
}

// The window created last. The program has only one.
HWND programWindow = nullptr;

HWND handleOf(GLFWwindow* desktop) {
    return static_cast<HWND>(glfwGetWindowUserPointer(desktop));
}

void takeStyle(HWND window, DWORD style) {
    window->style = style;
    if ((style & WS_VISIBLE) != 0)
        glfwShowWindow(window->desktop);
    else
        glfwHideWindow(window->desktop);
}

WPARAM virtualKey(int key) {
    switch (key) {
        case GLFW_KEY_HOME:
            return VK_HOME;
        case GLFW_KEY_END:
            return VK_END;
        case GLFW_KEY_BACKSPACE:
            return VK_BACK;
        default:
            return key >= GLFW_KEY_F1 && key <= GLFW_KEY_F12
                       ? VK_F1 + static_cast<WPARAM>(key - GLFW_KEY_F1)
                       : VK_OTHER;
    }
}

void onDesktopKey(GLFWwindow* desktop, int key, int, int action, int) {
    const HWND window = handleOf(desktop);
    if ((window->style & WS_DISABLED) == 0)
        host::postMessage(window, action == GLFW_RELEASE ? WM_KEYUP : WM_KEYDOWN, virtualKey(key),
                          action == GLFW_PRESS ? 0 : KEY_WAS_DOWN);
}

void onDesktopClose(GLFWwindow* desktop) {
    glfwSetWindowShouldClose(desktop, GLFW_FALSE);
    host::postMessage(handleOf(desktop), WM_CLOSE, 0);
}

void onDesktopError(int, const char* description) {
    host::tell(std::string("window system: ") + description);
}

int onConnectionLost(Display*) {
    host::endWithoutDisplay("the connection to the X server is closed");
}

// Other programs can destroy the window, which the window library does not notice.
void endWhenWindowIsDestroyed() {
    XEvent event{};
    if (programWindow != nullptr && programWindow->desktop != nullptr &&
        XCheckTypedWindowEvent(glfwGetX11Display(), glfwGetX11Window(programWindow->desktop),
                               DestroyNotify, &event) != 0)
        host::endWithoutDisplay("another program has destroyed the window");
}

// Asks for what EGL needs, because its own messages do not name it.
void tellMissingExtension() {
    int codes[3] = {};
    if (XQueryExtension(glfwGetX11Display(), "XFIXES", &codes[0], &codes[1], &codes[2]) == 0)
        host::tell(
            "window system: the X server lacks the extension XFIXES, without which EGL may fail");
}

std::deque<MSG>& queue() {
    // Never destroyed, because messages are still posted while the process exits.
    static auto& messages = *new std::deque<MSG>;
    return messages;
}

// Posts a message for each desktop event since the last call.
void collectWindowEvents() {
    endWhenWindowIsDestroyed();
    glfwPollEvents();
    if (host::takeCloseRequest())
        host::postMessage(programWindow, WM_CLOSE, 0);
}

// Returns 0 for a window that does not exist.
LRESULT callWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return window != nullptr && window->desktop != nullptr
               ? window->procedure(window, message, wParam, lParam)
               : 0;
}

}  // namespace

namespace host {

void postMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    queue().push_back({window, message, wParam, lParam, 0, {0, 0}});
}

}  // namespace host

#undef eglSwapBuffers
EGLBoolean swapBuffersOfDisplay(EGLDisplay display, EGLSurface surface) {
    host::waitsForDisplay = 1;
    return eglSwapBuffers(display, surface);
}

EGLNativeWindowType nativeWindowOf(HWND window) {
    return window != nullptr && window->desktop != nullptr ? glfwGetX11Window(window->desktop) : 0;
}

ATOM RegisterClassW(const WNDCLASSW* windowClass) {
    if (refusedDisplayCall("RegisterClassW", windowClass->lpszClassName))
        return 0;
    classes()[windowClass->lpszClassName] = windowClass->lpfnWndProc;
    return static_cast<ATOM>(classes().size());
}

HWND CreateWindowExW(DWORD, LPCWSTR className, LPCWSTR, DWORD style, int, int, int, int, HWND,
                     HMENU, HINSTANCE, LPVOID) {
    if (refusedDisplayCall("CreateWindowExW", className, style))
        return nullptr;
    const auto registered = classes().find(className);
    if (registered == classes().end()) {
        fail(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    const host::ScreenSize size = host::screenSize();
    glfwSetErrorCallback(onDesktopError);
#ifdef GLFW_PLATFORM
    // EGL gets the window's X11 handle.
    glfwInitHint(GLFW_PLATFORM, GLFW_PLATFORM_X11);
#endif
    if (!glfwInit()) {
        fail(ERROR_GEN_FAILURE);
        return nullptr;
    }
    XSetIOErrorHandler(onConnectionLost);
    tellMissingExtension();
    glfwWindowHint(GLFW_CLIENT_API, GLFW_NO_API);
    glfwWindowHint(GLFW_RESIZABLE, GLFW_FALSE);
    glfwWindowHint(GLFW_VISIBLE, GLFW_FALSE);
    GLFWwindow* desktop =
        glfwCreateWindow(size.width, size.height, "Kestrel updater", nullptr, nullptr);
    if (desktop == nullptr) {
        fail(ERROR_GEN_FAILURE);
        return nullptr;
    }
    auto* window = new WindowHandle{desktop, registered->second, 0};
    glfwSetWindowUserPointer(desktop, window);
    glfwSetKeyCallback(desktop, onDesktopKey);
    glfwSetWindowCloseCallback(desktop, onDesktopClose);
    takeStyle(window, style);
    programWindow = window;
    return window;
}

BOOL ShowWindow(HWND window, int command) {
    if (refusedDisplayCall("ShowWindow", command))
        return FALSE;
    const bool wasVisible = (window->style & WS_VISIBLE) != 0;
    takeStyle(window, window->style | WS_VISIBLE);
    return wasVisible;
}

int GetSystemMetrics(int index) {
    if (refusedDisplayCall("GetSystemMetrics", index))
        return 0;
    const host::ScreenSize size = host::screenSize();
    return index == SM_CXSCREEN ? size.width : index == SM_CYSCREEN ? size.height : 0;
}

LONG SetWindowLongW(HWND window, int index, LONG value) {
    if (refusedDisplayCall("SetWindowLongW", index, value))
        return 0;
    const DWORD before = window->style;
    if (index == GWL_STYLE)
        takeStyle(window, static_cast<DWORD>(value));
    return static_cast<LONG>(before);
}

// The window has the screen's size from the start, so nothing is resized. The round trip ensures
// that the X server has processed the window before EGL uses it.
BOOL SetWindowPos(HWND window, HWND behind, int x, int y, int width, int height, UINT flags) {
    if (refusedDisplayCall("SetWindowPos",
                           static_cast<int>(reinterpret_cast<std::intptr_t>(behind)), x, y, width,
                           height, flags))
        return FALSE;
    int now[2] = {};
    glfwSetWindowSize(window->desktop, width, height);
    glfwGetWindowSize(window->desktop, &now[0], &now[1]);
    return TRUE;
}

BOOL EnableWindow(HWND window, BOOL enable) {
    if (refusedDisplayCall("EnableWindow", enable))
        return FALSE;
    const bool wasDisabled = (window->style & WS_DISABLED) != 0;
    window->style = enable ? window->style & ~WS_DISABLED : window->style | WS_DISABLED;
    return wasDisabled;
}

BOOL SetForegroundWindow(HWND window) {
    if (refusedDisplayCall("SetForegroundWindow"))
        return FALSE;
    glfwFocusWindow(window->desktop);
    return TRUE;
}

LRESULT DefWindowProcW(HWND window, UINT message, WPARAM, LPARAM) {
    if (message == WM_CLOSE)
        DestroyWindow(window);
    return 0;
}

BOOL DestroyWindow(HWND window) {
    if (refusedDisplayCall("DestroyWindow"))
        return FALSE;
    if (window == nullptr || window->desktop == nullptr)
        return fail(ERROR_INVALID_WINDOW_HANDLE);
    callWindowProcedure(window, WM_DESTROY, 0, 0);
    // The record is kept: messages in the queue may still refer to the window.
    glfwDestroyWindow(window->desktop);
    window->desktop = nullptr;
    return TRUE;
}

BOOL PeekMessageW(MSG* message, HWND, UINT, UINT, UINT) {
    if (refusedDisplayCall("PeekMessageW"))
        return FALSE;
    if (queue().empty())
        collectWindowEvents();
    if (queue().empty())
        return FALSE;
    *message = queue().front();
    queue().pop_front();
    return TRUE;
}

// Posts no character messages: the program reads no text from the keyboard.
BOOL TranslateMessage(const MSG*) {
    host::errorFromHook("TranslateMessage");
    return FALSE;
}

LRESULT DispatchMessageW(const MSG* message) {
    if (host::refusedByHook("DispatchMessageW"))
        return 0;
    return callWindowProcedure(message->hwnd, message->message, message->wParam, message->lParam);
}

void PostQuitMessage(int exitCode) {
    if (host::errorFromHook("PostQuitMessage", exitCode) == ERROR_SUCCESS)
        host::postMessage(nullptr, WM_QUIT, static_cast<WPARAM>(exitCode));
}

HINSTANCE GetModuleHandleW(LPCWSTR) {
    return nullptr;
}

HCURSOR LoadCursorW(HINSTANCE, LPCWSTR) {
    return nullptr;
}

HGDIOBJ GetStockObject(int) {
    return nullptr;
}
