"""An update by keys, from a stick that is plugged in and pulled out."""

import pathlib
import shutil
import time

import numpy
from PIL import Image

from instrument import ENDED, FOLDERS, make_disk, raw
from judge import Verdict
from machine import LIMIT, Failure

GOLDENS = pathlib.Path(__file__).resolve().parents[3] / "tests/golden"


def expect_picture(instrument, name):
    """Waits until the screen looks like a golden picture, which was taken on the background of the large
    device. A colour may differ by two levels."""
    golden = numpy.asarray(Image.open(GOLDENS / f"{name}.png").convert("RGBA"))
    height, width = golden.shape[:2]
    background = f"{instrument.made}/large/FlashDisk/VELD/ORBUI/data/KSTRL-menubg4.raw"
    card = numpy.fromfile(background, numpy.uint8).reshape(-1, width, 1)[:height]
    expected = numpy.where(golden[:, :, 3:] > 0, golden[:, :, :3], card).astype(int)
    file = f"{instrument.folder}/{name}.png"
    end = time.monotonic() + LIMIT
    while True:
        instrument.run("kill -0 $(cat /run/updater.pid)")
        instrument.tell("screendump", filename=file, format="png")
        shown = numpy.asarray(Image.open(file).convert("RGB"))
        if shown.shape == expected.shape and numpy.abs(shown - expected).max() <= 2:
            return
        if time.monotonic() > end:
            shutil.copy(file, instrument.made)
            raise Failure(f"the screen differs from {name}.png, see {instrument.made}/{name}.png")
        time.sleep(0.3)


def update_by_keys(instrument):
    """Compares the screen before and after a stick is plugged in. Then updates with a stick that is pulled
    out while the screen waits, and again while the update copies; and repeats the update."""
    made = instrument.made
    disk = f"{instrument.folder}/disk"
    make_disk("vfat", f"{made}/large/FlashDisk", disk)
    instrument.insert("scsi", raw(disk), "vfat", "utf8")

    def plug_in(bad_sector=None):
        """Plugs in the stick, as one with a bad sector if one is given."""
        stick = raw(f"{made}/stick")
        if bad_sector is not None:
            stick = {"driver": "raw", "file": {"driver": "blkdebug", "image": stick, "inject-error": [
                {"event": "read_aio", "iotype": "read", "sector": bad_sector}]}}
        instrument.insert("usb", stick, "vfat", "ro,utf8", "1")

    if instrument.draws:
        instrument.start_updater()
        expect_picture(instrument, "en-waiting")
        plug_in()
        expect_picture(instrument, "en-ready")
        instrument.run("kill $(cat /run/updater.pid)")
        instrument.wait_for_end()
        instrument.remove("usb")
    # Draws nothing from here on, because a frame is drawn for each file.
    instrument.start_updater(draws=False)
    plug_in()
    instrument.wait_for_frames()
    instrument.tear_out("usb")
    # The update has copied other files when it comes to this one, and cannot end before the stick is gone.
    with open(f"{made}/stick", "rb") as stick:
        plug_in(stick.read().index(b"screens of 2.14.3") // 512)
    if not instrument.press_until("home", ENDED):
        raise Failure("the update ended before the stick was pulled out: " + instrument.output())
    instrument.wait_for_end()
    instrument.run(f"umount '{FOLDERS['usb']}'")
    plug_in()
    instrument.start_updater(draws=False)
    instrument.press_until("home", ENDED)
    if not instrument.wait_for_end():
        raise Failure("the update by keys did not succeed: " + instrument.output())
    instrument.remove("usb")
    instrument.remove("scsi")
    verdict = Verdict(disk, "vfat", f"{made}/large", f"{instrument.folder}/copy")
    if not verdict.new or not verdict.succeeded:
        raise Failure(f"after the update by keys the folders are {verdict.folders}")
    return "an update by keys, after one during which the stick was pulled out, installed the key"
