// The faces of the current language, selected by size.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "render/faces.h"
#include "render/font_renderer.h"

class FontSet {
  public:
    // `context` is passed to every face.
    explicit FontSet(void* context = nullptr) : context_(context) {}

    // Replaces the faces with those of the language (a number of LANGUAGES). Needs the GL context.
    // Returns true when the language exists and all its faces were created; a face whose files are
    // missing counts as created. Stops at the first face that cannot be created.
    bool loadFonts(int32_t languageId);

    // Returns the face for a size in pixels, or the nearest one; null when no face is loaded. Valid
    // until the next call of loadFonts or clear.
    FontRenderer* getFont(int pixelSize) const;

    // Deletes all faces. Call it while the GL context exists.
    void clear();

  private:
    void* context_;
    std::array<std::unique_ptr<FontRenderer>, FACE_SLOTS> slots_;  // smallest face first
};
