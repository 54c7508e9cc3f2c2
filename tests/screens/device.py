"""The device of a run: its files, its log, and its programs."""

import contextlib
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time

import numpy
from PIL import Image

from card import test_card
from steps import KEY_NOTES, LAST_LOG, OTHERS, ROOT

BACKGROUNDS = {
    'card': test_card,
    'turned': lambda: test_card()[::-1],
    'demo': lambda: numpy.asarray(Image.open(ROOT / 'data/background.png').convert('L')),
    'none': lambda: None,
}


class Device:
    """The device's files: versions 1 installed, version 2 on a key that is plugged in later."""

    def __init__(self, run, screen, options):
        self.run, self.wine, self.made = run, options.wine, time.time()
        self.root = pathlib.Path(os.environ['WINEPREFIX'], 'drive_c') if self.wine else \
            pathlib.Path(tempfile.mkdtemp(prefix='screens-'))
        for name in ('FlashDisk', 'USB HD', 'key'):
            shutil.rmtree(self.root / name, ignore_errors=True)
        (self.root / 'USB HD').mkdir()
        self.flash, self.key = self.root / 'FlashDisk/VELD', self.root / 'key'
        standin = options.release / 'kstrl-standin'
        for folder, version in ((self.flash, 1), (self.key, 2)):
            self.write(folder / 'KSTRL/version.txt', str(version))
            self.write(folder / 'ORBUI/data/version.txt', str(version))
            if f'application {version}' in run.device:
                shutil.copy(standin, folder / 'KSTRL/KSTRL.exe')
        self.write(self.key / 'ORBUI/data/help/en.txt', 'help')
        self.write(self.flash / 'Updater-log.txt', LAST_LOG)
        if 'incomplete key' in run.device:
            (self.key / 'KSTRL/version.txt').unlink()
        if 'no notes' not in run.device:
            self.write(self.key / 'kstrXReleaseNotes.txt', KEY_NOTES)
        data = self.flash / 'ORBUI/data'
        if 'no fonts' not in run.device:
            shutil.copytree(options.release / 'guidata/fonts', data / 'fonts')
        if 'no texts' not in run.device:
            shutil.copytree(options.release / 'guidata/lang', data / 'lang')
        picture = BACKGROUNDS[run.background]()
        if picture is not None:
            (data / 'KSTRL-menubg4.raw').write_bytes(picture.tobytes())
        if 'stray' in run.device:  # an unexpected folder, which makes the update fail at its end
            self.write(self.flash / 'Update/stray/x', '')
        if 'large file' in run.device:
            self.write(self.key / 'KSTRL/large.dll', '')
            os.truncate(self.key / 'KSTRL/large.dll', 64000000)
        self.set_language(screen)
        self.others = []
        if 'applications run' in run.device:
            for name in ('KSTRL.exe', 'KSTRLLF.exe', *OTHERS.split(), 'KSTRL.exe'):
                if not (self.flash / 'KSTRL' / name).exists():
                    shutil.copy(standin, self.flash / 'KSTRL' / name)
                self.others.append(subprocess.Popen(['setpriv', '--pdeathsig', 'KILL', self.flash / 'KSTRL' / name],
                                                    stdout=subprocess.DEVNULL))
            while len(self.running().split()) < 5:
                time.sleep(0.01)

    @staticmethod
    def write(path, text):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text if isinstance(text, bytes) else text.encode())

    def set_language(self, screen):
        if self.wine:
            # Wine's desktop process belongs to the display of the first program.
            subprocess.run([self.wine, 'reg', 'add', r'HKLM\SOFTWARE\VELD\KESTREL\SYSTEM_CONFIG', '/v', 'LANGUAGE',
                            '/t', 'REG_DWORD', '/d', str(self.run.language), '/f'], check=True,
                           cwd=self.root, env={**os.environ, 'DISPLAY': screen.name}, stdout=subprocess.DEVNULL)
        else:
            self.write(self.root / 'registry.reg', 'Windows Registry Editor Version 5.00\n\n'
                       '[HKEY_LOCAL_MACHINE\\SOFTWARE\\VELD\\KESTREL\\SYSTEM_CONFIG]\n'
                       + ('' if 'no language' in self.run.device else f'"LANGUAGE"=dword:{self.run.language}\n'))

    def plug_in(self):
        self.key.rename(self.root / 'USB HD/VELD')

    def unplug(self):
        (self.root / 'USB HD/VELD').rename(self.key)

    def log(self):
        """The log after its first line, with the time of a message as TIME; or the last run's log."""
        try:
            text = (self.flash / 'Updater-log.txt').read_bytes().decode('latin-1').replace('\r\n', '\n')
        except OSError:
            return ''
        for moment in range(int(self.made), int(time.time()) + 60, 60):  # each minute of the run
            text = text.replace(time.strftime('%Y/%-m/%-d %-H:%M', time.localtime(moment)), 'TIME')
        if text == LAST_LOG:
            return text
        first, _, rest = text.partition('\n')
        return rest if first == 'Opening log at TIME' else 'wrong first line: ' + text

    def folders(self):
        """The folders of the installation, with their versions."""
        found = []
        for folder in sorted(entry.name for entry in self.flash.iterdir() if entry.is_dir()):
            data = 'data' if folder.startswith('ORBUI') else ''
            try:
                found.append(folder + '=' + (self.flash / folder / data / 'version.txt').read_text())
            except OSError:
                found.append(folder)
        return ' '.join(found)

    def processes(self):
        """The processes of the device's programs: their numbers, with the names of the programs."""
        found = {}
        for number in filter(str.isdigit, os.listdir('/proc')):
            try:
                folder, program = os.path.split(os.readlink(f'/proc/{number}/exe'))
            except OSError:
                continue
            if folder.startswith(f'{self.root}/'):
                found[int(number)] = program
        return found

    def running(self):
        return ' '.join(sorted(self.processes().values()))

    def remove(self):
        while self.processes():
            for process in self.processes():
                with contextlib.suppress(ProcessLookupError):
                    os.kill(process, signal.SIGKILL)
            for other in self.others:
                other.poll()
            time.sleep(0.01)
        if not self.wine:
            shutil.rmtree(self.root)
