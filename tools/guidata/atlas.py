"""Packs glyphs into square pages.

Each glyph is surrounded by one blank pixel, because the device's linear filtering reads half a pixel beyond its
edges.
"""

GAP = 1
SMALLEST_SIDE = 32


def fill(glyphs, side):
    """Fills pages row by row, the highest glyphs first, so that the rows waste little space. Returns the page, x
    and y of each glyph. A glyph without ink is placed at the origin of the first page."""
    places = [(0, 0, 0)] * len(glyphs)
    page, x, y, row_height = 0, GAP, GAP, 0
    for index in sorted(range(len(glyphs)), key=lambda index: -glyphs[index].height):
        width, height = glyphs[index].width, glyphs[index].height
        if height == 0:
            continue
        if x + width + GAP > side:
            x, y, row_height = GAP, y + row_height + GAP, 0
        if y + height + GAP > side:
            page, x, y, row_height = page + 1, GAP, GAP, 0
        places[index] = (page, x, y)
        row_height = max(row_height, height)
        x += width + GAP
    return places


def pack(glyphs, max_side):
    """Packs the glyphs into the smallest page that holds them all, or into several pages of `max_side`, a power of
    two, when one is not enough. Returns the side of the pages, which is larger than `max_side` when a glyph needs
    it, and the page, x and y of each glyph."""
    needed = max((max(glyph.width, glyph.height) + 2 * GAP for glyph in glyphs), default=0)
    side = SMALLEST_SIDE
    while side < needed:
        side *= 2
    while True:
        places = fill(glyphs, side)
        if side >= max_side or all(page == 0 for page, _, _ in places):
            return side, places
        side *= 2


def draw(glyphs, side, places):
    """Returns the bytes of each page, one byte of coverage per pixel, top row first."""
    pages = [bytearray(side * side) for _ in range(max((page for page, _, _ in places), default=0) + 1)]
    for glyph, (page, x, y) in zip(glyphs, places):
        for offset, row in enumerate(glyph.rows):
            start = (y + offset) * side + x
            pages[page][start:start + glyph.width] = row
    return pages
