#!/usr/bin/env python3
"""One table of the roads that matter, two builds side by side in one run with bare loops and other programs.

goals.py BEFORE_BIN NOW_BIN [--runs N] [--only WORD] [--bare FOLDER]

A bin is a folder with the program `quillon`; bare_rows and xlsx_speed are looked for in the second one or in FOLDER.
Seconds are processor time, user and system, as medians: so other work on the machine tells less. The last column says
the load while a row was measured. Rows of several processes are told by the clock.
"""

import argparse
import os
import pathlib
import random
import statistics
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import run  # noqa: E402

RULER = " ".join("-" * width for width in run.WIDTHS)
SLOW_SECONDS = 3
WIDTHS = ",".join(map(str, run.WIDTHS))


def make(folder):
    """More files for the rows that run.py has none for."""
    chance = random.Random(2)
    lines = [run.ledger_row(i, chance) for i in range(40000)]

    def tables(name, count, rows, start, end):
        (folder / name).write_text("".join(
            start(t) + "\n".join(lines[(t * rows + i) % 40000] for i in range(rows)) + "\n" + end(t)
            for t in range(1, count + 1)))

    tables("marked.txt", 16000, 5, lambda t: f">>{t}\n{RULER}\n", lambda t: f"<<{t}\n")
    for count, rows in ((1000, 40), (4000, 10)):
        tables(f"many{count}.txt", count, rows, lambda t: f"START OF TABLE {t}#\n", lambda t: f"END OF TABLE {t}#\n")
        (folder / f"many{count}.rcp").write_text(run.table_recipe(count, RULER))
    with open(folder / "double.txt", "w", encoding="ascii") as double:
        text = (folder / "ledger.txt").read_text().splitlines(keepends=True)
        double.writelines(text[:-1] + text[1:])
    small = run.framed([f"{i:<8} {'abc':<10} {i * 1.5:10.2f}" for i in range(20)])
    (folder / "small.txt").write_text(small)
    (folder / "small.rcp").write_text(run.recipe("-------- ---------- ----------"))
    for count in (2000, 20000):
        if not (folder / f"many{count}").exists():
            run.make_batch(folder, count)
    (folder / "sheets").mkdir()
    for i in range(4):
        os.link(folder / "ledger.txt", folder / f"sheets/{i}.txt")


def rows(folder, bare, sheets):
    """(work, arguments of both builds, clock wanted, name of the peer, its command)."""
    drawn = ["--recipe", "drawn.rcp"]

    def convert(source, output, *method):
        return ["convert", source, "-o", output, "--quiet", *(method or drawn)]

    def loop(kind, source):
        return [bare, kind, WIDTHS, source, "out.bare"]

    def gawk(program, source):
        separated = " ".join(f"{width} 1" for width in run.WIDTHS[:-1]) + f" {run.WIDTHS[-1]}"
        return ["sh", "-c", 'exec gawk -b -v "FIELDWIDTHS=$0" "$1" "$2" >out.gawk', separated, program, source]

    profile = ["--profile", "led.txt"]
    yield "start: `--version`", ["--version"], False, "gawk, start", ["gawk", "BEGIN {}"]
    yield "start: a small file", convert("small.txt", "out.csv", "--recipe", "small.rcp"), False, "gawk, start", ["gawk", "BEGIN {}"]
    yield "16,000 marked tables", convert("marked.txt", "out.csv", "--markup"), False, "bare", loop("bytes", "marked.txt")
    yield ("1,000 tables by a recipe", convert("many1000.txt", "out.csv", "--recipe", "many1000.rcp"), False, "bare",
           loop("bytes", "many1000.txt"))
    yield "`check`, 4,000 tables", ["check", "many4000.txt", "--recipe", "many4000.rcp"], False, "bare", loop("bytes", "many4000.txt")
    yield ("2,000 small reports to CSV", convert("many2000/*.txt", "NEW/*.csv", "--recipe", "small.rcp"), False, "cp -r",
           ["cp", "-r", "many2000", "NEW/"])
    yield ("2,000 small reports to XLSX", convert("many2000/*.txt", "NEW/*.xlsx", "--recipe", "small.rcp"), False, "cp -r",
           ["cp", "-r", "many2000", "NEW/"])
    yield "recipe to CSV", convert("ledger.txt", "out.csv"), False, "bare", loop("bytes", "ledger.txt")
    yield "recipe to CSV", convert("ledger.txt", "out.csv"), False, "cp", ["cp", "ledger.txt", "out.copy"]
    yield "profile to CSV", convert("ledger.txt", "out.csv", *profile), False, "bare", loop("bytes", "ledger.txt")
    yield "recipe to CSV, many quotes", convert("quotes.txt", "out.csv"), False, "bare", loop("bytes", "quotes.txt")
    yield "recipe to CSV, many quotes", convert("quotes.txt", "out.csv"), False, "gawk -b", gawk(run.GAWK_PLAIN, "quotes.txt")
    yield ("recipe to CSV, `--trim`", convert("ledger.txt", "out.csv", *drawn, "--trim"), False, "gawk -b, trimmed",
           gawk(run.GAWK_CSV, "ledger.txt"))
    yield "recipe to CSV, tabs", convert("tabs.txt", "out.csv"), False, "bare", loop("bytes", "tabs.txt")
    yield "recipe to CSV, UTF-8", convert("utf8.txt", "out.csv"), False, "bare", loop("characters", "utf8.txt")
    yield "profile to CSV, UTF-8", convert("utf8.txt", "out.csv", *profile), False, "bare", loop("characters", "utf8.txt")
    yield "recipe to XLSX", convert("ledger.txt", "out.xlsx"), False, "bare", loop("sheet", "ledger.txt")
    if sheets.exists():
        yield ("recipe to XLSX", convert("ledger.txt", "out.xlsx"), False, "libxlsxwriter",
               [str(sheets), "peer", "400000", "10", "out.peer.xlsx"])
    yield "recipe to XLSX, by the clock", convert("ledger.txt", "out.xlsx"), True, "bare", loop("sheet", "ledger.txt")
    yield "`check`, 94 MB", ["check", "double.txt", *drawn], False, "bare", loop("bytes", "double.txt")
    yield "`suggest`, 94 MB", ["suggest", "double.txt", "-o", "out.rcp", "--force"], False, "bare", loop("bytes", "double.txt")


