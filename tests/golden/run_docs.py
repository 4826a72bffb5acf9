#!/usr/bin/env python3
"""Runs the examples of the documents, so that what they show is what happens.

  run_docs.py --program build-dev/bin/quillon [--show] [PAGE ...]

Each page runs in a fresh folder, from its top to its end:
  <!-- files: tests/golden/x/y.txt ... -->   copies files of the tree into it; '...' around a name with blanks
  ```text report.txt                         a fenced block with a second word is written as the file of that name
  ```console                                 lines with "$ " are run by sh ("> " goes on with one); what stands below is
                                             the output, both streams; "..." on a line of its own stands for any lines
Seconds, rates, stamps and CRs don't count. --accept writes what really came into the page. --files names a folder that the
files come from instead of the tree: that of an installed package, whose own pages can be run so.
"""

import argparse
import re
import shlex
import shutil
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
import golden  # noqa: E402

ITEM = re.compile(r"^<!-- files: (?P<files>.*?) -->$|^```(?P<kind>\w+)(?: +(?P<name>\S+))?\n(?P<body>.*?)^```$",
                  re.MULTILINE | re.DOTALL)


def matches(expected, got):
    pieces = "".join(".*" if line == "..." else re.escape(line) + "\n" for line in expected.splitlines())
    return re.fullmatch(pieces.replace(".*", "(?:.*\n)*?"), got) is not None


def steps(block):
    """(lines of the command, expected output) of each command of a console block."""
    found = []
    for line in block.splitlines():
        if line.startswith("$ "):
            found.append(([line], []))
        elif found and line.startswith("> ") and not found[-1][1]:
            found[-1][0].append(line)
        elif found:
            found[-1][1].append(line)
    return [(lines, "".join(text + "\n" for text in output)) for lines, output in found]


class Page:
    def __init__(self, path, program, files=None):
        self.path, self.program, self.files = path, program, files
        self.name = path.relative_to(golden.ROOT) if path.is_relative_to(golden.ROOT) else path
        self.text = path.read_text(encoding="utf-8")
        self.failures = self.examples = 0

    def run_block(self, world, block, line):
        """Runs a console block; returns it as it should read."""
        came = ""
        for lines, expected in steps(block):
            self.examples += 1
            command = "\n".join(text[2:] for text in lines)
            got = world.run(f"{{ {command}\n}} 2>&1", steady=False)[0].replace("\r\n", "\n")
            wanted, steady = world.steady(expected.encode()), world.steady(got.encode())
            if matches(wanted, steady):
                got = expected
            else:
                self.failures += 1
                print(f"{self.name}:{line}: {command}\n{golden.difference(wanted, steady, 'the page', 'the run')}\n")
            came += "\n".join(lines) + "\n" + got
        return came

    def run(self):
        """Runs the page from its top to its end; returns its text with what came."""
        pieces, at = [], 0
        with golden.World(self.program) as world:
            for item in ITEM.finditer(self.text):
                if item["files"] is not None:
                    for file in shlex.split(item["files"]):
                        shutil.copy(self.files / Path(file).name if self.files else golden.ROOT / file, world.work)
                elif item["kind"] == "console":
                    line = self.text.count("\n", 0, item.start()) + 1
                    pieces += [self.text[at:item.start("body")], self.run_block(world, item["body"], line)]
                    at = item.end("body")
                elif item["name"]:
                    target = world.work / item["name"]
                    target.parent.mkdir(parents=True, exist_ok=True)
                    target.write_text(item["body"], encoding="utf-8")
        return "".join(pieces) + self.text[at:]


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("--program", required=True)
    arguments.add_argument("--accept", action="store_true")
    arguments.add_argument("--files", type=Path)
    arguments.add_argument("pages", nargs="*", type=Path)
    options = arguments.parse_args()
    paths = [path.resolve() for path in options.pages] or [*golden.ROOT.glob("*.md"), *golden.ROOT.glob("docs/**/*.md")]
    pages = [Page(path, options.program, options.files) for path in sorted(paths)]
    for page in pages:
        text = page.run()
        if options.accept and text != page.text:
            page.path.write_text(text, encoding="utf-8")
    failures, examples = sum(page.failures for page in pages), sum(page.examples for page in pages)
    print(f"{examples - failures} of {examples} examples on {len(pages)} pages are as shown")
    return 1 if failures and not options.accept else 0


if __name__ == "__main__":
    sys.exit(main())
