#!/usr/bin/env python3
"""A watched folder: each file that is dropped is converted exactly once, whatever ends the watch.

watch_test.py PROGRAM [FILES]
"""
import collections
import json
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
import unittest

PROGRAM = pathlib.Path(sys.argv.pop(1)).resolve()
FILES = int(sys.argv.pop(1)) if len(sys.argv) > 1 and sys.argv[1].isdigit() else 60
RECIPE = ("[Table 1]\r\nReadStartLine=STOCK\r\nReadStartLineOffset=1\r\nReadEndLine=END\r\nReadEndLineOffset=-1\r\n"
          "Parsing=------ -----\r\nWriteColumn=A\r\n")
JOB = "[QLN]\r\nsOutputFile=*.csv\r\nsRecipeFile={}\r\nlConversionMethod=1\r\n"


class Watch(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillon-watch-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.drop = self.folder / "drop"
        self.drop.mkdir()
        (self.folder / "r.rcp").write_text(RECIPE, newline="")
        (self.folder / "a.QLN").write_text(JOB.format(self.folder / "r.rcp"), newline="")

    def start(self):
        return subprocess.Popen([PROGRAM, "watch", self.drop, "--job", self.folder / "a.QLN", "--settle", "0.3", "--quiet"],
                                cwd=self.folder, stderr=subprocess.DEVNULL,
                                env={"PATH": os.environ["PATH"], "HOME": str(self.folder), "LC_ALL": "C.UTF-8"})

    def names(self, place):
        return sorted(p.name for p in (self.drop / place).glob("*.txt"))

    def wait(self, done, seconds=60):
        end = time.monotonic() + seconds
        while not done() and time.monotonic() < end:
            time.sleep(0.05)
        self.assertTrue(done())

    def write(self, name, rows):
        """Half of the writers rename into place, the others write slowly where all can see it."""
        text = "STOCK\n%sEND\n" % "".join("%-6s %5d\n" % ("Bolt", i) for i in range(rows))
        if random.random() < 0.5:
            (self.drop / ("." + name)).write_text(text)
            (self.drop / ("." + name)).rename(self.drop / name)
        else:
            with open(self.drop / name, "w") as file:
                file.write(text[:10])
                file.flush()
                time.sleep(0.02)
                file.write(text[10:])

    def test_each_file_is_converted_once_though_the_watch_is_killed(self):
        def writer(number):
            for i in range(number, FILES, 3):
                self.write(f"w{i:05}.txt", 1 + i % 7)

        writers = [threading.Thread(target=writer, args=(n,)) for n in range(3)]
        watch = self.start()
        for thread in writers:
            thread.start()
        for _ in range(max(4, FILES // 200)):
            time.sleep(random.uniform(0.2, 0.6))
            watch.kill()
            watch.wait()
            watch = self.start()
        for thread in writers:
            thread.join()
        self.write("last.txt", 1)  # the watch started last has work, so it is there to be told to end
        self.wait(lambda: len(self.names("done")) == FILES + 1, 60 + FILES / 10)
        watch.send_signal(signal.SIGTERM)
        self.assertEqual(watch.wait(timeout=20), 0)
        lines = (self.drop / "done" / "results.jsonl").read_text().splitlines()
        told = collections.Counter(json.loads(line)["output"] for line in lines)
        self.assertEqual(set(told.values()), {1})
        self.assertEqual(len(told), FILES + 1)
        for i in range(FILES):
            self.assertEqual((self.drop / "done" / f"w{i:05}.csv").read_text().count("Bolt"), 1 + i % 7)
        self.assertEqual(self.names("failed") + self.names(".taken") + self.names("."), [])

    def test_names_that_come_again_and_files_that_fail_lose_nothing(self):
        watch = self.start()
        (self.drop / "bad.txt").write_text("no stock\n")
        for rows in (1, 2):
            self.write("day.txt", rows)
            self.wait(lambda n=rows: len(self.names("done")) == n)
        self.wait(lambda: self.names("failed") == ["bad.txt"])
        self.assertEqual(self.names("done"), ["day-2.txt", "day.txt"])
        self.assertEqual((self.drop / "done" / "day-2.csv").read_text().count("Bolt"), 2)
        self.assertEqual(subprocess.run([PROGRAM, "watch", self.drop, "--job", self.folder / "a.QLN"],
                                        capture_output=True).returncode, 2)
        watch.send_signal(signal.SIGTERM)
        self.assertEqual(watch.wait(timeout=20), 0)


if __name__ == "__main__":
    unittest.main()
