// Checks the installed files of an instrument as if they were those of a key.
#pragma once

#include "tools/updatekey/check/check.h"

// Checks what is installed in the maker's folder of `device` as the same files would be checked on
// a key. Of the options only the machine and the languages count; the language that the device's
// registry names counts before them. Returns the errors, with paths relative to the maker's folder.
// Throws std::runtime_error when a file cannot be read.
Findings checkInstallation(const std::filesystem::path& device,
                           const std::filesystem::path& makerFolder, const CheckOptions& options);
