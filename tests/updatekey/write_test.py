"""Tests that writing an update key to sticks destroys nothing: neither the computer's folders nor the key,
nor what else is on a stick. That only sticks are written is tested in sticks_test.cpp."""

import os
import subprocess

from user import PROGRAM, UserTest, contents, write

ANY = ["write", "--machine", "any", "--not-a-stick"]


class Write(UserTest):
    def setUp(self):
        super().setUp()
        self.stick = self.work / "stick"
        write(self.stick / "mine.txt", b"stays")
        self.update = contents(self.key / "VELD")

    def test_refuses_what_would_hurt_before_anything_is_touched(self):
        (self.work / "link").symlink_to(self.stick)
        home = self.work / "home"
        home.mkdir()
        before = contents(self.work)
        for arguments, code, says in [
                (["write", "--machine", "any", self.key, self.stick], 1, "NOT GOOD: "),
                (["write", "--machine", "any", self.key, "/proc"], 1, "NOT GOOD: no stick is mounted there"),
                ([*ANY, self.key, home], 1, "this is no stick but the folder"),
                ([*ANY, self.key, "/"], 2, "holds the key itself"),
                ([*ANY, self.key, self.work], 2, "holds the key itself"),
                ([*ANY, self.key, self.stick, self.stick], 2, "are the same stick"),
                ([*ANY, self.key, self.stick, self.work / "link"], 2, "are the same stick"),
                ([*ANY, "--replace", self.key, self.key], 2, "holds the key itself"),
                ([*ANY, "--replace", self.key, self.key / "VELD"], 2, "is in it"),
                ([*ANY, self.key, self.work / "nowhere"], 1, "there is no such folder"),
                (["write", "--not-a-stick", self.key, self.stick], 3, "Nothing was written")]:
            self.expect(code, *arguments, says=says, env={**os.environ, "HOME": str(home)})
        self.assertEqual(contents(self.work), before)

    def test_replaces_only_what_is_part_of_an_update(self):
        # Of a run that was broken off, and of the operator.
        write(self.stick / "VELD.unfinished" / "KSTRL" / "KSTRL.exe", b"cut")
        write(self.stick / "VELD" / "surveys" / "field1.gpr", b"stays too")
        self.expect(0, *ANY, self.key, self.stick, says="; left in VELD: surveys")
        self.expect(1, *ANY, self.key, self.stick, says="add --replace to replace it")
        report = self.report("write", *ANY, "--replace", "--eject", self.key, self.stick)
        self.assertEqual([(stick["good"], stick["kept"], stick["ejected"]) for stick in report["sticks"]],
                         [(True, ["surveys"], False)])
        self.expect(0, *ANY, "--replace", "--eject", self.key, self.stick, says="unmount it before you pull it out")
        self.assertEqual(contents(self.stick / "VELD"),
                         {**self.update, "surveys": None, "surveys/field1.gpr": b"stays too"})
        self.assertEqual(sorted(os.listdir(self.stick)), ["MANIFEST.sha256", "VELD", "mine.txt"])
        self.report("sticks", "sticks")
        self.expect(0, "sticks")

    def test_looks_for_room_before_it_deletes(self):
        # A stick of 1 MB that holds an old update, in a name space of its own.
        write(self.work / "old" / "KSTRL" / "KSTRL.exe", b"old")
        script = """mount -t tmpfs -o size=1m none "$2" && cp -r "$3" "$2/VELD" || exit 77
                    "$1" write --machine any --not-a-stick --replace "$4" "$2"
                    echo "code $?, $(cat "$2/VELD/KSTRL/KSTRL.exe"), $(ls "$2")" """
        ended = subprocess.run(["unshare", "--mount", "--map-root-user", "sh", "-c", script, "sh", PROGRAM, self.stick,
                                self.work / "old", self.key], capture_output=True, text=True)
        if ended.returncode != 0:
            self.skipTest("this user cannot mount a file system: " + ended.stderr)
        self.assertRegex(ended.stdout, r"NOT GOOD: the stick is full: \d+ bytes are needed beside the update on it, "
                                       r"and \d+ are free; delete VELD/ or other files")
        self.assertIn("code 1, old, VELD\n", ended.stdout)
