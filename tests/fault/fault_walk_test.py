#!/usr/bin/env python3
"""Lets each file operation of whole runs go wrong, one a run, until a run has none left: after each the old output is whole
or the new one is, there is a clear report, and no temporary file stays."""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

REPORT = "TOP\n" + "".join(f"{i:<8} {'Item ' + str(i):<14} {i * 1.25:10,.2f}\n" for i in range(3000)) + "END\n"
RECIPE = ("[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n\r\n[Table 1]\r\nReadStartLine=TOP\r\n"
          "ReadStartLineOffset=1\r\nReadEndLine=END\r\nReadEndLineOffset=-1\r\nParsing=-------- -------------- ----------\r\n"
          "WriteColumn=A\r\n")
PROFILE = "1\t9\t[32] Space\tLeft\tNo\t1\t\t\r\n2\t15\t[32] Space\tLeft\tNo\t2\t\t\r\n3\t10\t[32] Space\tRight\tNo\t3\t\t\r\n"
BY_RECIPE = ["--recipe", "r.rcp"]
BY_PROFILE = ["--profile", "./p.txt"]


class Walk:
    def __init__(self, program, layer, folder):
        self.program, self.layer, self.folder = program, layer, folder
        self.tried = self.faults = 0
        (folder / "in.txt").write_text(REPORT)
        (folder / "r.rcp").write_text(RECIPE)
        (folder / "p.txt").write_text(PROFILE)
        (folder / "data").mkdir()
        (folder / "tmp").mkdir()
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(folder / "data"), "APPDATA": str(folder / "data"),
                            "TMPDIR": str(folder / "tmp"), "LC_ALL": "C.UTF-8", "ASAN_OPTIONS": "verify_asan_link_order=0"}

    def run(self, arguments, at=0, kind="fail"):
        environment = dict(self.environment)
        mark = self.folder.parent / "mark"
        mark.unlink(missing_ok=True)
        if at:
            environment.update(LD_PRELOAD=str(self.layer), QUILLON_FAULT_FOLDER=str(self.folder), QUILLON_FAULT_AT=str(at),
                               QUILLON_FAULT_KIND=kind, QUILLON_FAULT_MARK=str(mark))
        done = subprocess.run([self.program, *arguments], cwd=self.folder, env=environment, capture_output=True, text=True)
        return done, mark.exists()

    def files(self):
        return sorted(str(path.relative_to(self.folder)) for path in self.folder.rglob("*") if path.is_file())

    def walk(self, name, arguments, output, old):
        """Walks all kinds of fault through one conversion; old are the output's bytes before each run, or None."""
        target = self.folder / output

        def prepare():
            target.unlink(missing_ok=True)
            if old is not None:
                target.write_bytes(old)

        prepare()
        whole, _ = self.run(arguments)
        assert whole.returncode == 0, (name, whole.stderr)
        new = target.read_bytes()
        usual = self.files()
        for kind in ("fail", "short", "interrupt"):
            at = 0
            while True:
                at += 1
                prepare()
                done, let_loose = self.run(arguments, at, kind)
                self.tried += 1
                where = f"{name}, {kind} at operation {at}"
                if not let_loose:
                    assert done.returncode == 0 and target.read_bytes() == new, (where, done.stderr)
                    break
                self.faults += 1
                self.judge(where, done, kind, target, old, new)
                strange = [file for file in self.files() if file not in usual]
                assert not strange, (where, strange)

    @staticmethod
    def judge(where, done, kind, target, old, new):
        now = target.read_bytes() if target.exists() else None
        assert done.returncode in (0, 1, 2, 70), (where, done.returncode, done.stderr)
        if done.returncode == 0:
            assert now == new, (where, "says that all is done", done.stderr)
            return
        assert kind == "fail", (where, "a short or interrupted call is no failure", done.stderr)
        assert now in (old, new), (where, "neither the old output nor the new one")
        assert done.stderr.strip(), (where, "no report")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    parser.add_argument("--layer", required=True)
    chosen = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="quillon-fault-") as name:
        folder = pathlib.Path(name).resolve() / "work"
        folder.mkdir()
        walk = Walk(os.path.abspath(chosen.program), os.path.abspath(chosen.layer), folder)
        for method, options in (("recipe", BY_RECIPE), ("profile", BY_PROFILE)):
            for kind in ("csv", "xlsx", "xls"):
                output = f"out.{kind}"
                arguments = ["convert", "in.txt", "-o", output, *options, "--quiet"]
                walk.walk(f"{method} to a new .{kind}", arguments, output, None)
                old = (folder / output).read_bytes() if kind != "csv" else b"old\r\n"
                if method == "recipe" or kind == "csv":
                    walk.walk(f"{method} to a .{kind} that exists", arguments, output, old)
        print(f"{walk.tried} runs, {walk.faults} faults let loose, nothing lost")
    return 0


if __name__ == "__main__":
    sys.exit(main())
