#!/usr/bin/env python3
"""Reports of tools, offices and databases become their tables without help; switched sections of a suggestion work.

  tests/suggest/layouts_test.py --program build-dev/bin/quillon
"""

import argparse
import csv
import os
import pty
import random
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent.parent / "scripts"))

import other_layouts  # noqa: E402
import written_layouts  # noqa: E402
from other_layouts import three_tables  # noqa: E402
from suggest_report import Runner, Truth, measure_one  # noqa: E402

# Share of the records that must come out exactly, where it isn't all of them: folders above a list are no heading yet,
# a tab may be one blank, titles stand at the places of rows.
SHARES = {"directory_tree": 0, "parted_file": 0, "chart_of_accounts": 0.5}
SEEDS = (1, 2)
LAYOUTS = other_layouts.LAYOUTS | written_layouts.LAYOUTS


def write(folder, name, seed):
    report, tables = LAYOUTS[name](random.Random(f"{name} {seed}"))
    path = folder / f"{name}_{seed}.txt"
    path.write_text(report, encoding="utf-8")
    truths = []
    for i, table in enumerate(tables):
        truth = folder / f"{name}_{seed}.{i}.csv"
        with truth.open("w", encoding="utf-8", newline="") as file:
            csv.writer(file, lineterminator="\n").writerows(table)
        truths.append(Truth(truth))
    return path, truths


def check_layouts(program, folder):
    faults = []
    runner = Runner(program)
    for name in LAYOUTS:
        for seed in SEEDS:
            path, truths = write(folder, name, seed)
            total, exact = measure_one(runner, path, truths)[:2]
            if exact < SHARES.get(name, 1) * total:
                faults.append(f"{name}, seed {seed}: {exact} of {total} records")
    return faults


def check_interruption(program, folder):
    """At a terminal progress shows, and a signal ends the work without a recipe."""
    report, recipe = folder / "long.txt", folder / "long.rcp"
    lines = "".join(f"{10001 + i}   Item {i % 97:<6}   {i % 83:>6}.50\n" for i in range(10000))
    report.write_text(lines * 60, encoding="utf-8")
    try:
        shown, terminal = pty.openpty()
    except OSError:
        print("SKIPPED: layouts_test: the interruption of suggest at a terminal: this machine has no pseudo terminals", file=sys.stderr)
        return []
    with subprocess.Popen([program, "suggest", report, "-o", recipe], stderr=terminal) as run:
        os.close(terminal)
        said = b""
        while b"%" not in said and (some := os.read(shown, 4096)):
            said += some
        run.send_signal(signal.SIGTERM)
        try:
            while some := os.read(shown, 4096):
                said += some
        except OSError:  # The terminal's other end is closed.
            pass
    os.close(shown)
    whole = run.returncode == 128 + signal.SIGTERM and not recipe.exists() and b"interrupted" in said
    return [] if whole else [f"interrupted: status {run.returncode}, recipe {recipe.exists()}, said {said[-200:]}"]


def check_switches(program, folder):
    """A table that wasn't wanted is there, and one sign less switches it on."""
    folder = folder / "switches"
    folder.mkdir()
    report, tables = three_tables(random.Random("switches"))
    (folder / "three.txt").write_text(report, encoding="utf-8")
    recipe = folder / "three.rcp"
    subprocess.run([program, "suggest", folder / "three.txt", "--tables", "1", "-o", recipe], check=True, capture_output=True)
    text = recipe.read_text(encoding="utf-8")
    counts = []
    for version in (text, text.replace("[-Table 2]", "[Table 2]")):
        recipe.write_text(version, encoding="utf-8")
        subprocess.run([program, "convert", folder / "three.txt", "--recipe", recipe, "-o", folder / "three.csv", "--quiet"], check=True, capture_output=True)
        counts.append(sum(len(file.read_text(encoding="utf-8").splitlines()) for file in folder.glob("three*.csv")))
    sizes = sorted((len(table) for table in tables), reverse=True)
    return [] if counts[1] - counts[0] in sizes and counts[0] in sizes else [f"switched tables: {counts} lines of tables with {sizes}"]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True)
    program = str(Path(parser.parse_args().program).resolve())
    with tempfile.TemporaryDirectory(prefix="quillon-layouts-") as folder:
        faults = check_layouts(program, Path(folder)) + check_switches(program, Path(folder)) + check_interruption(program, Path(folder))
    print("\n".join(faults), file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
