"""A virtual X server: the picture that it shows, and its keyboard."""

import mmap
import os
import subprocess
import tempfile
import time

import numpy
from Xlib import X, XK, display, error, protocol
from Xlib.ext import xtest


class Screen:
    """An X server of a size and depth that ends with this process."""

    def __init__(self, width, height, depth):
        self.size, self.depth = (width, height), depth
        ready, told = os.pipe()
        with tempfile.TemporaryDirectory() as folder:
            self.server = subprocess.Popen(
                ['setpriv', '--pdeathsig', 'TERM', 'Xvfb', '-displayfd', str(told), '-nolisten', 'tcp', '-nocursor',
                 '-fbdir', folder, '-screen', '0', f'{width}x{height}x{depth}'],
                pass_fds=[told], stderr=subprocess.DEVNULL)
            os.close(told)
            with os.fdopen(ready) as lines:
                self.name = ':' + lines.readline().strip()
            # The server's own memory of the screen, after a header. It would have the pointer too.
            with open(folder + '/Xvfb_screen0', 'rb') as file:
                memory = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        self.pixels = numpy.frombuffer(memory, numpy.uint16 if depth == 16 else numpy.uint32)[-width * height:]
        self.connection = display.Display(self.name)
        self.root = self.connection.screen().root
        self.connection.change_keyboard_control(auto_repeat_mode=X.AutoRepeatModeOff)
        # The first key makes the server change its keyboard, and a window may lose it.
        for kind in (X.KeyPress, X.KeyRelease):
            xtest.fake_input(self.connection, kind, self.connection.keysym_to_keycode(XK.XK_Shift_L))
        self.connection.sync()

    def picture(self):
        """What is shown: a number for each pixel, of its red, green and blue level."""
        self.settle()
        pixels = self.pixels
        if self.depth == 16:
            pixels = sum((pixels >> from_bit & most).astype(numpy.uint32) * 255 // most << to_bit
                         for from_bit, most, to_bit in ((11, 31, 16), (5, 63, 8), (0, 31, 0)))
        return pixels & 0xFFFFFF

    def windows(self):
        """The windows shown, with their sizes."""
        try:
            return [(window, window.get_geometry()) for window in self.root.query_tree().children
                    if window.get_attributes().map_state == X.IsViewable]
        except error.XError:  # one has just gone
            return []

    def key_window(self):
        """The window that gets the keys: the one with the focus, or else the one below the pointer."""
        focus = self.connection.get_input_focus().focus
        return self.root.query_pointer().child if isinstance(focus, int) else focus

    def press(self, names):
        """Presses and releases keys, given by their X names, and waits until the window has them.
        "F4*2" is F4 held until it repeats."""
        for name in names.split():
            name, _, repeated = name.partition('*')
            key = self.connection.keysym_to_keycode(XK.string_to_keysym(name))
            xtest.fake_input(self.connection, X.KeyPress, key)
            if repeated:
                self.settle()
                window = self.key_window()
                window.send_event(protocol.event.KeyPress(
                    window=window, root=self.root, child=X.NONE, detail=key, state=0, same_screen=1,
                    time=int(time.monotonic() * 1000) + 1, root_x=0, root_y=0, event_x=0, event_y=0))
            xtest.fake_input(self.connection, X.KeyRelease, key)
            self.settle()
            time.sleep(0.005)  # two presses of a key within a millisecond count as one

    def close_window(self):
        """Does what a window manager does when its close button is pressed."""
        atom = self.connection.intern_atom
        window = self.windows()[0][0]
        window.send_event(protocol.event.ClientMessage(
            window=window, client_type=atom('WM_PROTOCOLS'),
            data=(32, [atom('WM_DELETE_WINDOW'), X.CurrentTime, 0, 0, 0])))
        self.settle()

    def settle(self):
        """Waits until the server has passed on what it was sent: it answers the second time only
        after it has written to all programs what it had for them when it answered the first."""
        self.connection.sync()
        self.connection.sync()

    def destroy_window(self):
        self.windows()[0][0].destroy()
        self.connection.sync()
