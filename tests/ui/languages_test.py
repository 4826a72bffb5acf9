#!/usr/bin/env python3
"""Each shipped language has every text of the program, and none that the program no longer has."""

import collections
import pathlib
import re
import sys

TOP = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TOP / "scripts"))
sys.dont_write_bytecode = True
import list_texts  # noqa: E402

FILE_MENU = ["&Open Conversion Job", "&Save Conversion Job", "Save Conversion Job &As..", "E&xit"]
MENU_BAR = ["&File", "&Convert", "&Help"]


def entries(path):
    text = path.read_bytes()
    assert text.startswith(b'\xef\xbb\xbf"!'), "must begin with a UTF-8 mark and a comment"
    result = {}
    for line in text.decode("utf-8-sig").split("\r\n")[1:]:
        if line:
            key, phrase = line.split('","')
            assert line[0] == '"' and line[-1] == '"', line
            result[key[1:]] = phrase[:-1]
    return result


def blanks(text):
    return len(text) - len(text.lstrip(" ")), len(text) - len(text.rstrip(" "))


def faults(phrases, keys):
    for key in keys - phrases.keys():
        yield f"lacks {key!r}"
    for key in phrases.keys() - keys:
        yield f"{key!r} is no text of the program"
    for key, phrase in phrases.items():
        if blanks(key) != blanks(phrase) and key.strip():
            yield f"{key!r} has other blanks at its ends than {phrase!r}"
        if ("&" in key) != ("&" in phrase) and re.search(r"&\w", key):
            yield f"{key!r} lost its access key"
    for menu in (FILE_MENU, MENU_BAR):
        letters = [re.search(r"&(.)", phrases[key]).group(1).lower() for key in menu if key in phrases]
        for letter, count in collections.Counter(letters).items():
            if count > 1:
                yield f"the access key {letter!r} stands {count} times in {menu}"


def main():
    keys = set(list_texts.keys())
    files = sorted((TOP / "data" / "Languages").glob("*-Quillon.txt"))
    failed = 0
    for path in files:
        found = list(faults(entries(path), keys))
        failed += bool(found)
        for fault in found:
            print(f"{path.name}: {fault}")
    print(f"{len(files) - failed} passed, {failed} failed")
    return 1 if failed or len(files) < 4 else 0


if __name__ == "__main__":
    sys.exit(main())
