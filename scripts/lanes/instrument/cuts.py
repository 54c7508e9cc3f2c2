"""Updates whose disk loses its power, and repairs of what is left."""

import json
import os
import random

from instrument import DEVICE, FLASH, FOLDERS, make_disk, raw, recorded
from judge import Verdict, output_of
from machine import Failure, expect
from power import copy, states

SEED = 20
MOUNTS = {  # the file system and its mount options
    "vfat": ("vfat", "utf8"),
    "vfat, flush": ("vfat", "utf8,flush"),
    "vfat, sync": ("vfat", "utf8,sync"),
    "ext4": ("ext4", "defaults"),
}


def judge_states(mount, file_system, disk, record, device, folder):
    """Judges all states of one mount. Returns the counts, the complaints and an image of each kind."""
    os.makedirs(folder)
    row = {"mount": mount, "states": 0, "torn": 0, "not whole": 0, "untrue": 0, "complaints": [], "kinds": {}}
    chance = random.Random(SEED)
    seen, verdicts = {}, {}
    for name, image in states(disk, record, folder, SEED):
        if image.content not in verdicts:
            verdicts[image.content] = Verdict(image.file, file_system, device, f"{folder}/copy")
        verdict = verdicts[image.content]
        untrue = verdict.succeeded and not verdict.new
        row["states"] += 1
        row["torn"] += verdict.torn
        row["not whole"] += len(verdict.wrong) > untrue
        row["untrue"] += untrue
        row["complaints"] += [f"{mount}: {name}: {wrong}" for wrong in verdict.wrong]
        if verdict.needs_repair:
            seen[verdict.kind] = seen.get(verdict.kind, 0) + 1
        if verdict.needs_repair and chance.random() < 1 / seen[verdict.kind]:
            file = f"{folder}/kind{list(seen).index(verdict.kind)}"
            copy(image.file, file)
            row["kinds"][verdict.kind] = (name, file)
    return row


