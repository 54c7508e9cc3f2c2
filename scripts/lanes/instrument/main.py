"""The cases of the lane: updates on disks whose power goes, repairs of those disks, and updates by keys.

Usage: main.py PROJECT   (the folder of the sources, with the programs and devices in build/)
"""

import json
import multiprocessing
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time

import numpy
from PIL import Image

from judge import Verdict
from machine import Failure, Machine
from power import states

SEED = 20
MOUNTS = {  # the file system and its mount options
    "vfat": ("vfat", "utf8"),
    "vfat, flush": ("vfat", "utf8,flush"),
    "vfat, sync": ("vfat", "utf8,sync"),
    "ext4": ("ext4", "defaults"),
}
DEVICE = "/run/device"
ENDED = "{ ! kill -0 $(cat /run/updater.pid) 2>/dev/null || grep -q 'Update failed' /run/updater.out; }"


def make_disk(file_system, content, file):
    """Makes a disk without partitions that contains a folder."""
    if file_system == "ext4":
        subprocess.run(["mke2fs", "-q", "-t", "ext4", "-E", "lazy_itable_init=0", "-d", content, file, "24M"],
                       check=True, stdout=subprocess.DEVNULL)
    else:
        subprocess.run(["mkfs.vfat", "-F", "32", "-C", file, str(300 << 10)], check=True, stdout=subprocess.DEVNULL)
        subprocess.run(["mcopy", "-s", "-i", file, f"{content}/VELD", "::/"], check=True)


def raw(file):
    return {"driver": "file", "filename": file, "cache": {"no-flush": True}}


def emulator(project):
    """The command that starts the machine."""
    boot = f"{project}/build/instrument/boot"
    share = "local,security_model=none,readonly=on,multidevs=remap"
    return ["qemu-system-x86_64", "-machine", "q35", "-cpu", "max", "-m", "1024",
            "-kernel", f"{boot}/linux", "-initrd", f"{boot}/memory",
            "-append", "console=ttyS0 quiet panic=-1 mitigations=off no_timer_check",
            "-virtfs", f"{share},mount_tag=root,path=/",
            "-virtfs", f"{share},mount_tag=programs,path={project}/build/release"]


class Instrument(Machine):
    def start_screen(self):
        settings = ("Section ServerFlags", "Option AutoAddDevices false", "EndSection", "Section InputDevice",
                    "Identifier keys", "Driver evdev", "Option Device /dev/keyboard", "EndSection",
                    "Section ServerLayout", "Identifier layout", "InputDevice keys CoreKeyboard", "EndSection")
        lines = " ".join("'" + " ".join([line.split()[0], *(f'"{word}"' for word in line.split()[1:])]) + "'"
                         for line in settings)
        self.run("ln -s /dev/input/$(basename /sys/bus/usb/drivers/usbhid/*/0003*/input/input*/event*) /dev/keyboard")
        self.run(rf"printf '%s\n' {lines} >/run/xorg.conf")
        self.run("Xorg :0 -config /run/xorg.conf -noreset -nolisten tcp -logfile /run/xorg.log >/run/xorg.out 2>&1 &")
        # The first key would make the server change its keyboard, and a program would not notice.
        self.wait("DISPLAY=:0 setxkbmap -rules evdev -layout us 2>/dev/null", 120)
        self.press("shift")
        self.run(f"mkdir -p {DEVICE}/FlashDisk '{DEVICE}/USB HD'")

    def start_updater(self, arguments="", screen="", driver="llvmpipe"):
        self.run(f"DISPLAY=:0 LIBGL_ALWAYS_SOFTWARE=1 GALLIUM_DRIVER={driver} UPDATER_SCREEN={screen} "
                 f"UPDATER_DEVICE={DEVICE} /run/programs/updater {arguments} >/run/updater.out 2>&1 & "
                 "echo $! >/run/updater.pid")

    def wait_for_end(self):
        """Waits until the updater has ended or shows a failed update, and returns whether it succeeded."""
        self.wait(ENDED, 900)
        self.run("kill $(cat /run/updater.pid) $(pidof KSTRL.exe) 2>/dev/null; true")
        return "Update succeeded" in self.run("cat /run/updater.out")

    def mount(self, device, options, folder):
        self.run(f"mount -t {options[0]} -o {options[1]} {device} '{DEVICE}/{folder}'")

    def update(self):
        """Runs a whole update, and returns whether the updater says that it succeeded."""
        self.start_updater("/auto", "64x48", "softpipe")
        return self.wait_for_end()

    def record_update(self, file_system, options, disk, record):
        """Updates a disk, takes it away without unmounting, and leaves the record of its writes."""
        shutil.copyfile(disk, f"{record}.disk")
        open(record, "wb").close()
        device = self.plug({"driver": "blklogwrites", "file": raw(f"{record}.disk"), "log": raw(record)}, "scsi")
        self.mount(device, (file_system, options), "FlashDisk")
        if not self.update():
            raise Failure("the update did not succeed: " + self.run("cat /run/updater.out"))
        self.pull("scsi")
        self.run(f"umount -l {DEVICE}/FlashDisk")

    def repair(self, file_system, options, image):
        """Does what the technician's guide and `updatekey diagnose` say, in their order."""
        device = self.plug(raw(image), "scsi")
        if file_system == "vfat":
            self.run(f"fsck.vfat -a {device}; fsck.vfat -a {device}", check=False)
        self.mount(device, (file_system, options), "FlashDisk")
        flash = f"{DEVICE}/FlashDisk/VELD"
        diagnosis = json.loads(self.run(
            f"/run/programs/updatekey --json diagnose {DEVICE}/FlashDisk --machine any "
            f"--manifest '{DEVICE}/USB HD' || [ $? = 1 ]"))
        for step in diagnosis["advice"]:
            if step["action"] == "save":
                self.run(f"mkdir -p /run/saved; cp -r {flash}/{step['folder']} /run/saved/")
            elif step["action"] == "remove":
                self.run(f"rm -r {flash}/{step['folder']}")
            elif step["action"] == "rename":
                self.run(f"mv {flash}/{step['folder']} {flash}/{step['to']}")
            elif step["action"] == "update-again" and not self.update() and "a second time" in step["text"]:
                self.update()
        self.run(f"umount {DEVICE}/FlashDisk")
        self.pull("scsi")
        return [step["action"] for step in diagnosis["advice"]]


