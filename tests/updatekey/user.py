"""Runs updatekey as a user does, and validates its JSON against the schema that is shipped. Needs Debian's
python3-jsonschema."""

import hashlib
import json
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import unittest

import jsonschema

BUILD = pathlib.Path(os.environ["UPDATEKEY_BUILD"])
SCHEMA = json.loads(pathlib.Path(os.environ["UPDATEKEY_SCHEMA"]).read_text())
VALIDATOR = jsonschema.validators.validator_for(SCHEMA)
VALIDATOR.check_schema(SCHEMA)
PROGRAM = BUILD / "updatekey"
# On Windows the command that runs updatekey.exe, for the tests that are not about Linux.
COMMAND = os.environ.get("UPDATEKEY_COMMAND", str(PROGRAM)).split()


def contents(folder):
    """What is below a folder, by path: the bytes of a file, of a large one its checksum; for a folder nothing."""
    def content(path):
        content = path.read_bytes() if path.is_file() else None
        return content if content is None or len(content) < 100 else hashlib.sha256(content).hexdigest()

    return {str(path.relative_to(folder)): content(path) for path in folder.rglob("*")}


def write(path, content=b"x"):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)


def leave_row(device):
    """Leaves a device for the comparison with the Windows program, when UPDATEKEY_ROWS names a folder for it."""
    if "UPDATEKEY_ROWS" in os.environ:
        rows = pathlib.Path(os.environ["UPDATEKEY_ROWS"]) / "device"
        rows.mkdir(exist_ok=True)
        subprocess.run(["cp", "-a", device, rows / str(100 + len(os.listdir(rows)))], check=True)


class UserTest(unittest.TestCase):
    """A test in a folder of its own, `work`, with what a release is made of and, in `key`, the update key."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.work = pathlib.Path(folder.name)
        self.app, self.gui, self.notes = self.work / "app", self.work / "gui", self.work / "notes.txt"
        self.app.mkdir()
        shutil.copy(BUILD / "kstrl-standin", self.app / "KSTRL.exe")
        shutil.copytree(BUILD / "guidata", self.gui)
        self.notes.write_text("News\n")
        self.key = self.work / "key"
        made = self.run_program(*self.inputs(self.key))
        self.check_exit(made, 0)

    def run_program(self, *arguments, as_user=False, **options):
        command = [*COMMAND, *arguments]
        # Root may read every file, unless it gives up the right to.
        if as_user and os.geteuid() == 0:
            command = ["setpriv", "--bounding-set=-dac_override,-dac_read_search", *command]
        ended = subprocess.run(command, capture_output=True, text=True, errors="replace", **options)
        # Wine shows the root folder as the drive Z:.
        ended.stdout, ended.stderr = (text.replace("Z:/", "/") for text in (ended.stdout, ended.stderr))
        return ended

    def check_exit(self, ended, code):
        # Wine kills programs that exit slowly; what they wrote decides then.
        if COMMAND == [str(PROGRAM)] or ended.returncode != -signal.SIGKILL:
            self.assertEqual(ended.returncode, code, ended.stdout + ended.stderr)

    def expect(self, code, *arguments, says="", **options):
        """Expects an exit code, and a text in the output or the errors."""
        with self.subTest(" ".join(map(str, arguments))):
            ended = self.run_program(*arguments, **options)
            self.check_exit(ended, code)
            self.assertIn(says, ended.stdout + ended.stderr)

    def report(self, kind, *arguments, **options):
        """Returns the report of a command, which must be as the schema says under the name `kind`."""
        with self.subTest(" ".join(map(str, arguments))):
            ended = self.run_program("--json", *arguments, **options)
            self.exit_code = ended.returncode
            report = json.loads(ended.stdout)
            VALIDATOR({"$ref": f"#/$defs/{kind}", "$defs": SCHEMA["$defs"]}).validate(report)
            VALIDATOR(SCHEMA).validate(report)
            return report

    def codes(self, kind, *arguments):
        """The codes of the findings of a command."""
        report = self.report(kind, *arguments)
        return " ".join(sorted({finding["code"] for finding in report.get("check", report)["findings"]}))

    def inputs(self, out, app=None, gui=None, notes=None, version="2.14.3"):
        return ["make", "--machine", "any", "--app", app or self.app, "--gui", gui or self.gui, "--notes",
                notes or self.notes, "--version", version, out]

    def make(self, code, out, says="", env=None, **inputs):
        self.expect(code, *self.inputs(out, **inputs), says=says, env={**os.environ, **(env or {})})
