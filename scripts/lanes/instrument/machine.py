"""A virtual machine that stands for the instrument: started, given commands and keys, and given disks."""

import json
import pathlib
import select
import socket
import subprocess
import time

LIMIT = 600  # the seconds after which a command is given up: it hangs
UNTIL = "until {}; do sleep 0.3; done"


class Failure(Exception):
    """What did not happen, as a sentence for the reader of the lane's output."""


def expect(what, text, *parts):
    """Fails when a part is missing in a text."""
    missing = [part for part in parts if part not in text]
    if missing:
        raise Failure(f"{what}: {missing} is missing in: {text}")


class Line:
    """A connection to one of the emulator's sockets."""

    def __init__(self, path, emulator):
        self.socket = socket.socket(socket.AF_UNIX)
        end = time.monotonic() + LIMIT
        while True:
            try:
                self.socket.connect(path)
                break
            except OSError:
                if emulator.poll() is not None or time.monotonic() > end:
                    raise Failure("the emulator did not start") from None
                time.sleep(0.05)
        self.socket.settimeout(2 * LIMIT)
        self.file = self.socket.makefile("rb")

    def send(self, text):
        self.socket.sendall(text.encode() + b"\n")

    def line(self):
        text = self.file.readline()
        if not text:
            raise Failure("the emulator has ended")
        return text


class Machine:
    def __init__(self, command, folder):
        """Boots `command`, an emulator without its sockets, which are made in `folder`."""
        screen_size = pathlib.Path(__file__).parents[2] / "lib/screen-size"
        width, height = subprocess.check_output([screen_size], text=True).strip().split("x")
        self.console = f"{folder}/console"
        agent, monitor = f"{folder}/agent", f"{folder}/monitor"
        self.emulator = subprocess.Popen(
            ["setpriv", "--pdeathsig", "KILL", *command,
             "-nodefaults", "-no-user-config", "-display", "none", "-no-reboot",
             "-serial", f"file:{self.console}",
             "-chardev", f"socket,id=agent,path={agent},server=on,wait=off",
             "-device", "virtio-serial-pci", "-device", "virtconsole,chardev=agent",
             "-qmp", f"unix:{monitor},server=on,wait=off",
             "-device", "virtio-scsi-pci,id=scsi", "-device", "qemu-xhci,id=usb",
             "-device", "usb-kbd,bus=usb.0", "-device", f"virtio-gpu-pci,xres={width},yres={height}"])
        self.agent = Line(agent, self.emulator)
        self.monitor = Line(monitor, self.emulator)
        self.monitor.line()
        self.tell("qmp_capabilities")
        self.agent.line()  # the machine says that it is ready

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.emulator.kill()
        self.emulator.wait()

    def run(self, command, check=True):
        """Runs a shell command in the machine and returns its output."""
        self.start(command)
        return self.finish(command, check)

    def start(self, command):
        self.agent.send(f"{LIMIT} {command}")

    def finish(self, command, check=True):
        """Waits until the command that was started has ended, and returns its output."""
        try:
            code, size = self.agent.line().split()
        except TimeoutError:
            raise Failure(f"no answer to: {command}; see {self.console}") from None
        output = self.agent.file.read(int(size)).decode(errors="replace")
        if check and int(code) != 0:
            raise Failure(f"exit code {int(code)} of: {command}\n{output}")
        return output

    def wait(self, condition):
        """Waits in the machine until a shell condition holds. Looks seldom: programs start slowly there."""
        self.run(UNTIL.format(condition))

    def tell(self, request, event=None, **arguments):
        """Sends a request to the emulator, and returns its answer when an event has come, too."""
        self.monitor.send(json.dumps({"execute": request, "arguments": arguments}))
        returned = None
        while returned is None or event:
            answer = json.loads(self.monitor.line())
            if "error" in answer:
                raise Failure(f"{request}: {answer['error']['desc']}")
            if "return" in answer:
                returned = answer["return"]
            elif answer["event"] == event:
                event = None
        return returned

    def press(self, key):
        self.tell("send-key", keys=[{"type": "qcode", "data": key}])

    def press_until(self, key, condition):
        """Presses a key again and again until a shell condition holds. When the machine stops, because it
        has read a bad sector, pulls out the stick. Returns whether that has happened."""
        pulled = False
        self.start(UNTIL.format(condition))
        while not select.select([self.agent.socket], [], [], 1)[0]:
            if self.tell("query-status")["running"]:
                self.press(key)
            else:
                self.pull("usb")
                self.tell("cont")
                pulled = True
        self.finish(f"pressing {key} until {condition}")
        return pulled

    def picture(self, file):
        self.tell("screendump", filename=file, format="png")

    def plug(self, disk, bus, partition=""):
        """Plugs a disk into the bus "usb" or "scsi", and returns the device file of the disk or of a
        partition. `disk` describes the emulator's block node. The machine stops at a bad sector."""
        name = f"{bus}-disk"
        find = f"$(ls -l /sys/block | sed -n 's|.*/{'usb' if bus == 'usb' else 'virtio'}.*/||p')"
        self.wait(f'[ -z "{find}" ]')  # the disk before has been missed
        self.tell("blockdev-add", **{"node-name": name, **disk})
        self.tell("device_add", driver="usb-storage" if bus == "usb" else "scsi-hd", id=name, bus=f"{bus}.0",
                  drive=name, rerror="stop", werror="report")
        self.wait(f"[ -b /dev/{find}{partition} ]")
        return self.run(f"echo /dev/{find}{partition}").strip()

    def pull(self, bus):
        """Pulls a disk out, without asking the machine."""
        self.tell("device_del", "DEVICE_DELETED", id=f"{bus}-disk")
        self.tell("blockdev-del", **{"node-name": f"{bus}-disk"})
