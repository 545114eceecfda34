"""LibreOffice and we honour each other's locks, tried with a real office. Exit status 77 where there is none, or no
Python that can speak to it.   locks_with_libreoffice.py SAVE_BOOK"""
import os
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path
from shutil import which

SYSTEM_PYTHON = "/usr/bin/python3"  # the one that Debian's python3-uno belongs to
SKIPPED = 77
PATIENCE = 90

try:
    import uno
    from com.sun.star.beans import PropertyValue
    from com.sun.star.connection import NoConnectException
except ImportError:
    if os.path.exists(SYSTEM_PYTHON) and not os.path.samefile(sys.executable, SYSTEM_PYTHON):
        os.execv(SYSTEM_PYTHON, [SYSTEM_PYTHON, *sys.argv])
    print("Skipped: python3-uno is not installed, so LibreOffice cannot be asked.")
    sys.exit(SKIPPED)


def connect(pipe, office):
    local = uno.getComponentContext()
    resolver = local.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", local)
    end = time.monotonic() + PATIENCE
    while True:
        try:
            context = resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
            return context.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", context)
        except NoConnectException:
            if time.monotonic() > end or office.poll() is not None:
                raise AssertionError("the office does not answer") from None
            time.sleep(0.1)


def load(desktop, book):
    return desktop.loadComponentFromURL(book.as_uri(), "_blank", 0, (PropertyValue("Hidden", 0, True, 0),))


def check(desktop, program, folder):
    book, lock = folder / "book.xlsx", folder / ".~lock.book.xlsx#"
    subprocess.run([program, "make", book], check=True)

    document = load(desktop, book)
    assert not document.isReadonly(), "LibreOffice opens a free book for reading only"
    assert lock.exists(), "LibreOffice left no lock"
    refused = subprocess.run([program, "refused", book], capture_output=True, text=True)
    assert refused.returncode == 0, f"we open a book that LibreOffice has open: {refused.stdout}{refused.stderr}"
    print("Told while LibreOffice has it open:", refused.stdout.strip())
    document.close(True)
    assert not lock.exists(), "LibreOffice left its lock"

    holder = subprocess.Popen([program, "hold", book], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    try:
        assert holder.stdout.readline().strip() == "open"
        ours = lock.read_bytes()
        document = load(desktop, book)
        assert document is None or document.isReadonly(), "LibreOffice opens a book that we have open, for writing"
        if document is not None:
            document.close(True)
        assert lock.read_bytes() == ours, "LibreOffice changed our lock"
    finally:
        holder.communicate()
    assert not lock.exists(), "we left our lock"
    document = load(desktop, book)
    assert not document.isReadonly(), "LibreOffice still takes the book for locked"
    document.close(True)


def main():
    if which("soffice") is None:
        print("Skipped: LibreOffice is not installed.")
        return SKIPPED
    with tempfile.TemporaryDirectory(prefix="tolvane_locks_", ignore_cleanup_errors=True) as place:
        folder = Path(place)
        pipe = f"tolvane{os.getpid()}"
        office = subprocess.Popen(
            ["soffice", f"-env:UserInstallation={(folder / 'profile').as_uri()}", "--headless", "--norestore",
             f"--accept=pipe,name={pipe};urp;"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            start_new_session=True)
        try:
            desktop = connect(pipe, office)
            (folder / "books").mkdir()
            check(desktop, sys.argv[1], folder / "books")
            print("LibreOffice and we honour each other's locks.")
        finally:
            os.killpg(office.pid, signal.SIGKILL)
            office.wait()
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except AssertionError as problem:
        print(f"FAILED: {problem}")
        sys.exit(1)
