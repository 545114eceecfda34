"""Recalculates the same workbooks here and in LibreOffice Calc, and prints both times and their ratio: 100,000 formulas
of many kinds over 100,000 rows of data, then each kind by itself. Calc is told to recalculate everything and is timed
from within; the results of both are compared.

recalculation.py RECALCULATION_BENCH [KIND ...]      needs soffice and the Python bindings of the system's python3"""
import os
import shutil
import subprocess
import sys
import tempfile
import time

try:
    import uno
    from com.sun.star.beans import PropertyValue
except ImportError:
    uno = None

REPEATS = 5  # the best of them counts: whatever else the machine does only ever adds
FIRST_COLUMN = 7  # counted from 0


def start_office(folder):
    pipe = f"recalculation{os.getpid()}"
    office = subprocess.Popen(
        ["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--norestore",
         f"--accept=pipe,name={pipe};urp;"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    local = uno.getComponentContext()
    resolver = local.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", local)
    for _ in range(120):
        try:
            context = resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
            return office, context.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", context)
        except Exception:
            time.sleep(0.5)
    raise RuntimeError("LibreOffice does not answer.")


def calculate_in_office(desktop, file):
    """Milliseconds, and for each column of results its number of texts and its sum."""
    hidden = PropertyValue()
    hidden.Name, hidden.Value = "Hidden", True
    book = desktop.loadComponentFromURL(f"file://{file}", "_blank", 0, (hidden,))
    times = []
    for _ in range(REPEATS):
        start = time.perf_counter()
        book.calculateAll()
        times.append((time.perf_counter() - start) * 1000)
    sheet = book.Sheets.getByIndex(0)
    cursor = sheet.createCursor()
    cursor.gotoEndOfUsedArea(False)
    rows = sheet.getCellRangeByPosition(FIRST_COLUMN, 1, cursor.RangeAddress.EndColumn, 100000).getDataArray()
    results = []
    for column in zip(*rows):
        texts = sum(1 for value in column if isinstance(value, str) and value)
        results.append((texts, sum(value for value in column if isinstance(value, float))))
    book.close(True)
    return times, results


def calculate_here(bench, file):
    lines = subprocess.run([bench, "calculate", file, str(REPEATS)], check=True, capture_output=True,
                           text=True).stdout.split("\n")
    times = [float(line) for line in lines[:REPEATS]]
    results = [(int(line.split()[0]), float(line.split()[1])) for line in lines[REPEATS:] if line]
    return times, results


def agree(ours, theirs):
    return len(ours) == len(theirs) and all(
        a[0] == b[0] and abs(a[1] - b[1]) <= 1e-9 * max(abs(a[1]), 1) for a, b in zip(ours, theirs))


def main():
    bench = os.path.abspath(sys.argv[1])
    counts = [line.split("\t") for line in
              subprocess.run([bench, "kinds"], check=True, capture_output=True, text=True).stdout.splitlines()]
    kinds = [("mixed", sum(int(count) for count, _ in counts))] + [(name, int(count)) for count, name in counts]
    if len(sys.argv) > 2:
        kinds = [kind for kind in kinds if kind[0] in sys.argv[2:]]
    print(f"{'Recalculating all formulas':<28}{'formulas':>9}{'here':>12}{'Calc':>12}{'ratio':>8}")
    folder = tempfile.mkdtemp(prefix="recalculation")
    office = None
    try:
        if uno and shutil.which("soffice"):
            office, desktop = start_office(folder)
        else:
            print("(LibreOffice or its Python bindings are not installed: nothing to compare with)")
        for name, count in kinds:
            file = os.path.join(folder, "book.xlsx")
            subprocess.run([bench, "make", name, file], check=True)
            ours, results = calculate_here(bench, file)
            here = min(ours)
            line = f"{name:<28}{count:>9}{here:>9.1f} ms"
            if office:
                theirs, their_results = calculate_in_office(desktop, file)
                there = min(theirs)
                line += f"{there:>9.1f} ms{there / here:>8.1f}"
                if not agree(results, their_results):
                    line += "   the results differ"
            print(line, flush=True)
            for made in os.listdir(folder):
                if made.startswith("book.xlsx"):
                    os.remove(os.path.join(folder, made))
    finally:
        if office:
            try:
                desktop.terminate()
            except Exception:
                office.terminate()
            office.wait()
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main()
