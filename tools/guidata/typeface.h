// One face of a TrueType or OpenType file at one size, rendered glyph by glyph.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct GlyphImage {
    int width = 0;                  // pixels, from the cell's left edge to the last column with ink
    int height = 0;                 // rows with ink
    int top = 0;                    // rows from the baseline up to the cell's top
    int advance = 0;                // pixels
    std::vector<uint8_t> coverage;  // width x height, top row first
};

class Typeface {
  public:
    // Opens face `index` of the font file at `path` with an em of `emSize` pixels. Returns null,
    // with `error` naming the file, when that fails.
    static std::unique_ptr<Typeface> open(const std::string& path, int index, double emSize,
                                          std::string& error);

    Typeface(const Typeface&) = delete;
    Typeface& operator=(const Typeface&) = delete;
    ~Typeface();

    // The family's name, as the font file gives it.
    std::string familyName() const;

    bool hasGlyph(char16_t character) const;

    // How many whole pixels the glyph's ink reaches to the left of the pen as it is seen on the
    // screen; 0 when it does not.
    int leftOverhang(char16_t character);

    // The glyph in a cell whose left edge lies `inset` pixels left of the pen on the screen.
    // A glyph that the device narrows is made wider by as much. Nothing when rendering fails.
    std::optional<GlyphImage> render(char16_t character, int inset);

    // The font's kerning of a pair, in pixels; 0 for a font without a kerning table.
    double kerning(char16_t first, char16_t second) const;

  private:
    struct Library;
    explicit Typeface(std::unique_ptr<Library> library);
    bool load(char16_t character, int inset);

    std::unique_ptr<Library> library_;
};
