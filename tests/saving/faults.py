"""Lets the system stop a save: the process is killed at a system call, or the call fails, at every call of every kind
that a save makes. Afterwards the book must be the old or the new one, as must each backup, and the next save must leave
the folder as if nothing had happened.

  faults.py SAVE_BOOK          a sample, for the normal tests; exit status 77 where processes may not be traced
  faults.py SAVE_BOOK --all    every position
"""
import os
import re
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

CALLS = ["openat", "write", "fsync", "link", "rename", "unlink", "fchmod", "close", "newfstatat", "flock"]
# What changes the folder: of these the sample takes every position.
CHANGING = ["write", "fsync", "link", "rename", "unlink"]
FAULTS = ["signal=KILL", "error=ENOSPC", "error=EIO"]
SKIPPED = 77
BACKUPS = 2


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, timeout=120)


def why_not_traced():
    try:
        traced = run("strace", "-f", "-o", "/dev/null", "true")
    except FileNotFoundError:
        return "strace is not installed"
    return "" if traced.returncode == 0 else traced.stderr or "strace fails"


class Folder:
    """A book of version 3 with the backups 2 and 1."""

    def __init__(self, program):
        self.program = program
        self.place = tempfile.TemporaryDirectory(prefix="tolvane_faults_")
        self.book = Path(self.place.name) / "book.xlsx"
        for action in ["make", "change", "change"]:
            self.must(action)
        self.start = {name: (Path(self.place.name) / name).read_bytes() for name in os.listdir(self.place.name)}

    def must(self, action):
        done = run(self.program, action, str(self.book))
        if done.returncode != 0:
            raise AssertionError(f"{action} fails: {done.stderr}")
        return done.stdout.strip()

    def reset(self):
        for name in os.listdir(self.place.name):
            os.remove(Path(self.place.name) / name)
        for name, content in self.start.items():
            (Path(self.place.name) / name).write_bytes(content)

    def names(self):
        return sorted(os.listdir(self.place.name))

    def version(self, name):
        done = run(self.program, "version", str(Path(self.place.name) / name))
        if done.returncode != 0:
            raise AssertionError(f"{name} does not open: {done.stderr}")
        return int(done.stdout)

    def change(self, *strace):
        return run("strace", "-f", "-o", "/dev/null", *strace, self.program, "change", str(self.book))


def calls_of_a_save(folder):
    """The numbers of the calls of each kind that a save makes; what comes before them is the program's start."""
    log = Path(folder.place.name + ".log")
    done = run("strace", "-f", "-o", str(log), "-e", "trace=" + ",".join(CALLS), folder.program, "change",
               str(folder.book))
    text = log.read_text()
    log.unlink()
    if done.returncode != 0:
        raise SystemExit(f"a save that nothing stops fails: {done.stderr}")
    counts, before, begun = Counter(), Counter(), False
    for line in text.splitlines():
        match = re.match(r"\d+ +(\w+)\(", line)
        if not match:
            continue
        begun = begun or "book.xlsx" in line
        counts[match.group(1)] += 1
        if not begun:
            before[match.group(1)] += 1
    return {call: range(before[call] + 1, counts[call] + 1) for call in counts}


def check(folder, killed, done):
    """What a save that was stopped may leave behind, and that the next one puts it in order."""
    names = folder.names()
    assert "book.xlsx" in names, "the book is gone"
    now = folder.version("book.xlsx")
    assert now in (3, 4), f"the book is of version {now}"
    if not killed:
        assert done.returncode != 0 or now == 4, "the save says it is done, but the book is the old one"
    for name in names:
        if re.fullmatch(r"book\.xlsx", name):
            continue
        if re.fullmatch(r"book\.xlsx\.bak[12]", name) or name == "book.xlsx.bak0":
            run("cp", str(Path(folder.place.name) / name), str(Path(folder.place.name) / "copy.xlsx"))
            version = folder.version("copy.xlsx")
            os.remove(Path(folder.place.name) / "copy.xlsx")
            assert version <= now, f"{name} is of version {version}, newer than the book"
            continue
        # A call that fails at removing something leaves it, as a killed process does; the next save removes it.
        leftover = name.startswith(".~save.book.xlsx#") or name == ".~lock.book.xlsx#"
        assert leftover, f"{name} lies there"
    if now == 4:
        kept = [name for name in names if ".bak" in name]
        assert kept, "the former version is gone"
    folder.must("change")
    assert folder.version("book.xlsx") == now + 1
    wanted = ["book.xlsx", "book.xlsx.bak1", "book.xlsx.bak2"]
    assert folder.names() == wanted, f"after the next save there are {folder.names()}"
    for number, name in enumerate(wanted[1:], 1):
        os.rename(Path(folder.place.name) / name, Path(folder.place.name) / "copy.xlsx")
        assert folder.version("copy.xlsx") == now + 1 - number, f"{name} is of version {folder.version('copy.xlsx')}"


def main():
    program, everything = sys.argv[1], "--all" in sys.argv[2:]
    os.environ["ASAN_OPTIONS"] = "detect_leaks=0"  # a build with sanitizers looks for leaks by tracing, too
    why = why_not_traced()
    if why:
        print(f"Skipped: a process cannot be traced here, so no system call can be made to fail. {why.strip()}")
        return SKIPPED
    folder = Folder(program)
    positions = calls_of_a_save(folder)
    tried = failed = 0
    for call, numbers in positions.items():
        if not everything and call not in CHANGING:
            continue
        for number in numbers:
            for fault in FAULTS if everything else [FAULTS[0], FAULTS[1 + number % 2]]:
                folder.reset()
                done = folder.change("-e", "trace=" + call, "-e", f"inject={call}:{fault}:when={number}")
                tried += 1
                try:
                    check(folder, fault == "signal=KILL", done)
                except AssertionError as problem:
                    failed += 1
                    print(f"{call} number {number}, {fault}: {problem}\n{done.stderr.strip()}")
    counts = ", ".join(f"{len(numbers)} {call}" for call, numbers in positions.items())
    print(f"A save makes these calls: {counts}. Stopped {tried} times, {failed} times with harm.")
    return 1 if failed or not tried else 0


if __name__ == "__main__":
    sys.exit(main())
