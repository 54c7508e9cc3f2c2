"""The virtual instrument: a machine with a screen, a keyboard, a flash disk and a USB port, which runs
the updater."""

import subprocess

from machine import UNTIL, Machine
from power import copy

DEVICE = "/run/device"
FLASH = f"{DEVICE}/FlashDisk/VELD"
FOLDERS = {"usb": f"{DEVICE}/USB HD", "scsi": f"{DEVICE}/FlashDisk"}  # of the disk on each bus
PROCESSORS = {  # the emulator and its first arguments, the folder of the programs, whether pictures are compared
    "amd64": (("qemu-system-x86_64", "-machine", "q35", "-cpu", "max", "-append", "console=ttyS0 mitigations=off "),
              "release", True),
    # llvmpipe draws no text in this emulator, and another driver takes minutes for a picture.
    "armhf": (("qemu-system-arm", "-machine", "virt,highmem=off", "-cpu", "cortex-a15", "-append", "console=ttyAMA0 "),
              "linux-arm", False),
}
ENDED = "{ ! kill -0 $(cat /run/updater.pid) 2>/dev/null || grep -q 'Update failed' /run/updater.out; }"


def make_disk(file_system, content, file):
    """Makes a disk without partitions that contains a folder's files; none when `content` is None."""
    if file_system == "ext4":
        source = ["-d", content] if content else []
        subprocess.run(["mke2fs", "-q", "-t", "ext4", "-E", "lazy_itable_init=0", *source, file, "24M"],
                       check=True, stdout=subprocess.DEVNULL)
    else:
        subprocess.run(["mkfs.vfat", "-F", "32", "-C", file, str(300 << 10)], check=True, stdout=subprocess.DEVNULL)
        if content:
            subprocess.run(["mcopy", "-s", "-i", file, f"{content}/VELD", "::/"], check=True)


def raw(file):
    return {"driver": "file", "filename": file, "cache": {"no-flush": True}}


def recorded(disk, record):
    """A copy of a disk, of which the emulator records every write and flush. It counts the entries of the
    record at each flush."""
    copy(disk, f"{record}.disk")
    open(record, "wb").close()
    return {"driver": "blklogwrites", "file": raw(f"{record}.disk"), "log": raw(record),
            "log-super-update-interval": 1 << 40}


class Instrument(Machine):
    def __init__(self, project, processor, folder):
        self.folder = folder
        (emulator, *arguments), programs, self.draws = PROCESSORS[processor]
        self.made = f"{project}/build/instrument/{processor}"
        tree = "/" if processor == "amd64" else f"{project}/build/trees/instrument-{processor}"
        arguments[-1] += "quiet panic=-1 no_timer_check"
        share = "local,security_model=none,readonly=on,multidevs=remap"
        super().__init__([emulator, *arguments, "-m", "1024", "-kernel", f"{self.made}/linux",
                          "-initrd", f"{self.made}/memory",
                          "-virtfs", f"{share},mount_tag=root,path={tree}",
                          "-virtfs", f"{share},mount_tag=programs,path={project}/build/{programs}"], folder)

    def start_screen(self):
        # The machine finds its keyboard by and by.
        self.wait("ln -sf /dev/input/$(basename /sys/bus/usb/drivers/usbhid/*/0003*/input/input*/event*) /dev/keyboard && "
                  "[ -c /dev/keyboard ]")
        # The server writes its number when it is ready. It never darkens the screen.
        self.run("Xorg :0 -displayfd 9 -config /run/xorg.conf -extension GLX -noreset -nolisten tcp "
                 "-s 0 -dpms -logfile /run/xorg.log 9>/run/xorg.ready >/run/xorg.out 2>&1 & echo $! >/run/xorg.pid")
        self.wait("[ -s /run/xorg.ready ] || ! kill -0 $(cat /run/xorg.pid)")
        self.run("DISPLAY=:0 setxkbmap -rules evdev -layout us")
        self.run(f"mkdir -p {DEVICE}/FlashDisk '{DEVICE}/USB HD'")

    def start_updater(self, arguments="", screen="", draws=True):
        draw = "LIBGL_ALWAYS_SOFTWARE=1 GALLIUM_DRIVER=llvmpipe" if draws else "LD_PRELOAD=/run/programs/draw-nothing.so"
        self.run(f"exec >/run/updater.out 9>/run/frames 2>&1; DISPLAY=:0 {draw} UPDATER_SCREEN={screen} "
                 f"UPDATER_DEVICE={DEVICE} /run/programs/updater {arguments} & echo $! >/run/updater.pid")

    def wait_for_frames(self):
        """Waits until an updater that does not draw has done the whole work of a frame."""
        self.run("end=$(($(stat -c %s /run/frames) + 2)); " + UNTIL.format(
            "[ $(stat -c %s /run/frames) -ge $end ] || ! kill -0 $(cat /run/updater.pid)"))

    def wait_for_end(self):
        """Waits until the updater has ended or shows a failed update, and returns whether it succeeded."""
        self.wait(ENDED)
        self.run("for id in $(cat /run/updater.pid) $(pidof KSTRL.exe); do while kill $id; do sleep 0.1; done; done 2>/dev/null")
        return "Update succeeded" in self.output()

    def output(self):
        return self.run("cat /run/updater.out")

    def insert(self, bus, disk, file_system, options, partition=""):
        """Plugs a disk in and mounts it."""
        self.run(f"mount -t {file_system} -o {options} {self.plug(disk, bus, partition)} '{FOLDERS[bus]}'")

    def remove(self, bus):
        """Unmounts a disk and pulls it out."""
        self.run(f"umount '{FOLDERS[bus]}'")
        self.pull(bus)

    def tear_out(self, bus):
        """Pulls a disk out, and unmounts it afterwards."""
        self.pull(bus)
        self.run(f"umount -l '{FOLDERS[bus]}'")

    def update(self):
        """Runs a whole update without drawing, and returns whether the updater says that it succeeded."""
        self.start_updater("/auto", "64x48", draws=False)
        return self.wait_for_end()
