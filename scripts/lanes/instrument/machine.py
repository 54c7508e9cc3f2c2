"""A virtual machine that stands for the instrument: started, given commands and keys, and given disks."""

import json
import os
import pathlib
import socket
import subprocess
import time


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
        end = time.monotonic() + 20
        while True:
            try:
                self.socket.connect(path)
                break
            except OSError:
                if emulator.poll() is not None or time.monotonic() > end:
                    raise Failure("the emulator did not start") from None
                time.sleep(0.05)
        self.socket.settimeout(1200)
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

    def processor_seconds(self):
        """The time for which the emulator has used a processor."""
        with open(f"/proc/{self.emulator.pid}/stat", encoding="ascii") as file:
            fields = file.read().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def run(self, command, limit=120, check=True):
        """Runs a shell command in the machine and returns its output."""
        self.agent.send(f"{limit} {command}")
        try:
            code, size = self.agent.line().split()
        except TimeoutError:
            raise Failure(f"no answer to: {command}; see {self.console}") from None
        output = self.agent.file.read(int(size)).decode(errors="replace")
        if check and int(code) != 0:
            raise Failure(f"exit code {int(code)} of: {command}\n{output}")
        return output

    def wait(self, condition, limit=600):
        """Waits in the machine until a shell condition holds. Looks seldom: programs start slowly there."""
        self.run(f"until {condition}; do sleep 0.3; done", limit)

    def tell(self, request, **arguments):
        """Sends a request to the emulator."""
        self.monitor.send(json.dumps({"execute": request, "arguments": arguments}))
        return self.answer("return", request)

    def answer(self, kind, request):
        while True:
            answer = json.loads(self.monitor.line())
            if "error" in answer:
                raise Failure(f"{request}: {answer['error']['desc']}")
            if kind in answer and (kind != "event" or answer["event"] == request):
                return answer[kind]

    def press(self, key):
        self.tell("send-key", keys=[{"type": "qcode", "data": key}])

    def press_until(self, key, condition, limit=900):
        """Presses a key again and again until a shell condition holds."""
        end = time.monotonic() + limit
        self.press(key)
        poll = f"for _ in $(seq 10); do {condition} && echo yes && break; sleep 0.5; done"
        while self.run(poll, check=False).strip() != "yes":
            if time.monotonic() > end:
                raise Failure(f"pressing {key} did not lead to: {condition}")
            self.press(key)

    def picture(self, file):
        self.tell("screendump", filename=file, format="png")

    def plug(self, disk, bus):
        """Plugs a disk into the bus "usb" or "scsi" and returns its device file. `disk` describes the
        emulator's block node."""
        name = f"{bus}-disk"
        self.tell("blockdev-add", **{"node-name": name, **disk})
        self.tell("device_add", driver="usb-storage" if bus == "usb" else "scsi-hd", id=name, bus=f"{bus}.0", drive=name)
        path = "/usb" if bus == "usb" else "/virtio"
        find = f"for disk in /sys/block/sd*; do realpath $disk; done 2>/dev/null | grep {path}"
        self.wait(f"{find} >/dev/null")
        return "/dev/" + self.run(f"basename $({find})").strip()

    def pull(self, bus):
        """Pulls a disk out, without asking the machine."""
        self.tell("device_del", id=f"{bus}-disk")
        self.answer("event", "DEVICE_DELETED")
        self.tell("blockdev-del", **{"node-name": f"{bus}-disk"})
