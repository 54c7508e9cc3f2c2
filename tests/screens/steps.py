"""What the program does, step by step.

A step is an event, and what holds after it:
  event   start [ARGUMENT ...]   starts the program
          plug in, unplug        the key
          frame [LINE]           lets the stepped program run one frame, after what LINE says
          close, SIGTERM         from outside
          hang                   SIGTERM while the X server does not answer
          destroy                the window, as another program may
          otherwise the keys pressed, by their X names
  shows   the picture in tests/golden that the window shows; the language and an unusual size are
          added to its name
  log     what the log gains
  disk    the folders of the installation with their versions; None: as before
  prints  the standard output from now on; for the stepped program the calls of the frame; a list
          has texts that must be in the standard output or the standard error; None: anything
  exits   the exit code, when the program ends; False: it does not end
  runs    the programs of the device that run then; None: none when the program ends
Everything holds as soon as it is reached, and nothing else may be in the log."""

import pathlib
import re
from typing import NamedTuple, Optional

ROOT = pathlib.Path(__file__).resolve().parents[2]
LANGUAGES = re.findall(r'^    {\d+, ".*", "(.*)", Script', (ROOT / 'support/languages.h').read_text(), re.M)
assert LANGUAGES[:7] == 'en fr pt sp jp zh du'.split(), 'the number of a language has changed'

# The largest difference of a level, by the depth of the screen. The driver rounds otherwise on a processor without
# SSE 4.1, which gave a difference of 4 on 24 bits.
BOUNDS = {24: 2 if 'sse4_1' in pathlib.Path('/proc/cpuinfo').read_text() else 6, 16: 16}


class Step(NamedTuple):
    event: str
    shows: Optional[str] = None
    log: str = ''
    disk: Optional[str] = None
    prints: object = None
    exits: object = False
    runs: Optional[str] = None


class Run(NamedTuple):
    group: str
    name: str
    steps: list
    device: str = ''  # see device.py
    language: int = 0
    size: tuple = (1024, 768)
    depth: int = 24
    background: str = 'card'
    unlike_the_card: bool = False  # whether comparing it with the upright card must fail
    stepped: bool = False  # whether the program runs frame by frame
    wine: bool = False  # whether the run is made under Wine too
    variables: dict = {}
    shell: Optional[str] = None  # a command of bash that starts the program as "$0"


KEY_NOTES = ('KSTRL Release 2.14.3\r\n\r\nAVATAR To Ty 1% 7% v1\r\n- Quick (100%) & safe, "as before"\r\n'
             f'- 400 MHz: \xd8 \xe9\xfc \t\x7f{" and more" * 16}\r\n'.encode('latin-1')
             + b''.join(b'- %d\n' % line for line in range(6, 31)) + b'not shown')
LAST_LOG = 'of the last run\n'


def error(text):
    return f'\n    *** ERROR *** {text}\n\n'


def warning(text):
    return f'  ** Warning ** {text}\n'


UNKNOWN = warning('Unrecognized Char: 9  9') + warning('Unrecognized Char: 127  7f')
FAILED = error('Error 145 ::RemoveDirectory(/FlashDisk/VELD/Update)') + error('Update failed.')
SUCCEEDED = warning('Update succeeded at TIME')
INSTALLED, STAGED = 'KSTRL=1 ORBUI=1', 'KSTRL=1 ORBUI=1 Update'
UPDATED = 'KSTRL=2 KSTRL_old=1 ORBUI=2 ORBUI_old=1'
NO_NOTES = 'Release notes not found.\n'
TEARDOWN = 'eglDestroyContext SUCCESS\neglDestroySurface SUCCESS\neglTerminate SUCCESS\n'
SEQUENCE = 'F1 F4 F4 F3 F6 F6 F5 F2 F2 F1 F1 F3 F3 F5'
SHOW, PAUSE, NEXT, UNBIND, OPAQUE = 'eglSwapBuffers\n', 'Sleep 100\n', 'Sleep 2\n', 'glUseProgram 0\n', 'glDisable 3042\n'
CLEAR = 'glClear 16384 0.2 0.2 0.2 0\n' + OPAQUE + UNBIND + 2 * OPAQUE  # what each frame begins with and draws
CLEAR_READY = CLEAR.replace(UNBIND, 2 * UNBIND)
MESSAGE = 'TranslateMessage\nDispatchMessageW\n'
LAUNCH = 'CreateProcessW \\FlashDisk\\VELD\\KSTRL\\KSTRL.exe 0 0\n'

