"""A run that is killed at any moment leaves the old file or the new one, whole, whether it makes a workbook or changes
one. QUILLON_KILLS sets how often (default 40)."""

import argparse
import os
import random
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

import link_case

ROWS = 6000


def script(folder, path, mark):
    lines = [f"write\t1\t{r}\t{c}\t{mark} {r * c}" for r in range(1, ROWS) for c in range(1, 5)]
    file = folder / f"script-{mark}"
    file.write_text("\n".join([*lines, f"save\t{path}", ""]))
    return file


def run_killed(command, delay):
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL)
    time.sleep(delay)
    process.kill()
    process.wait()


def check(program, folder, extension, existing, kills, chance):
    path, old = folder / f"book{extension}", folder / f"old{extension}"
    subprocess.run([program, old, script(folder, old, "old")], check=True, stdout=subprocess.DEVNULL)
    before = old.read_bytes() if existing else None

    def restore():
        path.unlink(missing_ok=True)
        if existing:
            shutil.copy(old, path)

    command = [program, path, script(folder, path, "new")]
    restore()
    start = time.monotonic()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    whole = time.monotonic() - start
    after = path.read_bytes()
    assert after != before
    outcomes = {"old": 0, "new": 0}
    for _ in range(kills):
        restore()
        run_killed(command, chance.uniform(0, whole * 1.1))
        seen = path.read_bytes() if path.exists() else None
        whole_file = seen == before or (seen is not None and link_case.content(seen) == link_case.content(after))
        assert whole_file, f"{path.name} is neither the old nor the new file"
        outcomes["old" if seen == before else "new"] += 1
    print(extension, "changed" if existing else "made", outcomes)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    program = parser.parse_args().program
    kills = int(os.environ.get("QUILLON_KILLS", "40"))
    chance = random.Random(9)
    with tempfile.TemporaryDirectory(prefix="quillon-test-") as name:
        for extension in (".xlsx", ".xls"):
            for existing in (False, True):
                check(program, Path(name), extension, existing, kills // 4, chance)


main()
