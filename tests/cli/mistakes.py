#!/usr/bin/env python3
"""Makes a hundred mistakes on the command line and looks at the answers: the exit status, one line for each thing that is
wrong, with the words that matter, and nothing touched that was there. The page docs/manual/mistakes.md shows them.

  mistakes.py --program build-dev/bin/quillon             the page and the answers agree
  mistakes.py --program build-dev/bin/quillon --accept    writes what was answered into the page
"""

import argparse
import os
import re
import shlex
import shutil
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "golden"))
import golden  # noqa: E402

PAGE = golden.ROOT / "docs/manual/mistakes.md"
NOBODY = 65534
SKIPPED = 77

STOCK = "STOCK\nBolts   12\nNuts     7\nEND\n"
RECIPE = golden.STOCK_RECIPE
LONG = "[Header]\nProduct=QLN\nFileType=RECIPE\nFileFormat=1.1\n"
YEAR = (LONG + "[Output File]\nOutputFileName=year.csv\nInputFileFirst=1\nInputFileLast=1\nExportSpecFileName={}\n"
        "[Input Files]\nFileName1=stock.txt\n")
SPEC = ("[Header]\nProduct=QLN\nFileType=EXPORT SPEC\nFileFormat=1.1\n[Table 1]\nReadStartLine=STOCK\n"
        "ReadStartLineOffset=1\nReadEndLine=END\nReadEndLineOffset=-1\nTotalColumns=1\n"
        "[Table 1 Col 1]\nReadColumnStart=1\nReadColumnEnd=7\nWriteColumn=A\nPeriodOperator=\n")
JOB = "[QLN]\nsInputFile={}\nsOutputFile={}\nsRecipeFile=stock.rcp\nlConversionMethod=1\n{}"
TIDY = "[Table 1]\nReadStartLine=STOCK\nReadEndLine=END\nPlaces=1-7 8-\nNames=Item|Count\n"


def changed(old, new, text=RECIPE):
    assert old in text, old
    return text.replace(old, new, 1)


def year(name, spec):
    return {f"{name}.rcp": YEAR.format(f"{name}.t2x"), f"{name}.t2x": spec}


FILES = {
    "stock.txt": STOCK, "stock.csv": STOCK, "stock.rcp": RECIPE, "folder/a.txt": STOCK, "folder/b.txt": "nothing\n",
    "empty.txt": "", "tabs.txt": STOCK.replace("Bolts   ", "Bolts\t"),
    "half.txt": ">>1\n------ ---\nBolts   1\n", "flat.txt": ">>1\nBolts   1\n<<1\n",
    # Recipes that are none, or lose something.
    "lost.rcp": changed("ReadEndLine=END", "ReadEndLine=THE END"), "nostart.rcp": changed("=STOCK", "=SHELF"),
    "turned.rcp": changed("=STOCK", "=END").replace("ReadEndLine=END", "ReadEndLine=STOCK"),
    "above.rcp": changed("ReadStartLineOffset=1", "ReadStartLineOffset=-9").replace("EndLineOffset=-1", "EndLineOffset=0"),
    "behind.rcp": changed("ReadStartLineOffset=1", "ReadStartLineOffset=90").replace("EndLineOffset=-1", "EndLineOffset=90"),
    "noparsing.rcp": changed("Parsing=------ ---\n", ""), "comment.rcp": changed("Parsing=------", "Parsing=;-----"),
    "blanks.rcp": changed("Parsing=", "Parsing = "), "bracket.rcp": changed("=STOCK", "=[STOCK"),
    "order.rcp": changed("ReadStartLine=STOCK\nReadStartLineOffset=1\n", "ReadStartLineOffset=1\nReadStartLine=STOCK\n"),
    "twice.rcp": RECIPE + RECIPE, "gap.rcp": RECIPE + changed("Table 1", "Table 3"), "small.rcp": changed("Table 1", "table 1"),
    "letter.rcp": changed("WriteColumn=A", "WriteColumn=1"), "offset.rcp": changed("Offset=1", "Offset=one"),
    "narrow.rcp": changed("------ ---", "----"), "key.rcp": TIDY.replace("Names=", "Nmaes="),
    "place.rcp": TIDY.replace("1-7 8-", "x-7"), "names.rcp": TIDY.replace("Item|", "Item|Shelf|"),
    "norow.rcp": TIDY + "Needs=A date\n",
    # Long-form recipes.
    "year.rcp": YEAR.format("year.t2x"), "year.t2x": SPEC, "nospec.rcp": YEAR.format("gone.t2x"),
    "header.rcp": YEAR.format("year.t2x").replace("1.1", "1.0"),
    "period.rcp": YEAR.format("year.t2x").replace("First=1", "First=x"),
    "noreport.rcp": YEAR.format("year.t2x").replace("stock.txt", "gone.txt"),
    **year("start", changed("ReadColumnStart=1", "ReadColumnStart=0", SPEC)),
    **year("end", changed("ReadColumnEnd=7", "ReadColumnEnd=", SPEC)),
    **year("column", changed("WriteColumn=A", "WriteColumn=1", SPEC)),
    **year("operator", changed("Operator=", "Operator=MEAN", SPEC)),
    **year("double", changed("Operator=", "Operator=DUPLICATE", SPEC)),
    **year("backwards", changed("ReadColumnStart=1", "ReadColumnStart=9", SPEC)),
    **year("columns", changed("TotalColumns=1", "TotalColumns=0", SPEC)),
    # Jobs and profiles.
    "number.QLN": JOB.format("stock.txt", "o.csv", "lTabSize=eight\n"), "key.QLN": JOB.format("stock.txt", "o.csv", "bUnxi=TRUE\n"),
    "type.QLN": JOB.format("stock.txt", "o.pdf", ""), "star.QLN": JOB.format("*.txt", "o.csv", ""),
    "one.QLN": JOB.format("stock.txt", "*.csv", ""), "none.QLN": JOB.format("gone/*.txt", "o/*.csv", ""),
    "few.profile.txt": "1\t6\n", "removed.profile.txt": "1\t6\t[32] Space\tLeft\tYes\t1\t\t\n",
}
SHOWN = ("stock.txt", "stock.rcp")

