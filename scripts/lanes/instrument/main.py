"""Runs the parts of the lane on one virtual instrument, and prints what they found.

Usage: main.py PROJECT PROCESSOR [PART ...]
  PROJECT     the folder of the sources, with the programs and devices in build/
  PROCESSOR   amd64 or armhf
  PART        cuts, registry, keys, stick or options (default: all; on armhf, keys)
"""

import contextlib
import multiprocessing
import sys
import tempfile
import time

import cuts
from instrument import Instrument
from keys import update_by_keys
from machine import Failure
from stick import mount_options, write_sticks

PARTS = {"registry": cuts.registry, "stick": write_sticks, "options": mount_options, "keys": update_by_keys}
COLUMNS = ("mount", "states", "torn", "not whole", "untrue", "repaired", "healed")


@contextlib.contextmanager
def timed(name, instrument):
    """Prints the time that a part took."""
    started, before = time.monotonic(), instrument.processor_seconds()
    yield
    print(f"instrument: {name}: {time.monotonic() - started:.0f} s, of which the emulator computed "
          f"{instrument.processor_seconds() - before:.0f} s", flush=True)


def run(instrument, judges, parts):
    """Returns the number of broken promises. Fails when a part cannot be done."""
    instrument.start_screen()
    print(f"instrument: the emulator computed {instrument.processor_seconds():.0f} s until the screen was there")
    if "cuts" in parts:
        with timed("updates whose power is cut", instrument):
            power = cuts.PowerCuts(instrument, judges)
    for name in PARTS:
        if name in parts:
            with timed(name, instrument):
                print(f"instrument: {PARTS[name](instrument)}")
    if "cuts" not in parts:
        return 0
    with timed("repairs", instrument):
        rows = power.finish()
    print(f"instrument: random states from seed {cuts.SEED}")
    print("| mount | states | cut within a move | not whole | \"succeeded\" but not new | repaired | healed |")
    print("|---|---|---|---|---|---|---|")
    for row in rows:
        print("|", " | ".join(str(row[name]) for name in COLUMNS), "|")
    complaints = [complaint for row in rows for complaint in row["complaints"]]
    for complaint in complaints[:40]:
        print(f"instrument: {complaint}", file=sys.stderr)
    return len(complaints)


def main():
    project, processor, *parts = sys.argv[1:]
    folder = tempfile.mkdtemp()
    try:
        with multiprocessing.Pool() as judges, Instrument(project, processor, folder) as instrument:
            return run(instrument, judges, parts or (["cuts", *PARTS] if processor == "amd64" else ["keys"])) > 0
    except Failure as failure:
        print(f"instrument: {failure}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
