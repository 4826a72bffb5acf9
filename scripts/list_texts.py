#!/usr/bin/env python3
"""Prints every text that the program can show, one to a line: the keys of a language file.

    scripts/list_texts.py                    all keys, sorted
    scripts/list_texts.py --missing FILE     the keys that a language file lacks

Keys are the English texts of the sources: what stands in Translate("...") and EndWalk(context, "..."), in the tables of messages (modXMessages),
and in the captions, tool tips and lists of the forms.
"""

import pathlib
import re
import sys

SOURCES = pathlib.Path(__file__).resolve().parent.parent / "src"
LITERAL = r'"(?:[^"\\\n]|\\.)*"'
LITERALS = re.compile(rf"{LITERAL}(?:\s*{LITERAL})*")
TRANSLATED = re.compile(rf"(?:Translate\(|EndWalk\(context_?,)\s*({LITERAL}(?:\s*{LITERAL})*)\s*[,)]")
# Names of controls, files, keys and sections, which nobody reads.
NAMES = re.compile(
    r"Example\d-.*|(cmd|cb|txt|lbl|rb|frame|Frame|mnu|pic|key|Key|sb|tb|ts|fg|lst|ob|frm)[A-Z0-9]\w*"
    r"|(Label|List|Option|StatusBar|Frame)\d|frame\w+|Ctrl\+.|F\d+|[a-z]+|[-/.?\\*%\s\d]*|#include.*|.*\.(h|cpp|bat\.txt)")
FORM_LINE = re.compile(r"Row\{|Add\(|Example\{|Chapter\{|sCaption|sToolTip|\.items = |HelpButton|Tell\(|Warn\(|Check(Text|Number)"
                       r"|constexpr std::string_view kOnly")


def unescape(literals):
    pieces = re.findall(LITERAL, literals)
    text = "".join(piece[1:-1] for piece in pieces)
    escapes = {"r": "\r", "n": "\n", "t": "\t"}
    return re.sub(r"\\(.)", lambda match: escapes.get(match.group(1), match.group(1)), text)


def worth_showing(text):
    if text == "?":  # On the buttons that open the manual.
        return True
    return bool(re.search(r"[A-Za-z]", text)) and text != "TranslateFalse" and not NAMES.fullmatch(text)


def texts_of(path):
    source = re.sub(r"//[^\n]*", "", path.read_text(encoding="utf-8"))
    source = re.sub(r"#include[^\n]*", "", source)
    for match in TRANSLATED.finditer(source):
        yield True, unescape(match.group(1))
    if "Messages" in path.name:
        for match in LITERALS.finditer(source):
            for piece in re.split(r"\|", unescape(match.group(0))):
                if not re.search(r"%\d", piece):
                    yield False, piece
    elif path.parent.parent.name == "ui" and path.parent.name != "qt":
        # A statement that mentions a form's texts may reach over several lines.
        for statement in re.split(r"(?<=[;{}])\s*\n|,\s*\n(?=\s*\w*Row\{|\s*\w+\{)", source):
            if FORM_LINE.search(statement):
                for match in LITERALS.finditer(statement):
                    yield False, unescape(match.group(0))


def keys():
    found = set()
    for path in sorted(SOURCES.rglob("*.cpp")) + sorted(SOURCES.rglob("*.h")):
        found.update(text for sure, text in texts_of(path) if sure or worth_showing(text))
    return sorted(found)


def known(path):
    result = set()
    for line in pathlib.Path(path).read_text(encoding="utf-8-sig").splitlines():
        if line.startswith('"****'):
            break
        if '","' in line and not line.startswith('"!'):
            result.add(line.split('","')[0][1:])
    return result


def main(arguments):
    wanted = keys()
    if arguments[:1] == ["--missing"]:
        have = known(arguments[1])
        wanted = [key for key in wanted if key not in have]
    for key in wanted:
        print(key)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
