// Whether the texts of a table can be shown with a face.
#pragma once

#include <string>
#include <vector>

#include "render/font_file.h"
#include "tools/guidata/text_source.h"

// How far the pen goes, in pixels, when the text is drawn: like drawing it, with the narrowing of
// katakana and ideographs and without the characters that the face lacks.
double drawnWidth(const std::u16string& text, const FontData& face);

// Warns about texts that go beyond their right edge in `keys` and about characters that the face
// lacks.
void checkTexts(const std::vector<TextEntry>& entries, const std::string& fileName,
                const ScreenKeys& keys, const FontData& face, MessageList& messages);
