// The subset of the Win32 API that the program uses, for POSIX systems.
//
// Names, types, results and error numbers are those of Windows. Each implementation file describes
// where its calls differ from Windows. The device's file system is a folder of the host (see
// device.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

// --- Types ---------------------------------------------------------------------------------------

using BOOL = int;
using BYTE = uint8_t;
using WORD = uint16_t;
using DWORD = uint32_t;
using UINT = uint32_t;
using LONG = int32_t;
using LONGLONG = int64_t;
using WCHAR = char16_t;
using ATOM = uint16_t;
using LSTATUS = LONG;
using REGSAM = DWORD;
using WPARAM = uintptr_t;
using LPARAM = intptr_t;
using LRESULT = intptr_t;
using HANDLE = void*;
using HGDIOBJ = void*;
using HBRUSH = void*;
using HCURSOR = void*;
using HICON = void*;
using HMENU = void*;
using HINSTANCE = struct ModuleHandle*;
using HWND = struct WindowHandle*;
using HKEY = struct KeyHandle*;
using LPCWSTR = const WCHAR*;
using LPWSTR = WCHAR*;
using LPVOID = void*;

#define WINAPI
#define CALLBACK
#define TEXT(text) u##text

constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;
constexpr std::size_t MAX_PATH = 260;
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(static_cast<intptr_t>(-1));

// --- Error numbers -------------------------------------------------------------------------------

constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_INVALID_HANDLE = 6;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_NOT_SAME_DEVICE = 17;
constexpr DWORD ERROR_NO_MORE_FILES = 18;
constexpr DWORD ERROR_WRITE_PROTECT = 19;
constexpr DWORD ERROR_GEN_FAILURE = 31;
constexpr DWORD ERROR_SHARING_VIOLATION = 32;
constexpr DWORD ERROR_HANDLE_EOF = 38;
constexpr DWORD ERROR_FILE_EXISTS = 80;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_DISK_FULL = 112;
constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
constexpr DWORD ERROR_INVALID_NAME = 123;
constexpr DWORD ERROR_DIR_NOT_EMPTY = 145;
constexpr DWORD ERROR_ALREADY_EXISTS = 183;
constexpr DWORD ERROR_BAD_EXE_FORMAT = 193;
constexpr DWORD ERROR_MORE_DATA = 234;
constexpr DWORD ERROR_DIRECTORY = 267;
constexpr DWORD ERROR_IO_DEVICE = 1117;
constexpr DWORD ERROR_INVALID_WINDOW_HANDLE = 1400;
constexpr DWORD ERROR_CANNOT_FIND_WND_CLASS = 1407;

DWORD GetLastError();
void SetLastError(DWORD error);

// --- Files ---------------------------------------------------------------------------------------

constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x1;
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x400;
constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

struct SECURITY_ATTRIBUTES;

struct WIN32_FIND_DATAW {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    WCHAR cFileName[MAX_PATH];
    WCHAR cAlternateFileName[14];
};

BOOL CreateDirectoryW(LPCWSTR path, SECURITY_ATTRIBUTES* security);
BOOL CopyFileW(LPCWSTR source, LPCWSTR destination, BOOL failIfExists);
BOOL MoveFileW(LPCWSTR source, LPCWSTR destination);
BOOL DeleteFileW(LPCWSTR path);
BOOL RemoveDirectoryW(LPCWSTR path);
DWORD GetFileAttributesW(LPCWSTR path);
BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes);
HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* found);
BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* found);
BOOL FindClose(HANDLE search);

// The C runtime's wide file open. The modes are "r", "rb", "w" and "wb"; ",ccs=UTF-16LE" after them
// is accepted, but the reader does the decoding. Returns null for anything but a regular file, such
// as a folder, a pipe or a link.
FILE* _wfopen(LPCWSTR path, LPCWSTR mode);

// --- Registry ------------------------------------------------------------------------------------

inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(static_cast<uintptr_t>(0x80000002));
constexpr REGSAM KEY_READ = 0x20019;
constexpr REGSAM KEY_WRITE = 0x20006;
constexpr DWORD REG_SZ = 1;
constexpr DWORD REG_BINARY = 3;
constexpr DWORD REG_DWORD = 4;

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subkey, DWORD options, REGSAM access, HKEY* opened);
LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, BYTE* data,
                         DWORD* size);
LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                       DWORD size);
LSTATUS RegCloseKey(HKEY key);
LSTATUS RegFlushKey(HKEY key);

// --- Processes -----------------------------------------------------------------------------------

constexpr DWORD TH32CS_SNAPPROCESS = 2;
constexpr DWORD PROCESS_ALL_ACCESS = 0x1F0FFF;

struct PROCESSENTRY32 {
    DWORD dwSize;
    DWORD cntUsage;
    DWORD th32ProcessID;
    DWORD th32DefaultHeapID;
    DWORD th32ModuleID;
    DWORD cntThreads;
    DWORD th32ParentProcessID;
    LONG pcPriClassBase;
    DWORD dwFlags;
    WCHAR szExeFile[MAX_PATH];
    DWORD th32MemoryBase;
    DWORD th32AccessKey;
};
static_assert(sizeof(PROCESSENTRY32) == 564, "the record has the size of the instrument's");

