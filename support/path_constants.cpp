#include "support/path_constants.h"

const std::string INSTALL_ROOT = "\\FlashDisk\\VELD\\";
