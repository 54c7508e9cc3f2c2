"""Tests that a new key is complete and reproducible, or not made at all, and that the mistakes which release
engineers make with its inputs are named. Half a key would install half an update in the field."""

import os
import shutil

from user import UserTest, contents, write


class Make(UserTest):
    def test_makes_all_or_nothing(self):
        before = contents(self.work)
        write(self.app / "plugins" / "a.dll")
        self.make(3, self.work / "new", says="not made")
        self.assertFalse(self.report("make", *self.inputs(self.work / "new"))["written"])
        shutil.rmtree(self.app / "plugins")
        self.assertEqual(contents(self.work), before)
        self.make(2, self.key, says="already exists")

        write(self.app / ".DS_Store")
        write(self.gui / "__MACOSX" / "._a")
        report = self.report("make", *self.inputs(self.work / "new"))
        self.assertEqual(report["leftOut"], [str(self.app / ".DS_Store"), str(self.gui / "__MACOSX")])
        self.assertEqual(report["check"]["manifest"], "matches")
        self.assertEqual(contents(self.work / "new"), contents(self.key))

    def test_gives_the_same_bytes_and_times(self):
        os.utime(self.app / "KSTRL.exe", (1400000000, 1400000000))
        os.utime(self.notes, (1900000001, 1900000001))
        # FAT32 stores even seconds only.
        for name, env, time in [("newest", {}, 1900000000), ("epoch", {"SOURCE_DATE_EPOCH": "1500000001"}, 1500000000)]:
            self.make(0, self.work / name, env=env)
            times = {int(path.stat().st_mtime) for path in (self.work / name).rglob("*")}
            self.assertEqual(times, {time})
        self.assertEqual(contents(self.work / "newest"), contents(self.work / "epoch"))
        self.make(2, self.work / "x", env={"SOURCE_DATE_EPOCH": "today"}, says="SOURCE_DATE_EPOCH")

    def test_writes_the_notes_that_the_device_reads(self):
        for number, (text, composed) in enumerate([
                (b"KSTRL Release 3.0\r\nNews\r\n", b"KSTRL Release 3.0\nNews\n"),
                (b"KSTRL Release 3.0", b"KSTRL Release 3.0\n"),
                ("\ufeffZ\u00fc\n".encode(), b"KSTRL Release 3.0\nZ\xfc\n"),
                (b"Z\xfc\n", b"KSTRL Release 3.0\nZ\xfc\n")]):
            self.notes.write_bytes(text)
            self.make(0, self.work / str(number), version="3.0")
            self.assertEqual((self.work / str(number) / "VELD" / "kstrXReleaseNotes.txt").read_bytes(), composed)

    def test_names_mistakes(self):
        for text, says in [(b"", "empty"), ("a\n\u6f22\n".encode(), "line 2, column 1"),
                           ("\U0001f4dd\n".encode(), "U+1F4DD"), (b"a\nsays \x93hello\x94\n", "line 2, column 6"),
                           (b"says \x93hello\x94\n", "Windows-1252"),
                           (b"KSTRL Release 2.0\n", "is not version 2.14.3")]:
            write(self.work / "bad.txt", text)
            self.make(2, self.work / "x", notes=self.work / "bad.txt", says=says)
        self.make(2, self.work / "x", version="3\n0", says="one line")
        self.make(2, self.work / "x", version="", says="one line")
        self.make(2, self.work / "x", gui=self.work / "nowhere", says="nowhere")
        self.make(2, self.work / "x", app=self.gui, gui=self.app, says="swapped")
        shutil.copytree(self.gui, self.work / "above" / "data")
        self.make(2, self.work / "x", gui=self.work / "above", says=f"give {self.work / 'above' / 'data'}")
        self.make(3, self.work / "x", app=self.work / "above", says="not made")

    def test_makes_images_that_are_keys(self):
        image, small = self.work / "key.img", self.work / "small.img"
        made = self.report("image", "image", "--machine", "any", self.key, image)
        self.assertEqual(made["bytes"], image.stat().st_size)
        self.expect(2, "image", "--machine", "any", self.key, image, says="exists")
        self.expect(0, "image", "--machine", "any", self.key, self.work / "again.img")
        self.assertEqual(image.read_bytes(), (self.work / "again.img").read_bytes())
        self.expect(2, "image", "--machine", "any", "--size", "1mb", self.key, small, says="at least")
        self.expect(0, "image", "--machine", "any", "--no-partition-table", self.key, small)
        for name in (image, small):
            self.expect(0, "check", "--machine", "any", name)
            self.expect(0, "diff", self.key, name)
