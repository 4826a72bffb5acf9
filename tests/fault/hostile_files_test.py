#!/usr/bin/env python3
"""Files that mean harm to an unattended run: links and names as outputs, names that speak to logs and terminals, inputs
that are no reports or change while they are read, disks that fill, and what a killed run leaves."""

import argparse
import os
import pathlib
import signal
import stat
import subprocess
import tempfile
import time
import unittest

CHOSEN = None
REPORT = "TOP\nApples   1.00\nNuts     2.00\nEND\n"
ROWS = "Apples   ,1.00 \r\nNuts     ,2.00 \r\n"
RECIPE = ("[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n\r\n[Table 1]\r\nReadStartLine=TOP\r\n"
          "ReadStartLineOffset=1\r\nReadEndLine=END\r\nReadEndLineOffset=-1\r\nParsing=-------- ------\r\nWriteColumn=A\r\n")
UNFINISHED = ".quillon-unfinished-"


class HostileFiles(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="quillon-hostile-")
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name).resolve()
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.folder / "home"), "LC_ALL": "C.UTF-8",
                            "QUILLON_DRIVE_C": str(self.folder), "TMPDIR": str(self.folder / "tmp")}
        for name in ("home", "tmp", "in", "out"):
            (self.folder / name).mkdir()
        self.write("in.txt", REPORT)
        self.write("r.rcp", RECIPE)

    def write(self, name, text):
        (self.folder / name).write_bytes(text.encode())

    def read(self, name):
        return (self.folder / name).read_bytes().decode()

    def start(self, arguments, **more):
        return subprocess.Popen([CHOSEN.program, *arguments], cwd=self.folder, env=self.environment | more,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def run_it(self, *arguments, **more):
        process = self.start(arguments, **more)
        out, err = process.communicate(timeout=60)
        return err.decode(errors="surrogateescape"), process.returncode

    def convert(self, source, target, *options):
        return self.run_it("convert", source, "-o", target, *(options or ("--recipe", "r.rcp")), "--quiet")

    def names(self, folder):
        return sorted(os.listdir(self.folder / folder))

    def test_outputs_through_links_land_where_the_links_lead(self):
        os.symlink("../real.csv", self.folder / "out/link.csv")
        os.symlink("../new.csv", self.folder / "out/dangling.csv")
        os.symlink("loop.csv", self.folder / "out/loop.csv")
        os.symlink("out", self.folder / "linked")
        self.write("real.csv", "old")
        for name, lands in (("out/link.csv", "real.csv"), ("out/dangling.csv", "new.csv"), ("linked/x.csv", "out/x.csv")):
            self.assertEqual(self.convert("in.txt", name), ("", 0), name)
            self.assertEqual(self.read(lands), ROWS, name)
        said, status = self.convert("in.txt", "out/loop.csv")
        self.assertIn("Too many levels of symbolic links", said)
        self.assertEqual(status, 1)
        self.assertEqual([name for name in self.names("out") if not (self.folder / "out" / name).is_symlink()], ["x.csv"])

    def test_an_output_keeps_the_permissions_of_the_old_file(self):
        for mode in (0o600, 0o640, 0o664):
            self.write("o.csv", "old")
            os.chmod(self.folder / "o.csv", mode)
            self.assertEqual(self.convert("in.txt", "o.csv"), ("", 0))
            self.assertEqual(stat.S_IMODE((self.folder / "o.csv").stat().st_mode), mode)
        (self.folder / "o.csv").chmod(0o444)
        self.assertEqual(self.convert("in.txt", "o.csv")[1], 1, "a read-only output stays")

    def test_any_name_that_the_system_takes_is_an_output(self):
        long = "n" * 251 + ".csv"
        for name in ("in/../o.csv", "./-x.csv", "a\nb\x1b[31m.csv", b"inv\xff.csv", long):
            self.assertEqual(self.convert("in.txt", name), ("", 0), name)
            self.assertEqual((self.folder / os.fsdecode(name)).read_bytes().decode(), ROWS)
        for name in ("n" + long, "d/" * 2100 + "x.csv"):
            said, status = self.convert("in.txt", name)
            self.assertEqual(status, 1)
            self.assertIn("File name too long", said)

    def test_names_make_no_lines_of_a_log_and_give_no_orders_to_a_terminal(self):
        self.write("in/a\n!!!!!!!!!! Error [-1]\x1b[2J\u202e.txt", "no table")
        said, status = self.run_it("convert", "in/*.txt", "-o", "out/*.csv", "--recipe", "r.rcp", "--log", "run.log")
        self.assertEqual(status, 1)
        for text in (said, self.read("run.log")):
            self.assertNotRegex(text, "[\x1b\u202e]|\n!!!!!!!!!! Error \\[-1\\]")
        self.assertIn("  in/a?!!!!!!!!!! Error [-1]?[2J?.txt\r\n", self.read("run.log"))

    def test_names_found_by_a_pattern_lead_nowhere_else(self):
        self.write("secret.txt", REPORT)
        self.write("in/x\\..\\..\\secret.txt", "no table")
        self.write("in/C:in.txt", REPORT)
        said, status = self.convert("in/*.txt", "out/*.csv")
        self.assertEqual((status, self.names("out")), (1, ["C:in.csv"]))
        self.assertIn("in/x?..?..?secret.txt", said)
        self.run_it(r"/IC:\in\*.txt", r"/OC:\ou\*.csv", r"/RC:\r.rcp", r"/LC:\run.log")
        self.assertEqual(self.names("ou"), ["C:in.csv"])
        self.assertIn("!!!!!!!!!! Error [-2002]", self.read("run.log"))

    def test_what_is_no_ordinary_file_is_refused_and_the_batch_goes_on(self):
        os.mkfifo(self.folder / "in/a.txt")
        os.symlink("/dev/zero", self.folder / "in/b.txt")
        (self.folder / "in/d.txt").mkdir()
        self.write("in/c.txt", REPORT)
        said, status = self.convert("in/*.txt", "out/*.csv")
        self.assertEqual((status, self.names("out")), (1, ["c.csv"]))
        self.assertTrue("a.txt: Not an ordinary file" in said and "b.txt: Not an ordinary file" in said, said)
        self.run_it(r"/IC:\in\*.txt", r"/OC:\ou\*.csv", r"/RC:\r.rcp", r"/LC:\run.log")
        self.assertEqual(self.read("run.log").count("Not an ordinary file"), 2, "one line for each")
        os.symlink("/dev/full", self.folder / "out/full.csv")
        self.assertIn("No space left", self.convert("in.txt", "out/full.csv")[0])

    def test_a_report_that_changes_while_it_is_read_leaves_the_old_output(self):
        (self.folder / "p.txt").write_text("1\t9\t[32] Space\tLeft\tNo\t1\t\t\r\n")
        for change in ("truncate", "append"):
            for options in (("--recipe", "r.rcp"), ("--profile", "./p.txt")):
                self.write("o.csv", "old")
                self.write("big.txt", "TOP\n" + "Apples   1.00\n" * 2000000 + "END\n")
                process = self.start(["convert", "big.txt", "-o", "o.csv", *options, "--quiet"])
                while process.poll() is None and not self.holds(process, "big.txt"):
                    pass
                process.send_signal(signal.SIGSTOP)
                with open(self.folder / "big.txt", "r+b") as report:
                    report.seek(0, os.SEEK_END)
                    report.truncate(4096) if change == "truncate" else report.write(b"more\n")
                process.send_signal(signal.SIGCONT)
                said = process.communicate(timeout=60)[1].decode()
                self.assertIn("changed while it was read", said, (change, options))
                self.assertEqual((process.returncode, self.read("o.csv")), (1, "old"))

    def holds(self, process, name):
        """Whether the process reads the file by now."""
        try:
            return any(os.readlink(handle).endswith("/" + name) for handle in pathlib.Path(f"/proc/{process.pid}/fd").iterdir())
        except OSError:
            return False

    def test_rows_that_a_sheet_has_not_are_told(self):
        for kind, rows in (("xls", 65536), ("xlsx", 1048576)):
            for more, ends in ((0, ("", 0)), (1, 1)):
                self.write("long.txt", "TOP\n" + "Apples   1.00\n" * (rows + more) + "END\n")
                (self.folder / f"o.{kind}").unlink(missing_ok=True)
                said, status = self.convert("long.txt", f"o.{kind}")
                self.assertEqual((said, status) if more == 0 else status, ends, kind)
                self.assertEqual((self.folder / f"o.{kind}").exists(), more == 0, "a file that fails is not written")
            self.assertIn(f"row {rows + 1}, column 1: The cell lies outside the sheet", said)

    def test_a_killed_run_leaves_nothing_that_the_next_does_not_remove(self):
        self.write("big.txt", "TOP\n" + "Apples   1.00\n" * 2000000 + "END\n")
        named = {"LD_PRELOAD": CHOSEN.layer, "QUILLON_FAULT_NAMED": "1", "ASAN_OPTIONS": "verify_asan_link_order=0"}
        command = ["convert", "big.txt", "-o", "out/o.csv", "--recipe", "r.rcp", "--quiet"]
        for more, left in (({}, 0), (named, 1)):
            process = self.start(command, **more)
            deadline = time.monotonic() + 30
            while process.poll() is None and time.monotonic() < deadline and not self.writes(process):
                pass
            process.kill()
            process.communicate()
            found = self.names("out")
            self.assertEqual([name.startswith(UNFINISHED) for name in found], [True] * left)
            for name in found:
                self.assertEqual(stat.S_IMODE((self.folder / "out" / name).stat().st_mode), 0o600)
        old = time.time() - 7200
        os.utime(self.folder / "out" / found[0], (old, old))
        day = time.time() - 90000
        data = self.folder / "home/.config/Brindlemark, Inc/Quillon"
        for name in ("_ExportSpecs.999999999.t2x", f"_ExportSpecs.{os.getpid()}.t2x"):
            (data / name).write_text("x")
            os.utime(data / name, (day, day))
        self.assertEqual(self.run_it(*command, **named), ("", 0))
        self.assertEqual(self.names("out"), ["o.csv"])
        self.assertEqual(self.names(data), ["_ExportSpecs.t2x", f"_ExportSpecs.{os.getpid()}.t2x"][::-1])

    def writes(self, process):
        try:
            return any("/out/" in os.readlink(handle) for handle in pathlib.Path(f"/proc/{process.pid}/fd").iterdir())
        except OSError:
            return False


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for option in ("--program", "--desktop", "--layer"):
        parser.add_argument(option, required=True, type=os.path.abspath)
    CHOSEN, rest = parser.parse_known_args()
    unittest.main(argv=[__file__, *rest])
