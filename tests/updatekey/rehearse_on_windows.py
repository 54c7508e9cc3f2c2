#!/usr/bin/python3 -B
"""Rehearses updates with updatekey.exe and updater.exe, and compares the reports with those of the Linux
program. Part of scripts/lanes/windows, which calls it with a display and Linux's programs in build/release.
Usage: rehearse_on_windows.py DRIVE PLAIN-PROGRAM WINE
  DRIVE           the root of drive C:, with updater.exe, its libraries, and an updatekey.exe that makes
                  drives which Wine shows
  PLAIN-PROGRAM   updatekey.exe as it is for Windows
  WINE            the command that runs a Windows program"""

import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time

drive, plain, wine = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
root = pathlib.Path(__file__).parents[2]
device = drive / "rehearsal"
key = device / "USB HD"
application = key / "VELD/KSTRL/KSTRL.exe"
arguments = ["rehearse", "--json", "--machine", "any", "--accept", "application-damaged", "--device", device.name,
             key.relative_to(drive)]


def run(program):
    done = subprocess.run([*program, *arguments], cwd=drive, capture_output=True)
    report = json.loads(done.stdout)
    # Linux shows what the updater tells a debugger, and counts the frames.
    for field in ["seconds", "frames", "output"]:
        report.pop(field, None)
    report["log"] = re.sub(r"\d+/\d+/\d+ \d+:\d+", "TIME", report.get("log", ""))
    for change in report.get("changes", []):
        if change["path"] == "VELD/Updater-log.txt":
            change.pop("bytesAfter")
    return done.returncode, report


def programs():
    """The numbers and command lines of the programs of this Wine."""
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if str(drive.parent).encode() in (process / "environ").read_bytes():
                yield process.name, (process / "cmdline").read_text()
        except OSError:
            pass  # it has ended


def has_a_window(pid):
    """Whether a program of Wine uses the display, which it does only when it runs."""
    try:
        return "winex11" in pathlib.Path(f"/proc/{pid}/maps").read_text()
    except OSError:
        return False  # it has ended


def leaves_nothing(what):
    letters = sorted(path.name for path in (drive.parent / "dosdevices").glob("[a-z]:"))
    assert letters == ["c:"], f"{what}: {letters}"
    left = list(drive.glob("users/*/Temp/rehearsal-*"))
    assert not left, f"{what}: {left}"
    end = time.monotonic() + 60
    while left := [program for _, program in programs() if re.search("updater|KSTRL", program)]:
        assert time.monotonic() < end, f"{what}: {left}"
        time.sleep(0.1)


def same(what, state, code, **on_windows):
    here_code, here = run([root / "build/release/updatekey"])
    there_code, there = run([wine, "updatekey.exe"])
    if there_code == -signal.SIGKILL:  # Wine kills programs that exit slowly; the report decides then
        there_code = code
    here.update(on_windows)
    unlike = [(field, value, there.get(field)) for field, value in here.items() if value != there.get(field)]
    assert (here_code, here.keys(), unlike) == (there_code, there.keys(), []), f"{what}: {here_code} {there_code} {unlike}"
    assert (there["state"], there_code) == (state, code), f"{what}: {there_code} {there}"
    leaves_nothing(what)


# Wine's own programs, which stay, must not start with a pipe that is read to its end.
subprocess.run([wine, "cmd", "/c", "exit"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
subprocess.run([root / "scripts/make-demo-device", device], check=True)
try:
    application.write_text("no program")
    same("an application that cannot be started", "UpdateComplete", 0)

    shutil.copy(drive / "windows/system32/notepad.exe", application)
    same("an application of Windows", "UpdateComplete", 0, startsHere=True, applicationStarted=True, exitCode=0)

    shutil.copy(plain, drive / "plain.exe")
    code, refused = run([wine, "plain.exe"])
    assert code in (2, -signal.SIGKILL) and "no drive letter" in refused["failure"], refused
    leaves_nothing("a rehearsal without a drive")

    # A program that waits for its user is rehearsed, so that the interrupt is never too late. The letter is free,
    # although the program before could not use it.
    shutil.copy(drive / "windows/system32/notepad.exe", drive / "updater-that-waits.exe")
    process = subprocess.Popen([wine, "updatekey.exe", *arguments, "--updater", "updater-that-waits.exe"], cwd=drive,
                               stdout=subprocess.DEVNULL)
    while not any("\0/auto\0" in program and has_a_window(pid) for pid, program in programs()):
        assert process.poll() is None, "the rehearsal ended before it was interrupted"
        time.sleep(0.01)
    assert os.path.lexists(drive.parent / "dosdevices/z:")
    process.send_signal(signal.SIGINT)  # Ctrl-C
    process.wait()
    leaves_nothing("an interrupted rehearsal")

    shutil.rmtree(device / "FlashDisk/VELD/ORBUI")
    same("an installation without GUI data", "UpdateFailed", 1, startsHere=True)
finally:
    shutil.rmtree(device)
    for name in ["plain.exe", "updater-that-waits.exe"]:
        (drive / name).unlink(missing_ok=True)
print("rehearse_on_windows: 3 rehearsals compared, one interrupted, one without a drive letter")
