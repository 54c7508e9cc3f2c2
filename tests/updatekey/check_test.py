"""Tests that the mistakes which release engineers make on the command line, and the wrong folders and images
that they give for a key, are named, and that scripts can rely on the exit codes and the JSON."""

import os
import pathlib
import shutil
import subprocess

from user import UserTest, write


class Check(UserTest):
    def test_names_wrong_usage(self):
        for arguments, says in [([], "no command was given"), (["check"], "KEY"),
                                (["bogus"], "bogus is not a command"),
                                (["check", "--lang", "en", self.key], "--lang is not an option"),
                                (["check", "--languages", "en,xx", self.key], "xx"),
                                (["check", "--accept", "notes-utf9", self.key], "notes-utf9"),
                                (["check", "--flash-size=-1", self.key], "is not a size"),
                                (["check", "/nowhere/at/all"], "does not exist"),
                                (["check", self.app / "KSTRL.exe"], "is it a disk image?"),
                                (["diff", self.key, self.app], "neither a key nor a device")]:
            self.expect(2, *arguments, says=says)
            self.report("failure", *arguments)
        self.expect(0, "--help", says="diagnose")
        self.expect(0, "--version", says="updatekey ")

    def test_finds_what_is_wrong_with_a_folder(self):
        check = ["check", "--machine", "any"]
        self.assertEqual(self.report("check", *check, self.key)["findings"], [])
        self.expect(1, "check", self.key, says="[application-damaged]")
        self.expect(1, *check, self.key / "VELD", says="give its parent folder")
        self.expect(1, *check, self.work, says="there is one at key/VELD: move it")
        (self.key / "MANIFEST.sha256").unlink()
        self.expect(0, *check, self.key, says="no manifest, so its bytes were not compared")
        (self.key / "VELD").rename(self.key / "VELD.unfinished")
        self.expect(1, *check, self.key, says="writing this stick was interrupted")
        (self.key / "VELD.unfinished").rename(self.key / "VELD")
        # What cannot be read must not pass for missing.
        (self.key / "VELD" / "KSTRL").chmod(0)
        self.expect(2, *check, self.key, says="cannot be read", as_user=True)
        (self.key / "VELD" / "KSTRL").chmod(0o755)
        # Names that are not UTF-8, and control characters, do no harm.
        write(pathlib.Path(os.fsdecode(bytes(self.key) + b"/VELD/KSTRL/plugins/\xff\x1b[31m")))
        self.expect(1, *check, self.key, says="\\xff\\x1b[31m")
        self.assertEqual(len(self.report("check", *check, self.key)["notCopied"]), 1)

    def test_compares_the_space_and_the_languages_with_the_key(self):
        check = ["check", "--machine", "any", self.key]
        needed = self.report("check", *check)["flashNeeded"]
        for size, found in [(needed, ""), (needed - 1, "flash-tight"), (needed // 3 - 1, "flash-too-small"),
                            ("1kb", "flash-too-small")]:
            self.assertEqual(self.codes("check", *check, "--flash-size", str(size)), found)
        self.expect(0, *check, "--flash-size", "1kb", "--accept", "flash-too-small")
        for name in ("MANIFEST.sha256", "VELD/ORBUI/data/fonts/MeiryoUI_36px.fnt",
                     "VELD/ORBUI/data/lang/StringTable_jp.txt"):
            (self.key / name).unlink()
        self.assertEqual(self.codes("check", *check), "font-missing table-missing")
        self.assertEqual(self.codes("check", *check, "--languages", "0,fr"), "")

    def test_names_what_is_wrong_with_an_image(self):
        blank, file_system, two = (self.work / name for name in ("blank", "file-system", "two"))
        subprocess.run(["/sbin/mkfs.vfat", "-C", blank, "2048"], check=True, capture_output=True)
        self.expect(2, "check", blank, says="is an image of an empty stick")
        write(blank, bytes(1 << 20))
        self.expect(2, "check", blank, says="has no FAT file system; is it a disk image?")
        self.expect(0, "image", "--machine", "any", "--no-partition-table", self.key, file_system)
        content = file_system.read_bytes()
        write(two, bytes(2 << 20) + content)
        partitions = "label: dos\nstart=2048, size=2048, type=c\nstart=4096, type=c\n"
        subprocess.run(["/sbin/sfdisk", "--quiet", two], input=partitions.encode(), check=True, capture_output=True)
        self.expect(2, "check", two, says="has its key in partition 2; put it into the first one")

    def test_tells_what_an_update_changes(self):
        other, image = self.work / "other", self.work / "key.img"
        write(self.app / "new.dat", b"new")
        self.make(0, other, version="2.13")
        self.expect(1, "diff", other, self.key, says="[version-older]")
        changes = self.report("diff", "diff", other, self.key)["changes"]
        self.assertEqual([(change["path"], change["change"]) for change in changes], [("KSTRL/new.dat", "new")])
        self.expect(0, "image", "--machine", "any", self.key, image)
        self.expect(0, "diff", self.key, image)
        self.expect(1, "diff", self.key / "VELD", self.key, says="0 files differ, ")
        info = self.report("info", "info", image)
        self.assertEqual((info["application"]["files"], info["manifest"]), (1, "matches"))
        self.assertTrue(all(len(entry["sha256"]) == 64 for entry in info["tree"] if entry["kind"] == "file"))

    def test_rehearses_on_a_device_with_the_same_version(self):
        device, disk = self.work / "device", self.work / "flash disk"
        shutil.copytree(self.key / "VELD", disk / "VELD")
        device.mkdir()
        (device / "FlashDisk").symlink_to(disk)
        write(disk / "VELD" / "KSTRL" / "version.txt", b"2.14.3\n")
        rehearsal = ["rehearse", "--machine", "any", "--hidden", "--device", device, self.key]
        report = self.report("rehearse", *rehearsal)
        self.assertEqual((report["state"], report["asPredicted"]), ("UpdateComplete", True))
        self.assertEqual([finding["code"] for finding in report["check"]["findings"]], ["version-same"])
        self.assertFalse((disk / "VELD" / "KSTRL_old").exists())  # only a copy was updated