DENIED = "What may not be read or written"
CONVERT = "quillon convert stock.txt -o o.csv "
# (title, what is said of the group, [(command, exit status, words that the answer holds)])
GROUPS = [
    ("The command", "", [
        ("quillon ''", 2, "no command"), ("quillon help", 2, "--help"), ("quillon -V", 2, "--version"),
        ("quillon --verison", 2, "--version"), ("quillon convrt stock.txt", 2, "did you mean convert?"),
        ("quillon stock.txt", 2, "quillon convert stock.txt"), ('quillon "$PWD/stock.txt"', 2, "quillon convert"),
        ("quillon 'stock.txt to csv'", 2, "no command"), ("quillon /home/me/report.txt", 0, "/I"),
        ("quillon ' /IC:\\gone.txt'", 0, "gone.txt"), (r"quillon '/IC:\stock.txt /OC:\o.pdf'", 0, "CSV"), (r"quillon '/1 /IC:\gone.txt /OC:\o.csv /V'", 0, "-1"),
        ("quillon --version > /dev/full", 1, "standard output"), ("quillon convert --help > /dev/full", 1, "standard output")]),
    ("Options", "", [
        (CONVERT + "--recpie stock.rcp", 2, "did you mean --recipe?"), (CONVERT + "--recipe stock.rcp --verbos", 2, "--verbose?"),
        (CONVERT + "-x --markup", 2, "-x"), (CONVERT + "--recipe", 2, "--recipe"), (CONVERT.strip(), 2, "--recipe"),
        (CONVERT + "--markup --recipe stock.rcp", 2, "2 were given"), (CONVERT + "--recipe ''", 2, "empty"),
        (CONVERT + "--profile ''", 2, "empty"), (CONVERT + "--markup --quote maybe", 2, "sometimes"),
        (CONVERT + "--markup --delimiter 300", 2, "255"), (CONVERT + "--markup --delimiter xx", 2, "tab"),
        (CONVERT + "--markup --tab-size x", 2, "--tab-size"), (CONVERT + "--markup --tab-size -1", 2, "--tab-size"),
        (CONVERT + "--markup --encoding klingon", 2, "klingon"), (CONVERT + "--markup --records heap", 2, "fixed"),
        (CONVERT + "--markup --shard 3/2", 2, "I/N"), (CONVERT + "--markup --shard 1/2", 2, '"*"'),
        (CONVERT + "--markup --skip-done", 2, "--report"), (CONVERT + "--markup --report l --log l", 2, "another log"),
        (CONVERT + "--markup --report gone/l", 2, "gone/l"), (CONVERT + "--markup --report stock.txt", 2, "stock.txt"),
        (CONVERT + "--recipe stock.rcp --quote always --utf16 -q --log run.log; grep note run.log", 0, "no effect"),
        ("quillon preview stock.txt --recipe stock.rcp --rows 0", 2, "--rows"),
        ("quillon preview stock.txt --recipe stock.rcp --table 0", 2, "--table"),
        ("quillon suggest stock.txt --tables one", 2, "--tables"), ("quillon check stock.txt", 2, "--recipe"),
        ("quillon check --recipe stock.rcp", 2, "INPUT"), ("quillon check stock.txt --specification ''", 2, "empty"),
        ("quillon preview stock.txt --profile ''", 2, "empty")]),
    ("Inputs", "", [
        ("quillon convert -o o.csv --markup", 2, "INPUT"), ("quillon convert '' -o o.csv --markup", 2, "empty"),
        ("quillon convert gone.txt -o o.csv --recipe stock.rcp", 1, "gone.txt"),
        ("quillon convert gone.txt stock.txt -o 'o/*.csv' --recipe stock.rcp", 1, "gone.txt"),
        ("quillon convert 'gone/*.txt' -o 'o/*.csv' --recipe stock.rcp", 1, "gone/"),
        ("quillon convert gone -o 'o/*.csv' --recipe stock.rcp", 1, "gone"),
        ("quillon convert folder -o 'o/*.csv' --recipe stock.rcp", 1, "folder/b.txt"),
        ("quillon convert - stock.txt -o '*.csv' --markup < stock.txt", 2, "-"),
        ("quillon convert - -o o.csv --recipe stock.rcp 0<&-", 1, "standard input"),
        ("TMPDIR=/gone quillon convert - -o o.csv --recipe stock.rcp < stock.txt", 1, "TMPDIR"),
        ("TMPDIR=/gone quillon preview - --recipe stock.rcp < stock.txt", 1, "TMPDIR"),
        ("quillon convert empty.txt -o o.csv --recipe stock.rcp", 1, "STOCK"),
        ("quillon convert empty.txt -o o.csv --markup", 1, "no table"),
        ("quillon convert tabs.txt -o tabs.csv --recipe stock.rcp -q --log t.log; grep -A 2 2004 t.log", 0, "tab stop"),
        ("quillon suggest .", 2, "folder"), ("quillon suggest gone.txt", 1, "gone.txt"), ("quillon suggest empty.txt", 1, ""),
        ("quillon check gone.txt --recipe stock.rcp", 1, "gone.txt"), ("quillon check folder --recipe stock.rcp", 2, "folder"),
        ("quillon preview gone.txt --markup", 1, "gone.txt")]),
    ("Outputs", "", [
        ("quillon convert stock.txt --markup", 2, "-o"), ("quillon convert stock.txt -o o.pdf --markup", 2, "CSV"),
        ("quillon convert stock.txt -o o --markup", 2, ".xlsx"), ("quillon convert stock.txt -o folder --markup", 2, "folder/*.csv"),
        ("quillon convert stock.txt -o 'a*/b*.csv' --markup", 2, "last part"),
        ("quillon convert stock.txt -o 'a?.csv' --markup", 2, "?"),
        ("quillon convert stock.txt empty.txt -o o.csv --markup", 2, "'out/*.csv'"),
        ("quillon convert folder -o o.csv --markup", 2, "'out/*.csv'"),
        ("quillon convert stock.csv -o stock.csv --recipe stock.rcp", 2, "input file itself"),
        ("quillon convert stock.txt folder/a.txt stock.csv -o '*.csv' --recipe stock.rcp", 2, "stock.csv"),
        ("quillon convert stock.txt -o stock.txt/o.csv --recipe stock.rcp", 1, "Not a directory"),
        ("quillon convert stock.txt -o - --recipe stock.rcp > /dev/full", 1, "No space left"),
        ("quillon convert stock.txt -o stock.csv/x.xlsx --markup", 2, "ending of another kind"),
        (CONVERT + "--recipe stock.rcp --log stock.txt", 2, "another log"),
        ("quillon convert stock.txt -o p.csv --recipe stock.rcp --log p.csv", 1, "another log"),
        ("quillon convert stock.txt -o p.csv --recipe stock.rcp -q --log /dev/full", 1, "No space left"),
        ("quillon suggest stock.txt -o stock.txt", 2, "the report"), ("quillon suggest stock.txt -o stock.rcp", 2, "--force"),
        ("quillon check stock.txt --recipe stock.rcp --html stock.txt", 2, "no page"),
        ("quillon check stock.txt --recipe stock.rcp --html gone/p.html > /dev/null", 1, "gone/p.html"),
        (r"quillon '/IC:\stock.txt /OC:\o.csv /RC:\stock.rcp /LC:\stock.rcp'", 0, "-1006"),
        (r"quillon '/IC:\stock.txt /OC:\o.csv /RC:\stock.rcp /D300 /LC:\d.log'; grep -A 1 5309 d.log", 0, "1 to 255")]),
    (DENIED, "These are run by a user who may not.", [
        ("quillon convert shut.txt -o out/o.csv --recipe stock.rcp", 1, "shut.txt: Permission denied"),
        ("quillon convert shut/a.txt -o out/o.csv --recipe stock.rcp", 1, "Permission denied"),
        ("quillon convert 'shut/*.txt' -o 'out/*.csv' --recipe stock.rcp", 1, "Access Denied"),
        (CONVERT + "--recipe stock.rcp", 1, "o.csv: Permission denied"),
        ("quillon convert stock.txt -o out/o.csv --recipe shut.txt", 1, "shut.txt: Permission denied"),
        ("quillon convert stock.txt -o out/o.csv --profile ./shut.txt", 1, "shut.txt: Permission denied"),
        ("quillon check shut.txt --recipe stock.rcp", 1, "shut.txt: Permission denied"),
        ("quillon suggest stock.txt -o shut.txt", 2, "--force"),
        (r"quillon '/IC:\shut\a.txt /OC:\out\o.csv /RC:\stock.rcp /LC:\out\run.log'; cat out/run.log", 0, "Permission denied")]),
    ("Recipes", "Each of these recipes is `stock.rcp` with one mistake, named by its file.", [
        (CONVERT + "--recipe gone.rcp", 1, "gone.rcp"), (CONVERT + "--recipe folder", 1, "folder"),
        (CONVERT + "--recipe stock.txt", 1, "no table"), (CONVERT + "--recipe lost.rcp", 1, "THE END"),
        (CONVERT + "--recipe nostart.rcp", 1, "[Table 1]"), (CONVERT + "--recipe turned.rcp", 1, "STOCK"),
        (CONVERT + "--recipe above.rcp", 1, "above"), (CONVERT + "--recipe behind.rcp", 1, "behind"),
        (CONVERT + "--recipe noparsing.rcp", 1, "Parsing"), (CONVERT + "--recipe comment.rcp", 1, "Line 6"),
        (CONVERT + "--recipe bracket.rcp", 1, "Line 2"), (CONVERT + "--recipe order.rcp", 1, "Line 2"),
        (CONVERT + "--recipe twice.rcp", 1, "stands twice"), (CONVERT + "--recipe gap.rcp", 1, "[Table 3]"),
        (CONVERT + "--recipe small.rcp", 1, "[table 1]"), (CONVERT + "--recipe letter.rcp", 1, "WriteColumn=1"),
        (CONVERT + "--recipe offset.rcp", 1, "offset.rcp: [Table 1]"), (CONVERT + "--recipe blanks.rcp", 0, "Parsing"),
        (CONVERT + "--recipe narrow.rcp --strict", 1, "behind"), (CONVERT + "--recipe key.rcp", 1, "did you mean"),
        (CONVERT + "--recipe place.rcp", 1, "Places"), (CONVERT + "--recipe names.rcp", 1, "Names"),
        (CONVERT + "--recipe norow.rcp", 1, "no line"), ("quillon convert half.txt -o o.csv --markup", 1, "Line 1"),
        ("quillon convert flat.txt -o o.csv --markup", 1, ">>1"), (CONVERT + "--markup", 1, "no table"),
        *((f"quillon check stock.txt --recipe {name}.rcp", 1, word) for name, word in (
            ("lost", "THE END"), ("bracket", "Line 2"), ("order", "Line 2"), ("twice", "Table 2 of 2"), ("gap", "Table 2 of 2"),
            ("small", "[table 1]"), ("blanks", "Parsing"), ("letter", "WriteColumn=1"), ("offset", "one"))),
        ("quillon check half.txt --markup", 1, "Line 1"),
        ("quillon check stock.txt --recipe folder", 2, "folder"),
        ("quillon preview stock.txt --recipe stock.rcp --table 2", 1, "no table")]),
    ("Long-form recipes", "", [
        (CONVERT + "--recipe year.rcp", 1, "--specification"), (CONVERT + "--specification stock.rcp", 1, "--recipe"),
        (CONVERT + "--recipe year.t2x", 1, "--specification"), ("quillon check stock.txt --recipe year.rcp", 1, "--specification"),
        ("quillon check --specification stock.rcp", 1, "--recipe"), ("quillon check --specification gone.rcp", 1, "gone.rcp"),
        ("quillon convert --specification gone.rcp", 1, "gone.rcp"), ("quillon convert --specification nospec.rcp", 1, "gone.t2x"),
        ("quillon convert --specification header.rcp --keep", 1, "header"),
        ("quillon convert --specification period.rcp", 1, "InputFileFirst=x"),
        ("quillon convert --specification noreport.rcp", 1, "gone.txt"), ("quillon check --specification noreport.rcp", 1, "gone.txt"),
        *((f"quillon convert --specification {name}.rcp", 1, word) for name, word in (
            ("start", "[Table 1 Col 1]"), ("end", "[Table 1 Col 1]"), ("column", "[Table 1 Col 1]"), ("operator", "[Table 1 Col 1]"),
            ("backwards", "[Table 1]"), ("columns", "[Table 1]"))),
        ("quillon convert --specification double.rcp", 0, "DUPLICATE"),
        ("quillon convert --specification year.rcp --shard 1/2", 2, "makes one"),
        ("quillon convert --specification year.rcp -o '*.csv'", 2, "one output"),
        ("quillon convert --specification year.rcp -o stock.txt.csv --log year.t2x", 2, "another log")]),
    ("Profiles", "", [
        (CONVERT + "--profile gone", 1, "gone"), (CONVERT + "--profile ./few.profile.txt", 1, "six fields"),
        (CONVERT + "--profile ./removed.profile.txt", 0, "removes all"), (CONVERT + "--profile stock.rcp", 1, "stock.rcp"),
        ("quillon preview stock.txt --profile gone", 1, "gone")]),
    ("Jobs and watched folders", "", [
        ("quillon job", 2, "FILE"), ("quillon job ''", 2, "empty"), ("quillon job gone.QLN", 2, "gone.QLN"),
        ("quillon job folder", 2, "folder"), ("quillon job stock.txt", 2, "[QLN]"), ("quillon job number.QLN", 1, "lTabSize=eight"),
        (r"quillon '/JC:\number.QLN'", 1, "lTabSize=eight"), ("quillon job key.QLN -q --log k.log; grep note k.log", 0, "bUnxi"),
        ("quillon job type.QLN", 2, "CSV"), ("quillon job star.QLN", 2, "wild card"), ("quillon job one.QLN", 2, "wildcard"),
        ("quillon job none.QLN", 1, "gone/"), ("quillon watch", 2, "FOLDER"),
        ("quillon watch folder --job gone.QLN", 2, "gone.QLN"), ("quillon watch folder --job number.QLN", 1, "lTabSize=eight"),
        ("quillon watch gone --job one.QLN", 2, "gone"), ("quillon watch folder --job type.QLN", 2, "sOutputFile")]),
]


