#!/usr/bin/env python3
"""bench/tidy_rows.py PROGRAM [--lines N] [--runs N]: a payroll register to CSV by a tidy table, beside the same table
without tidy keys and a gawk program that does the same by hand. Processor time, user and system, medians of runs in turn.
Both programs' rows must be the same."""

import argparse
import os
import pathlib
import random
import statistics
import subprocess
import tempfile

TIDY = """[Table 1]
Needs=A digits, D-F number
Places=6-11 14-33 36-43 45-54 57-66 69-78
Names=No|Name|Hired|Gross|Tax|Net
Types=A text, C date MM/DD/YY, D-F number
[Heading 1.1]
Text=DEPARTMENT NUMBER:
Places=21-23 26-60
Names=Dept|Department
"""
PLAIN = """[Table 1]
ReadStartLine=ACME LTD
ReadStartLineOffset=0
ReadEndLine=END OF REPORT
ReadEndLineOffset=0
Parsing=     ------  --------------------  -------- ----------  ----------  ----------
WriteColumn=A
"""
AWK = r"""
function trim(s) { sub(/^ +/, "", s); sub(/ +$/, "", s); return s }
function num(s) { s = trim(s); gsub(/,/, "", s); if (s ~ /-$/) s = "-" substr(s, 1, length(s) - 1); return s }
function q(s) { if (s ~ /[",]/) { gsub(/"/, "\"\"", s); return "\"" s "\"" } return s }
function is(s) { return s ~ /^[-(]?[0-9,]*\.?[0-9]+[-)]?$/ }
BEGIN { printf "Dept,Department,No,Name,Hired,Gross,Tax,Net\r\n" }
/DEPARTMENT NUMBER:/ { dept = trim(substr($0, 21, 3)); name = trim(substr($0, 26, 35)); next }
{
  no = trim(substr($0, 6, 6)); g = trim(substr($0, 45, 10)); t = trim(substr($0, 57, 10)); n = trim(substr($0, 69, 10))
  if (no !~ /^[0-9]+$/ || !is(g) || !is(t) || !is(n)) next
  d = substr($0, 36, 8); y = substr(d, 7, 2) + 0
  printf "%s,%s,%s,%s,%d-%s-%s,%s,%s,%s\r\n", dept, q(name), no, q(trim(substr($0, 14, 20))), (y < 50 ? 2000 : 1900) + y, \
    substr(d, 1, 2), substr(d, 4, 2), num(g), num(t), num(n)
}"""
FIRST = ["ANNA BAKER", "BOB CARTER", "CARL DENT", "DORA ELLIS", "EVE FISHER", "FRANK GREEN"]
ROWS_A_PAGE = 56


def make(path, lines):
    chance = random.Random(1)
    written = number = page = 0
    with open(path, "w", encoding="ascii") as out:
        while written < lines:
            page += 1
            rows = [f"ACME LTD              PAYROLL REGISTER                     PAGE {page:5d}",
                    f" DEPARTMENT NUMBER: {page % 900:03d}  SALES {page}",
                    "     EMP NO  NAME                  HIRED         GROSS         TAX         NET",
                    "     ------  --------------------  --------  ---------  ----------  ----------"]
            for _ in range(ROWS_A_PAGE):
                number += 1
                gross = chance.randrange(100000, 999999)
                tax = gross // 5
                day = f"{chance.randrange(1, 13):02d}/{chance.randrange(1, 29):02d}/{chance.randrange(0, 25):02d}"
                rows.append(f"     {number % 1000000:06d}  {chance.choice(FIRST):20}  {day} {gross / 100:10,.2f}  {tax / 100:10,.2f}"
                            f"  {(gross - tax) / 100:10,.2f}")
            out.write("\n".join(rows) + "\n")
            written += len(rows)
        out.write("END OF REPORT\n")


def seconds(command, output):
    before = os.times()
    with open(output, "wb") as out:
        subprocess.run(command, stdout=out, check=True)
    after = os.times()
    return after.children_user - before.children_user + after.children_system - before.children_system


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--lines", type=int, default=1_000_000)
    parser.add_argument("--runs", type=int, default=5)
    chosen = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="quillon-tidy-") as name:
        os.environ.update(HOME=name, LC_ALL="C.UTF-8")
        folder = pathlib.Path(name)
        make(folder / "pay.txt", chosen.lines)
        commands = {"gawk": ["gawk", "-b", AWK, str(folder / "pay.txt")]}
        for work, recipe in (("tidy", TIDY), ("plain", PLAIN)):
            (folder / f"{work}.rcp").write_text(recipe, encoding="ascii")
            commands[work] = [str(chosen.program.resolve()), "convert", str(folder / "pay.txt"), "-o", str(folder / f"{work}.csv"),
                              "--recipe", str(folder / f"{work}.rcp"), "--quiet"]
        taken = {work: [] for work in commands}
        for _ in range(chosen.runs):
            for work, command in commands.items():
                taken[work].append(seconds(command, folder / f"{work}.out"))
        same = (folder / "gawk.out").read_bytes() == (folder / "tidy.csv").read_bytes()
    medians = {work: statistics.median(values) for work, values in taken.items()}
    print(f"{chosen.lines} lines: " + ", ".join(f"{work} {value:.2f} s" for work, value in medians.items()))
    print(f"tidy / plain {medians['tidy'] / medians['plain']:.2f}, gawk / tidy {medians['gawk'] / medians['tidy']:.1f}, "
          f"rows {'the same' if same else 'DIFFER'}")
    return 0 if same else 1


if __name__ == "__main__":
    raise SystemExit(main())
