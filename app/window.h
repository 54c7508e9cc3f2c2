// The program's one window: full-screen, topmost, on the primary display.
#pragma once

#include <cstdint>

#include "platform/win32.h"

// Registers the window class of createMainWindow.
void registerWindowClass();

// Creates the window disabled, with the system's default position, size and frame. Returns null
// when it cannot be created.
HWND createMainWindow();

// Resizes the window to cover the screen of the given size in pixels, and gives it the keyboard
// focus.
void makeFullScreen(HWND window, uint32_t width, uint32_t height);

// The window procedure. Passes key presses to the screen, exits on Backspace, and posts the quit
// message when the window is destroyed or the hidden key sequence is complete.
LRESULT CALLBACK mainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
