#include "tools/updatekey/check/screen_fit.h"

#include <algorithm>
#include <cmath>

#include "support/text.h"
#include "ui/screen_layout.h"

namespace {

// Distances in pixels from the edges of a marker to the ink in it; negative when ink sticks out.
struct Margins {
    float left, right, above, below;

    void include(const Margins& other) {
        left = std::min(left, other.left);
        right = std::min(right, other.right);
        above = std::min(above, other.above);
        below = std::min(below, other.below);
    }
    bool areAtLeast(float pixels) const { return std::min({left, right, above, below}) >= pixels; }
};

// Returns the y coordinate of a text's top in the state that shows the markers.
int32_t topOf(const std::string& key) {
    int32_t top = 0;
    for (const layout::Text& text : layout::TEXTS)
        if (text.key == key && layout::isShown(text, layout::MARKED_STATE))
            top = text.top;
    return top;
}

std::string pixels(float count) {
    return std::to_string(std::lround(count));
}

std::string faultBehind(const layout::KeyMarker& marker, const WideString& text,
                        const DrawnText& drawn) {
    const WideString word = marker.word;
    const std::size_t start = text.find(word);
    const std::string name = narrow(word);
    if (start == WideString::npos)
        return "does not contain " + name + ", which belongs in its marker";

    // The marker's edges relative to the start of the text.
    const auto left = static_cast<float>(marker.place.x - layout::TEXT_LEFT);
    const auto right = left + static_cast<float>(marker.place.width);
    const auto bottom =
        static_cast<float>(layout::SCREEN_HEIGHT - marker.place.y - topOf(marker.textKey));
    const auto top = bottom - static_cast<float>(marker.place.height);
    Margins margins = {right, right, bottom, bottom};
    bool othersInMarker = false;
    for (const DrawnGlyph& glyph : drawn.glyphs) {
        if (glyph.index >= start && glyph.index < start + word.size())
            margins.include(
                {glyph.left - left, right - glyph.right, glyph.top - top, bottom - glyph.bottom});
        else
            othersInMarker |= glyph.right > left && glyph.left < right;
    }
    if (!margins.areAtLeast(layout::MARKER_GAP))
        return "has " + name + " " + pixels(margins.left) +
               " pixels from the left edge of its marker, " + pixels(margins.right) +
               " from the right, " + pixels(margins.above) + " from the top and " +
               pixels(margins.below) + " from the bottom; " + std::to_string(layout::MARKER_GAP) +
               " are needed on each side";
    if (othersInMarker)
        return "has other characters than " + name + " in its marker";
    return {};
}

}  // namespace

std::string widthFault(const DrawnText& text, int rightEdge) {
    const float end = layout::TEXT_LEFT + text.right;
    if (end <= static_cast<float>(rightEdge))
        return {};
    return "ends at x " + pixels(end) + ", beyond " + std::to_string(rightEdge);
}

std::string markerFault(const std::string& key, const WideString& text, const DrawnText& drawn) {
    for (const layout::KeyMarker& marker : layout::KEY_MARKERS)
        if (key == marker.textKey)
            return faultBehind(marker, text, drawn);
    return {};
}
