// The one header by which the program sees the Win32 calls it is written against.
//
// On Windows these are the system's own; elsewhere platform/posix/ implements the subset in use
// with the same names, types, results and error numbers. Nothing outside platform/ asks which
// system it is on.
#pragma once

#ifdef _WIN32
#include "platform/windows/win32_api.h"
#else
#include "platform/posix/win32_api.h"
#endif

#include <string>

// UTF-16 text: every text that is drawn, and every path that is handed to the system.
using WideString = std::basic_string<WCHAR>;
