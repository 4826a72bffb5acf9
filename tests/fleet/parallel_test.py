#!/usr/bin/env python3
"""The example for GNU parallel: as one run, also when it is killed and started again."""

import shutil
import subprocess
import unittest

import fleet


class ParallelTest(fleet.FleetTest):
    def setUp(self):
        super().setUp()
        (self.world.home / ".parallel").mkdir()
        self.world.env.update(INPUTS="in/*.txt", OUTPUTS="out/*.csv", RECIPE="r.rcp", LISTS="lists", PARTS="6", JOBS="2")

    def start_parallel(self):
        return subprocess.Popen([fleet.ROOT / "packaging/examples/parallel.sh"], cwd=self.work, env=self.world.env,
                                      stdin=subprocess.DEVNULL, stderr=subprocess.PIPE)

    def test_as_one_run_also_after_a_kill(self):
        one = self.one_run()
        run = self.start_parallel()
        self.assertTrue(self.wait_for_lines(self.work / "lists/1.jsonl", 2))
        run.kill()
        self.kill_all()
        run.communicate()
        run = self.start_parallel()
        said = run.communicate(timeout=60)[1].decode()
        self.assertIn(run.returncode, (1, 2), "as many parts as hold useless reports: " + said)
        self.assert_same_as(one, "out", *(self.work / "lists").glob("*.jsonl"))


if __name__ == "__main__":
    if not shutil.which("parallel", path="/usr/bin"):
        fleet.skip_loudly("GNU parallel is not installed (scripts/setup.sh tests)")
    unittest.main()
