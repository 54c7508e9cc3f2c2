#include "tools/screen_texts.h"

#include <algorithm>

#include "ui/screen_layout.h"

ScreenTexts screenTexts() {
    ScreenTexts texts;
    for (const layout::Text& text : layout::TEXTS) {
        const TextUse use = {layout::rightEdge(text), text.suffix};
        TextUse& known = texts.emplace(text.key, use).first->second;
        known.rightEdge = std::min(known.rightEdge, use.rightEdge);
    }
    return texts;
}