def judge_states(mount, file_system, disk, record, device, folder):
    """Judges all states of one mount. Returns the counts, the complaints and an image of each kind."""
    os.makedirs(folder)
    row = {"mount": mount, "states": 0, "torn": 0, "not whole": 0, "untrue": 0, "complaints": [], "kinds": {}}
    chance = random.Random(SEED)
    seen = {}
    for name, image in states(disk, record, folder, SEED):
        verdict = Verdict(image, file_system, device, f"{folder}/copy")
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
            subprocess.run(["cp", "--sparse=always", image, file], check=True)
            row["kinds"][verdict.kind] = (name, file)
    return row


def power_cuts(project, folder, mounts):
    """Cuts the power of updates on disks that are mounted in these ways, and repairs a state of each kind.
    Returns a row of the table for each."""
    device = f"{project}/build/instrument/small"
    rows, repaired = [], set()
    make_disk("vfat", f"{device}/USB HD", f"{folder}/stick")
    with Instrument(emulator(project), folder) as machine:
        machine.start_screen()
        machine.mount(machine.plug(raw(f"{folder}/stick"), "usb"), ("vfat", "ro,utf8"), "USB HD")
        for mount in mounts:
            file_system, options = MOUNTS[mount]
            disk = f"{folder}/{mount.replace(', ', '-')}"
            make_disk(file_system, f"{device}/FlashDisk", disk)
            machine.record_update(file_system, options, disk, f"{disk}.record")
            row = judge_states(mount, file_system, disk, f"{disk}.record", device, f"{disk}.states")
            row["repaired"] = row["healed"] = 0
            for kind, (name, image) in row.pop("kinds").items():
                if (file_system, kind) in repaired:
                    continue
                repaired.add((file_system, kind))
                steps = machine.repair(file_system, options, image)
                verdict = Verdict(image, file_system, device, f"{folder}/copy")
                row["repaired"] += 1
                row["healed"] += verdict.new and not verdict.torn
                if not verdict.new or verdict.torn:
                    row["complaints"].append(f"{mount}: {name}: not healed by {', '.join(steps)}: {verdict.folders}")
            rows.append(row)
    return rows


