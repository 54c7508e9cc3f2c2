"""Tests that the diagnosis of a returned instrument is right: the step at which its update stopped, each fault of
what is installed, and the actions that repair it."""

import os
import shutil
import subprocess

from user import UserTest, leave_row, write

VELD = "FlashDisk/VELD/"
DATA = VELD + "ORBUI/data/"
PROGRAM = VELD + "KSTRL/KSTRL.exe"


def removing(path):
    return lambda device: (device / path).unlink()


def writing(path, content=b"x"):
    return lambda device: write(device / path, content)


def cutting(path, size):
    return lambda device: os.truncate(device / path, size)


def emptying(path):
    def spoil(device):
        shutil.rmtree(device / path)
        (device / path).mkdir()
    return spoil


def renaming(path, name):
    return lambda device: (device / path).rename((device / path).with_name(name))


def windows_program(size, machine=0x1C4):
    """The start of a program whose one section ends at 1,100 bytes."""
    header = b"MZ" + bytes(58) + b"\x40\0\0\0" + b"PE\0\0" + machine.to_bytes(2, "little") + b"\1\0" + bytes(16)
    return (header + bytes(16) + (1000).to_bytes(4, "little") + (100).to_bytes(4, "little")).ljust(size, b"\0")


OPENED = b"Opening log at 2026/11/24 22:44\n"
FAILED = OPENED + b"\n    *** ERROR *** Update failed.\n\n"
SUCCEEDED = OPENED + b"  ** Warning ** Update succeeded at 2026/11/24 22:44\n"
NOT_COPIED = OPENED + 17 * b"\n    *** ERROR *** Error 2 ::SetFileAttributes\n\n"
LONG = OPENED + 20000 * b"    *** ERROR *** Error 5 ::RemoveDirectory(/a)\n"

# What is below VELD: complete folders, and files; the log; the step, the findings and the advice.
STOPPED = [
    ("KSTRL/ ORBUI/", SUCCEEDED, "none", "", "start"),
    ("KSTRL/ KSTRL_old/ ORBUI/ ORBUI_old/", b"", "none", "", "start"),
    ("KSTRL/ KSTRL_old/ ORBUI/ ORBUI_old/", FAILED, "none", "", "update-again"),
    ("KSTRL/ ORBUI/ Update/KSTRL/ Update/ORBUI/", OPENED, "copying", "",
     "check-disk, remove Update, update-again"),
    ("KSTRL_old/ ORBUI/ Update/KSTRL/ Update/ORBUI/", OPENED, "application-moved", "no-application-folder",
     "check-disk, save KSTRL_old, rename KSTRL_old, remove Update, update-again"),
    ("KSTRL/ KSTRL_old/ ORBUI/ Update/ORBUI/", OPENED, "application-replaced", "",
     "check-disk, remove Update, update-again"),
    ("KSTRL/ KSTRL_old/ ORBUI_old/ Update/ORBUI/", OPENED, "gui-data-moved", "no-gui-folder",
     "check-disk, save ORBUI_old, save KSTRL_old, rename ORBUI_old, remove Update, update-again"),
    ("KSTRL/ KSTRL_old/ ORBUI/ ORBUI_old/ Update/KSTRL/", FAILED, "gui-data-only", "",
     "check-disk, remove Update, update-again"),
    ("Update/KSTRL/ Update/ORBUI/", b"", "unclear", "log-contradicts no-application-folder no-gui-folder",
     "check-disk, save Update, remove Update, update-again"),
    ("KSTRL/lost.exe KSTRL_old/ ORBUI/", SUCCEEDED, "none", "no-application", "save KSTRL_old, update-again"),
    ("KSTRL/ Update/KSTRL/ Update/ORBUI/", SUCCEEDED, "unclear", "log-contradicts no-gui-folder",
     "check-disk, save Update, remove Update, update-again"),
    # Names are found without regard to case, and the advice names them as they are written.
    ("Kstrl/ orbui/", SUCCEEDED, "none", "", "start"),
    ("Kstrl_OLD/ ORBUI/", OPENED, "unclear", "no-application-folder",
     "check-disk, save Kstrl_OLD, rename Kstrl_OLD, update-again"),
    # Broken although no update was interrupted.
    ("KSTRL/ KSTRL_old/ ORBUI/ ORBUI_old/", NOT_COPIED + SUCCEEDED, "none", "disk-space files-not-copied",
     "save KSTRL_old, save ORBUI_old, update-again"),
    ("KSTRL/ ORBUI/readme ORBUI_old/", SUCCEEDED, "none", "gui-data-empty", "save ORBUI_old, update-again"),
    ("KSTRL KSTRL_old/ ORBUI/", FAILED, "unclear", "no-application-folder not-a-folder",
     "check-disk, save KSTRL_old, remove KSTRL, rename KSTRL_old, update-again"),
    ("KSTRL/ ORBUI/ Update/a Update/b Update/c", FAILED, "unclear", "stray-files",
     "check-disk, remove Update, update-again"),
    ("KSTRL/ ORBUI/", b"make: all\n", "none", "log-odd", "start"),
]

