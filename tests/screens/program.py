"""The updater as a process."""

import os
import subprocess
import tempfile


class Program:
    """The updater, started as a user would; with run.stepped, one frame at a time."""

    def __init__(self, run, device, screen, options, arguments):
        self.stepped = run.stepped
        command = [options.build / ('tests/screens/stepped_updater' if run.stepped else 'updater')]
        if not run.stepped and 'UPDATER_UNDER_TEST' in os.environ:
            command = [os.environ['UPDATER_UNDER_TEST']]
        if options.wine:
            command = [options.wine, 'updater.exe']
        if run.shell:
            command = ['bash', '-c', run.shell] + command
        self.files = [tempfile.TemporaryFile(), tempfile.TemporaryFile()]
        self.process = subprocess.Popen(
            ['setpriv', '--pdeathsig', 'KILL', *command, *arguments], cwd=device.root,
            env={**os.environ, 'DISPLAY': screen.name, 'UPDATER_DEVICE': str(device.root),
                 'UPDATER_SCREEN': '%dx%d' % run.size, 'LIBGL_ALWAYS_SOFTWARE': '1', **run.variables},
            stdin=subprocess.PIPE if run.stepped else subprocess.DEVNULL,
            stdout=subprocess.PIPE if run.stepped else self.files[0], stderr=self.files[1])
        self.calls = ''
        if self.stepped:
            self.read_calls()

    def read_calls(self):
        """Reads the calls up to the start of the next frame, or to the end of the program. No frame has
        as many as 10,000 bytes of them."""
        while not self.calls.endswith('Sleep 2\n') and len(self.calls) < 10000:
            line = self.process.stdout.readline().decode()
            if not line:
                self.process.wait()
                break
            self.calls += line

    def frame(self, line=''):
        self.calls = ''
        self.process.stdin.write(line.encode() + b'\n')
        self.process.stdin.flush()
        self.read_calls()

    def output(self):
        """What it printed; the calls of the last frame when it runs frame by frame."""
        if self.stepped:
            return self.calls
        return b''.join(os.pread(file.fileno(), 1 << 20, 0) for file in self.files[:1]).decode()

    def errors(self):
        return os.pread(self.files[1].fileno(), 1 << 20, 0).decode()

    def end(self):
        self.process.kill()
        self.process.wait()
