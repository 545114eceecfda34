"""Whole processes beside each other, in one run: opening, and opening and saving, a workbook by ours and by LibreOffice
without a window, and the bound that no way of it can go below: inflating and deflating the same bytes. Then how ours
grows up to a million rows. Times are medians of runs that take turns, so that what else the machine does meets all.

  side_by_side.py BOOK_PROCESS [--rows 100000] [--runs 5] [--growth 125000,250000,500000,1000000]"""
import argparse
import os
import statistics
import subprocess
import tempfile
import time
from pathlib import Path
from shutil import which

from growth import slope

QUIET = [(os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0), (os.POSIX_SPAWN_OPEN, 2, "/dev/null", os.O_WRONLY, 0)]
COLUMNS = 9


def measure(command):
    """Seconds on the clock and of the processor, and the peak of the memory in megabytes, of a process with all that it
    waits for."""
    begin = time.perf_counter()
    process = os.posix_spawnp(command[0], command, os.environ, file_actions=QUIET)
    _, status, usage = os.wait4(process, 0)
    seconds = time.perf_counter() - begin
    if os.waitstatus_to_exitcode(status) != 0:
        raise SystemExit(f"{' '.join(command)} failed")
    return seconds, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def take_turns(commands, runs):
    results = {name: [] for name in commands}
    for _ in range(runs):
        for name, command in commands.items():
            results[name].append(measure(command))
    return {name: tuple(statistics.median(figures) for figures in zip(*all_runs)) for name, all_runs in results.items()}


def beside(ours, folder, rows, runs):
    book = str(folder / "book.xlsx")
    subprocess.run([ours, "make", str(rows), book], check=True)
    out = str(folder / "out")
    def office(kind):
        return ["soffice", f"-env:UserInstallation={(folder / 'profile').as_uri()}", "--headless", "--convert-to", kind,
                "--outdir", out, book]

    commands = {
        "open": [ours, "open", book],
        "open and save": [ours, "save", book, str(folder / "saved.xlsx")],
        "inflate alone": [ours, "inflate", book],
        "inflate and deflate alone": [ours, "repack", book, str(folder / "packed.xlsx")],
    }
    has_office = which("soffice") is not None
    if has_office:
        measure(office("csv"))  # its first run makes its profile
        commands["LibreOffice to .csv"] = office("csv")
        commands["LibreOffice to .xlsx"] = office("xlsx:Calc MS Excel 2007 XML")
    results = take_turns(commands, runs)

    megabytes = os.path.getsize(book) / 2**20
    print(f"\n{rows} rows x {COLUMNS} cells, a file of {megabytes:.1f} MB; medians of {runs} runs")
    print(f"{'':28}{'seconds':>9}{'processor':>11}{'peak MB':>9}   times LibreOffice's speed, share of its memory")
    pairs = {"open": "LibreOffice to .csv", "open and save": "LibreOffice to .xlsx"}
    for name, (seconds, processor, peak) in results.items():
        line = f"{name:28}{seconds:9.2f}{processor:11.2f}{peak:9.0f}"
        if has_office and name in pairs:
            theirs, _, their_peak = results[pairs[name]]
            line += f"   {theirs / seconds:.1f} x, {peak / their_peak:.2f}   ({pairs[name]})"
        print(line)
    if not has_office:
        print("LibreOffice is not installed: nothing to compare with.")


def growth(ours, folder, sizes):
    """By the processor's time, which other programs on the machine disturb less."""
    commands = {}
    for rows in sizes:
        book = str(folder / f"{rows}.xlsx")
        subprocess.run([ours, "make", str(rows), book], check=True)
        commands["open", rows] = [ours, "open", book]
        commands["open and save", rows] = [ours, "save", book, str(folder / "grown.xlsx")]
    results = take_turns(commands, 3)
    print(f"\nGrowth, {COLUMNS} cells a row; processor's seconds")
    print(f"{'rows':>28}{'open':>9}{'peak MB':>9}{'open and save':>15}{'peak MB':>9}")
    for rows in sizes:
        opened, saved = results["open", rows], results["open and save", rows]
        print(f"{rows:28}{opened[1]:9.2f}{opened[2]:9.0f}{saved[1]:15.2f}{saved[2]:9.0f}")
    slopes = [f"{name} {slope([(rows, results[name, rows][1]) for rows in sizes]):.2f}" for name in ("open", "open and save")]
    print(f"slope (1 is linear): {', '.join(slopes)}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("book_process")
    parser.add_argument("--rows", type=int, default=100_000)
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--growth", default="125000,250000,500000,1000000")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tolvane_bench_", ignore_cleanup_errors=True) as place:
        folder = Path(place)
        ours = os.path.abspath(options.book_process)
        beside(ours, folder, options.rows, options.runs)
        growth(ours, folder, [int(rows) for rows in options.growth.split(",")])


if __name__ == "__main__":
    main()
