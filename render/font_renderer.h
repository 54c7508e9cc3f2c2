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
    // Loads the face, such as "SegoeUI_13px", from the "fonts/" folder of the GUI data; needs the
    // GL context. A face whose files are missing or damaged has fewer glyphs, or none, and draws
    // those it has. One that asks for too much loads no pages and is to be let go at once; what the
    // tables throw when the memory ends comes through. `context` is kept for its owner and never
    // looked at.
    FontRenderer(const std::string& faceName, void* context);

    // Whether the face asks for too much.
    bool isTooLarge() const { return asksForTooMuch(font_); }

    // Deletes the textures of the pages; the program stays in the program cache.
    ~FontRenderer() override;

    // Draws one line up to its first NUL: (x, y) is the pen's start and the top of the line, in
    // units of `projection`, in which y must grow downwards; colours are 0 to 1. Both matrices have
    // 16 floats in column order; a null `modelview` stands for the identity. The caller enables
    // blending. Leaves the program bound. Characters without a glyph take no room and are logged
    // once; line breaks are passed over. Allocates nothing.
    void drawText(WideText text, int x, int y, float red, float green, float blue,
                  const float* projection, bool useKerning, const float* modelview) const;

    // The same for narrow text, widened byte by byte.
    void drawText(const std::string& text, int x, int y, float red, float green, float blue,
                  const float* projection, bool useKerning, const float* modelview) const;

    // The sum of the advances in pixels, without kerning; more than drawText takes for the
    // characters that it narrows. It stays so: texts are placed by this width.
    uint32_t textWidth(WideText text) const;
    uint32_t textWidth(const std::string& text) const;

    // Null when the face has no glyph for the character.
    const Glyph* findGlyph(uint16_t code) const { return ::findGlyph(font_, code); }

    // The amount in pixels by which `second` is moved behind `first`, if that pair is kerned.
    std::optional<int16_t> findKerning(uint32_t first, uint32_t second) const {
        return ::findKerning(font_, first, second);
    }
    void setKerning(uint32_t first, uint32_t second, int16_t amount);

    uint32_t lineHeight() const { return font_.lineHeight; }
    uint32_t base() const { return font_.base; }
    void* context() const { return context_; }

  private:
    explicit FontRenderer(void* context) : context_(context) {}
    void loadPages(const std::string& folder);
    void drawGlyph(const PlacedGlyph& placed, int y) const;

    FontData font_;
    std::vector<GLuint> pageTextures_;  // one per page name; 0 where the page failed to load
    void* context_;
    GLuint program_ = 0;
    GLint positionLocation_ = -1;
    GLint texCoordLocation_ = -1;
    GLint samplerLocation_ = 0;
    GLint colorLocation_ = 0;
};
