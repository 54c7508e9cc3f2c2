"""Simulated devices for measurements, and update keys for them."""

import pathlib
import shutil

FILES_PER_SUBFOLDER = 500


def make_key(folder, files, size, lines=50):
    """Makes an update key in a folder: half of the files in KSTRL, the other half in subfolders of the GUI data, each
    with `size` bytes; and `lines` lines of release notes."""
    veld = pathlib.Path(folder, "VELD")
    half = files // 2
    for number in range(files):
        # Files are created in the order of their names, so that the disk stores them in this order.
        parent = veld / ("KSTRL" if number < half else f"ORBUI/data/d{(number - half) // FILES_PER_SUBFOLDER}")
        parent.mkdir(parents=True, exist_ok=True)
        (parent / f"file{number:06}.dat").write_bytes(b"x" * size)
    notes = ["KSTRL Release 2.14.3"] + [f"- Depth slice {line} is drawn as measured" for line in range(1, lines)]
    (veld / "kstrXReleaseNotes.txt").write_text("".join(f"{line}\n" for line in notes[:lines]))


def make_installation(folder, gui_data):
    """Makes an installation whose application is a program that exits at once."""
    veld = pathlib.Path(folder, "FlashDisk/VELD")
    (veld / "KSTRL").mkdir(parents=True)
    application = veld / "KSTRL/KSTRL.exe"
    application.write_text("#!/bin/sh\n")
    application.chmod(0o755)
    shutil.copytree(gui_data, veld / "ORBUI/data")


def install(folder, key):
    """Installs a key on a device, twice: the usual instrument has been updated before, so that it has a backup, too,
    of the size of the update."""
    for name in ("KSTRL", "ORBUI"):
        for suffix in ("", "_old"):
            shutil.copytree(pathlib.Path(key, "VELD", name), pathlib.Path(folder, "FlashDisk/VELD", name + suffix))
