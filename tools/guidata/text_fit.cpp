#include "tools/guidata/text_fit.h"

#include <cmath>
#include <set>

#include "render/narrowing.h"
#include "tools/guidata/source_lines.h"
#include "tools/guidata/text_encoding.h"
#include "ui/screen_layout.h"

double drawnWidth(const std::u16string& text, const FontData& face) {
    constexpr double narrowing = 2.0 / 3.0;
    double width = 0;
    for (const char16_t character : text) {
        const auto glyph = face.glyphs.find(character);
        if (glyph != face.glyphs.end())
            width += glyph->second.xadvance * (isNarrowed(character) ? narrowing : 1.0);
    }
    return width;
}

void checkTexts(const std::vector<TextEntry>& entries, const std::string& fileName,
                const ScreenKeys& keys, const FontData& face, MessageList& messages) {
    for (const TextEntry& entry : entries) {
        const std::string place = at(fileName, entry.line) + "warning: " + entry.key;
        for (const char16_t character : std::set<char16_t>(entry.text.begin(), entry.text.end())) {
            if (face.glyphs.count(character) == 0)
                messages.warnings.push_back(place + ": the face has no " +
                                            characterName(character));
        }
        const auto use = keys.find(entry.key);
        if (use == keys.end())
            continue;
        const double end = layout::TEXT_LEFT + drawnWidth(entry.text + use->second.suffix, face);
        if (end > use->second.rightEdge) {
            messages.warnings.push_back(place + " ends at x " + std::to_string(std::lround(end)) +
                                        ", beyond " + std::to_string(use->second.rightEdge));
        }
    }
}
