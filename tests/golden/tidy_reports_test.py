#!/usr/bin/env python3
"""Real reports become the tables their owners want, by tidy recipes.

tidy_reports/NAME.rcp reads NAME.* there or in the golden case of that name; tidy_reports/expected holds what must come:
NAME.csv, NAME-SHEET.csv for each further sheet, or for long ones NAME.csv.sum with the number of rows and their SHA-256.

  tidy_reports_test.py --program build-dev/bin/quillon [--accept] [NAME ...]
"""

import argparse
import hashlib
import os
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
CASES = HERE / "tidy_reports"
EXPECTED = CASES / "expected"
LONG = 50_000  # bytes; longer tables are kept as sums


def report_of(name):
    for folder in (CASES, HERE / name):
        for path in sorted(folder.glob(name + ".*")):
            if path.suffix != ".rcp":
                return path
    raise FileNotFoundError(name)


def kept(made):
    """Name and bytes under which a table is kept."""
    data = made.read_bytes()
    if len(data) <= LONG:
        return made.name, data
    return made.name + ".sum", f"{data.count(bytes([10]))} {hashlib.sha256(data).hexdigest()}\n".encode()


def convert(program, name, folder):
    env = dict(os.environ, HOME=str(folder), XDG_CONFIG_HOME=str(folder / "config"), LC_ALL="C.UTF-8")
    command = [program, "convert", "-q", report_of(name), "--recipe", CASES / f"{name}.rcp", "-o", folder / f"{name}.csv"]
    run = subprocess.run(command, env=env, capture_output=True, text=True, check=False)
    return run.stderr, dict(kept(path) for path in sorted(folder.glob(name + "*.csv")))


LONG_FORM = """[Header]
Product=QLN
FileType=RECIPE
FileFormat=1.1
[Output File]
OutputFileName={output}
InputFileFirst=1
InputFileLast=1
ExportSpecFileName=Kept_ExportSpecs.t2x
[Input Files]
FileName1={report}
"""


def convert_by_specification(program, name, folder, made):
    """Keeps the specification that the recipe's run left, and runs it. Says what differs from that run."""
    left = next((folder / "config").glob("**/_ExportSpecs.t2x"), None)
    if left is None:
        return f"{name}: no specification was left"
    (folder / "Kept_ExportSpecs.t2x").write_bytes(left.read_bytes())
    again = folder / "again"
    again.mkdir()
    output = again / f"{name}.csv"
    (folder / "kept.rcp").write_text(LONG_FORM.format(output=output, report=report_of(name)))
    env = dict(os.environ, HOME=str(folder), XDG_CONFIG_HOME=str(folder / "config"), LC_ALL="C.UTF-8")
    command = [program, "convert", "-q", "--specification", folder / "kept.rcp", "-o", output]
    run = subprocess.run(command, env=env, capture_output=True, text=True, check=False, cwd=folder)
    if dict(kept(path) for path in sorted(again.glob("*.csv"))) == made:
        return ""
    return f"{name}: its specification gives something else\n{run.stderr}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True, type=lambda text: Path(text).resolve())
    parser.add_argument("--accept", action="store_true")
    parser.add_argument("names", nargs="*")
    arguments = parser.parse_args()
    names = arguments.names or sorted(path.stem for path in CASES.glob("*.rcp"))
    failed = 0
    for name in names:
        with tempfile.TemporaryDirectory() as folder:
            said, made = convert(arguments.program, name, Path(folder))
            again = convert_by_specification(arguments.program, name, Path(folder), made)
        wanted = {path.name: path.read_bytes() for path in EXPECTED.glob(name + "*") if path.name[len(name)] in ".-"}
        if arguments.accept:
            EXPECTED.mkdir(exist_ok=True)
            for file, data in made.items():
                (EXPECTED / file).write_bytes(data)
        elif made != wanted or not made:
            failed += 1
            print(f"{name}: made {sorted(made)}, wanted {sorted(wanted)}, "
                  f"different {sorted(k for k in made.keys() & wanted.keys() if made[k] != wanted[k])}\n{said}")
        elif again:
            failed += 1
            print(again)
    print(f"{len(names) - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
