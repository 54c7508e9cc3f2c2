"""The ".fnt" file of a face: the published BMFont binary format, version 3.

Behind the header each block begins with its type in one byte and the length of its content in four. Numbers are
stored low byte first. render/font_layout.h is the device's side of it.
"""

import json
import struct
from dataclasses import dataclass

from sources import Failure

HEADER = b"BMF\3"
INFO, COMMON, PAGES, CHARS, KERNING = range(1, 6)
COMMON_FORMAT = struct.Struct("<5H5x")  # line height, base, width and height of a page, pages; no channels
CHAR_FORMAT = struct.Struct("<I4H3h2B")
CHAR_FIELDS = ("id", "x", "y", "width", "height", "xoffset", "yoffset", "xadvance", "page", "chnl")
KERNING_FORMAT = struct.Struct("<2Ih")  # the codes of the two characters, and pixels


@dataclass
class Font:
    line_height: int
    base: int
    side: int  # of the square pages
    pages: list  # their names, all of one length
    chars: list  # the values of CHAR_FIELDS of each glyph
    kerning: list  # the values of KERNING_FORMAT of each pair


def encode(font, name, em):
    """Returns the bytes of the file. The device ignores the font's name and its em. It reads five blocks, so the
    kerning block is written even when it is empty."""
    blocks = {
        # The size is that of the em, so it is negative. Smooth and Unicode, not stretched, no supersampling, no
        # padding, one pixel between the glyphs, no outline.
        INFO: struct.pack("<h2BH8B", -em, 0xC0, 0, 100, 1, 0, 0, 0, 0, 1, 1, 0) + name + b"\0",
        COMMON: COMMON_FORMAT.pack(font.line_height, font.base, font.side, font.side, len(font.pages)),
        PAGES: b"".join(page.encode() + b"\0" for page in font.pages),
        CHARS: b"".join(CHAR_FORMAT.pack(*values) for values in sorted(font.chars)),
        KERNING: b"".join(KERNING_FORMAT.pack(*values) for values in sorted(font.kerning)),
    }
    return HEADER + b"".join(struct.pack("<BI", kind, len(block)) + block for kind, block in blocks.items())


def decode(content, path):
    """Returns the font in the bytes of a file."""
    try:
        if not content.startswith(HEADER):
            raise ValueError
        blocks, start = {}, len(HEADER)
        while start < len(content):
            kind, length = struct.unpack_from("<BI", content, start)
            blocks[kind] = content[start + 5:start + 5 + length]
            start += 5 + length
        line_height, base, side, _, _ = COMMON_FORMAT.unpack(blocks[COMMON])
        return Font(line_height, base, side, blocks[PAGES].decode(errors="replace").split("\0")[:-1],
                    list(CHAR_FORMAT.iter_unpack(blocks[CHARS])), list(KERNING_FORMAT.iter_unpack(blocks[KERNING])))
    except (KeyError, ValueError, struct.error) as error:
        raise Failure(f"{path}: is not a .fnt file, or is damaged") from error


def as_json(font):
    """Returns the font as JSON, with one glyph or kerning pair per line, in ascending order."""
    def text(names, values):
        return json.dumps(dict(zip(names, values)), separators=(",", ":"), ensure_ascii=False)

    head = text(("lineHeight", "base", "scaleW", "pages"), (font.line_height, font.base, font.side, font.pages))
    chars = ",".join("\n" + text(CHAR_FIELDS, values) for values in sorted(font.chars))
    kerning = ",".join("\n" + text(("first", "second", "amount"), values) for values in sorted(font.kerning))
    return f'{head[:-1]},\n"chars":[{chars}],\n"kernings":[{kerning}]}}'