OTHERS = 'KSTRL.exe-KSTRL.exe kstrl.exe'  # programs that are not ended
END_PROCESS = 'OpenProcess 2035711 0\nTerminateProcess 0\nCloseHandle\n'

# An operator whose update fails, and whose application is missing.
FAILING = [
    Step('start', 'waiting', disk=STAGED),
    Step('plug in', 'ready', log=UNKNOWN),
    Step('Home', 'failed', log=FAILED, disk=UPDATED + ' Update'),
    Step('F1', 'failed-restart'),
    Step('Home', exits=0, prints=''),
]
WITHOUT_NOTES = [step._replace(log=step.log.replace(UNKNOWN, ''), prints=None) for step in FAILING]
COMPLETE = [
    Step('start', 'waiting', disk=INSTALLED),
    Step('plug in', 'ready', log=UNKNOWN),
    Step('Home', 'complete-restart', log=SUCCEEDED, disk=UPDATED),
    Step('space Home F1', 'complete-restart'),
    Step('End', exits=0, prints=''),
]
# Frame by frame. Each frame shows the state before its step. The update fails; then the state of one
# that is complete is shown too.
LANGUAGE = [
    Step('plug in'),
    Step('start'),
    Step('frame', 'waiting', disk=STAGED),
    Step('frame', 'ready'),
    Step('Home'),
    Step('frame', 'ready'),
    Step('frame'),
    Step('frame', 'updating-33'),
    Step('frame'),
    Step('frame', log=FAILED, disk=UPDATED + ' Update'),
    Step('frame', 'failed'),
    Step('frame state 3', 'complete', prints=CLEAR + LAUNCH + SHOW + NEXT),
    Step('frame state 4', 'failed-restart', prints=CLEAR + SHOW + NEXT),
    Step('Home'),
    Step('frame', exits=0, prints=CLEAR + SHOW + MESSAGE),
]
SHOWN = [
    Step('start', 'waiting'),
    Step('plug in', 'ready', log=UNKNOWN),
    Step('End', 'ready-restart'),
    Step('BackSpace', exits=0, prints=''),
]