# What is done to an instrument in order, the findings, and whether it can be started.
SPOILED = [
    (lambda device: None, "", True),
    (writing(PROGRAM, windows_program(1100)), "", True),
    (writing(PROGRAM, windows_program(1000)), "application-damaged", False),
    (writing(PROGRAM, windows_program(1100, 0x8664)), "application-machine", False),
    (cutting(PROGRAM, 60), "application-damaged", False),
    (cutting(PROGRAM, 0), "application-damaged", False),
    (removing(PROGRAM), "no-application", False),
    (renaming(PROGRAM, "Kstrl.EXE"), "", True),
    (renaming(VELD + "KSTRL", "KSTRL_old"), "no-application-folder", False),
    (emptying(VELD + "ORBUI/data"), "background-missing font-missing gui-data-empty table-missing", False),
    (removing(DATA + "fonts/SegoeUI_24px.fnt"), "font-missing", True),
    (removing(DATA + "lang/StringTable_en.txt"), "table-missing", True),
    (removing(DATA + "lang/StringTable_jp.txt"), "", True),  # not the instrument's language
    (removing(DATA + "KSTRL-menubg4.raw"), "background-missing", True),
    (writing(VELD + "KSTRL/a\\b"), "name-not-fat", True),
    (lambda device: os.mkfifo(device / DATA / "pipe"), "not-a-file", True),
    (writing(VELD + "Updater-log.txt", LONG), "", True),
    (writing("registry.reg", b"nonsense"), "language-unknown", True),
]


