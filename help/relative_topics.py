#!/usr/bin/env python3
"""Usage: relative_topics.py CHMLS HELP_FILE FOLDER

chmcmd maps topic numbers to full paths on the machine that compiled the help (FOLDER and the page's name), under which no viewer
finds a page. This makes them names of pages inside the help file.

A topic map is a list of numbers and places in a table of strings, and a name is the tail of its path, so only the places change. The
map lies in the compressed section, which cannot be patched; its new copy takes the end of the compiler's read-me, a file without
compression that no viewer shows, and the directory leads there.

The two times that the compiler writes are taken out, so that the same pages give the same file.
"""

import struct
import subprocess
import sys
import tempfile
from pathlib import Path

README = "/_#_README_#_"
TOPICS = "/#IVB"
STRINGS = "/#STRINGS"
SYSTEM = "/#SYSTEM"
TIME = 0x10  # in the header
CONTENT_START = 0x58  # where the header says where uncompressed files start


def extract(chmls, help_file, name):
    with tempfile.TemporaryDirectory() as folder:
        target = Path(folder) / "part"
        subprocess.run([chmls, "extract", help_file, name, target], check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        return target.read_bytes()


def packed(number, size):
    """A directory number: seven bits a byte, the highest first, a set top bit where more follow."""
    return bytes((number >> 7 * i & 0x7F) | (0x80 if i else 0) for i in reversed(range(size)))


def entry(name, section, offset, length, length_size):
    return packed(len(name), 1) + name.encode() + packed(section, 1) + packed(offset, 1) + packed(length, length_size)


def replace_once(data, old, new):
    if data.count(old) != 1 or len(old) != len(new):
        sys.exit("relative_topics.py: the help file is not laid out as expected")
    start = data.index(old)
    data[start : start + len(old)] = new


def without_time(system):
    """The system entries, of which the first is the time."""
    if system[4:8] != b"\x0a\x00\x04\x00":
        sys.exit("relative_topics.py: the time is not where it should be")
    return system[:8] + bytes(4) + system[12:]


def relative(topics, strings, folder):
    """The topic map with every place moved behind the folder's path."""
    prefix = folder.rstrip("/").encode() + b"/"
    result = topics[:4]
    for number, place in struct.iter_unpack("<II", topics[4:]):
        if not strings[place:].replace(b"\\", b"/").startswith(prefix):
            sys.exit(f"relative_topics.py: topic {number} is not in {folder}")
        result += struct.pack("<II", number, place + len(prefix))
    return result


def main():
    chmls, help_file, folder = sys.argv[1:]
    topics = extract(chmls, help_file, TOPICS)
    readme = extract(chmls, help_file, README)
    new_topics = relative(topics, extract(chmls, help_file, STRINGS), folder)

    system = extract(chmls, help_file, SYSTEM)

    data = bytearray(Path(help_file).read_bytes())
    data[TIME : TIME + 4] = bytes(4)
    replace_once(data, system, without_time(system))
    kept = len(readme) - len(topics)
    replace_once(data, entry(README, 0, 0, len(readme), 2), entry(README, 0, 0, kept, 2))
    replace_once(data, entry(TOPICS, 1, 0, len(topics), 1), entry(TOPICS, 0, kept, len(topics), 1))
    (content,) = struct.unpack_from("<Q", data, CONTENT_START)
    start = content + kept
    if data[content : content + len(readme)] != readme:
        sys.exit("relative_topics.py: the read-me is not where it should be")
    data[start : start + len(topics)] = new_topics
    Path(help_file).write_bytes(data)

    if extract(chmls, help_file, TOPICS) != new_topics:
        sys.exit("relative_topics.py: the help file cannot be read back")


if __name__ == "__main__":
    main()
