"""Runs the parts of the lane on one virtual instrument, and prints what they found.

Usage: main.py PROJECT PROCESSOR [PART ...]
  PROJECT     the folder of the sources, with the programs and devices in build/
  PROCESSOR   amd64 or armhf
  PART        cuts, registry, keys, stick or options (default: all; on armhf, keys)
"""

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


def run(instrument, judges, parts):
    """Returns the number of broken promises. Fails when a part cannot be done."""
    began = time.monotonic()

    def tell(text):
        print(f"instrument: {time.monotonic() - began:.0f} s: {text}", flush=True)

    instrument.start_screen()
    tell("the screen is there")
    if "cuts" in parts:
        power = cuts.PowerCuts(instrument, judges)
        tell("the updates whose power is cut are recorded")
    for name in PARTS:
        if name in parts:
            tell(PARTS[name](instrument))
    if "cuts" not in parts:
        return 0
    rows = power.finish()
    tell("what the power cuts left is repaired")
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
