#!/usr/bin/env python3
"""Lets each file operation of whole runs go wrong, one a run, until a run has none left: after each the old file is whole
or the new one is, there is a clear report, no temporary file stays, and a batch has gone on with its other files. Prints a
table of the operations and faults."""

import argparse
import collections
import configparser
import io
import os
import pathlib
import subprocess
import sys
import tempfile
import zipfile

REPORT = "TOP\n" + "".join(f"{i:<8} {'Item ' + str(i):<14} {i * 1.25:10,.2f}\n" for i in range(3000)) + "END\n"
RECIPE = ("[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n\r\n[Table 1]\r\nReadStartLine=TOP\r\n"
          "ReadStartLineOffset=1\r\nReadEndLine=END\r\nReadEndLineOffset=-1\r\nParsing=-------- -------------- ----------\r\n"
          "WriteColumn=A\r\n")
PROFILE = "1\t9\t[32] Space\tLeft\tNo\t1\t\t\r\n2\t15\t[32] Space\tLeft\tNo\t2\t\t\r\n3\t10\t[32] Space\tRight\tNo\t3\t\t\r\n"
BY_RECIPE = ["--recipe", "r.rcp"]
BY_RULER = ["--recipe", "ruler.rcp"]  # worked out from the rows
BY_PROFILE = ["--profile", "./p.txt"]
KINDS = ("fail", "full", "short", "interrupt")
DATA = "data/Brindlemark, Inc/Quillon/"


class Walk:
    """Runs one command again and again, each time with another operation that goes wrong."""

    tried = 0
    faults = collections.Counter()
    losses = collections.Counter()

    def __init__(self, chosen, folder):
        self.chosen, self.folder = chosen, folder
        (folder / "in.txt").write_text(REPORT)
        (folder / "r.rcp").write_text(RECIPE)
        (folder / "ruler.rcp").write_text(RECIPE.replace("Parsing=-------- -------------- ----------", "Parsing==R"))
        (folder / "p.txt").write_text(PROFILE)
        for name in ("data", "tmp", "many", "out"):
            (folder / name).mkdir()
        for name in "abcd":
            (folder / "many" / f"{name}.txt").write_text(REPORT[:2000] + "\nEND\n")
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(folder / "data"), "APPDATA": str(folder / "data"),
                            "SOURCE_DATE_EPOCH": "1700000000", "QUILLON_DRIVE_C": str(folder), "TMPDIR": str(folder / "tmp"), "LC_ALL": "C.UTF-8",
                            "ASAN_OPTIONS": "verify_asan_link_order=0"}

    def run(self, command, at=0, kind="fail", **more):
        environment = self.environment | more
        mark = self.folder.parent / "mark"
        mark.unlink(missing_ok=True)
        if at:
            environment.update(LD_PRELOAD=self.chosen.layer, QUILLON_FAULT_FOLDER=str(self.folder), QUILLON_FAULT_AT=str(at),
                               QUILLON_FAULT_KIND=kind, QUILLON_FAULT_MARK=str(mark))
        done = subprocess.run(command, cwd=self.folder, env=environment, capture_output=True, text=True)
        return done, mark.read_text() if mark.exists() else ""

    def files(self):
        return {str(path.relative_to(self.folder)): path.read_bytes() for path in self.folder.rglob("*") if path.is_file()}

    def restore(self, files):
        for name in self.files().keys() - files.keys():
            (self.folder / name).unlink()
        for name, content in files.items():
            if not (self.folder / name).exists() or (self.folder / name).read_bytes() != content:
                (self.folder / name).write_bytes(content)

    def walk(self, name, command, targets, judge, **more):
        """judge(where, done, kind, old, now, new): contents by name of the target files."""
        before = self.files()
        whole, _ = self.run(command, **more)
        after = self.files()
        assert whole.returncode == 0 and all(target in after for target in targets), (name, whole.stderr)
        old = [before.get(target) for target in targets]
        new = [after[target] for target in targets]
        for kind in KINDS:
            at = 0
            operation = "first"
            while operation:
                at += 1
                self.restore(before)
                done, operation = self.run(command, at, kind, **more)
                Walk.tried += 1
                where = f"{name}, {kind} at operation {at} ({operation})"
                files = self.files()
                now = [files.get(target) for target in targets]
                strange = files.keys() - before.keys() - after.keys()
                assert not strange, (where, strange)
                assert done.returncode in (0, 1, 2, 70), (where, done.returncode, done.stderr)
                if not operation:
                    same = [is_now == is_new or name.endswith(".log") for name, is_now, is_new in zip(targets, now, new)]
                    assert at > 1 and done.returncode == 0 and all(same), (where, done.stderr)
                    break
                Walk.faults[operation, kind] += 1
                try:
                    judge(where, done, kind, old, now, new)
                except AssertionError as loss:
                    Walk.losses[operation] += 1
                    print("LOSS:", loss)
        self.restore(before)


def contents(output):
    """What a package holds: a part may be packed on another road, with other bytes of the same meaning."""
    if not isinstance(output, bytes) or not output.startswith(b"PK"):
        return output
    with zipfile.ZipFile(io.BytesIO(output)) as package:
        return [(part.filename, package.read(part)) for part in package.infolist()]


def judge_conversion(where, done, kind, old, now, new):
    old, now, new = ([contents(output) for output in outputs] for outputs in (old, now, new))
    if done.returncode == 0:
        assert now == new, (where, "says that all is done", done.stderr)
        return
    assert kind in ("fail", "full"), (where, "a short or interrupted call is no failure", done.stderr)
    assert now in (old, new), (where, "neither the old output nor the new one")
    assert done.stderr.strip(), (where, "no report")


