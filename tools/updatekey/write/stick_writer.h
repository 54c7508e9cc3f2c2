// Writes one stick: looks for room, copies the files, brings them to the medium, reads them back,
// and only then puts the update in its place.
#pragma once

#include "tools/updatekey/check/prediction.h"
#include "tools/updatekey/make/manifest.h"

// Writes the files of `manifest` from the folder `key` to the stick. Returns the names of what was
// left in the update's folder. Throws std::runtime_error, with the reason for the person with the
// stick, on failure.
std::vector<std::string> writeStick(const std::filesystem::path& key, const Manifest& manifest,
                                    const std::filesystem::path& stick, bool replace,
                                    const Progress& progress);
