#include "app/window.h"

#include <cstdlib>

#include "app/entry.h"
#include "app/key_sequence.h"

namespace {

constexpr LPCWSTR CLASS_NAME = TEXT("EGLWndClass");
constexpr DWORD START_STYLE = WS_DISABLED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;

void handleKeyDown(WPARAM virtualKey) {
    theScreen.onKey(virtualKey);
    if (virtualKey == VK_BACK)
        std::exit(0);
    if (completesQuitSequence(virtualKey))
        PostQuitMessage(0);
}

}  // namespace

LRESULT CALLBACK mainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        case WM_KEYDOWN:
            handleKeyDown(wParam);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

void registerWindowClass() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = mainWindowProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    windowClass.lpszClassName = CLASS_NAME;
    RegisterClassW(&windowClass);
}

HWND createMainWindow() {
    return CreateWindowExW(0, CLASS_NAME, nullptr, START_STYLE, CW_USEDEFAULT, CW_USEDEFAULT,
                           CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

void makeFullScreen(HWND window, uint32_t width, uint32_t height) {
    // The new style has no WS_VISIBLE: the window has to be shown again. It has no WS_DISABLED
    // either, but not every system takes that bit for more than a note: the window is enabled
    // expressly.
    SetWindowLongW(window, GWL_STYLE, static_cast<LONG>(WS_POPUP));
    SetWindowPos(window, HWND_TOPMOST, 0, 0, static_cast<int>(width), static_cast<int>(height),
                 SWP_FRAMECHANGED);
    EnableWindow(window, TRUE);
    SetForegroundWindow(window);
    ShowWindow(window, SW_SHOWNORMAL);
}
