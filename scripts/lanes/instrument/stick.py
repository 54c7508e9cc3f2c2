"""What `updatekey` does with sticks, and what a wrong way of mounting them does."""

import os
import shutil

from instrument import DEVICE, FLASH, make_disk, raw, recorded
from judge import output_of, tree
from machine import Failure, expect
from power import Image, copy, entries

STICK = "/run/sticks/MY STICK"
ACCEPTED = "notes-too-many-lines,notes-line-too-wide,notes-missing-glyph"  # of the notes of the golden pictures


def write_sticks(instrument):
    """Lists and writes a stick, pulls it out at the word "good", and checks that it has everything then."""
    key = f"{instrument.made}/large/USB HD"
    disk, record, found = (f"{instrument.folder}/stick{kind}" for kind in ("", ".record", ".found"))

    def updatekey(*arguments):
        words = " ".join(f"'{word}'" for word in arguments)
        return instrument.run(f"HOME=/run/sticks /run/programs/updatekey {words}; echo code $?")

    def write(*arguments):
        return updatekey("write", "--machine", "any", "--languages", "en", "--accept", ACCEPTED, *arguments)

    def plug_in(node, file_system="vfat"):
        device = instrument.plug(node, "usb")
        # As a stick whose cache the system knows. The kernel would send no flush to the emulated one.
        cache = f"/sys/block/{os.path.basename(device)}/device/scsi_disk/*/cache_type"
        instrument.run(f"echo temporary write back | tee {cache}; mkdir -p '{STICK}'; "
                       f"mount -t {file_system} {device} '{STICK}'")

    def pull_out():
        instrument.pull("usb")
        instrument.run(f"umount -l '{STICK}'")

    def require_key(image):
        shutil.rmtree(found, ignore_errors=True)
        os.makedirs(found)
        output_of("mcopy", "-s", "-n", "-i", image, "::/", found)
        if tree(f"{found}/VELD") != tree(f"{key}/VELD"):
            raise Failure(f"a stick is called good, but has {sorted(tree(found))[:5]} and not the key")

    make_disk("ext4", None, f"{disk}.ext4")
    plug_in(raw(f"{disk}.ext4"), "ext4")
    expect("a stick with ext4", write(key, STICK), "has the file system ext4", "code 1")
    pull_out()

    make_disk("vfat", None, disk)
    plug_in(recorded(disk, record))
    expect("sticks", updatekey("sticks"), STICK, "FAT32", "code 0")
    expect("sticks --json", updatekey("sticks", "--json"), f'"folder": "{STICK}"', '"fileSystem": "FAT32"')
    for words, *arguments in (("holds the key itself", key, "/"), ("no stick is mounted there", key, "/tmp"),
                              ("the folder /run/sticks of this computer", "--not-a-stick", key, "/run/sticks"),
                              ("are the same stick", key, STICK, f"{STICK}/../MY STICK")):
        expect(f"write {arguments}", write(*arguments), words)
    if instrument.run(f"find /run/sticks /tmp -name 'VELD*'; ls -A '{STICK}'"):
        raise Failure("a refused write has written")
    expect("write", write(key, STICK), "good", "code 0")
    # The emulator adds a flush of its own when the stick is pulled out.
    copy(record, f"{record}.good")
    pull_out()
    flushed = Image(disk, f"{record}.flushed")
    for sectors in entries(f"{record}.good"):
        flushed.write(sectors or [])
    require_key(flushed.file)

    plug_in(raw(f"{record}.disk"))
    expect("a key onto itself", write(STICK, STICK), "holds the key itself", "code 2")
    expect("the stick's version", updatekey("sticks"), "update 2.14.3")
    expect("write --replace", write("--replace", "--eject", key, STICK), "good", "unmount it before you pull it out")
    instrument.run(f"umount '{STICK}'")
    instrument.pull("usb")
    require_key(f"{record}.disk")
    return "a stick that is called good has flushed everything; sticks lists it; six wrong targets are refused"


def mount_options(instrument):
    """Updates from a stick that is mounted with options that lose names."""
    device, folder, image = f"{instrument.made}/small", f"{instrument.folder}/accents", f"{instrument.folder}/accents.disk"
    shutil.copytree(f"{device}/USB HD", folder)
    os.mkdir(f"{folder}/VELD/ORBUI/data/données")
    for name in ("KSTRL/été.dat", "ORBUI/data/données/a.dat"):
        shutil.copyfile(f"{folder}/VELD/KSTRL/version.txt", f"{folder}/VELD/{name}")
    make_disk("vfat", folder, image)
    for options, *texts in (
            ("utf8", "KSTRL/été.dat", "ORBUI/data/données/a.dat", "Update succeeded"),
            ("iocharset=iso8859-1,utf8=no", "Not listed, because no path can contain such a name", "Error 123 ::SetFileAttributes"),
            ("utf8,shortname=lower",)):
        instrument.run(f"rm -rf {DEVICE}/FlashDisk/*; cp -r '{device}/FlashDisk/VELD' {DEVICE}/FlashDisk/")
        instrument.insert("usb", raw(image), "vfat", f"ro,{options}")
        instrument.start_updater("/auto", "64x48", draws=False)
        if not texts:  # no key is found: the updater waits for one
            instrument.wait_for_frames()
            instrument.run(f"[ ! -e {FLASH}/Update ] && kill $(cat /run/updater.pid)")
        instrument.wait_for_end()
        expect(options, instrument.output() + instrument.run(f"find {FLASH}; cat {FLASH}/Updater-log.txt"), *texts)
        instrument.remove("usb")
    return "names with accents are whole with utf8, and told of with iso8859-1; shortname=lower hides the key"
