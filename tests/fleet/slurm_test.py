#!/usr/bin/env python3
"""The example for Slurm, as a job array of a real Slurm: as one run, also when a task is killed and submitted again."""

import time
import unittest

import fleet
import slurm_cluster


class SlurmTest(fleet.FleetTest):
    SHARDS = 5

    def setUp(self):
        super().setUp()
        self.cluster = slurm_cluster.Cluster().__enter__()
        self.addCleanup(self.cluster.__exit__)
        (self.work / "lists").mkdir()
        self.env = {**self.world.env, "SHARDS": str(self.SHARDS), "INPUTS": "in/*.txt", "OUTPUTS": "out/*.csv",
                    "RECIPE": "r.rcp", "LISTS": "lists"}

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
        job = self.submit(f"1-{self.SHARDS}")
        self.assertTrue(self.wait_for_lines(self.work / "lists/1.jsonl", 2), self.cluster.ask("squeue"))
        self.kill_all(f"1/{self.SHARDS}".encode())
        self.wait_for_end(job)
        self.assertEqual(self.status_of(job, 1), "0:9", "killed")
        self.assertLess(len(self.outputs("out")), len(one[0]))
        again = self.submit("1")
        self.wait_for_end(again)
        self.assertIn(self.status_of(again, 1), ("0:0", "1:0"))
        self.assert_same_as(one, "out", *(self.work / "lists").glob("*.jsonl"))


if __name__ == "__main__":
    if reason := slurm_cluster.missing():
        fleet.skip_loudly(reason)
    unittest.main()
