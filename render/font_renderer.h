// Draws lines of text with one face of a bitmap font.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/gles.h"
#include "render/font_file.h"
#include "render/renderer.h"
#include "render/text_layout.h"

class FontRenderer : public Renderer {
  public:
    // Loads the face, such as "SegoeUI_13px", from the "fonts/" folder of the GUI data. Needs the
    // GL context. When files are missing or damaged, the face has fewer glyphs or none. When
    // isTooLarge() holds afterwards, no pages have been loaded; destroy the object. Throws when
    // memory runs out. `context` is stored for the owner and never used.
    FontRenderer(const std::string& faceName, void* context);

    // Whether the face exceeds its memory limit.
    bool isTooLarge() const { return needsTooMuchMemory(font_); }

    // Deletes the textures of the pages. The GL program stays in the program cache.
    ~FontRenderer() override;

    // Draws one line up to its first NUL. (x, y) is the start of the pen and the top of the line,
    // in units of `projection`, whose y must grow downwards. Colours are 0 to 1. Both matrices are
    // 16 floats in column order; a null `modelview` means the identity. The caller enables
    // blending. Leaves the program bound. A character without a glyph takes no space and is logged
    // once; line breaks are skipped. Allocates nothing.
    void drawText(WideText text, int x, int y, float red, float green, float blue,
                  const float* projection, bool useKerning, const float* modelview) const;

    // Draws narrow text, widened byte by byte.
    void drawText(const std::string& text, int x, int y, float red, float green, float blue,
                  const float* projection, bool useKerning, const float* modelview) const;

    // Returns the sum of the advances in pixels, without kerning and without the narrowing that
    // drawText applies: the result is larger than the drawn width of narrowed characters. Kept.
    uint32_t textWidth(WideText text) const;
    uint32_t textWidth(const std::string& text) const;

    // Returns null when the face has no glyph for the character.
    const Glyph* findGlyph(uint16_t code) const { return ::findGlyph(font_, code); }

    // Returns the kerning of `second` after `first` in pixels, or nothing for a pair without
    // kerning.
    std::optional<int16_t> findKerning(uint32_t first, uint32_t second) const {
        return ::findKerning(font_, first, second);
    }

    // Sets the kerning of `second` after `first`, in pixels.
    void setKerning(uint32_t first, uint32_t second, int16_t amount);

    uint32_t lineHeight() const { return font_.lineHeight; }
    uint32_t base() const { return font_.base; }
    void* context() const { return context_; }

  private:
    explicit FontRenderer(void* context) : context_(context) {}
    void loadPages(const std::string& folder);
    void drawGlyph(const PlacedGlyph& placed, int y) const;

    FontData font_;
    std::vector<GLuint> pageTextures_;  // one per page name; 0 when loading failed
    void* context_;
    GLuint program_ = 0;
    GLint positionLocation_ = -1;
    GLint texCoordLocation_ = -1;
    GLint samplerLocation_ = 0;
    GLint colorLocation_ = 0;
};