class Diagnose(UserTest):
    def setUp(self):
        super().setUp()
        self.device = self.work / "device"
        self.restore()

    def restore(self):
        shutil.rmtree(self.device, ignore_errors=True)
        shutil.copytree(self.key / "VELD", self.device / VELD)
        (self.device / VELD / "kstrXReleaseNotes.txt").unlink()
        write(self.device / PROGRAM, windows_program(1100))
        write(self.device / "registry.reg", b"Windows Registry Editor Version 5.00\r\n\r\n"
              b"[HKEY_LOCAL_MACHINE\\SOFTWARE\\VELD\\KESTREL\\SYSTEM_CONFIG]\r\n\"LANGUAGE\"=dword:00000000\r\n")

    def test_finds_where_an_update_stopped_and_its_repair(self):
        self.device.rename(self.work / "sound")
        for names, log, step, found, advice in STOPPED:
            for name in names.split():
                if name.endswith("/"):
                    sound = self.work / "sound" / VELD / ("KSTRL" if "KSTRL" in name.upper() else "ORBUI")
                    shutil.copytree(sound, self.device / VELD / name, copy_function=os.link)
                else:
                    write(self.device / VELD / name)
            write(self.device / VELD / "Updater-log.txt", log)
            leave_row(self.device)
            report = self.report("diagnose", "diagnose", self.device)
            with self.subTest(names, log=log):
                self.assertEqual(report["step"], step)
                self.assertEqual(" ".join(sorted({finding["code"] for finding in report["findings"]})), found)
                self.assertEqual(", ".join(" ".join(filter(None, [step["action"], step["folder"]]))
                                           for step in report["advice"]), advice)
            shutil.rmtree(self.device)

    def test_finds_each_fault(self):
        for number, (spoil, found, starts) in enumerate(SPOILED):
            self.restore()
            spoil(self.device)
            leave_row(self.device)
            with self.subTest(f"instrument {number}: {found}"):
                report = self.report("diagnose", "diagnose", self.device)
                self.assertEqual(" ".join(sorted({finding["code"] for finding in report["findings"]})), found)
                self.assertEqual(report["startsAsItIs"], starts)
                self.assertEqual(report["sound"], found == "")
                self.assertEqual(self.exit_code, 0 if found == "" else 1)

    def test_tells_what_the_technician_needs(self):
        write(self.device / VELD / "Updater-log.txt", LONG)
        self.expect(0, "diagnose", self.device, says="The end of the log, after 19981 other lines:")
        write(self.device / VELD / "Updater-log.txt", b"    *** ERROR *** Error 145 ::RemoveDirectory(/a)\n\x1b[31mred\n")
        log = self.report("diagnose", "diagnose", self.device)["log"]
        self.assertIn("145: the folder is not empty", log[0]["meaning"])
        # A terminal must not obey a log.
        self.assertEqual(log[1], {"line": "\\x1b[31mred", "meaning": ""})
        cutting(PROGRAM, 60)(self.device)
        self.expect(1, "diagnose", self.device, says="cannot be started as it is:\n  KSTRL/KSTRL.exe: is ")
        self.restore()
        # The backups are the last good version when files are missing, so they come first.
        shutil.copytree(self.device / VELD / "KSTRL", self.device / VELD / "KSTRL_old")
        write(self.app / "new.dat", b"new")
        self.make(0, self.work / "other")
        self.expect(1, "diagnose", self.device, "--manifest", self.work / "other", says="  gone     KSTRL/new.dat")
        report = self.report("diagnose", "diagnose", self.device, "--manifest", self.work / "other")
        self.assertEqual([step["action"] for step in report["advice"]], ["save", "update-again"])
        self.assertIn(("KSTRL/new.dat", "gone"), [(change["path"], change["change"]) for change in report["changes"]])
        self.expect(2, "diagnose", self.key, says="is an update key")
        self.expect(2, "diagnose", self.app, says="neither a key nor a device")

    def test_says_what_cannot_be_read(self):
        write(self.device / VELD / "Updater-log.txt")
        for name in ("Updater-log.txt", "KSTRL", "ORBUI/data/fonts"):
            (self.device / VELD / name).chmod(0)
            self.expect(2, "diagnose", self.device, says="cannot be read", as_user=True)
            (self.device / VELD / name).chmod(0o755)

    def test_reads_an_image_of_a_flash_disk(self):
        image = self.work / "flash.img"
        subprocess.run(["/sbin/mkfs.vfat", "-C", image, "4096"], check=True, capture_output=True)
        subprocess.run(["mcopy", "-s", "-i", image, self.device / "FlashDisk" / "VELD", "::"], check=True)
        write(self.device / VELD / "Updater-log.txt")
        report = self.report("diagnose", "diagnose", image)
        self.assertEqual([finding["code"] for finding in report["findings"]], ["disk-full"])
        self.assertRegex(report["findings"][0]["text"], r"has \d+ of 4194304 bytes free; an update needs \d+ bytes")
        subprocess.run(["mcopy", "-i", image, self.device / VELD / "Updater-log.txt", "::/VELD"], check=True)
        self.expect(1, "check", image, says="[not-a-key]")
