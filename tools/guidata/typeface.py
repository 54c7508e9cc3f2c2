"""One face of a TrueType or OpenType font at one size, rendered glyph by glyph with FreeType.

FreeType counts positions in 64ths of a pixel, and unrounded advances in 65536ths.
"""

import math
from dataclasses import dataclass

import freetype

from sources import Failure, character_name

# The device draws katakana and the unified ideographs two thirds as wide as their glyphs, so that they fit the
# space designed for Latin text. They are rendered wider to compensate.
NARROWED = [(0x30A0, 0x30FF), (0x4E00, 0x9FFF)]
WIDENING = 1.5


def rounded(value):
    """Rounds to the nearest whole number, and halves away from zero."""
    return int(math.copysign(math.floor(abs(value) + 0.5), value))


def widening_of(character):
    return WIDENING if any(first <= ord(character) <= last for first, last in NARROWED) else 1


@dataclass
class Glyph:
    """A rendered character. The device ignores horizontal offsets, so the space before the ink is part of the
    cell. The lengths are in pixels."""
    advance: int
    width: int = 0  # from the cell's left edge to the last column with ink
    height: int = 0  # rows with ink
    top: int = 0  # rows from the baseline up to the cell's top
    rows: tuple = ()  # the coverage in each row from the top, a byte for each pixel


class Typeface:
    def __init__(self, path, index, em):
        try:
            self.face = freetype.Face(path, index)
        except freetype.FT_Exception as error:
            raise Failure(f"{path}: is not a font file, or has no face {index}") from error
        if not self.face.is_scalable:
            raise Failure(f"{path}: cannot be scaled to {em} pixels")
        self.face.set_char_size(0, rounded(em * 64), 72, 72)

    def has(self, character):
        return self.face.get_char_index(character) != 0

    def load(self, character, inset):
        """Loads a glyph, widened if necessary, and moved to the right by `inset` pixels of the screen."""
        widening = widening_of(character)
        self.face.set_transform(freetype.Matrix(int(widening * 0x10000), 0, 0, 0x10000),
                                freetype.Vector(rounded(inset * widening * 64), 0))
        # Light hinting aligns horizontal strokes with pixel rows and does not change widths.
        self.face.load_char(character, freetype.FT_LOAD_NO_BITMAP | freetype.FT_LOAD_TARGET_LIGHT)
        return self.face.glyph

    def left_overhang(self, character):
        """Returns by how many pixels of the screen the ink extends to the left of the pen."""
        left = self.load(character, 0).outline.get_cbox().xMin
        return max(0, math.ceil(-left / 64 / widening_of(character)))

    def render(self, character, inset):
        """Renders a glyph into a cell whose left edge is `inset` screen pixels to the left of the pen."""
        try:
            slot = self.load(character, inset)
            slot.render(freetype.FT_RENDER_MODE_NORMAL)
        except freetype.FT_Exception as error:
            raise Failure(f"{character_name(character)} cannot be rendered: {error}") from error
        # The advance of a widened glyph is a multiple of three, so that two thirds of it are whole pixels and the
        # following glyphs stay sharp.
        widening = widening_of(character)
        step = 1 if widening == 1 else 3
        advance = rounded(slot.linearHoriAdvance / 65536 * widening / step) * step
        bitmap, left = slot.bitmap, slot.bitmap_left
        if not bitmap.width or not bitmap.rows:
            return Glyph(advance)
        pixels = bytes(bitmap.buffer)
        rows = tuple(bytes(left) + pixels[start:start + bitmap.width]
                     for start in range(0, len(pixels), bitmap.pitch))
        return Glyph(advance, left + bitmap.width, bitmap.rows, slot.bitmap_top, rows)

    def kerning(self, characters):
        """Returns the pairs that the font's kerning table moves, and by how many pixels: half of what it says. The
        device moves the second glyph of a pair but not the pen, so kerning narrows the gap before that glyph and
        widens the gap after it by the same amount. The half balances the two."""
        pairs = {}
        for first in characters if self.face.has_kerning else ():
            for second in characters:
                amount = rounded(self.face.get_kerning(first, second, freetype.FT_KERNING_UNFITTED).x / 64 / 2)
                if amount:
                    pairs[first, second] = amount
        return pairs
