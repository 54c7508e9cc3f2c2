// The program's one window: full-screen, topmost, on the primary display.
#pragma once

#include <cstdint>

#include "platform/win32.h"

// Registers the window class of createMainWindow.
void registerWindowClass();

// Makes the window, with the size and the frame that the system gives it and disabled; null when it
// cannot be made.
HWND createMainWindow();

// Makes the window cover the screen of the given size in pixels, and gives it the keyboard.
void makeFullScreen(HWND window, uint32_t width, uint32_t height);

LRESULT CALLBACK mainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
