// The faces of the current language, from which the screens pick by size.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "render/faces.h"
#include "render/font_renderer.h"

class FontSet {
  public:
    // `context` is handed on to every face.
    explicit FontSet(void* context = nullptr) : context_(context) {}

    // Replaces the faces by those of the language (numbered as the string tables are). Needs the GL
    // context. Ends at the first face for which there is not the memory. True when the language has
    // faces and all were made; a face whose files are missing counts as made.
    bool loadFonts(int32_t languageId);

    // The face for a size in pixels, or the nearest there is; null when there is none at all. Good
    // until the next loadFonts or clear.
    FontRenderer* getFont(int pixelSize) const;

    // Deletes all faces, while the GL context is still there.
    void clear();

  private:
    void* context_;
    std::array<std::unique_ptr<FontRenderer>, FACE_SLOTS> slots_;  // from the smallest up
};
