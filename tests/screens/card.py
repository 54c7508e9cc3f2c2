"""The test card: a background on which a wrong row, scale, filter or turn is seen at once."""

import functools

import numpy

SIDE = 1024  # the background is square, one byte per pixel


@functools.lru_cache(maxsize=None)
def test_card():
    """Each quarter of the visible part has its own level, slope and fine lines; rulers run along all
    edges. No level is above 160, so that white texts stand out everywhere."""
    y, x = (numbers.astype(numpy.int16) for numbers in numpy.ogrid[0:SIDE, 0:SIDE])
    right, low = x >= 512, y >= 384
    card = 16 + 24 * right + 48 * low + 4 * (x // 128) + 2 * (y // 128)
    lines = numpy.where(low, numpy.where(right, (x + y) % 2, (x + 2 * y) % 5 == 0),
                        numpy.where(right, y % 3 == 0, x % 2)).astype(int)
    patch = ((x % 512 > 64) & (x % 512 < 448) & ~low & (y > 70) & (y < 140)) | \
            ((x % 512 > 64) & (x % 512 < 448) & (y > 420) & (y < 560) & ~right) | ((x > 900) & low)
    card += 40 * lines * patch
    for along, across in ((x, y), (y, x), (x, 767 - y), (x, 639 - y), (y, SIDE - 1 - x)):
        length = numpy.where(along % 64 == 0, 16, numpy.where(along % 8 == 0, 8, 2))
        card[(across >= 0) & (across < length)] = 160
    return card.astype(numpy.uint8)


def stretched(picture, width, height):
    """The square picture as the screen shows it: its full width, and as much of its height as the
    screen's shape leaves, with linear filtering that wraps around the edges."""
    def samples(count, extent):
        at = (numpy.arange(count) + 0.5) / count * extent - 0.5
        first = numpy.floor(at).astype(int)
        return first % SIDE, (first + 1) % SIDE, (at - first).astype(numpy.float32)
    left, right, part = samples(width, SIDE)
    rows = picture[:, left] * (1 - part) + picture[:, right] * part
    top, bottom, part = samples(height, SIDE * height / width)
    levels = rows[top] * (1 - part[:, None]) + rows[bottom] * part[:, None]
    return numpy.rint(levels).astype(numpy.uint8)