def measure(commands, folder, runs):
    taken = [[] for _ in commands]
    for _ in range(runs + 1):
        for row, command in zip(taken, commands):
            # Seconds are many times what a run differs from the next, so once is enough.
            if not row or row[0][1] < SLOW_SECONDS:
                row.append(run.run_once(command, folder))
    return [run.Figures(row[1:] or row) for row in taken]


def print_rows(folder, builds, chosen):
    bare = chosen.bare / "bare_rows"
    print("| work | before, s | now, s | gain | peer | peer, s | now / peer | now, MB | load |\n|---|---|---|---|---|---|---|---|---|")
    for work, arguments, clock, peer, command in rows(folder, str(bare), chosen.bare / "xlsx_speed"):
        if chosen.only not in work:
            continue
        before, now, other = measure([[builds[0], *arguments], [builds[1], *arguments], command], folder, chosen.runs)
        of = (lambda figures: figures.wall) if clock else (lambda figures: figures.cpu)
        print(f"| {work} | {of(before):.4f} | {of(now):.4f} | {of(before) / of(now):.1f} x | {peer} | {of(other):.4f} | "
              f"{of(now) / of(other):.1f} | {now.peak:.0f} | {os.getloadavg()[0]:.0f} |", flush=True)


def print_jobs(folder, program, chosen):
    """What several processes gain, by the clock."""
    print("\n| batch | one process, s | `--jobs 2`, s | gain | load |\n|---|---|---|---|---|")
    for work, source, kind, recipe in (("20,000 small reports to CSV", "many20000/*.txt", "csv", "small.rcp"),
                                       ("4 large reports to CSV", "sheets/*.txt", "csv", "drawn.rcp"),
                                       ("4 large reports to XLSX", "sheets/*.txt", "xlsx", "drawn.rcp")):
        if chosen.only not in work:
            continue
        taken = {1: [], 2: []}
        for _ in range(chosen.runs):
            for jobs, walls in taken.items():
                walls.append(run.run_once([program, "convert", source, "-o", f"NEW/*.{kind}", "--recipe", recipe, "--quiet",
                                           "--jobs", str(jobs)], folder)[0])
        one, two = (statistics.median(walls) for walls in taken.values())
        print(f"| {work} | {one:.3f} | {two:.3f} | {one / two:.2f} x | {os.getloadavg()[0]:.0f} |", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("before", type=pathlib.Path)
    parser.add_argument("now", type=pathlib.Path)
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--only", default="")
    parser.add_argument("--bare", type=pathlib.Path)
    parser.add_argument("--folder", type=pathlib.Path, help="work there, and keep the files")
    chosen = parser.parse_args()
    chosen.bare = (chosen.bare or chosen.now).resolve()
    builds = [str((folder / "quillon").resolve()) for folder in (chosen.before, chosen.now)]
    with tempfile.TemporaryDirectory(prefix="quillon-goals-") as name:
        folder = chosen.folder.resolve() if chosen.folder else pathlib.Path(name)
        os.environ.update(HOME=str(folder), LC_ALL="C.UTF-8")
        if not (folder / "ledger.txt").exists():
            subprocess.run([sys.executable, run.__file__, str(chosen.now), "--make", str(folder)], check=True)
        if not (folder / "sheets").exists():
            make(folder)
        print_rows(folder, builds, chosen)
        print_jobs(folder, builds[1], chosen)


if __name__ == "__main__":
    main()
