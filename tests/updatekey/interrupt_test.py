"""Tests that a command which is interrupted leaves nothing behind: neither files nor programs."""

import os
import pathlib
import shutil
import signal
import subprocess
import time

from user import PROGRAM, UserTest


def wait_for(what, condition):
    """Waits for an event; a minute is no expectation of speed, only the end of hope."""
    end = time.monotonic() + 60
    while not condition():
        if time.monotonic() > end:
            raise TimeoutError(what)
        time.sleep(0.005)


def programs_with(text):
    """The programs that have a text in their environment or on their command line."""
    found = []
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if text.encode() in (process / "environ").read_bytes() + (process / "cmdline").read_bytes():
                found.append(process.name)
        except OSError:
            pass  # it has ended
    return found


class Interrupt(UserTest):
    def interrupt(self, number, arguments, begun):
        """Sends a signal once `begun` holds. Nothing but what was there before may stay."""
        temporary = self.work / "temporary"
        temporary.mkdir()
        self.addCleanup(lambda: [os.kill(int(program), signal.SIGKILL) for program in programs_with(str(temporary))])
        before = set(self.work.rglob("*"))
        what = f"{signal.Signals(number).name}: {arguments[0]}"
        process = subprocess.Popen([PROGRAM, *arguments], env={**os.environ, "TMPDIR": str(temporary)},
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
        wait_for(what, lambda: begun(temporary) or process.poll() is not None)
        process.send_signal(number)
        self.assertEqual(process.wait(), -number, what)
        wait_for(f"the end of all programs after {what}", lambda: programs_with(str(temporary)) == [])
        self.assertEqual(set(self.work.rglob("*")), before, what)
        shutil.rmtree(temporary)

    def test_leaves_nothing_behind(self):
        # A large file, so that the signal comes while the command works.
        with open(self.app / "large", "wb") as large:
            large.truncate(100 << 20)
        image, device, new = self.work / "large.img", self.work / "device", self.work / "new"
        self.make(0, self.work / "large")
        self.expect(0, "image", "--machine", "any", self.work / "large", image)
        shutil.copytree(self.key / "VELD", device / "FlashDisk" / "VELD")
        for number in (signal.SIGINT, signal.SIGTERM):
            self.interrupt(number, self.inputs(new), lambda _: list(self.work.glob("new-*/VELD")))
            self.interrupt(number, ["check", image], lambda temporary: list(temporary.glob("*/VELD")))
            self.interrupt(number, ["rehearse", "--machine", "any", "--hidden", "--device", device, self.key],
                           lambda temporary: list(temporary.glob("*/output.txt")))
