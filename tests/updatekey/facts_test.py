"""Tests that the pages tell what the code says: scripts rely on the codes of findings, and technicians on the
meaning of the log's lines."""

import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).parents[2]


def read(name):
    return (ROOT / name).read_text()


class Facts(unittest.TestCase):
    def setUp(self):
        table = read("tools/diagnosis/log_lines.cpp").partition("LOG_LINE_KINDS = {")[2].partition("\n};")[0]
        self.kinds = re.findall(r'\{"([^"]+)",\s*"([^"]+)"', table)
        self.assertGreater(len(self.kinds), 10)

    def test_the_guides_explain_each_finding(self):
        source = read("tools/diagnosis/finding.cpp")
        known = set()
        for severity, mark in [("Error", ""), ("Warning", " (W)")]:
            words = re.search(rf"Severity::{severity},\s*words\((.*?)\)", source, re.DOTALL).group(1)
            known |= {f"`{code}`{mark}" for code in "".join(re.findall('"(.*)"', words)).split()}
        rows = re.findall(r"^\| (`.*?) \|", read("docs/release-engineers-guide.md") + read("docs/technicians-guide.md"),
                          re.MULTILINE)
        explained = {code for row in rows for code in re.findall(r"`[a-z0-9-]+`(?: \(W\))?", row)}
        self.assertEqual(explained, known)

    def test_the_readme_explains_each_line_of_the_log(self):
        readme = read("README.md")
        for pattern, meaning in self.kinds:
            self.assertIn(f"| `{pattern.replace('%', '...')}` | {meaning} |", readme)

    def test_each_line_that_the_program_logs_has_a_meaning_and_no_other(self):
        logged = {"Opening log at %"}
        for folder in ("app", "ui", "update", "render", "support"):
            for source in (ROOT / folder).rglob("*.cpp"):
                for level, text in re.findall(r'(error|warning)\(\s*"([^"]+)"', source.read_text()):
                    start = "    *** ERROR *** " if level == "error" else "  ** Warning ** "
                    logged.add(start + re.sub("%[0-9]*[a-zA-Z]", "%", text).removesuffix("\\n"))
        self.assertEqual(logged, {pattern for pattern, _ in self.kinds})
