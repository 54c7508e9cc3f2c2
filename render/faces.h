// The faces in which each script is shown.
#pragma once

#include <cstddef>

#include "support/languages.h"

constexpr std::size_t FACE_SLOTS = 4;

struct Faces {
    Script script;
    const char* slots[FACE_SLOTS];  // names, from the smallest face up; null for a slot without one
};

constexpr Faces FACES[] = {
    {Script::latin, {"SegoeUI_10px", "SegoeUI_13px", "SegoeUI_18px", "SegoeUI_24px"}},
    {Script::japanese, {nullptr, "MeiryoUI_24px", "MeiryoUI_36px", nullptr}},
    {Script::chinese, {nullptr, "FangSong_24px", "FangSong_36px", nullptr}},
};

constexpr const Faces& facesOf(Script script) {
    return FACES[static_cast<std::size_t>(script)];
}

// The slot for a size in pixels, of `slots` that hold something or null: FACE_SLOTS when all are
// null.
template <typename Slots>
constexpr std::size_t pickFace(const Slots& slots, int pixelSize) {
    // Sizes beyond the largest face fall to the smallest one; kept.
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

// The name of the face that FontSet::getFont gives for a size when all faces are there.
constexpr const char* faceName(Script script, int pixelSize) {
    return facesOf(script).slots[pickFace(facesOf(script).slots, pixelSize)];
}
