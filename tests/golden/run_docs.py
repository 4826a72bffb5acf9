#!/usr/bin/env python3
"""Runs the examples of the documents, so that what they show is what happens.

  run_docs.py --program build-dev/bin/quillon [--show] [PAGE ...]

Each page runs in a fresh folder, from its top to its end:
  <!-- files: tests/golden/x/y.txt ... -->   copies files of the tree into it
  ```text report.txt                         a fenced block with a second word is written as the file of that name
  ```console                                 lines with "$ " are run by sh; what stands below each is its output, both
                                             streams; "..." on a line of its own stands for any lines
Seconds, rates and stamps don't count. --show prints each page's blocks with what really came.
"""

import argparse
import re
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
    """(command, expected output) pairs of a console block."""
    found = []
    for line in block.splitlines():
        if line.startswith("$ "):
            found.append([line[2:], []])
        elif found and found[-1][0].endswith("\\") and line.startswith("> "):
            found[-1][0] = found[-1][0][:-1] + line[2:]
        elif found:
            found[-1][1].append(line)
    return [(command, "".join(text + "\n" for text in output)) for command, output in found]


def run_page(page, program, show):
    failures = 0
    text = page.read_text(encoding="utf-8")
    name = page.relative_to(golden.ROOT)
    with golden.World(program) as world:
        for item in ITEM.finditer(text):
            line = text.count("\n", 0, item.start()) + 1
            if item["files"] is not None:
                for file in item["files"].split():
                    shutil.copy(golden.ROOT / file, world.work)
            elif item["kind"] == "console":
                for command, expected in steps(item["body"]):
                    out, err, _ = world.run(f"{{ {command}\n}} 2>&1")
                    expected = world.steady(expected.encode())
                    if show:
                        print(f"{name}:{line}\n$ {command}\n{out}", end="")
                    elif not matches(expected, out + err):
                        failures += 1
                        print(f"FAILED {name}:{line}\n$ {command}\n{golden.difference(expected, out, 'the page', 'the run')}\n")
            elif item["name"]:
                target = world.work / item["name"]
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_text(item["body"], encoding="utf-8")
    return failures


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("--program", required=True)
    arguments.add_argument("--show", action="store_true")
    arguments.add_argument("pages", nargs="*", type=Path)
    options = arguments.parse_args()
    pages = [page.resolve() for page in options.pages] or sorted(golden.ROOT.glob("*.md")) + sorted(golden.ROOT.glob("docs/**/*.md"))
    failures = sum(run_page(page, options.program, options.show) for page in pages)
    examples = sum(page.read_text(encoding="utf-8").count("\n$ ") for page in pages)
    print(f"{examples - failures} of {examples} examples on {len(pages)} pages are as shown")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
