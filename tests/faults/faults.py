"""Makes every system call of a scenario fail in turn, fills the disk, kills at every call and at random; see scripts/faults.

A scenario turns `old` files into `new` ones. Afterwards either of them must be there whole, the failure must have been said
unless the new ones are, and one more run without faults must lead to the new ones and leave nothing else behind.
"""

import os
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

BUILD = sys.argv[1]
KILLS = int(sys.argv[2]) if len(sys.argv) > 2 else 100
SAID = 3
ERRORS = {"openat": "EACCES", "read": "EIO", "write": "ENOSPC", "fsync": "EIO", "close": "EIO", "rename": "EIO", "linkat": "EIO",
          "unlink": "EPERM", "mkdir": "EACCES", "fchmod": "EPERM", "fchown": "EPERM", "fsetxattr": "ENOSPC", "flock": "ENOLCK",
          "statx": "EIO", "newfstatat": "EIO", "access": "EACCES", "getdents64": "EIO", "lseek": "EIO", "fcntl": "EIO",
          "getxattr": "EIO", "listxattr": "EIO", "fgetxattr": "EIO", "flistxattr": "EIO", "fremovexattr": "EPERM"}
MARK = "/faults begin here"
LEFT_OVER = (".discbook-saving-", ".journal")
LISTINGS = 20000
ITEM = '\t<Item ID="%d" Venue="%s" />\n'


def catalog(venue, count=LISTINGS):
    return "<Catalog>\n" + "".join(ITEM % (i, venue) for i in range(1, count + 1)) + "</Catalog>\n"


OLD_SHOWS, OLD_USER = '<Catalog><Item ID="1" /></Catalog>', '<User><Item ID="1" Venue="new" /></User>'
OLD_COPIES = {"Conversion Backup/target.xml": OLD_SHOWS, "Conversion Backup/target User.xml": OLD_USER}
SHOWS = '<Catalog>\n\t<Item ID="1" Venue="%s" />\n</Catalog>\n'
NEW_SHOWS = SHOWS % "new"
CONVERTED = {"target.xml": NEW_SHOWS, **OLD_COPIES}
FIRST, THEIRS = {"first.xml": SHOWS % "old"}, SHOWS % "theirs"
# What the folder holds before and afterwards.
SCENARIOS = {
    "save": ({"target.xml": catalog("old")}, {"target.xml": catalog("old").replace("old", "new", 1)}),
    "overwrite": ({"target.xml": THEIRS, **FIRST}, {"target.xml": NEW_SHOWS, **FIRST}),
    "apart": ({"target.xml": THEIRS, **FIRST}, {"target.xml": THEIRS, **FIRST}),
    "recover": ({"target.xml": SHOWS % "old"}, {"target.xml": SHOWS % "new"}),
    "convert": ({"target.xml": OLD_SHOWS, "target User.xml": OLD_USER}, CONVERTED),
    "again": ({"target.xml": OLD_SHOWS, "target User.xml": OLD_USER, "target.xml.converted": THEIRS}, CONVERTED),
    "finish": ({"target User.xml": OLD_USER, "target.xml.converted": NEW_SHOWS, **OLD_COPIES}, CONVERTED),
    "ini": ({"target.xml": "[S]\r\nother=1\r\nvalue=old\r\n"}, {"target.xml": "[S]\r\nother=1\r\nvalue=new\r\n"}),
    "page": ({"target.xml": "old"}, {"target.xml": "new page\r\n" * 3}),
    "list": ({"target.xml": "old"}, {"target.xml": "new list\r\n"}),
    "log": ({}, {"target.xml": "new list\r\n"}),
}
# Those that do the work of another one, with other files.
WORK = {"again": "convert", "finish": "convert", "overwrite": "save", "apart": "recover", "log": "list"}
# What must be in a folder of copies when nothing failed; and in the end, unless it was said that it is not.
COPIED = {"save": catalog("old"), "overwrite": THEIRS, "recover": SHOWS % "old", "apart": NEW_SHOWS, "again": THEIRS}
COPIES = ("Backups", "Recovery")


def without_left_over(files):
    return {name: text for name, text in files.items() if not any(mark in name for mark in LEFT_OVER)}


