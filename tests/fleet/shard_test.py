#!/usr/bin/env python3
"""Shards and result lists: N processes do what one does, each file once, whatever is killed on the way."""

import json
import os
import signal
import subprocess
import unittest

import fleet
from fleet import FleetTest, result_lines


class ShardTest(FleetTest):
    def shards(self, count, out, *more, report="{}.jsonl"):
        for part in range(1, count + 1):
            run = self.start(*self.arguments(out, "--shard", f"{part}/{count}", "--report", report.format(part), *more))
            run.communicate(timeout=60)
            self.assertIn(run.returncode, (0, 1))
        return sorted(self.work.glob(report.replace("{}", "[0-9]*")))

    def test_shards_together_are_one_run(self):
        one = self.one_run()
        for count in (1, 3, 60):
            lists = self.shards(count, f"out{count}", report=f"s{count}-{{}}.jsonl")
            self.assert_same_as(one, f"out{count}", *lists)
            self.assertEqual(sum(path.read_bytes().count(b"\n") for path in lists), 44, "each file once")

    def test_markup_shards_know_nothing_of_other_files(self):
        marked = ">>1\n------ ---\nBolts   1\n<<1\n"
        for name, text in {"a": marked, "b": "no marks\n", "c": marked.replace("Bolts", "Nuts ")}.items():
            self.write(f"m/{name}.txt", text)
        command = ["convert", "m/*.txt", "--markup", "--quiet", "-o"]
        self.assertIn("m/b.txt: no table is told", self.convert(*command, "one/*.csv"))
        for part, status in (("1/3", 0), ("2/3", 0), ("3/3", 1)):  # the smallest one comes last
            self.convert(*command, "out/*.csv", "--shard", part, status=status)
        self.assertEqual(self.outputs("out"), self.outputs("one"))

    def test_parts_follow_the_stated_rule(self):
        paths = [path for path in (self.work / "in").rglob("*.txt")]
        weights, parts = [0] * 5, {}
        for path in sorted(paths, key=lambda p: (-p.stat().st_size, os.fsencode(p))):
            lightest = weights.index(min(weights))
            parts.setdefault(lightest + 1, set()).add(os.fsencode(path.relative_to(self.work / "in").with_suffix(".csv")))
            weights[lightest] += path.stat().st_size + 65536
        for part in range(1, 6):
            said = self.start(*self.arguments(f"o{part}", "--shard", f"{part}/5", "--keep", "--log", f"{part}.log"))
            said.communicate(timeout=60)
            written = {os.fsencode(name) for name in self.outputs(f"o{part}")}
            self.assertEqual(written, parts[part])
        listings = {(self.work / f"{part}.log").read_bytes().split(b"listing ")[1].split()[0] for part in range(1, 6)}
        self.assertEqual(len(listings), 1)

    def test_a_killed_shard_runs_again_and_leaves_out_what_is_done(self):
        one = self.one_run()
        command = self.arguments("out", "--shard", "1/2", "--report", "1.jsonl", "--skip-done")
        for wanted in (2, 6, 12):
            run = self.start(*command)
            self.assertTrue(self.wait_for_lines(self.work / "1.jsonl", wanted))
            run.send_signal(signal.SIGKILL)
            run.communicate()
        with open(self.work / "1.jsonl", "ab") as torn:
            torn.write(b'{"input":"in/north/01.txt","output":"out/north/0')
        done = result_lines(self.work / "1.jsonl")
        self.shards(2, "out", "--skip-done")
        self.assert_same_as(one, "out", self.work / "1.jsonl", self.work / "2.jsonl")
        repeated = [line["input"] for line in map(json.loads, filter(lambda text: b'"seconds"' in text,
                    (self.work / "1.jsonl").read_bytes().splitlines()))]
        for name, line in done.items():
            self.assertEqual(repeated.count(line["input"]), 1 if line["status"] == "done" else repeated.count(name))

    def killed(self, write, path, *arguments):
        run = subprocess.run([fleet.PROGRAM, *arguments], cwd=self.work, env=self.world.env | self.killed_at(write, path),
                             capture_output=True, check=False)
        self.assertEqual(run.returncode, -signal.SIGKILL, run.stderr)

    def test_a_workbook_that_its_list_does_not_tell_of_is_made_again(self):
        for name in ("xlsx", "xls"):
            convert = ["convert", "in/north/01.txt", "--recipe", "r.rcp", "--quiet", "-o"]
            self.convert(*convert, f"one.{name}", status=0)
            out, report = self.work / f"o.{name}", self.work / f"{name}.jsonl"
            command = [*convert, out.name, "--report", report.name, "--skip-done"]
            for touched in (False, True):
                report.write_text("\n")
                out.unlink(missing_ok=True)
                self.killed(2, report, *command)  # First the note of what is in hand, then the line about the made workbook.
                self.assertTrue(out.exists())
                if touched:
                    os.utime(out, (out.stat().st_mtime + 3600,) * 2)
                self.convert(*command, status=0)
                same = out.read_bytes() == (self.work / f"one.{name}").read_bytes()
                self.assertEqual(same, not touched, "what somebody else may have changed is edited, never replaced")
            self.assertEqual(list(self.work.glob("*.now")), [])

    def test_a_killed_run_leaves_nothing_in_the_folders_of_the_outputs(self):
        command = self.arguments("out", "--report", "l.jsonl", "--skip-done", "--jobs", "1")
        self.killed(20, self.work / "out", *command)
        self.assertEqual(list((self.work / "out").rglob(".quillon-*")), [])
        self.convert(*command)

    def test_done_is_what_nothing_has_changed_of(self):
        command = ["convert", "in/*.txt", "-r", "-o", "out/*.csv", "--report", "l.jsonl", "--skip-done"]
        self.convert(*command, "--recipe", "r.rcp", "--quiet")

        def again(*more, recipe="r.rcp"):
            said = self.convert(*command, "--recipe", recipe, *more)
            return int(said.split(" file")[-2].rsplit(None, 1)[-1]), said

        self.assertEqual(again()[0], 0)
        self.write("in/north/01.txt", "STOCK\nBolts   9\nEND\n")
        os.utime(self.work / "in/north/02.txt")
        (self.work / "out/north/04.csv").unlink()
        (self.work / "out/north/05.csv").write_bytes(b"")
        self.assertEqual(again()[0], 4)
        self.assertEqual((self.work / "out/north/01.csv").read_bytes(), b"Bolts  , 9 \r\n")
        os.utime(self.work / "r.rcp")
        self.assertEqual(again()[0], 0, "the content of a recipe counts, not its time")
        self.write("r2.rcp", fleet.RECIPE.replace("------ ---", "----- ----"))
        self.assertEqual(again(recipe="r2.rcp")[0], 42)
        self.assertEqual(again("--trim", recipe="r2.rcp")[0], 42)
        self.assertEqual(again("--trim", recipe="r2.rcp")[0], 0)
        profile = "../home/.config/Brindlemark, Inc/Quillon/Profiles/Stock.txt"
        for width, made in (("7", 44), ("7", 0), ("6", 44)):
            self.write(profile, f"1\t{width}\t[32]\tLeft\tNo\t1\t\t\r\n")
            said = self.convert(*command, "--profile", "stock.TXT", status=0)
            self.assertIn(f"quillon: {made} file", said, "a profile is found by its file's name, too")

    def test_lines_are_json_whatever_the_names_and_texts(self):
        self.convert(*self.arguments("out", "--report", "l.jsonl"))
        lines = result_lines(self.work / "l.jsonl")
        odd = lines["696e2fff0a1b2e747874"]
        self.assertEqual((odd["input"], odd["rows"], odd["status"]), ("in/\ufffd\n\x1b.txt", 1, "done"))
        self.assertEqual([line["warnings"][0]["code"] for line in (odd, lines["in/tab.txt"])], [-2004, -2004])
        useless = lines["in/useless.txt"]
        self.assertEqual((useless["status"], useless["rows"], useless["errors"][0]["code"]), ("failed", 0, -5604))
        big = lines["in/south/39.txt"]
        about = (self.work / "in/south/39.txt").stat()
        self.assertEqual((big["rows"], big["bytes"], big["modified"]),
                         (60842, about.st_size, f"{about.st_mtime_ns // 10**9}.{about.st_mtime_ns % 10**9:09}"))
        self.assertEqual(big["output_bytes"], (self.work / "out/south/39.csv").stat().st_size)

    def test_refuses_what_would_lose_or_mix_files(self):
        self.write("twice/a.txt", fleet.RECIPE)
        self.write("twice/A.txt", fleet.RECIPE)
        self.write("full", "")
        common = ["--recipe", "r.rcp", "-o"]
        for said, *arguments in [
                *(("I/N is wanted", "in", *common, "o/*.csv", "--shard", text)
                  for text in ("0/3", "4/3", "a/b", "1/", "/2", "2", "-1/2", "1/2/3", "1/99999999999")),
                ("differ in case", "twice/*.txt", *common, "o/*.csv"),
                ("OUTPUT holds", "in/*.txt", *common, "o/all.csv", "--shard", "1/2"),
                ("a specification makes one", "--specification", "r.rcp", "--shard", "1/2"),
                ("not with -", "-", *common, "o.csv", "--report", "l.jsonl", "--skip-done"),
                ("goes with --report", "in", *common, "o/*.csv", "--skip-done"),
                ("of the next run", "in", "-r", *common, "in/out/*.csv", "--shard", "1/2"),
                ("of the next run", "in/*", *common, "in/x_*.csv", "--skip-done", "--report", "l.jsonl"),
                ("inputs are searched", "in", *common, "o/*.csv", "--report", "in/l.jsonl"),
                ("is an input", "in/tab.txt", *common, "o/*.csv", "--report", "in/tab.txt"),
                ("No such file", "in", *common, "o/*.csv", "--report", "no/l.jsonl"),
                ("Is a directory", "in", *common, "o/*.csv", "--report", "in")]:
            self.assertIn(said, self.convert("convert", *arguments, status=2), arguments)
        self.assertFalse((self.work / "o").exists())
        said = self.convert("convert", "in/tab.txt", *common, "o/*.csv", "--report", "/dev/full")
        self.assertIn("No space left on device; the result list has gaps", said)
        self.assertTrue((self.work / "o/tab.csv").exists())


if __name__ == "__main__":
    unittest.main()
