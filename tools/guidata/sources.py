"""What fontbake, stringtable and rawimage share: their command lines, how they read the sources in data/, and
how they write files.

The device's texts are UTF-16. A character here is one unit of UTF-16: what lies beyond U+FFFF becomes two
characters, as it does on the device.
"""

import argparse
import os
import pathlib
import re
import signal
import sys

VERSION = "@PROJECT_VERSION@"  # filled in when the programs are packaged


class Failure(Exception):
    """A fault of the input or of the disk, in words for the user."""


class Help(argparse.HelpFormatter):
    def add_usage(self, usage, actions, groups, prefix=None):
        super().add_usage(usage, actions, groups, "Usage: ")


def parser_of(program, description, usage=None):
    """Returns a parser of the command line with the options that all three programs have."""
    parser = argparse.ArgumentParser(
        prog=program, description=description, usage=usage, allow_abbrev=False, formatter_class=Help,
        epilog="Exit codes: 0 success, warnings included; 2 wrong usage, or failure.")
    parser.add_argument("--version", action="version", version=f"{program} {VERSION}")
    return parser


def number(least, most, kind=int):
    """Returns the type of an option whose value is a number between two bounds."""
    def parse(text):
        try:
            value = kind(text)
        except ValueError:
            value = None
        if value is None or not least <= value <= most:
            raise argparse.ArgumentTypeError(f"{text} is not a number from {least} to {most}")
        return value
    return parse


def run(program, work):
    """Runs a program. Prints why it failed."""
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)  # ends quietly when the reader of the output has read enough
    try:
        work()
    except Failure as failure:
        print(f"{program}: {failure}", file=sys.stderr)
        sys.exit(2)


def read(path):
    """Returns the bytes of a file."""
    try:
        return pathlib.Path(path).read_bytes()
    except OSError as error:
        raise Failure(f"{path}: cannot be read: {error.strerror}") from error


def write(path, content):
    """Writes a file whole or not at all, so that no build goes on with half a file."""
    unfinished = f"{path}.part"
    try:
        pathlib.Path(unfinished).write_bytes(content)
        os.replace(unfinished, path)
    except OSError as error:
        if os.path.exists(unfinished):
            os.unlink(unfinished)
        raise Failure(f"{path}: cannot be written: {error.strerror}") from error


def lines_of(path):
    """Returns the number and the text of each line of a UTF-8 file, without empty lines and those that begin
    with "#"."""
    lines = []
    for index, line in enumerate(read(path).split(b"\n"), 1):
        try:
            text = line.removesuffix(b"\r").decode("utf-8-sig")
        except UnicodeDecodeError as error:
            raise Failure(f"{path}:{index}: the line is not UTF-8 text") from error
        if re.search("[\0-\x08\x0a-\x1f\x7f-\x9f]", text):
            raise Failure(f"{path}:{index}: the line contains a control character")
        if text and text[0] != "#":
            lines.append((index, units(text)))
    return lines


def units(text):
    """Returns the units of UTF-16 of a text as the characters of a str."""
    return "".join(map(chr, memoryview(text.encode("utf-16")).cast("H")[1:]))


def utf16(text):
    """Returns the bytes of units in the device's files: low byte first."""
    return text.encode("utf-16-le", "surrogatepass")


def character_name(character):
    """Returns the name of a character for messages, such as "U+00E9"."""
    return f"U+{ord(character):04X}"