RUNS = [
    Run('english', 'failing', FAILING, 'stray', wine=True),
    Run('english', 'complete', COMPLETE, 'application 1', wine=True),
    Run('english', 'upright screen', SHOWN, language=4, size=(600, 800)),
    Run('english', 'larger screen', SHOWN, size=(1280, 800)),
    Run('english', '16 bits', SHOWN, depth=16),
    Run('english', "the demo's background", SHOWN, background='demo', wine=True),
    Run('english', 'a card upside down', [
        Step('start', 'waiting'),
        Step('BackSpace', exits=0)], depth=16, background='turned', unlike_the_card=True),
    Run('english', 'no fonts and no background', [
        Step('start', 'background', log=''.join(
            error(rf'Font file \FlashDisk\VELD\/ORBUI/data/fonts/SegoeUI_{size}px.fnt not found.' + '\n')
            for size in (10, 13, 18, 24)) + error(r'File \FlashDisk\VELD\/ORBUI/data/KSTRL-menubg4.raw not found.')),
        Step('plug in', 'ready-without-texts'),
        Step('BackSpace', exits=0)], 'no fonts', background='none'),
    Run('english', 'no texts and no background', [
        Step('start', 'waiting-without-texts', log=warning('Error getting registry key [LANGUAGE].')
             + error(r'File \FlashDisk\VELD\/ORBUI/data/KSTRL-menubg4.raw not found.')),
        Step('BackSpace', exits=0)], 'no language, no texts', background='none'),

    *(Run('languages', f'language {language}', LANGUAGE, 'stray, no notes', language, stepped=True)
      for language in range(1, len(LANGUAGES))),
    *(Run('wine', f'language {language}, by keys', WITHOUT_NOTES, 'stray, no notes', language, wine=True)
      for language in (4, 5)),

    Run('endings', 'service keys', [
        Step('start', 'waiting'),
        Step('F1 F4*2 F3 F6*2 F5 F2*2 F1*2 F3*2 F5', exits=0, prints=TEARDOWN + 'DestroyWindow SUCCESS\n')],
        'application 1'),
    Run('endings', 'SIGTERM', [
        Step('start', 'waiting'),
        Step('SIGTERM', exits=0, prints=TEARDOWN)], 'application 1'),
    Run('endings', 'STOP', [
        Step('start first;second/auto;', 'waiting'),
        Step('plug in', 'ready', log=UNKNOWN),
        Step('End', exits=0, prints='', runs='KSTRL.exe', disk=INSTALLED)], 'application 1'),
    Run('endings', 'any key after a failed update', [
        Step('start', 'waiting'),
        Step('plug in', 'ready', log=UNKNOWN),
        Step('Home', 'failed', log=FAILED),
        Step('Delete', exits=0, prints='', runs='KSTRL.exe')], 'application 2, stray'),
    Run('endings', 'a complete update', [
        Step('start', 'waiting', disk=INSTALLED),
        Step('plug in', 'ready', log=UNKNOWN),
        Step('Home', exits=0, prints='', runs='KSTRL.exe', log=SUCCEEDED, disk=UPDATED)],
        'application 1, application 2'),
    # The application on the key could be started, but an earlier attempt has failed.
    Run('endings', 'STOP, then an update', [
        Step('start', 'waiting', disk=INSTALLED),
        Step('End', 'waiting-restart'),
        Step('plug in', 'ready-restart', log=UNKNOWN),
        Step('Home', 'complete-restart', log=SUCCEEDED, disk=UPDATED),
        Step('End', exits=0, prints='')], 'application 2'),
    Run('endings', 'a display that does not answer', [
        Step('start', 'waiting'),
        Step('hang', exits=4, prints=['updater: the display does not answer'])]),
    Run('endings', 'a destroyed window', [
        Step('start', 'waiting'),
        Step('destroy', exits=4, prints=['updater: the display is lost: another program has destroyed the window'],
             log='\n    *** ERROR *** The display is lost: another program has destroyed the window.\n\n')]),
    Run('endings', 'running applications', [
        Step('start', 'waiting', runs=OTHERS),
        Step('BackSpace', exits=0, runs=OTHERS)], 'applications run'),

    # The desktop may pass on keys and the like only after the second frame.
    Run('frames', 'start and close', [
        Step('start', prints=(
            'CreateToolhelp32Snapshot 2 0\n' + 2 * END_PROCESS + 'CloseHandle\n'
            'CreateToolhelp32Snapshot 2 0\n' + END_PROCESS + 'CloseHandle\n'
            'RegisterClassW EGLWndClass\nCreateWindowExW EGLWndClass 147587072\nShowWindow 1\n'
            'GetSystemMetrics 0\nGetSystemMetrics 1\nSetWindowLongW -16 -2147483648\n'
            'SetWindowPos -1 0 0 1024 768 32\nEnableWindow 1\nSetForegroundWindow\nShowWindow 1\n' + 3 * UNBIND + NEXT)),
        Step('frame', prints=CLEAR + PAUSE + SHOW + NEXT, runs=OTHERS),
        Step('frame'),
        Step('close'),
        Step('frame', exits=0, prints=CLEAR + PAUSE + SHOW + MESSAGE + 'DestroyWindow\nPostQuitMessage 0\nTranslateMessage\n' + TEARDOWN + 'DestroyWindow\n', runs=OTHERS)], 'applications run', stepped=True),
    Run('frames', 'all messages of a frame', [
        Step('start'),
        Step('frame'),
        Step('frame', 'waiting'),
        Step('F2 Home ' + SEQUENCE),
        Step('frame', exits=0)], 'application 1', stepped=True),
    Run('frames', 'no message behind the quit message', [
        Step('start'),
        Step('frame', 'waiting'),
        Step('frame quit, then STOP', exits=0)], 'application 1', stepped=True),
    Run('frames', 'service keys with errors', [
        Step('start'),
        Step('frame'),
        Step('frame', 'waiting'),
        Step('F1 ' + SEQUENCE),
        Step('frame', 'waiting'),
        Step('Home F2 ' + SEQUENCE),
        Step('frame', 'waiting'),
        Step('space ' + SEQUENCE[:-3] + ' space F5'),
        Step('plug in'),
        Step('frame', 'waiting', disk=INSTALLED),
        Step('F1 F7 ' + SEQUENCE),
        Step('frame', exits=0)], 'application 1, no notes', stepped=True),
    *(Run('frames', f'during an update, {name}', [
        Step('plug in'),
        Step('start'),
        Step('frame', 'waiting', disk=INSTALLED),
        Step('frame', log=UNKNOWN),
        Step('Home'),
        Step('frame', 'ready', disk=STAGED),
        Step('frame', 'updating-0'),
        Step(keys),
        Step('frame', exits=0, runs=runs, disk=STAGED)], 'application 1', stepped=True)
      for name, keys, runs in (('STOP', 'End', 'KSTRL.exe'), ('Backspace', 'BackSpace', ''), ('service keys', SEQUENCE, ''))),
    Run('frames', 'a failed update in automatic mode', [
        Step('plug in'),
        Step('start /auto'),
        # The frame that finds the key also copies the first file.
        Step('frame', 'waiting', disk=STAGED),
        Step('frame', 'updating-25', log=UNKNOWN),
        Step('frame', 'updating-50'),
        Step('frame', 'updating-75'),
        Step('frame', 'updating-100', log=FAILED, disk=UPDATED + ' Update'),
        Step('frame', 'failed', prints=CLEAR + SHOW + NEXT),
        Step('frame', 'failed', prints=CLEAR + SHOW + NEXT),
        Step('BackSpace'),
        Step('frame', exits=0, runs='KSTRL.exe')], 'application 2, stray', stepped=True),
    Run('frames', 'no application in automatic mode', [
        Step('plug in'),
        Step('start /auto'),
        Step('frame', 'waiting', disk=STAGED),
        Step('frame', 'updating-33'),
        Step('frame'),
        Step('frame', log=SUCCEEDED, disk=UPDATED),
        Step('frame', prints=CLEAR + LAUNCH + LAUNCH + SHOW + NEXT),
        Step('frame', prints=CLEAR + LAUNCH + SHOW + NEXT)], 'no notes', stepped=True),
    Run('frames', 'a complete update, frame by frame', [
        Step('plug in'),
        Step('start'),
        Step('frame', 'waiting', disk=INSTALLED, prints=CLEAR + NO_NOTES + PAUSE + SHOW + NEXT),
        Step('frame', prints=CLEAR_READY + SHOW + NEXT),
        Step('Home'),
        Step('frame', disk=STAGED),
        Step('frame'),
        Step('Home'),
        Step('frame', 'updating-33', prints=CLEAR + SHOW + 2 * MESSAGE + NEXT),
        Step('frame'),
        Step('frame', disk=UPDATED, log=SUCCEEDED, prints=CLEAR + 'OutputDebugStringW\n' + SHOW + NEXT),
        Step('frame', 'complete', prints=CLEAR + LAUNCH + SHOW + NEXT),
        Step('frame', prints=CLEAR + SHOW + NEXT),
        Step('Home'),
        Step('frame', prints=CLEAR + SHOW + 2 * MESSAGE + NEXT),
        Step('End'),
        Step('frame', exits=0, prints=CLEAR + SHOW + MESSAGE)], 'no notes', stepped=True),
    Run('frames', 'STOP in automatic mode', [
        Step('start /auto'),
        Step('frame'),
        Step('frame'),
        Step('End'),
        Step('frame', 'waiting', prints=CLEAR + PAUSE + SHOW + MESSAGE + LAUNCH + MESSAGE + NEXT),
        Step('plug in'),
        Step('frame', 'waiting-restart', disk=STAGED),
        Step('frame', 'updating-33-restart')], 'no notes', stepped=True),
    Run('frames', 'a key pulled out too early', [
        Step('plug in'),
        Step('start'),
        Step('frame', disk=INSTALLED),
        Step('frame', 'ready', log=UNKNOWN),
        Step('space Delete Return Escape Prior Left a'),
        Step('frame', 'ready', disk=INSTALLED),
        Step('unplug'),
        Step('Home'),
        Step('frame', 'ready', disk=STAGED),
        Step('frame', 'updating-0'),
        Step('frame', 'updating-0')], stepped=True),
    Run('frames', 'an incomplete key, and an unknown language', [
        Step('start /auto'),
        Step('frame', 'waiting', disk=INSTALLED, prints=CLEAR + PAUSE + SHOW + NEXT),
        Step('frame'),
        Step('Home'),
        Step('frame', 'waiting', prints=CLEAR + PAUSE + SHOW + 2 * MESSAGE + NEXT),
        Step('plug in'),
        Step('frame', 'waiting', prints=CLEAR + PAUSE + SHOW + NEXT),
        Step('Home'),
        Step('frame', 'waiting', prints=CLEAR + PAUSE + SHOW + 2 * MESSAGE + NEXT)], 'incomplete key', language=len(LANGUAGES),
        stepped=True),
    Run('frames', 'states that the engine never enters', [
        Step('start'),
        Step('frame'),
        Step('frame state 5'),
        Step('frame', 'no-application'),
        Step('Home'),
        Step('frame', 'no-application'),
        Step('End'),
        Step('frame'),
        Step('frame', 'no-application-restart'),
        Step('frame state 9', 'no-state-restart')], stepped=True),

    # The large file cannot be copied. If the X connection had the number of a closed standard stream, output would corrupt it.
    *(Run('surroundings', f'standard error {stream}', [
        Step('plug in'),
        Step('start /auto', exits=0, log=error('Error 2 ::SetFileAttributes') + SUCCEEDED, disk=UPDATED,
             prints=NO_NOTES, runs='KSTRL.exe')],
        'application 2, large file, no notes', shell='ulimit -f 10000; exec "$0" "$@" ' + stream)
      for stream in ('2>&-', '2> >(exit)')),
    Run('surroundings', 'no windows', [
        Step('start /auto', exits=1, log=LAST_LOG, prints='No matching EGL configs found!\n')],
        variables={'EGL_PLATFORM': 'surfaceless'}),
    *(Run('surroundings', f'no display, device folder {folder}', [
        Step('start', exits=255, log=LAST_LOG,
             prints=[f'"{folder}" does not exist', 'UPDATER_SCREEN is "640x480px", which is no size'])],
        variables={'DISPLAY': '', 'UPDATER_DEVICE': folder, 'UPDATER_SCREEN': '640x480px'})
      for folder in ('/nowhere/at all', '/etc/passwd')),
    Run('surroundings', 'no display', [
        Step('start', exits=255, log=LAST_LOG, prints='')],
        variables={'DISPLAY': ''}),
    Run('surroundings', 'help', [
        Step('start --help', exits=0, log=LAST_LOG, prints=['UPDATER_DEVICE', 'UPDATER_SCREEN', '/auto', 'Home', 'End', 'USB HD'])],
        variables={'DISPLAY': ''}),
]
