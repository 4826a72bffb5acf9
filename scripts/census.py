#!/usr/bin/env python3
"""Counts the rooms of src/ and the includes between them: which room stands on which floor, and what points upward.

    scripts/census.py            a table of rooms, then one closing line
    scripts/census.py --quiet    the closing line alone

A room is a folder with a quillon_layer (or the two of the programs); what it may include follows from the rooms that its
CMakeLists.txt names. Ends with 1, and names each include, if one leads to a room that isn't below, or rooms form a circle.
"""

import collections
import pathlib
import re
import sys

SOURCES = pathlib.Path(__file__).resolve().parent.parent / "src"
LAYER = re.compile(r"quillon_layer\((\w+)([^)]*)\)")
TARGET = re.compile(r"(?:target_link_libraries|add_library)\(quillon_(\w+)([^)]*)\)")


def declared():
    """For each room its folder, and for each target those it names."""
    folders, below = {}, collections.defaultdict(set)
    for page in sorted(SOURCES.rglob("CMakeLists.txt")):
        text = re.sub(r"#[^\n]*", "", page.read_text(encoding="utf-8"))
        for name, others in LAYER.findall(text):
            folders[page.parent] = name
            below[name] |= set(others.split()) - {"PRIVATE"}
        for name, others in TARGET.findall(text):
            below[name] |= set(re.findall(r"quillon_(\w+)", others)) - {"warnings", name}
    folders[SOURCES / "app"] = "app"
    folders[SOURCES / "app" / "gui"] = "app_gui"
    below["app_gui"] |= {"app", "ui_qt"}
    return folders, below


def closure(below, name, seen=None):
    seen = set() if seen is None else seen
    for other in below.get(name, ()):
        if other not in seen:
            seen.add(other)
            closure(below, other, seen)
    return seen


def includes(folders):
    """(room, file, room of the header) for each include that leaves its room."""
    home = {path.name: folders.get(path.parent) for path in SOURCES.rglob("*.h")}
    for path in sorted(SOURCES.rglob("*.h")) + sorted(SOURCES.rglob("*.cpp")):
        room = folders.get(path.parent)
        for header in re.findall(r'^#include "([^"]+)"', path.read_text(encoding="utf-8"), re.M):
            if header in home and home[header] != room:
                yield room, path.relative_to(SOURCES), header, home[header]


def floors(arrows, rooms):
    """The floor of each room, from 0; None for what stands in a circle."""
    level = {}
    while len(level) < len(rooms):
        ready = [room for room in rooms if room not in level and arrows[room] <= level.keys()]
        if not ready:
            return level, [room for room in rooms if room not in level]
        level.update({room: max((level[other] + 1 for other in arrows[room]), default=0) for room in ready})
    return level, []


def main():
    folders, below = declared()
    rooms = sorted(set(folders.values()))
    arrows, upward = collections.defaultdict(set), []
    for room, path, header, other in includes(folders):
        arrows[room].add(other)
        if other not in closure(below, room):
            upward.append(f"{path} includes {header} of {other}, which is not below {room}")
    level, circle = floors(arrows, rooms)
    if "--quiet" not in sys.argv:
        for room in sorted(level, key=lambda name: (level[name], name)):
            print(f"{level[room]:3}  {room:12} {' '.join(sorted(arrows[room]))}")
    count = sum(len(others) for others in arrows.values())
    print(f"{len(rooms)} rooms, {count} arrows, {max(level.values(), default=-1) + 1} floors, "
          f"{len(circle)} rooms in circles, {len(upward)} includes that point upward")
    for line in upward + [f"in a circle: {room}" for room in circle]:
        print(f"    {line}", file=sys.stderr)
    return 1 if upward or circle else 0


if __name__ == "__main__":
    sys.exit(main())
