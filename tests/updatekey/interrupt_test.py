"""Tests that a command which is interrupted leaves nothing behind: neither files nor programs. Each command is held
until the signal has come."""

import fcntl
import os
import pathlib
import shutil
import signal
import subprocess
import time

from user import BUILD, PROGRAM, UserTest, write


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
    def setUp(self):
        super().setUp()
        self.image, self.device, self.new = self.work / "key.img", self.work / "device", self.work / "new"
        self.expect(0, "image", "--machine", "any", self.key, self.image)
        shutil.copytree(self.key / "VELD", self.device / "FlashDisk" / "VELD")
        write(self.app / "held")
        # Programs that do their work, interrupt the command that called them, and do not end by themselves.
        for program in (shutil.which("mcopy"), BUILD / "updater"):
            stand_in = self.work / "bin" / os.path.basename(program)
            write(stand_in, f'#!/bin/sh\n"{program}" "$@"\nkill -s $SIGNAL $PPID\nexec sleep 300\n'.encode())
            stand_in.chmod(0o755)

    def interrupt(self, number, hold, *arguments):
        """Nothing but what was there before may stay. `hold` returns when the signal is to be sent."""
        temporary = self.work / "temporary"
        temporary.mkdir()
        self.addCleanup(lambda: [os.kill(int(program), signal.SIGKILL) for program in programs_with(str(temporary))])
        before = set(self.work.rglob("*"))
        what = f"{number.name}: {arguments[0]}"
        variables = {"TMPDIR": str(temporary), "SIGNAL": str(int(number)),
                     "PATH": f"{self.work / 'bin'}:{os.environ['PATH']}"}
        process = subprocess.Popen([PROGRAM, *arguments], env={**os.environ, **variables}, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, start_new_session=True)
        if hold(process):
            process.send_signal(number)
        self.assertEqual(process.wait(), -number, what)
        end = time.monotonic() + 60  # no expectation of speed, only the end of hope
        while programs_with(str(temporary)):
            self.assertLess(time.monotonic(), end, f"{what}: a program still runs")
            time.sleep(0.01)
        self.assertEqual(set(self.work.rglob("*")), before, what)
        temporary.rmdir()

    def test_leaves_nothing_behind(self):
        signal.pthread_sigmask(signal.SIG_BLOCK, [signal.SIGIO])
        for number in (signal.SIGINT, signal.SIGTERM):
            signal.signal(number, signal.SIG_DFL)  # a shell starts what runs in the background with SIGINT ignored
            # Who opens the file waits until it is closed here, and this program gets SIGIO.
            with open(self.app / "held", "r+b") as held:
                fcntl.fcntl(held, fcntl.F_SETLEASE, fcntl.F_WRLCK)
                self.interrupt(number, lambda _: signal.sigtimedwait([signal.SIGIO], 60), *self.inputs(self.new))
            self.interrupt(number, lambda _: False, "check", self.image)
            self.interrupt(number, lambda _: False, "rehearse", "--machine", "any", "--hidden", "--updater",
                           self.work / "bin" / "updater", "--device", self.device, self.key)
