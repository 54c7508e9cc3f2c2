// Whether the texts of a table can be shown with a face.
#pragma once

#include <string>
#include <vector>

#include "render/font_file.h"
#include "tools/guidata/text_source.h"

// Warns about characters that the face lacks, about texts that go beyond their right edge in
// `keys`, and about words that do not lie in their markers.
void checkTexts(const std::vector<TextEntry>& entries, const std::string& fileName,
                const ScreenKeys& keys, const FontData& face, MessageList& messages);