class PowerCuts:
    """Updates on disks that are mounted in different ways. The states in which a power cut can leave
    them are judged by another process, while the machine continues."""

    def __init__(self, instrument, judges):
        self.instrument = instrument
        self.device = f"{instrument.made}/small"
        self.stick = f"{instrument.folder}/key"
        self.judged = {}
        make_disk("vfat", f"{self.device}/USB HD", self.stick)
        instrument.insert("usb", raw(self.stick), "vfat", "ro,utf8")
        for mount, (file_system, options) in MOUNTS.items():
            disk = f"{instrument.folder}/{mount.replace(', ', '-')}"
            make_disk(file_system, f"{self.device}/FlashDisk", disk)
            self.record(file_system, options, disk, f"{disk}.record")
            self.judged[mount] = judges.apply_async(
                judge_states, (mount, file_system, disk, f"{disk}.record", self.device, f"{disk}.states"))
        instrument.remove("usb")

    def record(self, file_system, options, disk, record):
        """Updates a disk, takes it away without unmounting, and leaves the record of its writes."""
        instrument = self.instrument
        instrument.insert("scsi", recorded(disk, record), file_system, options)
        if not instrument.update():
            raise Failure("the update did not succeed: " + instrument.output())
        instrument.tear_out("scsi")

    def repair(self, file_system, options, image):
        """Does what the technician's guide and `updatekey diagnose` say, in their order. Returns a
        complaint; an empty text when the instrument is healed."""
        run = self.instrument.run
        if file_system == "vfat":
            output_of("fsck.vfat", "-a", image)
            output_of("fsck.vfat", "-a", image)
        self.instrument.insert("scsi", raw(image), file_system, options)
        steps = json.loads(run(
            f"/run/programs/updatekey --json diagnose {DEVICE}/FlashDisk --machine any "
            f"--manifest '{DEVICE}/USB HD' || [ $? = 1 ]"))["advice"]
        for step in steps:
            if step["action"] == "save":
                run(f"mkdir -p /run/saved; cp -r {FLASH}/{step['folder']} /run/saved/")
            elif step["action"] == "remove":
                run(f"rm -r {FLASH}/{step['folder']}")
            elif step["action"] == "rename":
                run(f"mv {FLASH}/{step['folder']} {FLASH}/{step['to']}")
            elif step["action"] == "update-again":
                if not self.instrument.update() and "a second time" in step["text"]:
                    self.instrument.update()
        self.instrument.remove("scsi")
        verdict = Verdict(image, file_system, self.device, f"{self.instrument.folder}/copy")
        if verdict.new and not verdict.torn:
            return ""
        return f"not healed by {', '.join(step['action'] for step in steps)}: {verdict.folders}"

    def finish(self):
        """Repairs a state of each kind, and returns the rows of the table."""
        self.instrument.insert("usb", raw(self.stick), "vfat", "ro,utf8")
        rows, repaired = [], set()
        for mount, (file_system, options) in MOUNTS.items():
            row = self.judged[mount].get()
            row["repaired"] = row["healed"] = 0
            for kind, (name, image) in row["kinds"].items():
                if (file_system, kind) in repaired:
                    continue
                repaired.add((file_system, kind))
                complaint = self.repair(file_system, options, image)
                row["repaired"] += 1
                row["healed"] += not complaint
                if complaint:
                    row["complaints"].append(f"{mount}: {name}: {complaint}")
            rows.append(row)
        rows.append(self.read_only())
        return rows

    def read_only(self):
        """Updates a disk with a folder that begins nowhere, for which the system forbids all writing,
        and then repairs the disk."""
        disk = f"{self.instrument.folder}/read-only"
        make_disk("vfat", f"{self.device}/FlashDisk", disk)
        with open(disk, "r+b") as file:
            at = file.read(16 << 20).index(b"ORBUI      \x10")
            for half in (20, 26):  # of the number of its first cluster
                file.seek(at + half)
                file.write(b"\0\0")
        self.instrument.insert("scsi", raw(disk), "vfat", "utf8")
        if self.instrument.update():
            raise Failure("an update succeeded on a disk that the system makes read-only")
        expect("the mount", self.instrument.run(f"grep {FOLDERS['scsi']} /proc/mounts"), " ro,")
        self.instrument.remove("scsi")
        complaint = self.repair("vfat", "utf8", disk)
        return {"mount": "vfat, made read-only", "states": 1, "torn": 0, "not whole": 1, "untrue": 0, "repaired": 1,
                "healed": int(not complaint), "complaints": [complaint] if complaint else []}


def registry(instrument):
    """Cuts the power while a test stores values in the registry, whose file must stay whole."""
    disk, record = f"{instrument.folder}/registry", f"{instrument.folder}/registry.record"
    make_disk("vfat", None, disk)
    instrument.insert("scsi", recorded(disk, record), "vfat", "utf8")
    # The test would delete its folder.
    instrument.run(f"TMPDIR={DEVICE}/FlashDisk LD_PRELOAD=/run/programs/keep-files.so "
                   "/run/programs/tests/platform/platform_test --gtest_filter=Registry.ReturnsStoredValues")
    instrument.tear_out("scsi")
    os.makedirs(f"{record}.states")
    count = cut_short = 0
    read = {}
    for name, image in states(disk, record, f"{record}.states", SEED):
        if image.content not in read:
            file = output_of("mtype", "-i", image.file, "::/*/registry.reg")
            whole = file.startswith("Windows Registry Editor ") and file.endswith("\n") and \
                "/registry.reg\n" not in output_of("fsck.vfat", "-n", image.file)
            read[image.content] = file, whole
        file, whole = read[image.content]
        if count == 0 and not (whole and "only what was flushed" in name):
            continue  # the first file is the test's, which does not flush it
        count += 1
        if not whole and "a part of" not in name:
            raise Failure(f"vfat: {name}: registry.reg is not whole: {file!r}")
        cut_short += not whole  # FAT has no order of writes: of a rename a part may be on the disk
    if count == 0:
        raise Failure("no state of the disk has a whole registry.reg")
    return f"registry.reg is whole in {count - cut_short} of {count} states of a FAT disk; in {cut_short} its rename was cut short"