def expect_picture(machine, name, project, folder):
    """Waits until the screen looks like a golden picture, which was taken on the background of the large
    device. A colour may differ by two levels."""
    background = f"{project}/build/instrument/large/FlashDisk/VELD/ORBUI/data/KSTRL-menubg4.raw"
    golden = numpy.asarray(Image.open(f"{project}/tests/golden/{name}.png").convert("RGBA"))
    height, width = golden.shape[:2]
    card = numpy.fromfile(background, numpy.uint8).reshape(-1, width, 1)[:height]
    expected = numpy.where(golden[:, :, 3:] > 0, golden[:, :, :3], card).astype(int)
    end = time.monotonic() + 300
    while True:
        machine.picture(f"{folder}/{name}.png")
        shown = numpy.asarray(Image.open(f"{folder}/{name}.png").convert("RGB"))
        if shown.shape == expected.shape and numpy.abs(shown - expected).max() <= 2:
            return
        if time.monotonic() > end:
            shutil.copy(f"{folder}/{name}.png", f"{project}/build/instrument/")
            raise Failure(f"the screen differs from {name}.png, see build/instrument/{name}.png")
        time.sleep(0.3)


def update_by_keys(project, folder, disk):
    """Updates with a stick that is plugged in and pulled out while the screen waits, and pulled out again
    while the update copies; then repeats the update."""
    device = f"{project}/build/instrument/large"
    disk = f"{folder}/{disk}"
    make_disk("vfat", f"{device}/FlashDisk", disk)
    with Instrument(emulator(project), folder) as machine:
        machine.start_screen()
        machine.mount(machine.plug(raw(disk), "scsi"), MOUNTS["vfat"], "FlashDisk")

        def plug_in():
            stick = machine.plug(raw(f"{project}/build/instrument/stick"), "usb")
            machine.mount(stick + "1", ("vfat", "ro,utf8"), "USB HD")

        def pull_out():
            machine.pull("usb")
            machine.run(f"umount -l '{DEVICE}/USB HD'")

        machine.start_updater()
        expect_picture(machine, "en-waiting", project, folder)
        plug_in()
        expect_picture(machine, "en-ready", project, folder)
        pull_out()
        plug_in()
        machine.press_until("home", f"[ $(find {DEVICE}/FlashDisk/VELD/Update -type f 2>/dev/null | wc -l) -gt 8 ]")
        pull_out()
        machine.wait_for_end()
        plug_in()
        machine.start_updater()
        machine.press_until("home", ENDED)
        if not machine.wait_for_end():
            raise Failure("the update by keys did not succeed: " + machine.run("cat /run/updater.out"))
        machine.run(f"umount {DEVICE}/FlashDisk")
    verdict = Verdict(disk, "vfat", device, f"{folder}/copy")
    if not verdict.new:
        raise Failure(f"after the update by keys the folders are {verdict.folders}")
    return "instrument: an update by keys, after one during which the stick was pulled out, installed the key"


def job(arguments):
    function, project, folder, argument = arguments
    os.makedirs(folder)
    try:
        return function(project, folder, argument)
    except (OSError, subprocess.SubprocessError) as error:
        return Failure(f"{function.__name__} {argument}: {error}")
    except Failure as failure:
        return failure


def main():
    project = sys.argv[1]
    folder = tempfile.mkdtemp()
    jobs = [(power_cuts, ["vfat", "vfat, flush", "vfat, sync"]), (power_cuts, ["ext4"]), (update_by_keys, "disk")]
    with multiprocessing.Pool(2) as pool:
        results = pool.map(job, [(function, project, f"{folder}/{number}", argument)
                                 for number, (function, argument) in enumerate(jobs)], 1)
    print(f"instrument: random states from seed {SEED}")
    print("| mount | states | cut within a move | not whole | \"succeeded\" but not new | repaired | healed |")
    print("|---|---|---|---|---|---|---|")
    complaints = [str(result) for result in results if isinstance(result, Failure)]
    for result in results:
        if isinstance(result, list):
            for row in result:
                print("|", " | ".join(str(row[name]) for name in
                                      ("mount", "states", "torn", "not whole", "untrue", "repaired", "healed")), "|")
                complaints += row["complaints"]
    print(*(result for result in results if isinstance(result, str)), sep="\n")
    for complaint in complaints[:40]:
        print(f"instrument: {complaint}", file=sys.stderr)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
