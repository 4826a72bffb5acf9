#!/usr/bin/env python3
"""What a person or a script meets at the command line: output, error output, exit status and the files made.

Each test runs the built program in a fresh folder with home, locale and time zone fixed; drive C: is the folder.
"""

import itertools
import csv
import os
import signal
import stat
import subprocess
import sys
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "golden"))
import golden  # noqa: E402

PROGRAM = Path(sys.argv.pop(1)).resolve()
RECIPE = golden.STOCK_RECIPE
REPORT = "STOCK\nBolts   12\nNuts     7\nEND\n"
ROWS = "Bolts  , 12\r\nNuts   ,  7\r\n"
CLOSING = ("quillon: {} converted, {} failed; {}; {} lines read, {} in tables, {} outside; "
           "0 characters behind the last column; 0 cells failed; <n> seconds\n")


class CommandLineTest(unittest.TestCase):
    def setUp(self):
        self.world = golden.World(PROGRAM).__enter__()
        self.addCleanup(self.world.__exit__)
        self.work = self.world.work
        self.write("r.rcp", RECIPE)
        self.write("in.txt", REPORT)

    def write(self, name, text):
        path = self.work / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text.encode("latin-1"))
        return path

    def text(self, name):
        return (self.work / name).read_bytes().decode("latin-1")

    def made(self):
        return sorted(str(p.relative_to(self.work)) for p in self.work.rglob("*") if p.is_file())

    def check(self, line, status=0, out="", err=""):
        self.assertEqual(self.world.run(line), (out, err, status), line)

    def start(self, *arguments, **how):
        return subprocess.Popen([PROGRAM, *arguments], cwd=self.work, env=self.world.env, stdin=subprocess.DEVNULL, **how)

    # One file

    def test_accounts_for_every_line_and_leaves_the_settings_alone(self):
        self.write("in.txt", "head\n" + REPORT + "tab\there\n")
        self.check("quillon convert in.txt -o out.csv --recipe r.rcp --verbose", err=(
            "quillon: Warning [-2004] NOTE: The text in the Input File contains tab characters. "
            "To specify the tab stop, change the options.\n"
            "in.txt -> out.csv: converted; 6 lines read, 2 in tables, 4 outside\n"
            "    table 1: lines 3 to 4, 2 rows, 2 columns, 0 characters behind the last column, 0 cells failed\n"
            + CLOSING.format("1 file", 0, "1 table", 6, 2, 4)))
        self.assertEqual(self.text("out.csv"), ROWS)
        names = [p.name for p in self.world.home.rglob("*") if p.is_file()]
        self.assertEqual(sorted(names), ["_ExportSpecs.t2x", "_TabsTold"], "no settings, no examples")
        self.assertNotIn("-2004", self.world.run("quillon convert in.txt -o out.csv --recipe r.rcp")[1], "said once")

    def test_standard_streams(self):
        self.check("quillon convert - -o - --recipe r.rcp --quiet < in.txt", out=ROWS)
        self.check("quillon convert - in.txt -o - --recipe r.rcp < in.txt", 2,
                   err="quillon: - as input goes with no other input and not with --beside-input\n")
        out, _, status = self.world.run("quillon convert in.txt -o - --recipe r.rcp --quiet > /dev/full; echo $?")
        self.assertEqual(out, "1\n")

    def test_safe_csv_makes_formulas_harmless_by_every_method(self):
        harmful = ["=A1+1", "+A1", "-A1", "@SUM", "  =A1", "\t=A1", "\r=A1", "\uff1dA1", "\uff0bA1", "\uff0dA1", "\uff20A1"]
        plain = ["-12.50", "+7", "(3)", "a=b", "'x"]
        splits = ["x;=A1", 'x";=A1;"']
        values = harmful + plain + splits
        report = "STOCK\n" + "".join(f"{value:<12}\n" for value in values) + "END\n"
        (self.work / "in.txt").write_bytes(report.encode())
        self.write("r.rcp", "[Table 1]\nReadStartLine=STOCK\nReadStartLineOffset=1\nReadEndLine=END\nReadEndLineOffset=-1\n"
                   "Parsing=------------\nWriteColumn=A\n")
        self.write("p.txt", "1\t12\t[32] Space\tLeft\tNo\t1\t\t\r\n")
        for method in ("--recipe r.rcp --tab-size 0 --trim", "--profile ./p.txt --quote never"):
            self.check(f"quillon convert in.txt -o out.csv {method} --delimiter ';' --encoding UTF-8 --safe-csv --quiet")
            with open(self.work / "out.csv", encoding="utf-8", newline="") as file:
                rows = [row for row in csv.reader(file, delimiter=";") if row not in (["STOCK"], ["END"])]
            got = [row[0].strip() if len(row) == 1 else row for row in rows]
            self.assertEqual([cell.replace("'  ", "'") for cell in got[:len(harmful)]],
                             ["'" + value.lstrip(" ") for value in harmful], method)
            self.assertEqual(got[len(harmful):], plain + splits, method)

    def test_says_what_it_ignores(self):
        self.check("quillon convert in.txt -o o.xlsx --recipe r.rcp --delimiter ';' --quote always --recursive --quiet")
        self.check("quillon convert in.txt -o o.xlsx --recipe r.rcp --delimiter ';' --quote always -r", err=(
            "quillon: note: --recursive has no effect here: no input is a pattern or a folder\n"
            "quillon: note: --delimiter has no effect here: it serves CSV output\n"
            "quillon: note: --quote has no effect here: it serves CSV output of the Profile method\n"
            + CLOSING.format("1 file", 0, "1 table", 4, 2, 2)))

    def test_wrong_use_ends_with_2_and_touches_nothing(self):
        before = self.made()
        missing = " is missing"
        for line, said in [
                ("quillon convert in.txt -o out.csv", "[--recipe,--markup,--profile,--specification]"),
                ("quillon convert -o out.csv --markup", "INPUT" + missing),
                ("quillon convert in.txt --markup", "-o OUTPUT" + missing),
                ("quillon convert in.txt -o out.csv --markup --delimiter xx", "--delimiter: a character"),
                ("quillon convert in.txt -o out.csv --markup --encoding none", "no such code page: none"),
                ("quillon convert in.txt r.rcp -o out.csv --markup", "Error [-2]"),
                ("quillon convert in.txt -o out.pdf --markup", "Error [-4]"),
                ("quillon convert in.txt -o a.xlsx.d/out.csv.xls --markup", "ending of another kind"),
                ("quillon convert in.txt -o 'o*/x*.csv' --markup", 'one "*" at most'),
                ("quillon job none.QLN", "Error [-100]"), ("quillon job in.txt", "no conversion job"),
                ("quillon juggle", "juggle is no command"), ("quillon -x", ""),
                (f"quillon {self.world.work}/in.txt", "in.txt is no command")]:
            out, err, status = self.world.run(line)
            self.assertEqual((out, status), ("", 2), line)
            self.assertIn(said, err)
        self.assertEqual(self.made(), before)

    def test_never_writes_over_an_input(self):
        self.write("a.csv", REPORT)
        os.link(self.work / "a.csv", self.work / "b.csv")
        said = ("quillon: Error [-1002] Invalid Output File Specified: The output file is the input file itself: b.csv; "
                "To fix this: Change the output file.\n")
        self.check("quillon convert a.csv -o b.csv --recipe r.rcp", 2, err=said)
        self.check("quillon convert in.txt a.csv -o '*.csv' --recipe r.rcp", 2, err=said.replace("b.csv", "a.csv"))
        self.check(r"quillon '/IC:\a.csv /OC:\b.csv /RC:\r.rcp /LC:\run.log'")
        self.assertIn("!!!!!!!!!! Error [-1002]", self.text("run.log"))
        self.assertEqual(self.text("a.csv"), REPORT)
        self.assertNotIn("in.csv", self.made())

    def test_failing_output_is_named_with_its_reason_and_the_old_file_stays(self):
        self.write("ro.csv", "old").chmod(0o444)
        out, err, status = self.world.run("quillon convert in.txt -o ro.csv --recipe r.rcp --quiet")
        self.assertEqual((status, self.text("ro.csv")), (1, "old"))
        self.assertIn("ro.csv: Permission denied", err)
        (self.work / "folder.csv").mkdir()
        _, err, status = self.world.run("quillon convert in.txt -o 'folder.cs*' --recipe r.rcp")
        self.assertEqual(status, 2)

    def test_a_closed_stream_is_not_given_to_a_file(self):
        self.write("eq.txt", REPORT.replace("Bolts", "=SUM("))
        line = "quillon convert eq.txt none.txt -o '*.csv' --recipe r.rcp --report '{}.jsonl' {}"
        self.world.run(line.format("open", ""))
        rows, entries = self.text("eq.csv"), self.text("open.jsonl").count("\n")
        for closed in ("0<&-", "1>&-", "2>&-"):
            self.world.run(line.format(closed[0], closed))
            self.assertEqual((self.text("eq.csv"), self.text(closed[0] + ".jsonl").count("\n")), (rows, entries), closed)
        out, err, status = self.world.run("quillon convert - -o - --recipe r.rcp 0<&-")
        self.assertEqual((out, status), ("", 1))
        self.assertIn("standard input: Bad file descriptor", err)

    def test_logs_and_lists_replace_nothing_else(self):
        self.write("a.QLN", "[QLN]\r\nsInputFile=C:\\in.txt\r\nsOutputFile=C:\\a.csv\r\nsRecipeFile=C:\\r.rcp\r\n"
                            "lConversionMethod=1\r\n")
        self.write("p.csv", "1\t6\t[32] Space\tLeft\tNo\t1\t\t\r\n")
        self.write("old.log", "Quillon Log [01/01/26 00:00:00]\r\n")
        before = {name: self.text(name) for name in self.made() if name != "old.log"}
        for line in ("convert in.txt -o o.csv --recipe r.rcp --log in.txt", "convert in.txt --log r.rcp", "job a.QLN --log a.QLN",
                     "convert in.txt -o o.csv --recipe r.rcp --report o.csv", "convert in.txt -o p.csv --profile p.csv",
                     "convert in.txt -o o.csv --profile p.csv --report p.csv"):
            self.assertEqual(self.world.run("quillon " + line)[2], 2, line)
        self.assertEqual({name: self.text(name) for name in self.made() if name != "old.log"}, before)
        # What the run itself made stays, too.
        out, err, status = self.world.run("quillon convert in.txt -o o.csv --recipe r.rcp --log o.csv")
        self.assertEqual((self.text("o.csv"), status), (ROWS, 1))
        self.assertIn("choose another log", err)
        self.check("quillon convert in.txt -o o.csv --recipe r.rcp --log old.log --quiet")
        self.assertIn("1 file converted", self.text("old.log"))

    def test_a_file_is_counted_once(self):
        for line, counts in (("-o - >/dev/full", "0 files converted, 1 failed"), ("-o a.csv --log /dev/full", "1 file converted, 0 failed")):
            _, err, status = self.world.run("quillon convert in.txt --recipe r.rcp " + line)
            self.assertEqual(status, 1, line)
            self.assertIn(counts, err)

    # Several files

    def test_mirrors_subfolders_whatever_the_folders_are_called(self):
        for name in ("deep/in/a.txt", "deep/in/x/y/b.txt", "deep/in/.hid/c.txt", "deep/in/x/d.dat"):
            self.write(name, REPORT)
        self.check("quillon convert 'deep/in/*.txt' -r -o 'o/t_*_1.csv' --recipe r.rcp",
                   err=CLOSING.format("2 files", 0, "2 tables", 8, 4, 4))
        self.assertEqual([n for n in self.made() if n.startswith("o/")], ["o/t_a_1.csv", "o/x/y/t_b_1.csv"])
        self.check("quillon convert deep/in -r --beside-input -o '*.csv' --recipe r.rcp --quiet")
        self.assertEqual([n for n in self.made() if n.startswith("deep") and n.endswith("csv")],
                         ["deep/in/a.csv", "deep/in/x/d.csv", "deep/in/x/y/b.csv"])

    def test_refuses_two_inputs_with_one_output(self):
        self.write("p/a.txt", REPORT)
        self.write("q/a.txt", REPORT)
        self.check("quillon convert p/a.txt q/a.txt -o 'o/*.csv' --recipe r.rcp", 2, err=(
            "quillon: o/a.csv would be the output of both p/a.txt and q/a.txt; quote the pattern with -r, so that "
            "subfolders are mirrored, or convert them apart\n"))
        self.write("p/a.prt", REPORT)
        self.assertIn("; convert them apart, or rename", self.world.run("quillon convert 'p/*' -r -o 'o/*.csv' --recipe r.rcp")[1])

    def test_goes_on_behind_a_failure_and_ends_with_1(self):
        self.write("in/a.txt", REPORT)
        self.write("in/b.txt", "nothing\n")
        self.write("in/c.txt", REPORT)
        self.check("quillon convert 'in/*.txt' 'no/*.txt' -o 'o/*.csv' --recipe r.rcp --log 'l/[Y].log' --quiet", 1, err=(
            "quillon: no/*.txt: no file found (no/: Path Not Found.)\n"
            "quillon: in/b.txt: Error [-5604] Error in Table specs: Cannot find ReadStartLine: STOCK; "
            "In section [Table 1]\n"
            "quillon: o/b.csv: not written, as something of it would be missing; --keep writes what there is\n"))
        self.assertEqual(self.text("o/c.csv"), ROWS)
        log = self.text(f"l/{time.strftime('%Y', time.gmtime())}.log")
        for line in ("Processing:\r\n  in/a.txt\r\n  in/b.txt\r\n", "!!!!!!!!!! Error [-5604]", "2 files converted, 2 failed"):
            self.assertIn(line, log)

    # Runs that nobody watches

    def test_a_file_whose_cells_failed_is_not_done(self):
        self.write("in.txt", "STOCK\n" + "Bolts   12\n" * 65540 + "END\n")
        for again in ("", " --skip-done"):
            _, err, status = self.world.run("quillon convert in.txt -o o.xls --recipe r.rcp --report l.jsonl" + again)
            self.assertEqual(status, 1, again)
            self.assertIn("0 files converted, 1 failed", err)
        self.assertEqual(self.text("l.jsonl").count('"status":"failed"'), 2)

    def test_job_tells_of_what_could_not_be_searched(self):
        self.write("in/a.txt", REPORT)
        here = os.open(self.work / "in", os.O_RDONLY)
        for _ in range(20):  # deeper than a path may be long
            os.mkdir("d" * 250, dir_fd=here)
            here = os.open("d" * 250, os.O_RDONLY, dir_fd=here)
        self.write("a.QLN", "[QLN]\r\nsInputFile=C:\\in\\*.txt\r\nsOutputFile=C:\\i\\*.csv\r\nsRecipeFile=C:\\r.rcp\r\n"
                            "lConversionMethod=1\r\nbDoSubfolders=TRUE\r\n")
        _, err, status = self.world.run("quillon job a.QLN")
        self.assertEqual(status, 1)
        self.assertIn("not all of it could be searched", err)

    def test_log_has_all_that_was_said_and_how_it_ended(self):
        stamp = time.strftime("%Y", time.gmtime())
        self.check("quillon convert in.txt 'no/*.txt' -o 'o/*.csv' --recipe r.rcp --utf16 -q --log 'logs-[Y]/run.log'", 1,
                   err="quillon: no/*.txt: no file found (no/: Path Not Found.)\n")
        log = self.text(f"logs-{stamp}/run.log")
        for line in ("note: --utf16 has no effect here", "no/*.txt: no file found", "1 file converted, 1 failed"):
            self.assertIn(line, log)
        self.assertFalse((self.work / "logs-[Y]").exists())
        self.world.run("quillon convert in.txt --recipe r.rcp --log run.log")
        self.assertIn("-o OUTPUT is missing", self.text("run.log"))
        self.assertIn("nothing was converted", self.text("run.log"))
        self.write("bad.QLN", "[QLN]\r\nlTabSize=eight\r\n")
        _, err, status = self.world.run("quillon job bad.QLN --log run.log")
        self.assertEqual(status, 1)
        self.assertIn("lTabSize=eight is not a whole number", err)
        self.assertIn("lTabSize=eight is not a whole number", self.text("run.log"))

    def test_nothing_of_a_run_is_written_over_by_another_part_of_it(self):
        _, err, status = self.world.run("quillon convert in.txt -o o.csv --recipe r.rcp --report x --log x")
        self.assertEqual((status, (self.work / "x").exists()), (2, False))
        (self.work / "p").mkdir()
        (self.work / "q").symlink_to("p")
        (self.work / "a.csv").write_text("")
        (self.work / "b.csv").symlink_to("a.csv")
        self.write("a.txt", REPORT)
        self.write("b.txt", REPORT)
        _, err, status = self.world.run("quillon convert a.txt b.txt -o '*.csv' --recipe r.rcp")
        self.assertEqual((status, self.text("a.csv")), (2, ""))
        self.write("i/p/a.txt", REPORT)
        self.write("i/q/a.txt", REPORT)
        self.write("o/p/old", "")
        (self.work / "o/q").symlink_to("p")
        self.assertEqual(self.world.run("quillon convert 'i/*.txt' -r -o 'o/*.csv' --recipe r.rcp")[2], 2)
        self.write("s/b.csv", REPORT)
        self.write("s/b.txt", REPORT)
        self.check(r"quillon '/IC:\s\* /OC:\s\*.csv /RC:\r.rcp /LC:\run.log'")
        self.assertEqual((self.text("s/b.csv"), self.text("run.log").count("Error [-1002]")), (REPORT, 2))

    def test_a_switch_names_no_file_of_the_run_as_its_log(self):
        self.write("a.QLN", "[QLN]\r\nsInputFile=C:\\in.txt\r\nsOutputFile=C:\\o.xlsx\r\nsRecipeFile=C:\\r.rcp\r\n"
                            "lConversionMethod=1\r\n")
        before = {name: self.text(name) for name in self.made()}
        for line in (r"/IC:\in.txt /OC:\o.csv /RC:\r.rcp /LC:\in.txt", r"/IC:\in.txt /OC:\o.csv /RC:\r.rcp /LC:\r.rcp",
                     r"/IC:\in.txt /OC:\o.csv /RC:\r.rcp /LC:\o.csv", r"/JC:\a.QLN /LC:\a.QLN", r"/JC:\a.QLN /LC:\o.xlsx",
                     r"/IC:\*.txt /OC:\*.csv /RC:\r.rcp /LC:\in.csv"):
            out, err, status = self.world.run(f"quillon '{line}'")
            self.assertIn("Error [-1006]", err, line)
            self.assertEqual({name: self.text(name) for name in self.made()}, before, line)

    def test_what_a_slash_run_leaves_out_is_told(self):
        self.write("o.csv", "old")
        self.check(r"quillon '/IC:\in.txt /OC:\o.csv /RC:\r.rcp /D300 /LC:\run.log'")
        self.assertIn("Error [-5309]", self.text("run.log"))
        self.assertIn("Errors: 1", self.text("run.log"))
        self.assertEqual(self.text("o.csv"), "old")

    def test_offsets_and_profiles_that_leave_nothing_are_told(self):
        for offsets, said in (("99\nReadEndLineOffset=99", "behind the end"), ("-9\nReadEndLineOffset=-1", "above the first")):
            self.write("far.rcp", RECIPE.replace("Offset=1", "Offset=" + offsets.split("\n")[0], 1)
                       .replace("Offset=-1", "Offset=" + offsets.split("=")[1], 1))
            out, err, status = self.world.run(r"quillon '/IC:\in.txt /OC:\far.csv /RC:\far.rcp'")
            self.assertIn(said, err)
            _, err, status = self.world.run("quillon convert in.txt -o far.csv --recipe far.rcp -q")
            self.assertEqual(status, 1)
            self.assertIn(said, err)
        self.write("p.txt", "1\t6\t[32] Space\tLeft\tYes\t1\t\t\r\n")
        self.assertIn("removes all its columns", self.world.run("quillon convert in.txt -o p.csv --profile ./p.txt")[1])

    def test_a_file_that_fails_keeps_its_old_output(self):
        self.write("two.rcp", RECIPE + RECIPE.replace("Table 1", "Table 2").replace("STOCK", "NONE"))
        self.write("o.csv", "old")
        _, err, status = self.world.run("quillon convert in.txt -o o.csv --recipe two.rcp")
        self.assertEqual((self.text("o.csv"), status), ("old", 1))
        self.assertIn("o.csv: not written", err)
        self.assertEqual(self.world.run("quillon convert in.txt -o o.csv --recipe two.rcp --keep -q")[2], 1)
        self.assertEqual(self.text("o.csv"), ROWS)
        self.write("o.csv", "old")
        self.check(r"quillon '/IC:\in.txt /OC:\o.csv /RC:\two.rcp'", err=(
            "quillon: Error [-5604] Error in Table specs: Cannot find ReadStartLine: NONE (/L keeps a log of all)\n"))
        self.assertEqual(self.text("o.csv"), ROWS)

    def test_limits_and_pipes_end_a_run_with_words(self):
        self.write("big.txt", "STOCK\n" + "Bolts   12\n" * 9000 + "END\n")
        out, err, status = self.world.run("ulimit -f 8; quillon convert big.txt -o o.csv --recipe r.rcp; echo $?")
        self.assertEqual(out, "1\n")
        self.assertIn("File too large", err)
        os.mkfifo(self.work / "pipe.csv")
        self.write("big.txt", "STOCK\n" + "Bolts   12\n" * 1000000 + "END\n")
        for reader in (None, True):  # nobody opens it; nobody reads on
            run = self.start("convert", "big.txt", "-o", "pipe.csv", "--recipe", "r.rcp", stderr=subprocess.DEVNULL)
            held = os.open(self.work / "pipe.csv", os.O_RDONLY) if reader else None
            time.sleep(2)
            run.send_signal(signal.SIGTERM)
            self.assertEqual(run.wait(timeout=20), 143)
            if held is not None:
                os.close(held)
        out, err, status = self.world.run("quillon convert --help > /dev/full; echo $?")
        self.assertEqual(out, "1\n")

    def test_folders_are_named_as_given_and_hidden_files_are_none_of_them(self):
        for name in ("in/r1.prt", "in/.DS_Store", "in/.r2.prt"):
            self.write(name, REPORT)
        _, err, status = self.world.run("quillon convert in -o 'o/*.csv' --recipe r.rcp --verbose")
        self.assertIn("in/r1.prt -> o/r1.csv: converted", err)
        self.assertEqual([n for n in self.made() if n.startswith("o/")], ["o/r1.csv"])

    def test_help_fits_a_terminal_of_80_columns(self):
        for command in ("", "convert", "job", "watch", "preview", "check", "suggest"):
            out, _, status = self.world.run(f"quillon {command} --help")
            self.assertEqual((status, [line for line in out.splitlines() if len(line) > 80]), (0, []), command)

    # Jobs and switches

    def test_job_runs_with_accounting_and_notes(self):
        self.write("a.QLN", "[QLN]\r\nsInputFile=C:\\in.txt\r\nsOutputFile=C:\\o\\a.csv\r\nsRecipeFile=C:\\r.rcp\r\n"
                            "lConversionMethod=1\r\nsSheetTarget=2\r\nbDoSubfolder=TRUE\r\nReadMeCommandLine=Hello\r\n")
        self.check("quillon job a.QLN --log run.log", err=(
            "quillon: note: sSheetTarget has no effect here: it serves workbooks\n"
            "quillon: note: bDoSubfolder is no key of a conversion job\n"
            + CLOSING.format("1 file", 0, "1 table", 4, 2, 2)))
        self.assertEqual(self.text("o/a.csv"), ROWS)
        self.assertIn("Hello\r\n", self.text("run.log"))

    def test_switches_end_with_0_but_for_a_job_that_cannot_be_gone_on_with(self):
        self.check(r"quillon '/IC:\none.txt /OC:\a.csv /RC:\r.rcp /LC:\l\[Y].log'")
        self.assertIn("Error [-1]", self.text(f"l/{time.strftime('%Y', time.gmtime())}.log"))
        self.check(r"quillon '/1 /IC:\in.txt /OC:\b.csv /RC:\r.rcp'")
        self.assertEqual(self.text("b.csv"), ROWS)
        self.write("file", "")
        self.check(r"quillon '/IC:\in.txt /OC:\c.csv /RC:\r.rcp /LC:\file\x.log'",
                   err="Log file: C:\\file\\x.log: Unable to create/access log file folder.\n")
        self.write("bad.QLN", "[QLN]\r\nlTabSize=eight\r\n")
        self.check(r"quillon '/JC:\bad.QLN /LC:\bad.log'", 1, err=(
            "quillon: C:\\bad.QLN: lTabSize=eight is not a whole number; correct this key of the conversion job.\n"))
        self.assertIn("lTabSize=eight is not a whole number", self.text("bad.log"))
        self.write("i/a.txt", REPORT)
        _, err, status = self.world.run(r"quillon '/IC:\i\*.txt /OC:\out\*.csv /RC:\r.rcp'")
        self.assertEqual((status, err.count("\n")), (1, 1))
        self.check(r"quillon /IC:\\in.txt /V /OC:\\a.csv /RC:\\r.rcp", err=(
            "Command Line: Messages Enabled: Errors: 0 Warnings: 0 Conversion Complete. Total Time: <n> seconds\n"))
        self.assertEqual(self.text("a.csv"), ROWS)

    def test_examples_are_installed_once_and_convert(self):
        data = self.world.home / ".config/Brindlemark, Inc/Quillon"
        for job in ("Example1-Profile", "Example2-Recipe", "Example3-Recipe", "Example4-File-Marking"):
            self.check(f"quillon '/J%appdata%\\Brindlemark, Inc\\Quillon\\{job}.QLN /LC:\\{job}.log'")
            self.assertIn("Errors: 0    Warnings: 0", self.text(f"{job}.log"))
            (data / f"{job}.QLN").unlink()
        self.assertEqual(sorted(p.name for p in (data / "Examples-Output-Folder").iterdir()), [
            "Aged Receivables.csv", "Bank Statement.xlsx", "Read Me.txt", "Stock List.xlsx", "Trial Balance 2024-01.xlsx",
            "Trial Balance 2024-02.xlsx"])
        self.check("quillon '/?'", out=self.world.run("quillon '/?'")[0])
        self.assertFalse((data / "Example1-Profile.QLN").exists(), "what the user deleted stays deleted")
        for script in data.rglob("*.sh"):
            self.assertTrue(script.stat().st_mode & stat.S_IXUSR, script)
            out, err, status = self.world.run(f"sh '{script}'")
            self.assertEqual((err, status), ("", 0))
            self.assertIn("Errors: 0", out)

    # Signals and terminals

    def test_interrupted_run_keeps_no_half_output(self):
        self.write("big.txt", "STOCK\n" + "Bolts   12\n" * 3000000 + "END\n")
        self.write("p.txt", "1\t8\t[32] Space\tLeft\tNo\t1\t\t\r\n")
        stopped = 0
        # How soon a program is ready differs from machine to machine, so the signal comes ever later.
        for delay in (0.02, 0.05, 0.1, 0.2, 0.4, 0.8, 1.6):
            for method, name in itertools.product((["--recipe", "r.rcp"], ["--profile", "./p.txt"]), ("o.csv", "o.xlsx")):
                run = self.start("convert", "big.txt", "-o", name, *method, "--quiet", stderr=subprocess.PIPE)
                time.sleep(delay)
                run.send_signal(signal.SIGTERM)
                err = run.communicate(timeout=60)[1].decode()
                if run.returncode == -signal.SIGTERM:
                    continue  # It came before the program was ready for it: nothing was begun.
                if run.returncode == 0:
                    (self.work / name).unlink()  # It came too late.
                    continue
                stopped += 1
                self.assertEqual((run.returncode, err),
                                 (143, "quillon: interrupted; what was not complete is not written\n"))
            if stopped > 1:
                break
        self.assertGreater(stopped, 0)
        self.assertEqual([n for n in self.made() if n not in ("big.txt", "in.txt", "p.txt", "r.rcp")], [])

    def test_colours_and_progress_stand_on_a_terminal_alone(self):
        self.write("big.txt", "STOCK\n" + "Bolts   12\n" * 1000000 + "END\n")
        for setting, colour in (({}, True), ({"NO_COLOR": ""}, False)):
            ours, theirs = golden.pseudo_terminal(self)
            run = subprocess.Popen([PROGRAM, "convert", "none.txt", "big.txt", "-o", "*.xlsx", "--recipe", "r.rcp"],
                                   cwd=self.work, env={**self.world.env, **setting}, stdin=subprocess.DEVNULL, stderr=theirs)
            os.close(theirs)
            said = b""
            try:
                while piece := os.read(ours, 65536):
                    said += piece
            except OSError:
                pass  # the terminal went with the program
            self.assertEqual(run.wait(), 1)
            os.close(ours)
            self.assertEqual(b"\x1b[31m" in said, colour)
            self.assertRegex(said.decode(), r"\[#* *\] +\d+ %  file 2 of 2")
            (self.work / "big.xlsx").unlink()


if __name__ == "__main__":
    unittest.main()
