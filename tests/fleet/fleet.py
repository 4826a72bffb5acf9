"""What the tests of shared batches have in common: a folder of reports, outputs and result lists to compare."""

import contextlib
import json
import os
import signal
import subprocess
import sys
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "golden"))
import golden  # noqa: E402

ROOT = golden.ROOT
PROGRAM, LAYER = (Path(sys.argv.pop(1)).resolve() if len(sys.argv) > 1 else None for _ in range(2))
SKIPPED = 77

RECIPE = golden.STOCK_RECIPE


def skip_loudly(reason):
    """For the runner of tests: nothing of this file was tested, and why."""
    print(f"SKIPPED: {Path(sys.argv[0]).stem}: {reason}", file=sys.stderr)
    sys.exit(SKIPPED)


def result_lines(*lists):
    """The last line about each input, without times; torn lines are passed over."""
    results = {}
    for each in lists:
        for text in each.read_bytes().split(b"\n"):
            try:
                line = json.loads(text)
            except ValueError:
                continue
            del line["seconds"]
            results[line.get("input_hex", line["input"])] = line
    return results


class FleetTest(unittest.TestCase):
    """Reports of many sizes in in/, among them one of no use, an empty one, one with tabs and one of a hostile name."""

    def setUp(self):
        self.world = golden.World(PROGRAM).__enter__()
        self.addCleanup(self.world.__exit__)
        self.work = self.world.work
        self.world.env["TMPDIR"] = str(self.world.base)  # A killed process leaves its work files.
        self.write("r.rcp", RECIPE)
        for i in range(40):
            rows = "".join(f"Bolts {n % 1000:3}\nNuts  {(n * n) % 997:3}\n" for n in range(i * i * 20 + 1))
            self.write(f"in/{'north' if i % 3 else 'south'}/{i:02}.txt", f"STOCK\n{rows}END\n")
        self.write("in/useless.txt", "nothing\n")
        self.write("in/empty.txt", "")
        for name in (b"in/tab.txt", b"in/\xff\n\x1b.txt"):
            self.write(os.fsdecode(name), "STOCK\nBolts\t  1\nEND\n")

    def write(self, name, text):
        path = self.work / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        return path

    def arguments(self, out, *more):
        return ["convert", "in/*.txt", "-r", "-o", f"{out}/*.csv", "--recipe", "r.rcp", "--quiet", *more]

    def start(self, *arguments):
        return subprocess.Popen([PROGRAM, *arguments], cwd=self.work, env=self.world.env, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def convert(self, *arguments, status=1):
        run = self.start(*arguments)
        said = run.communicate(timeout=60)[1].decode("utf-8", "backslashreplace")
        self.assertEqual(run.returncode, status, said)
        return said

    def one_run(self):
        """Outputs and lines of one process alone, which the fleet has to equal."""
        self.convert(*self.arguments("one", "--report", "one.jsonl"))
        lines = result_lines(self.work / "one.jsonl")
        self.assertEqual(len(lines), 44)
        return self.outputs("one"), lines

    def outputs(self, folder):
        return {path.relative_to(self.work / folder): path.read_bytes()
                for path in sorted((self.work / folder).rglob("*")) if path.is_file()}

    def assert_same_as(self, one, folder, *lists):
        files, lines = one
        made = self.outputs(folder)
        self.assertEqual(sorted(made), sorted(files))
        self.assertEqual([name for name in files if made[name] != files[name]], [])
        for line in (got := result_lines(*lists)).values():
            for key in ("output", "errors", "warnings"):
                line[key] = json.loads(json.dumps(line[key]).replace(f"{folder}/", "one/"))
            if "output_hex" in line:
                line["output_hex"] = line["output_hex"].replace(f"{folder}/".encode().hex(), b"one/".hex())
        self.assertEqual(got, lines)

    def kill_all(self, word=b""):
        """Every process that works in the folder and has the word in its command line, until there is none."""
        while here := [int(path.parent.name) for path in Path("/proc").glob("[0-9]*/cwd") if self.works_here(path, word)]:
            for pid in here:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(pid, signal.SIGKILL)
            time.sleep(0.02)

    def works_here(self, link, word):
        with contextlib.suppress(OSError):  # A zombie has neither folder nor command line.
            return os.readlink(link) == str(self.work) and word in (link.parent / "cmdline").read_bytes()
        return False

    @staticmethod
    def killed_at(write, path):
        """The environment in which the program is killed before its n-th write to the path, or to the files below it."""
        return {"LD_PRELOAD": str(LAYER), "QUILLON_FAULT_FOLDER": str(path), "QUILLON_FAULT_KIND": "kill",
                "QUILLON_FAULT_AT": str(write), "ASAN_OPTIONS": "verify_asan_link_order=0"}

    @staticmethod
    def wait_for_lines(path, count, seconds=30):
        """Until the list has so many lines. False if they don't come."""
        end = time.monotonic() + seconds
        while not path.exists() or path.read_bytes().count(b"\n") < count:
            if time.monotonic() > end:
                return False
            time.sleep(0.005)
        return True
