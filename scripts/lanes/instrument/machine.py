"""A virtual machine that stands for the instrument: started, given commands and keys, and given disks."""

import json
import pathlib
import select
import socket
import subprocess

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
    """A connection to the emulator, which takes over its other end."""

    def __init__(self):
        self.socket, self.other_end = socket.socketpair()
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
        """Boots `command`, an emulator without its connections. The machine's console goes to `folder`."""
        screen_size = pathlib.Path(__file__).parents[2] / "lib/screen-size"
        width, height = subprocess.check_output([screen_size], text=True).strip().split("x")
        self.console = f"{folder}/console"
        self.agent, self.monitor = Line(), Line()
        ends = [line.other_end.fileno() for line in (self.agent, self.monitor)]
        self.emulator = subprocess.Popen(
            ["setpriv", "--pdeathsig", "KILL", *command,
             "-nodefaults", "-no-user-config", "-display", "none", "-no-reboot",
             "-serial", f"file:{self.console}",
             "-chardev", f"socket,id=agent,fd={ends[0]}",
             "-device", "virtio-serial-pci", "-device", "virtconsole,chardev=agent",
             "-chardev", f"socket,id=monitor,fd={ends[1]}", "-mon", "chardev=monitor,mode=control",
             "-device", "virtio-scsi-pci,id=scsi", "-device", "qemu-xhci,id=usb",
             "-device", "usb-kbd,bus=usb.0", "-device", f"virtio-gpu-pci,xres={width},yres={height}"], pass_fds=ends)
        for line in self.agent, self.monitor:
            line.other_end.close()
        self.monitor.line()
        self.tell("qmp_capabilities")
        self.agent.line()  # the machine says that it is ready

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.emulator.kill()
        self.emulator.wait()

    def run(self, command):
        """Runs a shell command in the machine and returns its output."""
        self.agent.send(f"{LIMIT} {command}")
        return self.output_of(command)

    def output_of(self, command):
        """Waits until the command that was sent has ended, and returns its output."""
        try:
            code, size = self.agent.line().split()
        except TimeoutError:
            raise Failure(f"no answer to: {command}; see {self.console}") from None
        output = self.agent.file.read(int(size)).decode(errors="replace")
        if int(code) != 0:
            raise Failure(f"exit code {int(code)} of: {command}\n{output}")
        return output

    def wait(self, condition):
        """Waits in the machine until a shell condition holds. Looks seldom: programs start slowly there."""
        self.run(UNTIL.format(condition))

    def tell(self, request, deleted=None, **arguments):
        """Sends a request to the emulator, and returns its answer when a device has been deleted, too."""
        self.monitor.send(json.dumps({"execute": request, "arguments": arguments}))
        returned = None
        while returned is None or deleted:
            answer = json.loads(self.monitor.line())
            if "error" in answer:
                raise Failure(f"{request}: {answer['error']['desc']}")
            if "return" in answer:
                returned = answer["return"]
            elif answer.get("data", {}).get("device") == deleted:
                deleted = None
        return returned

    def press_until(self, key, condition):
        """Presses a key again and again until a shell condition holds. When the machine stops, because it
        has read a bad sector, pulls out the stick. Returns whether that has happened."""
        pulled = False
        self.agent.send(f"{LIMIT} {UNTIL.format(condition)}")
        while not select.select([self.agent.socket], [], [], 1)[0]:
            if self.tell("query-status")["running"]:
                self.tell("send-key", keys=[{"type": "qcode", "data": key}])
            else:
                self.pull("usb")
                self.tell("cont")
                pulled = True
        self.output_of(f"pressing {key} until {condition}")
        return pulled

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
        self.tell("device_del", f"{bus}-disk", id=f"{bus}-disk")
        self.tell("blockdev-del", **{"node-name": f"{bus}-disk"})
