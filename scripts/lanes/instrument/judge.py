"""Judges a flash disk after a power cut, by the programs that other people wrote for its file system."""

import os
import shutil
import subprocess

COMPONENTS = ("KSTRL", "ORBUI")
NAMES = [*COMPONENTS, "KSTRL_old", "ORBUI_old", "Update", "Updater-log.txt"]


def output_of(*command, given=""):
    done = subprocess.run(command, input=given.encode(), stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          timeout=600, check=False)
    return done.stdout.decode(errors="replace")


def tree(folder):
    """The content of each file below a folder, by its path; None when there is no such folder."""
    if not os.path.isdir(folder):
        return None
    files = {}
    for parent, _folders, names in os.walk(folder):
        for name in names:
            with open(f"{parent}/{name}", "rb") as file:
                files[os.path.relpath(f"{parent}/{name}", folder)] = file.read()
    return files


def read_fat(image, folder):
    """Copies the installation to `folder`. Returns what the check of the file system says."""
    said = output_of("fsck.vfat", "-n", image)
    # The program that copies would follow a folder that points to the root folder without an end.
    endless = [name for name in NAMES if f"/VELD/{name}\n Start does point to root directory" in said]
    for name in endless:
        os.mkdir(f"{folder}/{name}")
    sources = [f"::/VELD/{name}" for name in NAMES if name not in endless]
    output_of("mcopy", "-s", "-n", "-i", image, *sources, folder)
    return said


def read_ext4(image, folder):
    shutil.copyfile(image, f"{folder}/image")
    said = output_of("e2fsck", "-fy", f"{folder}/image")
    output_of("debugfs", "-f", "-", f"{folder}/image", given="".join(f"rdump /VELD/{name} {folder}\n" for name in NAMES))
    return said


class Verdict:
    """What a power cut left on a disk: `folders` has the version of each installed folder, and `wrong`
    a sentence for each broken promise. `torn` says whether a move was cut between two of its writes,
    so that the old and the new name lead to the same folder, or the new name leads nowhere yet."""

    def __init__(self, image, file_system, device, folder):
        """`device` has the installation before the update, and the key; `folder` is for copies."""
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(folder)
        said = (read_ext4 if file_system == "ext4" else read_fat)(image, folder)
        self.wrong = []
        self.folders = []
        self.torn = "share clusters" in said
        for name in COMPONENTS:
            found, old = tree(f"{folder}/{name}"), tree(f"{device}/FlashDisk/VELD/{name}")
            new = tree(f"{device}/USB HD/VELD/{name}")
            kept = found == old or tree(f"{folder}/{name}_old") == old
            if found == {} and file_system != "ext4" and kept and tree(f"{folder}/Update/{name}") == new:
                self.torn = True
                found = None
            self.folders.append("missing" if found is None else "old" if found == old
                                else "new" if found == new else "neither")
            if self.folders[-1] == "neither":
                self.wrong.append(f"{name} is neither the whole old nor the whole new one")
            if self.folders[-1] == "missing" and not kept:
                self.wrong.append(f"{name} is missing, and {name}_old is not the whole old one")
        self.new = self.folders == ["new", "new"]
        self.succeeded = b"Update succeeded at " in tree(folder).get("Updater-log.txt", b"")
        if self.succeeded and not self.new:
            self.wrong.append("the log says \"Update succeeded\", but not everything is new")
        staging = os.path.isdir(f"{folder}/Update")
        self.kind = (*self.folders, staging, self.torn)
        self.needs_repair = staging or self.torn or not set(self.folders) <= {"old", "new"}
