// Checks whether a face can show the texts of a table.
#pragma once

#include <string>
#include <vector>

#include "render/font_file.h"
#include "tools/guidata/text_source.h"

// Returns warnings about characters that the face lacks, about texts that extend beyond their right
// limit in `keys`, and about START and STOP outside their markers.
std::vector<std::string> checkTexts(const std::vector<TextEntry>& entries,
                                    const std::string& fileName, const ScreenKeys& keys,
                                    const FontData& face);
