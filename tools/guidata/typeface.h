// One face of a TrueType or OpenType font at one size, rendered glyph by glyph.
#pragma once

#include <cstdint>
#include <memory>
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
    // Opens face `index` of the font file at `path` with an em of `emSize` pixels. Throws
    // std::runtime_error, naming the file, on failure.
    Typeface(const std::string& path, int index, double emSize);

    Typeface(const Typeface&) = delete;
    Typeface& operator=(const Typeface&) = delete;
    ~Typeface();

    // The family name stored in the font file.
    std::string familyName() const;

    bool hasGlyph(char16_t character) const;

    // Returns by how many whole pixels of the screen the glyph's ink extends to the left of the
    // pen; 0 when it does not.
    int leftOverhang(char16_t character);

    // Renders the glyph into a cell whose left edge is `inset` screen pixels to the left of the
    // pen. A glyph that the device draws narrower is rendered wider to compensate. Throws
    // std::runtime_error on failure.
    GlyphImage render(char16_t character, int inset);

    // Returns the font's kerning of a pair in pixels; 0 when the font has no kerning table.
    double kerning(char16_t first, char16_t second) const;

  private:
    struct Library;
    bool load(char16_t character, int inset);

    std::unique_ptr<Library> library_;
};
