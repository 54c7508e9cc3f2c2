#include "tools/screen_keys.h"

#include <algorithm>

#include "ui/screen_layout.h"

ScreenKeys screenKeys() {
    ScreenKeys keys;
    for (const layout::Text& text : layout::TEXTS) {
        const TextUse use = {layout::rightEdge(text), text.suffix};
        TextUse& known = keys.emplace(text.key, use).first->second;
        known.rightEdge = std::min(known.rightEdge, use.rightEdge);
    }
    return keys;
}
