#!/usr/bin/env python3
"""Each line of a report that isn't blank is of exactly one kind: over every golden case with a report and a recipe, the
kinds that `check` counts, and those in the result list of `convert`, add up to the lines that aren't blank.

  line_kinds_test.py --program build-dev/bin/quillon [NAME ...]
"""

import argparse
import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from tidy_reports_test import CASES, report_of

HERE = Path(__file__).resolve().parent
KINDS = re.compile(rb"(\d+) (?:rows?|further lines?|joined lines?|headings?|totals?|dropped|left out|outside of all tables)\b")


def cases():
    """Name, report, recipe and options of each case."""
    for recipe in sorted(CASES.glob("*.rcp")):
        yield "tidy " + recipe.stem, report_of(recipe.stem), recipe, []
    for folder in sorted(path.parent for path in HERE.glob("*/command")):
        command = (folder / "command").read_text(encoding="utf-8")
        for recipe in sorted(folder.glob("*.rcp")):
            for report in sorted(folder.iterdir()):
                if report.suffix in (".txt", ".prt", ".idx", ".rpt", ".dat") and "profile" not in report.name:
                    yield f"{folder.name} {report.name} {recipe.stem}", report, recipe, ["--unix"] if "--unix" in command else []


def run(program, folder, *arguments):
    env = dict(os.environ, HOME=str(folder), XDG_CONFIG_HOME=str(folder / "config"), LC_ALL="C.UTF-8")
    return subprocess.run([program, *map(str, arguments)], env=env, capture_output=True, stdin=subprocess.DEVNULL, check=False)


def written_lines(report, options):
    """Lines that aren't blank. Form feeds take no room; CR CR LF is one end of line."""
    data = report.read_bytes()
    ends = rb"\n" if options else rb"\r*\n|\r"
    return sum(1 for line in re.split(ends, data) if line.strip(b" \t\f\r\x0b"))


def faults(program, report, recipe, options):
    """What doesn't add up. Nothing for a recipe that doesn't fit the report."""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        checked = run(program, folder, "check", report, "--recipe", recipe, *options)
        line = next((line for line in checked.stdout.splitlines() if line.startswith(b"Lines: ")), None)
        if line is None:
            return None
        want = written_lines(report, options)
        got = sum(int(count) for count in KINDS.findall(line))
        found = [f"check counts {got} lines for {want}: {line.decode()}"] if got != want else []
        listed = folder / "results.jsonl"
        run(program, folder, "convert", "-q", report, "-o", folder / "o.csv", "--recipe", recipe, "--strict", "--keep",
            "--report", listed, *options)
        for text in listed.read_text(encoding="utf-8").splitlines() if listed.exists() else []:
            lines = json.loads(text).get("lines", {})
            kinds = {key: value for key, value in lines.items() if key not in ("read", "in_tables", "like_rows", "may_be_rows")}
            if kinds and sum(kinds.values()) != want:
                found.append(f"the result list counts {sum(kinds.values())} lines for {want}: {kinds}")
        return found


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True, type=lambda text: Path(text).resolve())
    parser.add_argument("names", nargs="*")
    options = parser.parse_args()
    tried = bad = 0
    for name, report, recipe, flags in cases():
        if options.names and not any(part in name for part in options.names):
            continue
        found = faults(options.program, report, recipe, flags)
        tried += found is not None
        for text in found or []:
            bad += 1
            print(f"{name}: {text}")
    print(f"{tried} cases, {bad} faults")
    return 1 if bad or tried == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
