#include "tools/guidata/text_fit.h"

#include <set>

#include "tools/guidata/source_lines.h"
#include "tools/guidata/text_encoding.h"
#include "tools/screen_fit.h"
#include "ui/screen_layout.h"

std::vector<std::string> checkTexts(const std::vector<TextEntry>& entries,
                                    const std::string& fileName, const ScreenKeys& keys,
                                    const FontData& face) {
    std::vector<std::string> warnings;
    for (const TextEntry& entry : entries) {
        const std::string place = at(fileName, entry.line) + "warning: " + entry.key;
        for (const char16_t character : std::set<char16_t>(entry.text.begin(), entry.text.end())) {
            if (face.glyphs.count(character) == 0)
                warnings.push_back(place + ": the face has no " + characterName(character));
        }
        const auto use = keys.find(entry.key);
        if (use == keys.end())
            continue;
        const DrawnText drawn = drawnText(face, entry.text + use->second.suffix);
        for (const std::string& fault :
             {widthFault(drawn, use->second.rightEdge), markerFault(entry.key, entry.text, drawn)})
            if (!fault.empty())
                warnings.push_back(place + " " + fault);
    }
    const DrawnText note = drawnText(face, layout::RESTART_NOTE);
    const std::string fault = widthFault(note, layout::NOTES_EDGE);
    if (!fault.empty())
        warnings.push_back(fileName + ": warning: the restart note " + fault);
    return warnings;
}
