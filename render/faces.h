// The faces in which each script is shown.
#pragma once

#include <cstddef>

#include "support/languages.h"

constexpr std::size_t FACE_SLOTS = 4;

struct Faces {
    Script script;
    const char* slots[FACE_SLOTS];  // names, smallest face first; null: no face
};

constexpr Faces FACES[] = {
    {Script::Latin, {"SegoeUI_10px", "SegoeUI_13px", "SegoeUI_18px", "SegoeUI_24px"}},
    {Script::Japanese, {nullptr, "MeiryoUI_24px", "MeiryoUI_36px", nullptr}},
    {Script::Chinese, {nullptr, "FangSong_24px", "FangSong_36px", nullptr}},
};

constexpr const Faces& facesOf(Script script) {
    return FACES[static_cast<std::size_t>(script)];
}

// Returns the index of the slot to use for a size in pixels, FACE_SLOTS when all slots are null.
template <typename Slots>
constexpr std::size_t pickFace(const Slots& slots, int pixelSize) {
    // A size above the largest face selects the smallest one. Kept.
    const std::size_t first = pixelSize < 12    ? 0
                              : pixelSize <= 15 ? 1
                              : pixelSize <= 20 ? 2
                              : pixelSize <= 28 ? 3
                                                : 0;
    for (std::size_t slot = first; slot < FACE_SLOTS; ++slot)
        if (slots[slot] != nullptr)
            return slot;
    for (std::size_t slot = FACE_SLOTS - 1; slot-- > 0;)
        if (slots[slot] != nullptr)
            return slot;
    return FACE_SLOTS;
}

// Returns the name of the face that FontSet::getFont returns for a size when all faces are loaded.
constexpr const char* faceName(Script script, int pixelSize) {
    return facesOf(script).slots[pickFace(facesOf(script).slots, pixelSize)];
}