class Walk:
    """All mistakes in one folder, which must be as it was behind each of them."""

    def __init__(self, program):
        self.program = program
        self.faults = []

    def lay(self, world):
        for name, text in FILES.items():
            path = world.work / name
            path.parent.mkdir(exist_ok=True)
            path.write_bytes(text.encode())
        for folder in ("shut", "out"):
            (world.work / folder).mkdir()
        (world.work / "shut/a.txt").write_text(STOCK)
        (world.work / "shut.txt").write_text(STOCK)
        (world.work / "shut.txt").chmod(0o600 if os.geteuid() == 0 else 0)
        (world.work / "shut").chmod(0o700 if os.geteuid() == 0 else 0)
        (world.work / "out").chmod(0o777)
        for path in (world.base, world.home, world.work):
            path.chmod(0o755)

    def contents(self, world):
        return {p.relative_to(world.work): p.stat().st_mtime_ns for p in world.work.rglob("*")
                if p.is_file() and p.suffix not in (".log", ".jsonl") and os.access(p, os.R_OK)}

    def answer(self, world, group, command):
        line = f"{{ {command}\n}} 2>&1"
        if os.geteuid() == 0 and group == DENIED:  # Root may read and write everything.
            line = f"exec setpriv --reuid={NOBODY} --regid={NOBODY} --clear-groups sh -c {shlex.quote(line)}"
        if os.geteuid() != 0:
            world.work.chmod(0o555 if group == DENIED else 0o755)
        text, _, status = world.run(line)
        return text.replace("\r\n", "\n"), status

    def judge(self, command, wanted, word, text, status, touched):
        said = text.replace("<work>/", "").replace("<work>\\", "")
        wrong = []
        if status != wanted:
            wrong.append(f"status {status}, not {wanted}")
        if word not in said:
            wrong.append(f"no word of {word!r}")
        if wanted != 0 and not said.strip():
            wrong.append("no answer")
        if re.search("[\x00-\x08\x0b-\x1f\x7f]", said):
            wrong.append("control characters")
        if status in (70, 126, 127) or status >= 128:
            wrong.append(f"status {status}")
        if touched:
            wrong.append("touched: " + ", ".join(map(str, touched)))
        if wrong:
            self.faults.append(f"$ {command}\n{text}  {'; '.join(wrong)}")

    def page(self):
        lines = [HEAD]
        for name in SHOWN:
            lines += [f"`{name}`:", "", "```text", FILES[name].rstrip("\n"), "```", ""]
        with golden.World(self.program) as world:
            self.lay(world)
            for title, about, mistakes in GROUPS:
                lines += [f"## {title}", ""] + ([about, ""] if about else []) + ["```text"]
                for command, wanted, word in mistakes:
                    before = self.contents(world)
                    text, status = self.answer(world, title, command)
                    after = self.contents(world)
                    touched = [path for path, changed_at in before.items() if after.get(path) != changed_at]
                    touched += [path for path in set(after) - set(before) if wanted != 0 and path.name == "o.csv"]
                    self.judge(command, wanted, word, text, status, touched)
                    for path in set(after) - set(before):
                        (world.work / path).unlink()
                    shutil.rmtree(world.work / "o", ignore_errors=True)
                    lines += [f"$ {command}", *text.splitlines(), f"status {status}"]
                lines += ["```", ""]
            (world.work / "shut").chmod(0o755)
        return "\n".join(lines)


HEAD = f"""# Mistakes

<!-- made by tests/cli/mistakes.py --accept -->

What is answered to a mistake on the command line, and the exit status behind it: {sum(len(g[2]) for g in GROUPS)} of them. Each answer names what is
wrong, why and what to do; the codes are explained in [troubleshooting](troubleshooting.md).
"""


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--program", required=True, type=Path)
    options.add_argument("--accept", action="store_true")
    chosen = options.parse_args()
    if os.geteuid() == 0 and shutil.which("setpriv") is None:
        print("SKIPPED: setpriv is not installed, and root may read and write everything", file=sys.stderr)
        return SKIPPED
    walk = Walk(chosen.program)
    page = walk.page()
    for fault in walk.faults:
        print(fault)
    if chosen.accept:
        PAGE.write_text(page, encoding="utf-8")
    elif wrong := golden.difference(PAGE.read_text(encoding="utf-8"), page, "the page", "the answers"):
        print(wrong)
        return 1
    print(f"{sum(len(g[2]) for g in GROUPS)} mistakes, {len(walk.faults)} answered badly")
    return 1 if walk.faults else 0


if __name__ == "__main__":
    sys.exit(main())
