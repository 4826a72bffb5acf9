#!/usr/bin/env python3
"""One run in several processes says and writes what one process does, in the order of the list."""

import os
import re
import signal
import time
import unittest
from pathlib import Path

from fleet import FleetTest, result_lines


def without_times(text):
    return re.sub(rb"\[[^\]]*\]|[\d.]+ seconds", b"", text)


class JobsTest(FleetTest):
    def batch(self, out, jobs, *more, method=("--recipe", "r.rcp"), status=1):
        """What a run in so many processes says, with its log and its list; the outputs are in the folder."""
        said = self.convert("convert", "in/*.txt", "-r", "-o", f"{out}/*.{more[0]}", *method, *more[1:], "--jobs", str(jobs),
                            "--log", f"{out}.log", "--report", f"{out}.jsonl", status=status)
        log = (self.work / f"{out}.log").read_bytes()
        lines = [re.sub(rb'"seconds":[^,]*', b"", line) for line in (self.work / f"{out}.jsonl").read_bytes().splitlines()]

        def strip(text):
            return without_times(text).replace(f"{out}/".encode(), b"OUT/").replace(f"{out}/".encode().hex().encode(), b"OUT/")

        return strip(said.encode()), strip(log), [strip(line) for line in lines]

    def test_processes_together_are_one_run(self):
        for i in range(30):
            self.write(f"in/many/{i:02}.txt", f"STOCK\n=1+1    {i}\nBolts\t  1\nEND\n")  # what is said once a run
        self.convert("convert", "in/tab.txt", "-o", "t.csv", "--recipe", "r.rcp", status=0)  # what is said once of all runs
        for kind, more in (("csv", ()), ("csv", ("--verbose", "--strict")), ("xlsx", ("--quiet",)), ("csv", ("--markup",))):
            method = ("--markup",) if more == ("--markup",) else ("--recipe", "r.rcp")
            more = () if more == ("--markup",) else more
            one = self.batch("one", 1, kind, *more, method=method)
            for jobs in (2, 5):
                many = self.batch("out", jobs, kind, *more, method=method)
                for part, other in zip(one, many):
                    self.assertEqual(other, part)
                self.assertEqual(self.outputs("out"), self.outputs("one"))
                for path in sorted(self.work.glob("out*")):
                    os.system(f"rm -rf '{path}'")
            os.system(f"rm -rf '{self.work}'/one*")

    def test_a_specification_of_the_last_file_stays_for_the_user(self):
        self.write("worked.rcp", Path(self.work / "r.rcp").read_text().replace("------ ---", "="))
        left = []
        for jobs in ("1", "3"):
            self.convert(*self.arguments("o" + jobs, "--jobs", jobs)[:-3], "worked.rcp", "--quiet", "--jobs", jobs)
            left.append([path.read_bytes() for path in self.world.base.rglob("_ExportSpecs.t2x")])
        self.assertEqual(len(left[0]), 1)
        self.assertEqual(left[0], left[1])

    def workers(self, run):
        return [int(pid) for pid in Path(f"/proc/{run.pid}/task/{run.pid}/children").read_text().split()]

    def large_batch(self, count):
        text = "STOCK\n" + "Bolts 123\n" * 150000 + "END\n"
        for i in range(count):
            self.write(f"big/{i}.txt", text)
        return ["convert", "big/*.txt", "-o", "out/*.csv", "--recipe", "r.rcp", "--jobs", "2", "--report", "l.jsonl", "--quiet"]

    def until_workers(self, run, count):
        end = time.monotonic() + 20
        while len(self.workers(run)) < count and time.monotonic() < end:
            time.sleep(0.002)
        return self.workers(run)

    def test_a_process_that_dies_loses_its_file_alone(self):
        command = self.large_batch(12)
        run = self.start(*command)
        os.kill(self.until_workers(run, 2)[0], signal.SIGKILL)
        said = run.communicate(timeout=60)[1].decode()
        lines = result_lines(self.work / "l.jsonl")
        self.assertEqual(len(lines), 12)
        failed = [line for line in lines.values() if line["status"] != "done"]
        if not failed:
            self.skipTest("the process had nothing in hand")
        self.assertEqual((run.returncode, len(failed)), (1, 1))
        self.assertEqual(failed[0]["errors"][0]["code"], -1005)
        self.assertIn("signal 9", said)
        self.assertEqual(len(self.outputs("out")) - len(list((self.work / "out").glob(".quillon-*"))), 11)

    def test_an_interrupt_ends_all_and_tells_what_is_done(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            run = self.start(*self.large_batch(16))
            workers = self.until_workers(run, 2)
            self.assertTrue(self.wait_for_lines(self.work / "l.jsonl", 2))
            run.send_signal(number)
            said = run.communicate(timeout=60)[1].decode()
            self.assertEqual(run.returncode, 128 + number, said)
            self.assertEqual([pid for pid in workers if Path(f"/proc/{pid}").exists()], [])
            done = {Path(line["output"]).name for line in result_lines(self.work / "l.jsonl").values()}
            self.assertEqual({name.name for name in self.outputs("out")}, done, "what is written is told, and nothing else")
            os.system(f"rm -rf '{self.work}/out' '{self.work}/l.jsonl'")

    def test_a_killed_run_leaves_no_process(self):
        run = self.start(*self.large_batch(16))
        workers = self.until_workers(run, 2)
        run.kill()
        run.communicate()
        time.sleep(0.3)
        self.assertEqual([pid for pid in workers if self.works_here(Path(f"/proc/{pid}/cwd"), b"")], [])


if __name__ == "__main__":
    unittest.main()
