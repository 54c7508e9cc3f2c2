// Names of folders and files that the updater shares with the instrument's main application.
//
// Each source file that includes this header has its own copy of every constant but INSTALL_ROOT.
// The names of projects are used by the main application only, but stay in this shared list.
#pragma once

#include <string>

#include "platform/win32.h"

const std::string PATH_SEPARATOR = "\\";

const std::string PROJECT_FILE_EXT = ".PRJ";
const std::string PROJECT_3D_FILE_EXT = ".3DS";
const std::string FOLDER_COMMON = "COMMON";
const std::string FOLDER_QUICK3D = "QUICK3D";
const std::string FOLDER_STRSCAN2D = "STRSCAN2D";
const std::string FOLDER_STRSCAN3D = "STRSCAN3D";
const std::string FOLDER_HS2D = "HS2D";
const std::string FOLDER_HS3D = "HS3D";
const std::string FOLDER_PROC = "Proc";
const std::string FOLDER_REPORT = "Report";
const std::string LAST_USED_PROJECTS_FILE = "LastUsedProjects.txt";

// The installation on the internal flash disk.
extern const std::string INSTALL_ROOT;

// Value names of the system configuration store.
const WideString LANGUAGE = TEXT("LANGUAGE");
const WideString SYSTEM_UNITS = TEXT("SYSTEM_UNITS");
const WideString LAST_APP_MODE = TEXT("LAST_APP_MODE");
const WideString DISPLAY_THEME = TEXT("DISPLAY_THEME");
const WideString TIME_ZONE = TEXT("TIME_ZONE");
const WideString WIFI_NETWORK_NAME = TEXT("WIFI_NETWORK_NAME");
const WideString WINDOWS_HOST_NAME = TEXT("WINDOWS_HOST_NAME");
const WideString WINDOWS_DOMAIN_NAME = TEXT("WINDOWS_DOMAIN_NAME");
const WideString WINDOWS_USER_NAME = TEXT("WINDOWS_USER_NAME");
