#!/usr/bin/env python3
"""Eight processes on one user's data folder, by all methods and both command lines, while others sit at the desktop and change
settings, recent lists, a job and a profile: every output is what one process alone makes, and no key is lost."""

import argparse
import configparser
import os
import pathlib
import random
import subprocess
import tempfile
import threading
import time
import zipfile

RULES = "[Table 1]\r\nReadStartLine=TOP\r\nReadStartLineOffset=1\r\nReadEndLine=END\r\nReadEndLineOffset=-1\r\nParsing={}\r\nWriteColumn=A\r\n"
HEADER = "[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n\r\n"
PROFILE = "1\t9\t[32] Space\tLeft\tNo\t1\t\t\r\n2\t10\t[32] Space\tRight\tNo\t2\t\t\r\n"
FILES = 4
WORKERS = 8
LISTED = 6  # as many as a list of recent files holds


def content(path):
    """What the file says: the packer of the parts of an .xlsx takes now and then another way to the same."""
    if path.suffix != ".xlsx":
        return path.read_bytes()
    with zipfile.ZipFile(path) as package:
        return {part: package.read(part) for part in package.namelist()}


class World:
    def __init__(self, chosen, folder):
        self.chosen, self.folder = chosen, folder
        self.data = folder / "home/.config/Brindlemark, Inc/Quillon"
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(folder / "home"), "LC_ALL": "C.UTF-8",
                            "QUILLON_DRIVE_C": str(folder), "TMPDIR": str(folder / "tmp"), "SOURCE_DATE_EPOCH": "1700000000"}
        for name in ("home", "tmp", "in", "alone"):
            (folder / name).mkdir()
        for i in range(FILES):
            rows = "".join(f"Item{i}{j:04}  {j * 1.25:9.2f}\n" for j in range(100 + 400 * i))
            (folder / f"in/{i}.txt").write_text("TOP\n" + rows + "END\n")
            # The other width of the ruler makes a mix-up of two runs' private files show.
            (folder / f"in/{i}.rcp").write_bytes((HEADER + RULES.format("-" * (9 + i) + " " + "-" * (9 - i))).encode())
            (folder / f"in/m{i}.txt").write_text(f">>1\n{'-' * (9 + i)} {'-' * (9 - i)}\n" + rows + "<<1\n")
        (folder / "in/p.txt").write_text(PROFILE)

    def commands(self, out):
        """Every command with the output that it makes."""
        for i in range(FILES):
            for kind in ("csv", "xlsx", "xls"):
                for method, options in (("r", ["--recipe", f"in/{i}.rcp"]), ("p", ["--profile", "./in/p.txt"])):
                    yield f"{out}/{method}{i}.{kind}", [f"in/{i}.txt", *options]
            yield f"{out}/m{i}.csv", [f"in/m{i}.txt", "--markup"]
            yield f"{out}/s{i}.csv", None

    def run(self, command):
        return subprocess.run(command, cwd=self.folder, env=self.environment, capture_output=True, text=True)

    def convert(self, output, arguments):
        if arguments is None:
            i = output[-5]
            path = output.replace("/", "\\")
            return self.run([self.chosen.program, rf"/IC:\in\{i}.txt", rf"/OC:\{path}", rf"/RC:\in\{i}.rcp"])
        return self.run([self.chosen.program, "convert", *arguments, "-o", output, "--quiet"])


class Workers:
    def __init__(self, world, seconds):
        self.world, self.until = world, time.monotonic() + seconds
        self.wrong, self.runs, self.marks = [], 0, []
        self.lock = threading.Lock()
        self.alone = {pathlib.Path(output).name: content(world.folder / output) for output, _ in world.commands("alone")}

    def note(self, wrong=None, mark=None):
        with self.lock:
            self.runs += 1
            if wrong:
                self.wrong.append(wrong)
            if mark:
                self.marks.append(mark)

    def convert_on_and_on(self, number):
        chance = random.Random(number)
        commands = list(self.world.commands(f"out{number}"))
        (self.world.folder / f"out{number}").mkdir()
        while time.monotonic() < self.until:
            output, arguments = chance.choice(commands)
            path = self.world.folder / output
            if path.suffix != ".csv":
                path.unlink(missing_ok=True)  # A workbook that exists is changed, not made anew.
            done = self.world.convert(output, arguments)
            same = path.exists() and content(path) == self.alone[path.name]
            self.note(None if same and done.returncode == 0 and not done.stderr else (output, same, done.returncode, done.stderr))

    def sit_on_and_on(self, number):
        for turn in range(1, 1000000):
            # A slow machine takes longer to fill the lists.
            if time.monotonic() >= self.until and len(self.marks) >= LISTED:
                return
            mark = f"{number}{turn:06}"
            done = self.world.run([self.world.chosen.desktop, mark, "job.QLN", "Shared", "3"])
            self.note(None if done.returncode == 0 and not done.stdout else (mark, done.stdout, done.stderr), mark)


def check_data(world, workers):
    settings = configparser.ConfigParser(strict=True, interpolation=None)
    settings.optionxform = str
    settings.read_string((world.data / "QLN.INI").read_bytes().decode("cp1252"))
    wanted = {f"{mark}-{i}" for mark in workers.marks for i in range(3)}
    assert wanted == set(settings["Session"]), ("lost keys", len(wanted), len(wanted ^ set(settings["Session"])))
    assert settings["General"]["sSheetTarget"] in workers.marks
    for section in ("mruInputFile", "mruOutputFile"):
        items = [settings[section][f"{section}{i}"] for i in range(1, LISTED + 1)]
        assert len(set(items)) == LISTED and all(item[:-4] in workers.marks for item in items), items
    assert (world.folder / "job.QLN").read_text().count("sInputFile=") == 1
    assert (world.data / "Profiles/Shared.txt").read_text().count("\n") == 5
    for folder in [world.data, world.folder, world.folder / "tmp", *world.folder.glob("out*")]:
        strange = [name for name in os.listdir(folder) if name.endswith(".lock") or name.startswith(".quillon")
                   or name.startswith(("quillon-", "_ExportSpecs.", "_AutoRecipe.")) and name.count(".") > 1]
        assert not strange, strange


def main():
    parser = argparse.ArgumentParser()
    for name in ("--program", "--desktop", "--layer"):
        parser.add_argument(name, required=True, type=os.path.abspath)
    parser.add_argument("--seconds", type=float, default=10)
    chosen = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="quillon-many-") as name:
        world = World(chosen, pathlib.Path(name).resolve())
        for output, arguments in world.commands("alone"):
            done = world.convert(output, arguments)
            assert done.returncode == 0 and not done.stderr, (output, done.stderr)
        # A first start of all at once, too.
        subprocess.run(["rm", "-r", str(world.folder / "home/.config")], check=True)
        workers = Workers(world, chosen.seconds)
        threads = [threading.Thread(target=workers.sit_on_and_on if i % 4 == 0 else workers.convert_on_and_on, args=(i,))
                   for i in range(WORKERS)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        assert not workers.wrong, workers.wrong[:5]
        check_data(world, workers)
        print(f"{workers.runs} runs of {WORKERS} processes in {chosen.seconds:.0f} s, {len(workers.marks)} of them at the desktop: "
              f"every output right, {3 * len(workers.marks)} keys there")


if __name__ == "__main__":
    main()
