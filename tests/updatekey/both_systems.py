#!/usr/bin/python3 -B
"""Compares updatekey.exe with the Linux program: every faulty key and every broken instrument of the
tests must get the same JSON and the same exit code from both, byte for byte, and a key that both make
from the same files must be the same. Part of scripts/lanes/windows-updatekey.
Usage: both_systems.py LINUX-PROGRAM GUI-DATA ROWS WINDOWS-PROGRAM ...
  ROWS       the folder with the folders that the tests leave when UPDATEKEY_ROWS names it
  WINDOWS-PROGRAM ...   the command that runs updatekey.exe"""

import difflib
import pathlib
import re
import shutil
import signal
import subprocess
import sys

linux, gui, rows = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
windows = sys.argv[4:]

compared, explained, wrong = 0, [], []


def reason(folder):
    """What Windows cannot have, or Wine does not show, in a folder."""
    for path in folder.rglob("*"):
        if path.is_symlink() or path.is_fifo():
            return f"{path}: Windows has no such links and pipes"
        if re.search(r'[\\:*?"<>|]|[. ]$', path.name) or path.stem.upper() == "CON":
            return f"{path}: no file of Windows can have this name"
    return None


def compare(row, *arguments):
    global compared
    command = [*map(str, arguments), "--json"]
    here = subprocess.run([linux, *command], capture_output=True)
    there = subprocess.run([*windows, *command], capture_output=True)
    report = there.stdout.replace(b'"Z:/', b'"/')  # Linux's root folder is Wine's drive Z:
    compared += 1
    # Wine kills programs that exit slowly; the report decides then.
    if here.stdout == report and there.returncode in (here.returncode, -signal.SIGKILL):
        return
    if reason(row):
        explained.append(f"{arguments[0]}: {reason(row)}")
        return
    unlike = difflib.unified_diff(here.stdout.decode().splitlines(), report.decode().splitlines(), "Linux", "Windows",
                                  n=0, lineterm="")
    ends = [f"{system}: exit code {ended.returncode}, {len(ended.stdout)} bytes, errors: {ended.stderr.decode(errors='replace')}"
            for system, ended in (("Linux", here), ("Windows", there))]
    wrong.append("\n".join([str(command), *ends, *list(unlike)[:20]]))


def contents(folder):
    return {path.relative_to(folder): (path.read_bytes() if path.is_file() else None, path.stat().st_mtime)
            for path in folder.rglob("*")}


keys = sorted((rows / "key").iterdir())
trees = set()
for key in keys:
    compare(key, "check", key)
    # Only names and kinds of files are found in another way by the other commands on Windows.
    tree = frozenset((path.relative_to(key), path.is_dir()) for path in key.rglob("*"))
    if tree not in trees:
        if "larger" not in key.name:  # info reads every file
            compare(key, "info", key)
        compare(key, "diff", key, keys[0])
    trees.add(tree)
for device in sorted((rows / "device").iterdir()):
    compare(device, "diagnose", device, "--manifest", keys[0])

work = rows / "Füße und Hände"
(work / "app").mkdir(parents=True)
for name in ["KSTRL.exe", "Übersicht.dat", ".DS_Store", "desktop.ini"]:
    (work / "app" / name).write_bytes(b"MZ" + name.encode())
(work / "notes.txt").write_bytes("\ufeffGröße\r\nNews".encode())
made = []
for program in [[linux], windows]:
    subprocess.run([*program, "make", "--machine", "any", "--accept", "application-damaged", "--quiet",
                    "--app", work / "app", "--gui", gui, "--notes", work / "notes.txt", "--version", "3.0",
                    work / "key"], capture_output=True)
    made.append(contents(work / "key"))
    shutil.rmtree(work / "key", ignore_errors=True)
if not made[0] or made[0] != made[1]:
    wrong.append(f"the made keys differ: {made[0].keys()} {made[1].keys()}")

for line in explained:
    print(f"both_systems: explained: {line}")
print(*wrong, sep="\n", file=sys.stderr)
print(f"both_systems: {compared} reports compared, {len(explained)} differences explained, {len(wrong)} not")
sys.exit(1 if wrong else 0)
