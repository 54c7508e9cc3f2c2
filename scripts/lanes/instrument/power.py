"""The states of a disk whose power goes: made from the emulator's record of its writes and flushes."""

import mmap
import random
import struct
import subprocess

SECTOR = 512
FLUSH, DISCARD = 1, 4


def entries(record):
    """The entries of a record in their order: a list of writes (position, sector), or None for a flush."""
    with open(record, "rb") as file:
        _magic, _version, count, size = struct.unpack("<QQQL", file.read(28))
        position = size
        for _ in range(count):
            file.seek(position)
            sector, sectors, flags, length = struct.unpack("<QQQQ", file.read(32))
            file.seek(position + size)
            data = file.read(0 if flags & DISCARD else sectors * size)
            position += size + len(data)
            if data:
                yield [((sector + i) * size, data[i * size:(i + 1) * size]) for i in range(sectors)]
            if flags & FLUSH:
                yield None


def copy(image, file):
    """Copies a disk, most of which is empty."""
    subprocess.run(["cp", "--sparse=always", image, file], check=True)


class Image:
    """A disk whose sectors are written. `content` is the same number when the same bytes are on it."""

    def __init__(self, original, file):
        copy(original, file)
        self.file = file
        self.content = 0
        with open(file, "r+b") as opened:
            self.bytes = mmap.mmap(opened.fileno(), 0)

    def write(self, sectors):
        """Writes sectors, and returns those that undo it."""
        undo = []
        for at, data in sectors:
            before = self.bytes[at:at + len(data)]
            undo.append((at, before))
            self.bytes[at:at + len(data)] = data
            self.content ^= hash((at, before)) ^ hash((at, data))
        return undo[::-1]


def states(original, record, folder, seed):
    """Yields a name and an `Image` of each state in which a power cut can leave the disk `original`: after
    each write and flush, with everything on the disk, with only what was flushed, and with a part of
    the sectors that were not flushed, taken at random."""
    chance = random.Random(seed)
    kept = Image(original, f"{folder}/kept")
    flushed = Image(original, f"{folder}/flushed")
    pending = []
    yield "before the first write", kept
    for number, sectors in enumerate(entries(record), 1):
        if sectors is None:
            flushed.write(pending)
            if pending:
                yield f"entry {number}, only what was flushed", flushed
            pending = []
            continue
        kept.write(sectors)
        yield f"entry {number}, everything", kept
        pending += sectors
        undo = flushed.write([sector for sector in pending if chance.random() < 0.5])
        yield f"entry {number}, a part of what was not flushed", flushed
        flushed.write(undo)
