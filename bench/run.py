#!/usr/bin/env python3
"""Runs the program and its peers in turn on the same made files and prints one table. See bench/run.sh."""

import argparse
import math
import os
import pathlib
import random
import statistics
import subprocess
import sys
import tempfile
import time

# Three decades of each size.
TABLES = (16, 160, 1600, 16000)
MEASURED = (2, 20, 200, 2000)  # a ruler is worked out from the first 32,767 lines of a report
ROWS = (400, 4000, 40000, 400000)
COLUMNS = (10, 100, 1000, 10000)
FILES = (20, 200, 2000, 20000)
KEYS = (4, 40, 400, 4000)
WIDTHS = (8, 10, 20, 10, 12, 6, 8, 9, 12, 10)
GAWK_PLAIN = r"""function put(s) { if (s ~ /[",]/) { gsub(/"/, "\"\"", s); s = "\"" s "\"" } return s }
NR > 1 { out = put($1); for (i = 3; i <= NF; i += 2) out = out "," put($i); print out }"""
GAWK_CSV = r"""function put(s) { sub(/ +$/, "", s); if (s ~ /[",]/) { gsub(/"/, "\"\"", s); s = "\"" s "\"" } return s }
NR > 1 { out = put($1); for (i = 3; i <= NF; i += 2) out = out "," put($i); print out }"""

PANDAS_CSV = """import sys, pandas
widths = [int(width) + 1 for width in sys.argv[1].split(",")]
pandas.read_fwf("ledger.txt", widths=widths, header=None, dtype=str, skiprows=1).to_csv("out.csv", index=False, header=False)"""


class Figures:
    """Median wall and CPU seconds and the largest peak memory of several runs."""

    def __init__(self, runs):
        self.wall = statistics.median(run[0] for run in runs)
        self.cpu = statistics.median(run[1] for run in runs)
        self.peak = max(run[2] for run in runs)


def fresh(command):
    """Many files go to a folder NEW, another one each time: where many were just deleted the file system is busy with them."""
    fresh.count += 1
    new = f"new{fresh.count}/"
    return command.replace("NEW/", new) if isinstance(command, str) else [part.replace("NEW/", new) for part in command]


fresh.count = 0


def run_once(command, folder):
    command = fresh(command)
    for old in folder.glob("out.*"):
        old.unlink()
    started = time.monotonic()
    process = subprocess.Popen(command, cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               shell=isinstance(command, str))
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode:
        raise SystemExit(f"{command} ended with {process.returncode}")
    return time.monotonic() - started, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def side_by_side(commands, folder, runs):
    """Figures of each command, run in turn so that a drift of the machine's speed meets all alike."""
    rows = [[] for _ in commands]
    for _ in range(runs + 1):
        for row, command in zip(rows, commands):
            row.append(run_once(command, folder))
    return [Figures(row[1:]) for row in rows]


def ledger_row(i, chance):
    fields = (f"{i:<8}", f"2024-{i % 12 + 1:02}-{i % 28 + 1:02}", f"Account {i % 977:<12}", f"{chance.random() * 1e5:10.2f}",
              f"{chance.random() * 1e6:12,.2f}", "EUR   ", f"{chance.randrange(10**7):8}", f"{chance.random() * 1e4:9.3f}",
              f"ref{i % 99991:06}   ", f"{i % 1000:9}-")
    return " ".join(fields)


def recipe(parsing):
    return ("[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n\r\n[Table 1]\r\nReadStartLine=LEDGER START\r\n"
            "ReadStartLineOffset=1\r\nReadEndLine=LEDGER END\r\nReadEndLineOffset=-1\r\n"
            f"Parsing={parsing}\r\nWriteColumn=A\r\n")


def table_recipe(tables, parsing):
    return ("[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n\r\n" + "".join(
        f"[Table {t}]\r\nReadStartLine=START OF TABLE {t}#\r\nReadStartLineOffset=1\r\nReadEndLine=END OF TABLE {t}#\r\n"
        f"ReadEndLineOffset=-1\r\nParsing={parsing}\r\nWriteColumn=A\r\n" for t in range(1, tables + 1)))


def make_tables(folder, tables, rows, ruler):
    """A report of many tables, with the recipe that reads them, and the same with marks."""
    each = [rows[i % len(rows)] for i in range(tables * 10)]
    blocks = [each[10 * t:10 * t + 10] for t in range(tables)]
    (folder / f"tables{tables}.txt").write_text("".join(
        f"START OF TABLE {t}#\n" + "\n".join(block) + f"\nEND OF TABLE {t}#\n" for t, block in enumerate(blocks, 1)))
    (folder / f"tables{tables}.rcp").write_text(table_recipe(tables, ruler))
    (folder / f"worked{tables}.rcp").write_text(table_recipe(tables, "="))
    (folder / f"marked{tables}.txt").write_text("".join(
        f">>{t}\n{ruler}\n" + "\n".join(block) + f"\n<<{t}\n" for t, block in enumerate(blocks, 1)))


