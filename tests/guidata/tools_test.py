#!/usr/bin/python3 -B
"""Tests that a faulty source stops the build before it shows as a wrong or missing text, that the tools agree with
the device about its limits, and that the texts of every language fit the screen.
Usage: tools_test.py BUILD-FOLDER LATIN-FONT JAPANESE-FONT"""

import io
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from PIL import Image

ROOT = pathlib.Path(__file__).parents[2]
TOOLS = ROOT / "tools/guidata"
build, latin, japanese = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
sys.path.insert(0, str(TOOLS))


def constants(header, pattern):
    """Returns the numbers that a pattern finds in a header of the device."""
    return [int(found, 0) for found in re.findall(pattern, (ROOT / header).read_text())]


class ToolsTest(unittest.TestCase):
    maxDiff = None  # names all texts that do not fit

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def write(self, name, content):
        (self.folder / name).write_bytes(content.encode() if isinstance(content, str) else content)

    def run_tool(self, *command, code=0):
        """Runs a tool in the test's folder. Returns what it printed."""
        done = subprocess.run([TOOLS / command[0], *command[1:]], cwd=self.folder, capture_output=True, text=True)
        self.assertEqual(done.returncode, code, done.stdout + done.stderr)
        return done.stdout + done.stderr

    def bake(self, font, *options, code=0):
        return self.run_tool("fontbake", "--em", "20", "--line-height", "30", "--base", "22", "--name", "x", "--font", font,
                             *options, code=code)

    def test_texts_that_the_device_would_misread(self):
        sound = "STR_A\tone\nSTR_B\ttwo\n"
        self.write("en.txt", sound)
        for what, source, errors in [
            ("a sound source", sound, ""),
            ("line ends of Windows, comments, no last line end", "# c\r\n\r\nSTR_A one\r\nSTR_B two", ""),
            ("a missing key", "STR_B two\n", "xx.txt: STR_A is missing\n"),
            ("a key that occurs twice", sound + "\nSTR_A again\n",
             "xx.txt:4: STR_A is already defined in line 1\n"),
            ("a key in two words", "STR_A one\nSTR B two\n",
             "xx.txt:2: STR is not a key of the screen\nxx.txt: STR_B is missing\n"),
            ("a comment after a blank", sound + " # c\n", "xx.txt:3: there is a blank before the key\n"),
            ("a key without a text", "STR_A one\nSTR_B \t\n", "xx.txt:2: STR_B has no text\nxx.txt: STR_B is missing\n"),
            ("an ideographic space after the key", "STR_A one\nSTR_B\u3000two\n",
             "xx.txt:2: a key may contain only capitals, digits and underscores\nxx.txt: STR_B is missing\n"),
            ("not UTF-8", "STR_A one\nSTR_B \U0001F600".encode() + b"\xE9\n", "xx.txt:2: the line is not UTF-8 text\n"),
            ("a carriage return inside", "STR_A o\rne\n", "xx.txt:1: the line contains a control character\n"),
            ("the longest line", "STR_B b\nSTR_A \U0001F600" + "x" * 501 + "\n", ""),
            ("too long a line", "STR_B b\nSTR_A \U0001F600" + "x" * 502 + "\n",
             "xx.txt:2: the line has 512 characters with its line end; the device reads only 511\n"
             "xx.txt: STR_A is missing\n"),
        ]:
            with self.subTest(what):
                self.write("xx.txt", source)
                (self.folder / "table").unlink(missing_ok=True)
                said = self.run_tool("stringtable", "xx.txt", "--keys-of", "en.txt", "--output", "table",
                                     code=2 if errors else 0)
                self.assertEqual(said.removeprefix("stringtable: ").removeprefix("xx.txt cannot be used:\n"), errors)
                self.assertEqual((self.folder / "table").exists(), not errors)

    def test_string_table(self):
        self.write("xx.txt", "# c\nSTR_A   one  \nSTR_B\ttw\u00f6\n")
        self.run_tool("stringtable", "xx.txt", "--output", "t")
        self.assertEqual((self.folder / "t").read_bytes().decode("utf-16-le"),
                         "\ufeff# Texts of the updater's screen\r\nSTR_A\tone  \r\nSTR_B\ttw\u00f6\r\n")
        self.assertEqual(self.run_tool("stringtable", "absent.txt", "--output", "u", code=2),
                         "stringtable: absent.txt: cannot be read: No such file or directory\n")
        self.assertEqual(self.run_tool("stringtable", "xx.txt", "--output", "absent/u", code=2),
                         "stringtable: absent/u: cannot be written: No such file or directory\n")

    def test_additional_kerning(self):
        # '#' may be the second character of a pair but not the first.
        self.write("k.txt", "# c\nAV -60\n1% 25\n\u00c9: 0\nV# 75\n")
        self.assertEqual(self.bake(latin, "--kerning", "k.txt"), "")
        self.assertEqual((self.folder / "x.kern").read_bytes().decode("utf-16-le").split("\r\n")[1:],
                         ["1% 1", "AV -1", "V# 2", "\u00c9: 0", ""])
        for line in ["AV", "AV x", "AV -", "AV 5 ", "AV 1001", "AV 5\u00c9", "AV +5"]:
            with self.subTest(line):
                self.write("k.txt", f"AV 1\n{line}")
                self.assertIn("fontbake: k.txt:2: ", self.bake(latin, "--kerning", "k.txt", code=2))

    def test_characters_of_a_face(self):
        self.write("a.txt", "# \u66f4\nSTR_A\t\u65b0\u3092\n")
        self.assertEqual(self.bake(japanese, "--texts", "a.txt"), "")
        font = json.loads(self.run_tool("fontbake", "--dump", "x.fnt"))
        # A character of a text, one of Latin-1, one in a comment only, and the tab after a key.
        found = {glyph["id"] for glyph in font["chars"]} & {0x65b0, 0xff, 0x66f4, 9}
        self.assertEqual(found, {0x65b0, 0xff})
        self.assertIn("no glyph for U+65B0", self.bake(latin, "--texts", "a.txt"))
        self.assertEqual(self.bake(japanese, "--max-page", "32", "--em", "40", "--line-height", "60", "--base", "50",
                                   code=2), "fontbake: x: the glyphs do not fit on pages of 32 pixels\n")
        self.assertIn("U+0024 extends from row -1 to row 17", self.bake(latin, "--base", "15", code=2))
        self.bake(latin, "--max-page", "128")
        pages = json.loads(self.run_tool("fontbake", "--dump", "x.fnt"))["pages"]
        self.assertGreater(len(pages), 1)
        self.assertEqual({(self.folder / page).stat().st_size for page in pages}, {128 * 128})

    def test_picture(self):
        square = Image.new("LA", (2, 2))
        square.putdata([(255, 255), (255, 0), (51, 255), (0, 255)])
        for picture in (square, square.convert("RGBA")):
            picture.save(self.folder / "p.png")
            self.run_tool("rawimage", "p.png", "--output", "p.raw", "--side", "3")
            self.assertEqual((self.folder / "p.raw").read_bytes(), bytes([255, 0, 0, 51, 0, 0, 0, 0, 0]))
        Image.frombytes("I;16", (1, 1), b"\x33\x33").save(self.folder / "p.png")
        self.run_tool("rawimage", "p.png", "--output", "p.raw", "--side", "1")
        self.assertEqual((self.folder / "p.raw").read_bytes(), b"\x33")
        whole = io.BytesIO()
        Image.effect_noise((50, 50), 99).save(whole, "PNG")
        for content, side, says in [(b"GIF89a", "50", "p.png: cannot be read as a PNG file: "),
                                    (whole.getvalue()[:600], "50", "p.png: cannot be read as a PNG file: "),
                                    (whole.getvalue(), "49", "has 50 x 50 pixels; the square has only 49 x 49")]:
            self.write("p.png", content)
            self.assertIn(says, self.run_tool("rawimage", "p.png", "--output", "q.raw", "--side", side, code=2))
        self.assertFalse((self.folder / "q.raw").exists())

    def test_limits_of_the_device(self):
        """The tools are installed without the device's headers, so they repeat these numbers."""
        import typeface
        ranges = [number for pair in typeface.NARROWED for number in pair]
        self.assertEqual(constants("render/narrowing.h", "code [<>]= (0x[0-9A-F]+)"), ranges)
        stringtable = (TOOLS / "stringtable").read_text()
        self.assertEqual(constants("support/utf16_reader.h", "MAX_LINE = ([0-9]+)"),
                         [int(re.search("MAX_LINE = ([0-9]+)", stringtable)[1])])
        side, = constants("ui/screen_layout.h", "BACKGROUND_SIDE = ([0-9]+)")
        self.assertEqual((build / "guidata/KSTRL-menubg4.raw").stat().st_size, side * side)

    def test_generated_data_fit_the_screen(self):
        app = self.folder / "app"
        app.mkdir()
        shutil.copy(build / "kstrl-standin", app / "KSTRL.exe")
        self.write("notes.txt", "News\n")
        made = subprocess.run([build / "updatekey", "make", "--machine", "any", "--app", app, "--gui", build / "guidata",
                               "--notes", "notes.txt", "--version", "1.0", "--json", "key"], cwd=self.folder,
                              capture_output=True, text=True)
        self.assertEqual(json.loads(made.stdout)["check"]["findings"], [])


unittest.main(argv=sys.argv[:1], verbosity=1)