struct STARTUPINFOW;
struct PROCESS_INFORMATION;

HANDLE CreateToolhelp32Snapshot(DWORD flags, DWORD processId);
BOOL Process32First(HANDLE snapshot, PROCESSENTRY32* entry);
BOOL Process32Next(HANDLE snapshot, PROCESSENTRY32* entry);
HANDLE OpenProcess(DWORD access, BOOL inherit, DWORD processId);
BOOL TerminateProcess(HANDLE process, UINT exitCode);
BOOL CloseHandle(HANDLE handle);
BOOL CreateProcessW(LPCWSTR application, LPWSTR commandLine, SECURITY_ATTRIBUTES* process,
                    SECURITY_ATTRIBUTES* thread, BOOL inherit, DWORD flags, void* environment,
                    LPCWSTR folder, STARTUPINFOW* startup, PROCESS_INFORMATION* information);
LPWSTR GetCommandLineW();

// --- Time ----------------------------------------------------------------------------------------

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

struct TIME_ZONE_INFORMATION {
    LONG Bias;
    WCHAR StandardName[32];
    SYSTEMTIME StandardDate;
    LONG StandardBias;
    WCHAR DaylightName[32];
    SYSTEMTIME DaylightDate;
    LONG DaylightBias;
};
static_assert(sizeof(TIME_ZONE_INFORMATION) == 172, "the record has the size of Windows's");

union LARGE_INTEGER {
    struct {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
};

constexpr DWORD TIME_ZONE_ID_UNKNOWN = 0;
constexpr DWORD TIME_ZONE_ID_INVALID = 0xFFFFFFFF;

void Sleep(DWORD milliseconds);
void GetLocalTime(SYSTEMTIME* time);
DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone);
BOOL SetTimeZoneInformation(const TIME_ZONE_INFORMATION* zone);
BOOL FileTimeToLocalFileTime(const FILETIME* time, FILETIME* local);
BOOL FileTimeToSystemTime(const FILETIME* time, SYSTEMTIME* calendar);
BOOL QueryPerformanceCounter(LARGE_INTEGER* count);
BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency);

// --- Windows and messages ------------------------------------------------------------------------

constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_CLOSE = 0x0010;
constexpr UINT WM_QUIT = 0x0012;
constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_KEYUP = 0x0101;
constexpr UINT PM_REMOVE = 1;

constexpr DWORD WS_POPUP = 0x80000000;
constexpr DWORD WS_DISABLED = 0x08000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_CAPTION = 0x00C00000;
constexpr DWORD WS_SYSMENU = 0x00080000;
constexpr DWORD WS_THICKFRAME = 0x00040000;
constexpr int CW_USEDEFAULT = static_cast<int>(0x80000000);
constexpr int SW_SHOWNORMAL = 1;
constexpr int SM_CXSCREEN = 0;
constexpr int SM_CYSCREEN = 1;
constexpr int GWL_STYLE = -16;
constexpr UINT SWP_FRAMECHANGED = 0x20;
constexpr int BLACK_BRUSH = 4;
inline const HWND HWND_TOPMOST = reinterpret_cast<HWND>(static_cast<intptr_t>(-1));
inline const LPCWSTR IDC_ARROW = reinterpret_cast<LPCWSTR>(static_cast<uintptr_t>(0x7F00));

constexpr WPARAM VK_BACK = 0x08;
constexpr WPARAM VK_END = 0x23;
constexpr WPARAM VK_HOME = 0x24;
constexpr WPARAM VK_F1 = 0x70;
constexpr WPARAM VK_F6 = 0x75;

using WNDPROC = LRESULT (*)(HWND, UINT, WPARAM, LPARAM);

struct WNDCLASSW {
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
};

struct POINT {
    LONG x;
    LONG y;
};

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};

ATOM RegisterClassW(const WNDCLASSW* windowClass);
HWND CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x,
                     int y, int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                     LPVOID parameter);
BOOL ShowWindow(HWND window, int command);
int GetSystemMetrics(int index);
LONG SetWindowLongW(HWND window, int index, LONG value);
BOOL SetWindowPos(HWND window, HWND insertAfter, int x, int y, int width, int height, UINT flags);
BOOL EnableWindow(HWND window, BOOL enable);
BOOL SetForegroundWindow(HWND window);
LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT remove);
BOOL TranslateMessage(const MSG* message);
LRESULT DispatchMessageW(const MSG* message);
void PostQuitMessage(int exitCode);
BOOL DestroyWindow(HWND window);
HINSTANCE GetModuleHandleW(LPCWSTR name);
HCURSOR LoadCursorW(HINSTANCE instance, LPCWSTR name);
HGDIOBJ GetStockObject(int object);

// --- Debugger output -----------------------------------------------------------------------------

void OutputDebugStringW(LPCWSTR text);
