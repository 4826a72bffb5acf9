#!/usr/bin/env python3
"""The example for Slurm, as a job array of a real Slurm: as one run, also when a task is killed and submitted again."""

import signal
import time
import unittest

import fleet
import slurm_cluster
from fleet import result_lines


class SlurmTest(fleet.FleetTest):
    SHARDS = 5

    def setUp(self):
        super().setUp()
        self.cluster = slurm_cluster.Cluster().__enter__()
        self.addCleanup(self.cluster.__exit__)
        (self.work / "lists").mkdir()
        (self.work / "bin").mkdir()
        self.deadly = self.work / "bin/quillon"
        self.env = {**self.world.env, "SHARDS": str(self.SHARDS), "INPUTS": "in/*.txt", "OUTPUTS": "out/*.csv",
                    "RECIPE": "r.rcp", "LISTS": "lists"}

    def kill_in_the_midst(self):
        """From now on tasks find a program that is killed before its 6th write to an output, if it comes to that."""
        killed = " ".join(f"{name}='{value}'" for name, value in self.killed_at(6, self.work / "out").items())
        self.deadly.write_text(f"#!/bin/sh\nexec env {killed} '{fleet.PROGRAM}' \"$@\"\n")
        self.deadly.chmod(0o755)
        self.env["PATH"] = f"{self.deadly.parent}:{self.env['PATH']}"

    def submit(self, tasks):
        script = fleet.ROOT / "packaging/examples/slurm-array.sh"
        return self.cluster.ask("sbatch", "--parsable", f"--array={tasks}", f"--chdir={self.work}",
                                f"--output={self.cluster.base}/%A-%a.log", script, **self.env).strip()

    def wait_for_end(self, job):
        end = time.monotonic() + 40
        while self.cluster.ask("squeue", "--noheader", f"--jobs={job}"):
            self.assertLess(time.monotonic(), end, self.cluster.ask("squeue"))
            time.sleep(0.1)

    def status_of(self, job, task):
        told = self.cluster.ask("scontrol", "--oneliner", "show", "job", f"{job}_{task}")
        return told.split("ExitCode=")[1].split()[0]

    def test_array_is_as_one_run_also_after_a_kill(self):
        one = self.one_run()
        self.kill_in_the_midst()
        job = self.submit(f"1-{self.SHARDS}")
        self.wait_for_end(job)
        killed = [task for task in range(1, self.SHARDS + 1) if self.status_of(job, task) == f"0:{signal.SIGKILL}"]
        self.assertGreater(len(killed), 0)
        self.assertLess(len(result_lines(*(self.work / "lists").glob("*.jsonl"))), len(one[1]))
        self.deadly.unlink()
        again = self.submit(",".join(map(str, killed)))
        self.wait_for_end(again)
        for task in killed:
            self.assertIn(self.status_of(again, task), ("0:0", "1:0"))
        self.assert_same_as(one, "out", *(self.work / "lists").glob("*.jsonl"))


if __name__ == "__main__":
    if reason := slurm_cluster.missing():
        fleet.skip_loudly(reason)
    unittest.main()
