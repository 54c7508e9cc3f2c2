#include "tools/guidata/typeface.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "render/narrowing.h"
#include "tools/guidata/text_encoding.h"

namespace {

constexpr double WIDENING = 1.5;
constexpr int WIDE_ADVANCE_STEP = 3;
constexpr double UNITS_PER_PIXEL = 64.0;            // of FreeType's positions
constexpr double UNITS_PER_LINEAR_PIXEL = 65536.0;  // of FreeType's unrounded advances

double widening(char16_t character) {
    return isNarrowed(character) ? WIDENING : 1.0;
}

// The advance of a widened glyph is a multiple of three, so that two thirds of it are whole pixels
// and the following glyphs stay sharp.
int roundedAdvance(double pixels, bool wide) {
    const int step = wide ? WIDE_ADVANCE_STEP : 1;
    return static_cast<int>(std::lround(pixels / step)) * step;
}

}  // namespace

struct Typeface::Library {
    Library() = default;
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() {
        FT_Done_Face(face);
        FT_Done_FreeType(library);
    }

    FT_Library library = nullptr;
    FT_Face face = nullptr;
};

Typeface::Typeface(const std::string& path, int index, double emSize)
    : library_(std::make_unique<Library>()) {
    if (FT_Init_FreeType(&library_->library) != 0)
        throw std::runtime_error("FreeType cannot be started");
    if (FT_New_Face(library_->library, path.c_str(), index, &library_->face) != 0)
        throw std::runtime_error(path + ": is not a font file, or has no face " +
                                 std::to_string(index));
    const auto size = static_cast<FT_F26Dot6>(std::lround(emSize * UNITS_PER_PIXEL));
    if (!FT_IS_SCALABLE(library_->face) || FT_Set_Char_Size(library_->face, 0, size, 72, 72) != 0)
        throw std::runtime_error(path + ": cannot be scaled to " + std::to_string(emSize) +
                                 " pixels");
}

Typeface::~Typeface() = default;

std::string Typeface::familyName() const {
    const char* const name = library_->face->family_name;
    return name != nullptr ? name : "";
}

bool Typeface::hasGlyph(char16_t character) const {
    return FT_Get_Char_Index(library_->face, character) != 0;
}

bool Typeface::load(char16_t character, int inset) {
    FT_Matrix matrix{static_cast<FT_Fixed>(widening(character) * 0x10000), 0, 0, 0x10000};
    FT_Vector shift{static_cast<FT_Pos>(std::lround(inset * widening(character) * UNITS_PER_PIXEL)),
                    0};
    FT_Set_Transform(library_->face, &matrix, &shift);
    // Light hinting aligns horizontal strokes with pixel rows and does not change widths.
    return FT_Load_Char(library_->face, character, FT_LOAD_NO_BITMAP | FT_LOAD_TARGET_LIGHT) == 0;
}

int Typeface::leftOverhang(char16_t character) {
    if (!load(character, 0))
        return 0;
    FT_BBox box{};
    FT_Outline_Get_CBox(&library_->face->glyph->outline, &box);
    const double overhang = -static_cast<double>(box.xMin) / UNITS_PER_PIXEL / widening(character);
    return std::max(0, static_cast<int>(std::ceil(overhang)));
}

GlyphImage Typeface::render(char16_t character, int inset) {
    const bool loaded = load(character, inset);
    const FT_GlyphSlot slot = library_->face->glyph;
    if (!loaded || FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0 || slot->bitmap_left < 0)
        throw std::runtime_error(familyName() + ": " + characterName(character) +
                                 " cannot be rendered");

    GlyphImage image;
    const double advance = static_cast<double>(slot->linearHoriAdvance) / UNITS_PER_LINEAR_PIXEL;
    image.advance = roundedAdvance(advance * widening(character), isNarrowed(character));
    const FT_Bitmap& bitmap = slot->bitmap;
    if (bitmap.width == 0 || bitmap.rows == 0)
        return image;

    // The device ignores horizontal offsets, so the space before the ink is part of the cell.
    const auto left = static_cast<std::size_t>(slot->bitmap_left);
    const std::size_t width = left + bitmap.width;
    image.width = static_cast<int>(width);
    image.height = static_cast<int>(bitmap.rows);
    image.top = slot->bitmap_top;
    image.coverage.resize(width * bitmap.rows);
    for (std::size_t row = 0; row < bitmap.rows; ++row) {
        const uint8_t* const from = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
        std::copy_n(from, bitmap.width, image.coverage.data() + row * width + left);
    }
    return image;
}

double Typeface::kerning(char16_t first, char16_t second) const {
    const FT_Face face = library_->face;
    FT_Vector amount{};
    if (!FT_HAS_KERNING(face) ||
        FT_Get_Kerning(face, FT_Get_Char_Index(face, first), FT_Get_Char_Index(face, second),
                       FT_KERNING_UNFITTED, &amount) != 0)
        return 0;
    return static_cast<double>(amount.x) / UNITS_PER_PIXEL;
}
