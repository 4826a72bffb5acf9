"""What the golden runners share: a fresh world to run the program in, and texts that can be compared."""

import difflib
import os
import pty
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent

# Takes the rows between a line STOCK and a line END.
STOCK_RECIPE = """[Table 1]
ReadStartLine=STOCK
ReadStartLineOffset=1
ReadEndLine=END
ReadEndLineOffset=-1
Parsing=------ ---
WriteColumn=A
"""

# What differs from run to run and from machine to machine, and says nothing about the conversion.
VARYING = [
    (re.compile(r"(Quillon Log) \[[^\]\n]*\]"), r"\1 [<stamp>]"),
    (re.compile(r"(Total Time:) [0-9.]+"), r"\1 <n>"),
    (re.compile(r"\b[0-9]+\.[0-9]+ (seconds?|s)\b"), r"<n> \1"),
    (re.compile(r"\b[0-9.]+ ([kMG]?B/s)"), r"<n> \1"),
]


class World:
    """A folder of its own with home and locale fixed; drive C: is the folder. Gone at the end."""

    def __init__(self, program):
        self.program = Path(program).resolve()

    def __enter__(self):
        self.base = Path(tempfile.mkdtemp(prefix="quillon-golden-"))
        self.work = self.base / "work"
        self.home = self.base / "home"
        self.work.mkdir()
        self.home.mkdir()
        kept = ("ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "GCOV_PREFIX")
        self.env = {name: os.environ[name] for name in kept if name in os.environ}
        self.env.update(
            PATH=f"{self.program.parent}:/usr/bin:/bin", HOME=str(self.home), LC_ALL="C.UTF-8", TZ="UTC",
            QUILLON_DRIVE_C=str(self.work), COLUMNS="100", SOURCE_DATE_EPOCH="315532800")
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.base, ignore_errors=True)

    def run(self, line, timeout=120, steady=True):
        """One line by sh: (stdout, stderr, exit status), with the folder's own path and what varies taken out."""
        done = subprocess.run(["/bin/sh", "-c", line], cwd=self.work, env=self.env, stdin=subprocess.DEVNULL,
                              capture_output=True, timeout=timeout, check=False)
        text = self.steady if steady else self.local
        return text(done.stdout), text(done.stderr), done.returncode

    def local(self, data):
        """Text without the folder's own path."""
        text = data.decode("utf-8", "backslashreplace")
        for folder, name in ((str(self.work), "<work>"), (str(self.home), "<home>")):
            text = text.replace(folder, name).replace(folder.replace("/", "\\"), name)
        return text

    def steady(self, data):
        text = self.local(data)
        for pattern, replacement in VARYING:
            text = pattern.sub(replacement, text)
        return text


def skip_loudly(test, reason):
    """Leaves a test out because of what the machine lacks; scripts/test.sh counts the lines that say so."""
    print(f"SKIPPED: {test.id()}: {reason}", file=sys.stderr)
    test.skipTest(reason)


def pseudo_terminal(test):
    """Both ends of a terminal of the test's own."""
    try:
        return pty.openpty()
    except OSError as failure:
        return skip_loudly(test, f"this machine has no pseudo terminals ({failure.strerror})")


def difference(expected, got, expected_name, got_name, most=60):
    """A unified difference as text, cut when it gets long; empty if there is none."""
    lines = list(difflib.unified_diff(expected.splitlines(), got.splitlines(), expected_name, got_name, lineterm="", n=2))
    if len(lines) > most:
        lines = lines[:most] + [f"... and {len(lines) - most} more lines"]
    return "\n".join(lines)
