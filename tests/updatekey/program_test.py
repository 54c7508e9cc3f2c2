#!/usr/bin/env python3
"""Tests that scripts can rely on updatekey: its exit codes, and its JSON, which is validated against the
schema that is shipped. Needs Debian's python3-jsonschema.
Usage: program_test.py BUILD-FOLDER SCHEMA"""

import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

import jsonschema

build = pathlib.Path(sys.argv[1])
schema = json.loads(pathlib.Path(sys.argv[2]).read_text())
failures = []


def run(code, kind, *arguments, says="", as_user=False):
    """Runs a command and, when `kind` names its part of the schema, again with --json."""
    command = [build / "updatekey", *arguments]
    # Root may read every file, unless it gives up the right to.
    if as_user and os.geteuid() == 0:
        command = ["setpriv", "--bounding-set=-dac_override,-dac_read_search", *command]
    plain = subprocess.run(command, capture_output=True, text=True, errors="replace")
    found = plain.stdout + plain.stderr
    if plain.returncode != code or says not in found:
        failures.append(f"{arguments}: exit code {plain.returncode}, not {code}: {found}")
    if kind is None:
        return None
    if kind in ("make", "image"):
        shutil.rmtree(arguments[-1], ignore_errors=True)
        pathlib.Path(arguments[-1]).unlink(missing_ok=True)
    output = subprocess.run([*command, "--json"], capture_output=True, text=True).stdout
    try:
        report = json.loads(output)
        jsonschema.validate(report, {"$ref": f"#/$defs/{kind}", "$defs": schema["$defs"]})
        jsonschema.validate(report, schema)
        return report
    except (ValueError, jsonschema.ValidationError) as error:
        failures.append(f"{arguments}: {error}")
        return None


def expect(what, value, wanted):
    if value != wanted:
        failures.append(f"{what}: {value!r}, not {wanted!r}")


with tempfile.TemporaryDirectory() as folder:
    work = pathlib.Path(folder)
    app, gui, notes = work / "app", build / "guidata", work / "notes.txt"
    app.mkdir()
    shutil.copy(build / "kstrl-standin", app / "KSTRL.exe")
    notes.write_text("News\n")
    key, image = work / "key", work / "key.img"
    check = ["check", "--machine", "any"]

    def make(code, kind, out, app=app, gui=gui, notes=notes, version="2.14.3", says=""):
        shutil.rmtree(out, ignore_errors=True)
        return run(code, kind, "make", "--machine", "any", "--app", app, "--gui", gui, "--notes", notes,
                   "--version", version, out, says=says)

    (app / ".DS_Store").touch()
    made = make(0, "make", key)
    expect("files left out", made and len(made["leftOut"]), 1)
    expect("the manifest of a made key", made and made["check"]["manifest"], "matches")
    (app / ".DS_Store").unlink()
    above = work / "above"
    shutil.copytree(gui, above / "data")
    make(2, "failure", work / "x", gui=above, says="give ")
    make(2, "failure", work / "x", app=gui, gui=app, says="swapped")
    for text, says in [(b"", "empty"), (b"a\nsays \x93hello\x94\n", "line 2, column 6")]:
        (work / "bad.txt").write_bytes(text)
        make(2, "failure", work / "x", notes=work / "bad.txt", says=says)
    make(3, "make", work / "x", app=above, says="not made")

    run(0, None, "--help")
    run(0, None, "--version", says="updatekey ")
    run(2, "failure", "check", says="KEY")
    run(2, "failure", "bogus", says="bogus is not a command")
    run(2, "failure", "check", "--lang", "en", key, says="--lang is not an option")
    run(2, "failure", "check", "--languages", "en,xx", key, says="xx")
    run(2, "failure", "check", "--accept", "notes-utf9", key, says="notes-utf9")
    run(2, "failure", "check", "--flash-size=-1", key)
    run(2, "failure", "check", "/nowhere/at/all")
    run(2, "failure", "check", app / "KSTRL.exe")
    run(0, "check", *check, key)
    run(1, "check", *check, "--flash-size", "1kb", key, says="flash-too-small")
    run(0, "check", *check, "--flash-size", "1kb", "--accept", "flash-too-small", key)
    run(1, "check", *check, key / "VELD", says="give its parent folder")
    info = run(0, "info", "info", key)
    expect("files of the application", info and info["application"]["files"], 1)

    run(0, "sticks", "sticks")
    stick = work / "stick"
    stick.mkdir()
    run(1, "write", "write", "--machine", "any", key, stick, says="NOT GOOD")
    run(0, "write", "write", "--machine", "any", "--not-a-stick", "--replace", "--eject", key, stick,
        says="unmount it before you pull it out")

    run(0, "image", "image", "--machine", "any", key, image)
    run(2, "failure", "image", "--machine", "any", key, image, says="exists")
    run(0, "check", *check, image)

    other = work / "other"
    (app / "new.dat").write_text("new")
    make(0, "make", other, version="2.13")
    diff = run(1, "diff", "diff", other, key, says="version-older")
    expect("changes", [(c["path"], c["change"]) for c in (diff or {"changes": []})["changes"]], [("KSTRL/new.dat", "new")])
    run(0, "diff", "diff", key, image)
    run(1, "diff", "diff", key / "VELD", key, says="0 files differ, ")
    run(2, "failure", "diff", key, work)

    device = work / "device"
    flash = device / "FlashDisk" / "VELD"
    shutil.copytree(key / "VELD", flash)
    (flash / "kstrXReleaseNotes.txt").unlink()
    (flash / "KSTRL" / "version.txt").write_text("2.14.3\n")
    run(0, "diagnose", "diagnose", "--machine", "any", device)
    run(1, "diagnose", "diagnose", device, says="cannot be started as it is:\n  KSTRL/KSTRL.exe: ")
    run(1, "diagnose", "diagnose", "--machine", "any", device, "--manifest", other, says="  gone     KSTRL/new.dat")
    run(2, "failure", "diagnose", key, says="is an update key")
    rehearsal = run(1, "rehearse", "rehearse", "--machine", "any", "--hidden", "--device", device, key,
                    says="version-same")
    expect("state after the rehearsal", rehearsal and rehearsal["state"], "UpdateComplete")

    # What cannot be read must not pass for missing.
    (flash / "Updater-log.txt").write_text("x")
    (flash / "Updater-log.txt").chmod(0)
    run(2, "failure", "diagnose", device, says="cannot be read", as_user=True)
    (key / "VELD" / "KSTRL").chmod(0)
    run(2, "failure", *check, key, says="cannot be read", as_user=True)
    (key / "VELD" / "KSTRL").chmod(0o755)

    # Names that are not UTF-8, and control characters, do no harm.
    (key / "VELD" / "KSTRL" / "plugins").mkdir()
    (pathlib.Path(os.fsdecode(bytes(key) + b"/VELD/KSTRL/plugins/\xff\x1b[31m"))).touch()
    report = run(1, "check", *check, key, says="\\xff\\x1b[31m")
    expect("files that are not copied", report and len(report["notCopied"]), 1)

print("\n".join(failures))
sys.exit(1 if failures else 0)