class Trial:
    """A scenario in a folder of its own."""

    def __init__(self, name, nameless):
        self.name, self.old, self.new = name, *SCENARIOS[name]
        self.folder = tempfile.mkdtemp(prefix="faults")
        for file, text in self.old.items():
            path = os.path.join(self.folder, file)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", newline="") as out:
                out.write(text)
            os.setxattr(path, "user.note", b"x")
        self.environment = dict(os.environ, LC_ALL="C.UTF-8", QT_QPA_PLATFORM="minimal")
        if not nameless:
            self.environment["LD_PRELOAD"] = os.path.join(BUILD, "libnameless.so")
        self.command = [os.path.join(BUILD, "faults"), WORK.get(name, name), self.folder]

    def strace(self, *options, log=os.devnull):
        environment = self.environment.copy()
        preload = ["-E", "LD_PRELOAD=" + environment.pop("LD_PRELOAD")] if "LD_PRELOAD" in environment else []
        return subprocess.run(["strace", "-f", "-o", log, *preload, *options, *self.command], env=environment, stderr=subprocess.PIPE).returncode

    def run(self, **options):
        return subprocess.run(self.command, env=self.environment, stderr=subprocess.PIPE, **options).returncode

    def files(self):
        """What lies there, but for whole copies."""
        found, self.copies = {}, []
        whole = (*self.old.values(), *self.new.values(), COPIED.get(self.name))
        for root, _, names in os.walk(self.folder):
            for name in names:
                path = os.path.join(root, name)
                with open(path, newline="", errors="replace") as file:
                    text = file.read()
                if os.path.basename(root) in COPIES and text in whole:
                    self.copies.append(text)
                elif not name.endswith(".journal.kept"):
                    found[os.path.relpath(path, self.folder)] = text
        return found

    def judge(self, code):
        """"" when all is well, else "damaged", "silent" or "left over"."""
        after = self.files()
        whole = without_left_over(after)
        killed = code < 0 or code == 128 + signal.SIGKILL
        if code not in (0, SAID) and not killed:
            return "damaged"  # it crashed
        if self.command[1] != "convert" and whole not in (self.old, self.new):
            return "damaged"
        waits = any(name.endswith(".journal") for name in after)  # for another opening
        copied = COPIED.get(self.name)
        if code == 0 and not waits and (whole != self.new or copied and copied not in self.copies):
            return "silent"
        self.run()
        again = self.files()
        if without_left_over(again) != self.new or self.name in ("overwrite", "apart", "again") and copied not in self.copies:
            return "damaged"
        return "left over" if again != self.new else ""

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.folder)


def calls(name, nameless):
    """Every call of the scenario itself: its kind, and the how manieth of the process it is."""
    with Trial(name, nameless) as trial:
        log = trial.folder + ".log"
        if trial.strace("-e", "trace=" + ",".join(ERRORS), log=log) != 0:
            sys.exit("The scenario %s does not work, or strace does not" % name)
        counts, found, begun = {}, [], False
        with open(log, errors="replace") as lines:
            for line in lines:
                match = re.match(r"\d+ +(\w+)\(", line)
                if not match:
                    continue
                kind = match[1]
                counts[kind] = counts.get(kind, 0) + 1
                if begun:
                    found.append((kind, counts[kind]))
                begun = begun or MARK in line
        os.remove(log)
        return found


def limit(size):
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))


def kill_at_random(trial, longest):
    process = subprocess.Popen(trial.command, env=trial.environment, stderr=subprocess.PIPE)
    time.sleep(random.uniform(0, longest))
    process.kill()
    process.communicate()
    return process.returncode


def try_scenario(name, nameless):
    figures = {"failed": 0, "full": 0, "killed": 0, "damaged": 0, "silent": 0, "left over": 0}

    def one(kind, what, action):
        with Trial(name, nameless) as trial:
            verdict = trial.judge(action(trial))
            figures[kind] += 1
            if verdict:
                figures[verdict] += 1
                print("   %s: %s, %s" % (name, what, verdict), flush=True)

    with Trial(name, nameless) as trial:
        start = time.monotonic()
        trial.run()
        longest = 1.2 * (time.monotonic() - start)
    for kind, number in calls(name, nameless):
        for how in ("error=" + ERRORS[kind], "signal=KILL"):
            one("failed" if how[0] == "e" else "killed", "%s %d %s" % (kind, number, how),
                lambda trial: trial.strace("-e", "trace=" + kind, "-e", "inject=%s:%s:when=%d" % (kind, how, number)))
    size = max(len(text) for text in SCENARIOS[name][1].values())
    for most in sorted({0, 1, size // 3, size // 2, size - 1, 4096, 65536}):
        if most < size:
            one("full", "at most %d bytes" % most, lambda trial: trial.run(preexec_fn=lambda: limit(most)))
    for number in range(KILLS):
        one("killed", "killed %d" % number, lambda trial: kill_at_random(trial, longest))
    return figures


def main():
    random.seed(1)
    total = {}
    print("%-10s %-9s" % ("scenario", "files"), end="")
    for nameless in (True, False):
        for name in SCENARIOS:
            figures = try_scenario(name, nameless)
            if not total:
                print("".join("%10s" % column for column in figures))
            print("%-10s %-9s" % (name, "nameless" if nameless else "named") + "".join("%10d" % figure for figure in figures.values()), flush=True)
            total = {column: total.get(column, 0) + figure for column, figure in figures.items()}
    print("%-20s" % "all" + "".join("%10d" % figure for figure in total.values()))
    sys.exit(1 if total["damaged"] + total["silent"] + total["left over"] else 0)


main()