def judge_batch(where, done, kind, old, now, new):
    """All but one file come out, and the run says which failed."""
    failed = sum(is_now != is_new for is_now, is_new in zip(now, new))
    assert all(is_now in (is_old, is_new) for is_old, is_now, is_new in zip(old, now, new)), where
    assert failed <= 1, (where, failed, done.stderr)
    assert failed == 0 or (done.returncode == 1 and "1 failed" in done.stderr), (where, done.returncode, done.stderr)


def judge_slash_batch(where, done, kind, old, now, new):
    """The last target is the log: it tells of the failure, or standard error that there is no log."""
    judge = [is_now == is_new for is_now, is_new in zip(now[:-1], new[:-1])]
    assert all(is_now in (is_old, is_new) for is_old, is_now, is_new in zip(old[:-1], now, new)), where
    assert judge.count(False) <= 1 and done.returncode == 0, (where, judge, done.stderr)
    log = (now[-1] or b"").decode()
    assert log.count("Conversion Complete") == 1 if log else "log" in done.stderr, (where, log, done.stderr)
    assert all(judge) or not log or "!!!!!!!!!!" in log, (where, log)


def settings_of(content):
    settings = configparser.ConfigParser(strict=False, interpolation=None)
    settings.read_string(content.decode())
    return {(section, key): value for section in settings for key, value in settings[section].items()}


def judge_session(where, done, kind, old, now, new):
    """Settings come in several writes; each key is the old or the new one. Job and profile tell what failed."""
    was, has, would = (settings_of(files[0]) for files in (old, now, new))
    assert was.keys() <= has.keys(), (where, "lost keys", was.keys() - has.keys())
    assert all(value in (was.get(key), would.get(key)) for key, value in has.items()), (where, has)
    assert now[1] in (old[1], new[1]) and now[2] in (old[2], new[2]), where
    if now[1:] != new[1:]:
        assert kind in ("fail", "full") and done.stdout.strip(), (where, "no report")


def walk_conversions(walk, quillon):
    for method, options in (("recipe", BY_RECIPE), ("ruler", BY_RULER), ("profile", BY_PROFILE)):
        for kind in ("csv",) if method == "ruler" else ("csv", "xlsx", "xls"):
            output = f"out.{kind}"
            command = [quillon, "convert", "in.txt", "-o", output, *options, "--quiet"]
            walk.walk(f"{method} to a new .{kind}", command, [output], judge_conversion)
            if kind == "csv":
                walk.walk(f"{method} to a new .csv, named", command, [output], judge_conversion, QUILLON_FAULT_NAMED="1")
            walk.run(command)
            walk.run([quillon, "convert", "many/a.txt", "-o", output, *options, "--quiet"])
            if method == "recipe" or kind == "csv":
                walk.walk(f"{method} to a .{kind} that exists", command, [output], judge_conversion)
            if kind == "csv":
                walk.walk(f"{method} to a .csv that exists, named", command, [output], judge_conversion,
                          QUILLON_FAULT_NAMED="1")
            (walk.folder / output).unlink()


def walk_batches(walk, quillon):
    outputs = [f"out/{name}.csv" for name in "abcd"]
    command = [quillon, "convert", "many/*.txt", "-o", "out/*.csv", *BY_RECIPE]
    walk.walk("batch", command, outputs, judge_batch)
    slash = [quillon, r"/IC:\many\*.txt", r"/OC:\outx\*.csv", r"/RC:\r.rcp", r"/LC:\run.log"]
    walk.run(slash)
    (walk.folder / "run.log").unlink()
    walk.walk("batch by switches", slash, [f"outx/{name}.csv" for name in "abcd"] + ["run.log"], judge_slash_batch)


def walk_session(walk, desktop):
    targets = [DATA + "QLN.INI", "job.QLN", DATA + "Profiles/Mine.txt"]
    walk.run([desktop, "7", "job.QLN", "Mine"])
    walk.walk("settings, recent lists, job and profile", [desktop, "8", "job.QLN", "Mine"], targets, judge_session)
    walk.walk("the same, named", [desktop, "8", "job.QLN", "Mine"], targets, judge_session, QUILLON_FAULT_NAMED="1")


def table():
    operations = sorted({operation for operation, _ in Walk.faults})
    print(f"{'operation':<10}" + "".join(f"{kind:>11}" for kind in KINDS) + f"{'losses':>9}")
    for operation in operations:
        print(f"{operation:<10}" + "".join(f"{Walk.faults[operation, kind]:>11}" for kind in KINDS) + f"{Walk.losses[operation]:>9}")
    print(f"{Walk.tried} runs, {Walk.faults.total()} faults let loose, {Walk.losses.total()} losses")


def main():
    parser = argparse.ArgumentParser()
    for name in ("--program", "--desktop", "--layer"):
        parser.add_argument(name, required=True, type=os.path.abspath)
    chosen = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="quillon-fault-") as name:
        folder = pathlib.Path(name).resolve() / "work"
        folder.mkdir()
        walk = Walk(chosen, folder)
        walk_conversions(walk, chosen.program)
        walk_batches(walk, chosen.program)
        walk_session(walk, chosen.desktop)
    operations = {operation for operation, _ in Walk.faults}
    assert {"open", "read", "write", "close", "fsync", "rename", "linkat", "fread"} <= operations, operations
    table()
    return 1 if Walk.losses else 0


if __name__ == "__main__":
    sys.exit(main())
