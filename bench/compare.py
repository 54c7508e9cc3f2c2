#!/usr/bin/python3 -B
"""Compares the update engine with the system's tools, and the whole program with the shortest possible time. Prints
the rows of the table of scripts/bench, as soon as each is measured.
Usage: compare.py BUILD-FOLDER   on a virtual screen; TMPDIR is the folder to measure in"""

import contextlib
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

import device

BUILD = pathlib.Path(sys.argv[1]).resolve()
PAUSE = 0.002  # of the program after each frame

# A whole update by the system's tools. They copy the key's folders to a staging folder, remove the old backups and
# move the folders, and flush at the same places as the engine. Like it they keep the times of the files and whether
# they are read-only.
TOOLS_UPDATE = """set -e
key=$1/USB\\ HD/VELD
cd "$1/FlashDisk/VELD"
mkdir Update
$2 "$key/KSTRL" "$key/ORBUI" Update  # the tool with its options
for name in KSTRL ORBUI; do
    rm -rf "${name}_old"
    sync -f .
    mv "$name" "${name}_old"
    sync -f .
    sync .
    sync -f .
    mv "Update/$name" "$name"
    sync -f .
    sync . Update
done
rmdir Update
echo 'Update succeeded' >log.txt
sync log.txt
"""
COPY = "cp -r --preserve=timestamps,mode"
RSYNC = "rsync -a"


def row(what, ours, theirs="", ratio="", goal=""):
    print(f"{what:46} {ours:>12} {theirs:>12} {ratio:>7} {goal:>6}", flush=True)


def seconds_text(seconds):
    for unit, factor, digits in (("s", 1, 2), ("ms", 1e3, 2), ("us", 1e6, 2)):
        if seconds * factor >= 1:
            return f"{seconds * factor:.{digits}f} {unit}"
    return f"{seconds * 1e9:.0f} ns"


def megabytes(count):
    return f"{count / (1 << 20):.2f} MiB"


@contextlib.contextmanager
def new_device():
    """Makes an empty device and names it to the updater."""
    with tempfile.TemporaryDirectory(prefix="device-") as folder:
        os.environ["UPDATER_DEVICE"] = folder
        yield pathlib.Path(folder)


def run(*command):
    """Runs a program. Returns the seconds that it took, and the numbers that it printed."""
    os.sync()  # so that no write of the last measurement is left
    start = time.perf_counter()
    done = subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    return time.perf_counter() - start, [float(word) for word in done.stdout.split()]


def compare(root, pairs, tool=COPY):
    """Updates a device by the engine and by the tools, one right after the other and in alternating order, each from
    the state that the other left. Returns the medians of the seconds and of the pairs' ratios, and what the engine
    printed: its files, and the medians of its seconds and of the peaks of its memory and heap."""
    ours, theirs, reports = [], [], []
    for pair in range(pairs):
        for engine in (True, False) if pair % 2 == 0 else (False, True):
            if engine:
                seconds, report = run(BUILD / "bench/engine_update")
                ours.append(seconds)
                reports.append(report)
            else:
                theirs.append(run("sh", "-c", TOOLS_UPDATE, "sh", root, tool)[0])
    ratios = [mine / other for mine, other in zip(ours, theirs)]
    times = [statistics.median(values) for values in (ours, theirs, ratios)]
    return times, [statistics.median(values) for values in zip(*reports)]


def times_row(what, times, goal=""):
    row(what, seconds_text(times[0]), seconds_text(times[1]), f"{times[2]:.2f}", goal)


def compare_updates():
    reports = {}
    for files, pairs in ((100, 9), (1000, 9), (10000, 5), (100000, 1)):
        with new_device() as root:
            device.make_key(root / "USB HD", files, 1024)
            device.install(root, root / "USB HD")
            times, reports[files] = compare(root, pairs)
            times_row(f"update of {files} files of 1 KiB", times, "1.00")
            if files in (1000, 10000):
                times_row("  the same, against rsync -a", compare(root, 3, RSYNC)[0])
    first, thousand, last = reports[100], reports[1000], reports[100000]
    each, each_of_thousand = last[1] / last[0], thousand[1] / thousand[0]
    row("time per file, 100000 against 1000 files", seconds_text(each), seconds_text(each_of_thousand),
        f"{each / each_of_thousand:.2f}", "1.20")
    for size, pairs in ((1, 5), (16, 5), (256, 3)):
        with new_device() as root:
            device.make_key(root / "USB HD", 2, 1)
            (root / "USB HD/VELD/KSTRL/file000000.dat").write_bytes(b"x" * (size << 20))
            device.install(root, root / "USB HD")
            times_row(f"update of one file of {size} MiB", compare(root, pairs)[0], "1.05")
    for what, index in (("resident memory", 2), ("heap", 3)):
        row(f"peak {what}, 100000 against 100 files", megabytes(last[index]), megabytes(first[index]),
            f"{last[index] / first[index]:.1f}")
    row("heap for each further file", f"{(last[3] - first[3]) / (last[0] - first[0]):.0f} bytes")


def measure_program():
    """Compares the whole program's update of 2,000 files on a screen with its floor: for each frame the pause and the
    measured drawing and swap, plus the engine's time without a window."""
    with new_device() as root:
        device.make_installation(root, BUILD / "guidata")
        device.make_key(root / "USB HD", 2000, 1024, 20)
        shutil.copy(root / "FlashDisk/VELD/KSTRL/KSTRL.exe", root / "USB HD/VELD/KSTRL")
        shutil.copytree(BUILD / "guidata", root / "USB HD/VELD/ORBUI/data", dirs_exist_ok=True)
        done = subprocess.run([BUILD / "bench/timed_updater", "/auto"], check=True, capture_output=True, text=True)
        lines = [line.split() for line in done.stderr.splitlines()]
        report = {words[0]: [float(word) for word in words[1:]] for words in lines
                  if words and words[0] in ("loop", "start", "memory")}
        engine = run(BUILD / "bench/engine_update")[1][1]
    frames, wall, draw, swap = report["loop"]
    floor = frames * PAUSE + draw + swap + engine
    times_row("whole program, 2000 files, against its floor", (wall, floor, wall / floor), "1.05")
    row("  a frame's drawing and swap", seconds_text((draw + swap) / frames))
    for what, seconds in zip(("start-up, entry to first swap", "  fonts", "  texts", "  textures, of the fonts too",
                              "  GL programs", "  whole set-up of the screen"), report["start"]):
        row(what, seconds_text(seconds))
    for what, count in zip(("resident memory", "heap"), report["memory"]):
        row(f"  peak {what} of the program", megabytes(count))


row("", "program", "other", "ratio", "goal")
compare_updates()
measure_program()