def make_keys(folder, keys, rows):
    """Key texts of so many tables of two rows each, behind a report of the same length whatever they are."""
    ends = "".join(f"BEGIN {k}#\n{rows[k % len(rows)]}\nEND {k}#\n" for k in range(1, keys + 1))
    (folder / f"keys{keys}.txt").write_text("\n".join(rows[:200000]) + "\n" + ends)
    (folder / f"keys{keys}.rcp").write_text(table_recipe(keys, " ".join("-" * width for width in WIDTHS)).replace(
        "START OF TABLE ", "BEGIN ").replace("END OF TABLE ", "END "))


def framed(rows):
    return "LEDGER START\n" + "\n".join(rows) + "\nLEDGER END\n"


def fixed_schema():
    start, lines = 0, ["column,start,length"]
    for number, width in enumerate(WIDTHS, 1):
        lines.append(f"c{number},{start},{width}")
        start += width + 1
    return "\n".join(lines) + "\n"


def make_files(folder, rows):
    chance = random.Random(1)
    lines = [ledger_row(i, chance) for i in range(rows)]
    (folder / "ledger.txt").write_text(framed(lines))
    for part in (4, 2):
        (folder / f"part{part}.txt").write_text(framed(lines[:rows // part]))
    (folder / "xls.txt").write_text(framed(lines[:65534]))
    (folder / "tabs.txt").write_text(framed([line.replace("EUR   ", "EUR\t") for line in lines]))
    (folder / "cp437.txt").write_bytes(framed([line.replace("Account", "B\u00fccher ") for line in lines]).encode("cp437"))
    (folder / "utf8.txt").write_text(framed([line.replace("Account", "B\u00fccher ") for line in lines]), encoding="utf-8")
    (folder / "wide.txt").write_text(framed([" ".join(f"{chance.randrange(10**6):7}" for _ in range(125)) for _ in range(rows // 10)]))
    (folder / "ruler.txt").write_text(framed([lines[i % rows].ljust(200)[:200] for i in range(9999)]))
    (folder / "drawn.rcp").write_text(recipe(" ".join("-" * width for width in WIDTHS)))
    (folder / "wide.rcp").write_text(recipe(" ".join(["-------"] * 125)))
    (folder / "worked.rcp").write_text(recipe("="))
    (folder / "quotes.txt").write_text(framed([line.replace("Account ", '"Acct", ') for line in lines]))
    for tables in TABLES + MEASURED:
        make_tables(folder, tables, lines, " ".join("-" * width for width in WIDTHS))
    for keys in KEYS:
        make_keys(folder, keys, lines)
    for count in ROWS:
        (folder / f"rows{count}.txt").write_text(framed([lines[i % rows] for i in range(count)]))
    for count in COLUMNS:
        line = " ".join(f"{chance.randrange(10**6):7}" for _ in range(count))
        (folder / f"columns{count}.txt").write_text(framed([line] * 200))
        (folder / f"columns{count}.rcp").write_text(recipe(" ".join(["-------"] * count)))
    (folder / "led.txt").write_text("".join(
        f"{n}\t{width + (n < len(WIDTHS))}\t[32] Space\tLeft\tNo\t{n}\t\t\r\n" for n, width in enumerate(WIDTHS, 1)))
    (folder / "schema.csv").write_text(fixed_schema())
    (folder / "million.txt").write_text(framed([line + f" {i:10} {i:10}" for i, line in enumerate(
        lines[j % rows] for j in range(1000000))]))
    (folder / "million.rcp").write_text(recipe(" ".join("-" * width for width in WIDTHS + (10, 10))))


def make_batch(folder, count):
    many = folder / f"many{count}"
    many.mkdir()
    text = framed([f"{i:<8} {'abc':<10} {i * 1.5:10.2f}" for i in range(20)])
    for i in range(count):
        (many / f"f{i:05}.txt").write_text(text)


def print_row(work, ours, theirs=None, peer="", size=0, cells=0, note=""):
    ratio = f"{theirs.wall / ours.wall:.1f} x" if theirs else ""
    print(f"| {work} | {ours.wall:.3f} | {ours.cpu:.3f} | {ours.peak:.0f} | "
          f"{f'{size / 1e6 / ours.wall:.0f}' if size else ''} | {f'{cells / 1e6 / ours.wall:.1f}' if cells else ''} | "
          f"{peer} | {f'{theirs.wall:.3f}' if theirs else ''} | {ratio} | {note} |", flush=True)


def exponent(sizes, seconds):
    """The power of the size by which the time grows, fitted to the times that are more than noise."""
    points = [(math.log(size), math.log(second)) for size, second in zip(sizes, seconds) if second > 0.004]
    if len(points) < 2:
        return None
    middle_x, middle_y = (statistics.mean(axis) for axis in zip(*points))
    return (sum((x - middle_x) * (y - middle_y) for x, y in points) / sum((x - middle_x) ** 2 for x, _ in points))


MOST_POWER = 1.05


def curve(folder, work, command, sizes, runs, start):
    """A row for each size; the last tells the exponent of CPU time, without what a start takes. True if it is no more
    than linear."""
    figures = [side_by_side([command(size)], folder, runs)[0] for size in sizes]
    power = exponent(sizes, [ours.cpu - start for ours in figures])
    for size, ours in zip(sizes, figures):
        print_row(work.format(f"{size:,}"), ours, note=f"grows by the power {power:.2f}" if power and size == sizes[-1] else "")
    return power is None or power <= MOST_POWER


def measure_curves(folder, program, convert, runs):
    """How cost grows with each size, over three decades; tells what grows faster than the size."""
    steep = []
    start = side_by_side([[program, "--version"]], folder, runs)[0].cpu
    drawn = ["--recipe", "drawn.rcp"]
    for work, command, sizes in (
            ("recipe of {} tables", lambda n: convert(f"tables{n}.txt", "out.csv", ["--recipe", f"tables{n}.rcp"]), TABLES),
            ("{} tables, rulers worked out", lambda n: convert(f"tables{n}.txt", "out.csv", ["--recipe", f"worked{n}.rcp"]), MEASURED),
            ("{} marked tables", lambda n: convert(f"marked{n}.txt", "out.csv", ["--markup"]), TABLES),
            ("check, {} tables", lambda n: [program, "check", f"tables{n}.txt", "--recipe", f"tables{n}.rcp"], TABLES),
            ("{} keys behind 200,000 rows", lambda n: convert(f"keys{n}.txt", "out.csv", ["--recipe", f"keys{n}.rcp"]), KEYS),
            ("{} files to CSV", lambda n: convert(f"many{n}/*.txt", "NEW/*.csv", [*drawn, "--jobs", "1"]), FILES),
            ("{} rows to CSV", lambda n: convert(f"rows{n}.txt", "out.csv", drawn), ROWS),
            ("{} rows to XLSX", lambda n: convert(f"rows{n}.txt", "out.xlsx", drawn), ROWS),
            ("{} rows into the same XLSX", lambda n: convert(f"rows{n}.txt", f"kept{n}.xlsx", drawn), ROWS),
            ("{} columns to CSV", lambda n: convert(f"columns{n}.txt", "out.csv", ["--recipe", f"columns{n}.rcp"]), COLUMNS)):
        if not curve(folder, work, command, sizes, runs, start):
            steep.append(work.format("n"))
    print(f"\nMore than linear: {', '.join(steep) or 'nothing'}\n", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("bin", type=pathlib.Path)
    parser.add_argument("--rows", type=int, default=400000)
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--make", type=pathlib.Path, help="only make the files, in this folder")
    parser.add_argument("--curves", type=pathlib.Path, help="only the curves, on the files that were made in this folder")
    chosen = parser.parse_args()
    if chosen.make:
        return make_files(chosen.make, chosen.rows)
    program = str((chosen.bin / "quillon").resolve())
    if chosen.curves:
        os.environ.update(HOME=str(chosen.curves.resolve()), LC_ALL="C.UTF-8")
        for count in FILES:
            if not (chosen.curves / f"many{count}").exists():
                make_batch(chosen.curves, count)
        return measure_curves(chosen.curves, program, converter(program), chosen.runs)
    with tempfile.TemporaryDirectory(prefix="quillon-bench-") as name:
        folder = pathlib.Path(name)
        os.environ.update(HOME=name, LC_ALL="C.UTF-8")
        # Made by another process: the size of this one would count as the peak memory of those that it starts.
        subprocess.run([sys.executable, __file__, str(chosen.bin), "--rows", str(chosen.rows), "--make", name], check=True)
        measure(folder, program, chosen)


def converter(program):
    return lambda source, output, method: [program, "convert", source, "-o", output, *method, "--quiet"]


def measure(folder, program, chosen):
    convert = converter(program)

    def size(source):
        return (folder / source).stat().st_size

    drawn, cells = ["--recipe", "drawn.rcp"], chosen.rows * len(WIDTHS)
    print("| work | s | CPU s | peak MB | MB/s | M cells/s | peer | s | peer / ours | note |\n|---|---|---|---|---|---|---|---|---|---|")
    to_csv = convert("ledger.txt", "out.csv", drawn)
    separated = " ".join(f"{width} 1" for width in WIDTHS[:-1]) + f" {WIDTHS[-1]}"
    gawk = ["gawk", "-b", "-v", f"FIELDWIDTHS={separated}", GAWK_CSV, "ledger.txt"]
    profile = convert("ledger.txt", "out.csv", ["--profile", "led.txt"])
    # Slow peers run once: their seconds are many times what a run differs from the next.
    for work, command, peer, theirs, runs in (
            ("recipe to CSV", to_csv, "cp", ["cp", "ledger.txt", "out.txt"], chosen.runs),
            ("recipe to CSV", to_csv, "gawk -b, trimmed and quoted", gawk, chosen.runs),
            ("profile to CSV", profile, "gawk -b, trimmed and quoted", gawk, chosen.runs),
            ("recipe to CSV", to_csv, "pandas read_fwf and to_csv",
             ["/usr/bin/python3", "-c", PANDAS_CSV, ",".join(map(str, WIDTHS))], 1),
            ("recipe to CSV", to_csv, "in2csv -f fixed", "in2csv -f fixed -s schema.csv ledger.txt >out.csv", 1)):
        figures = side_by_side([command, theirs], folder, runs)
        print_row(work, *figures, peer, size("ledger.txt"), cells)
    # Like with like: both keep the blanks around fields, or both drop them; few fields need quotes, or each third.
    for ledger in ("ledger.txt", "quotes.txt"):
        for work, trim, program_text in (("", [], GAWK_PLAIN), (", trimmed", ["--trim"], GAWK_CSV)):
            figures = side_by_side([convert(ledger, "out.csv", drawn + trim), [*gawk[:4], program_text, ledger]], folder, chosen.runs)
            print_row(f"recipe to CSV{work}, {ledger[:-4]}", *figures, f"gawk -b{work}", size(ledger), cells)
    for source in ("tabs.txt", "cp437.txt", "utf8.txt"):
        method = drawn + (["--encoding", "cp437"] if source == "cp437.txt" else [])
        [ours] = side_by_side([convert(source, "out.csv", method)], folder, chosen.runs)
        print_row(f"recipe to CSV, {source[:-4]}", ours, size=size(source), cells=cells)
    [ours] = side_by_side([convert("wide.txt", "out.csv", ["--recipe", "wide.rcp"])], folder, chosen.runs)
    print_row("recipe to CSV, 125 columns", ours, size=size("wide.txt"), cells=chosen.rows // 10 * 125)
    for part in (4, 2):
        [ours] = side_by_side([convert(f"part{part}.txt", "out.csv", drawn)], folder, chosen.runs)
        print_row(f"recipe to CSV, 1/{part} of the rows", ours, size=size(f"part{part}.txt"), cells=cells // part,
                  note=f"{ours.wall / (chosen.rows / part) * 1e9:.0f} ns a row")
    peer_program = chosen.bin / "xlsx_speed"
    for work, source, output, rows in (("recipe to XLSX", "ledger.txt", "out.xlsx", chosen.rows),
                                       ("recipe to XLS", "xls.txt", "out.xls", 65534)):
        commands = [convert(source, output, drawn)]
        if peer_program.exists():
            commands.append([str(peer_program.resolve()), "peer", str(rows), "10", "out.xlsx"])
        figures = side_by_side(commands, folder, chosen.runs)
        print_row(work, figures[0], *(figures[1:] + ["libxlsxwriter, constant memory, .xlsx, with the making of its data"] if len(figures) > 1 else []),
                  size=size(source), cells=rows * len(WIDTHS))
    [ours] = side_by_side([convert("million.txt", "out.xlsx", ["--recipe", "million.rcp"])], folder, 1)
    print_row("1,000,000 x 12 to XLSX", ours, size=size("million.txt"), cells=12000000)
    [ours] = side_by_side([convert("ruler.txt", "out.csv", ["--recipe", "worked.rcp"])], folder, chosen.runs)
    print_row("ruler worked out, 9,999 x 200", ours, size=size("ruler.txt"), note="the whole run")
    for count in FILES:
        make_batch(folder, count)
    measure_curves(folder, program, convert, chosen.runs)
    for count in (2000, 20000):
        # Once, into a folder that is new: where many files were just deleted the file system is busy with them.
        ours = Figures([run_once(convert(f"many{count}/*.txt", f"made{count}/*.csv", drawn), folder)])
        print_row(f"{count:,} small files to CSV", ours, note=f"{count / ours.wall:.0f} files/s")


if __name__ == "__main__":
    main()
