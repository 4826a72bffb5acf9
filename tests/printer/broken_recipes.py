"""Recipes that fit, broken in one place: what they read then lacks rows."""

import re

import columns


def sections(text):
    """[name, [[key, value] ...]] of each section."""
    found = []
    for line in text.splitlines():
        if line.startswith("["):
            found.append([line.strip("[]"), []])
        elif "=" in line:
            found[-1][1].append(line.split("=", 1))
    return found


def written(recipe):
    return "\n".join(f"[{name}]\n" + "\n".join(f"{key}={value}" for key, value in keys) for name, keys in recipe) + "\n"


def keys_of(recipe, name="Table 1"):
    return next(keys for section, keys in recipe if section == name)


def put(keys, key, value):
    """Sets a key, in place of the one that is there."""
    keys[:] = [[k, v] for k, v in keys if k != key] + [[key, value]]


def value_of(keys, key):
    return next((v for k, v in keys if k == key), "")


def rows_of(paper):
    return [i for i, kind in enumerate(paper.kinds) if kind == "row"]


def own_text(paper, rng, among=None):
    """A row, by its index, and a word with a digit that no other line holds; None if there is none."""
    rows = among or rows_of(paper)
    for i in rng.sample(rows, len(rows)):
        for word in re.findall(r"[A-Za-z0-9.,/-]{3,}", paper.lines[i]):
            if re.search(r"\d", word) and sum(word in line for line in paper.lines) == 1:
                return i, word
    return None


def ended_early(recipe, paper, rng):
    """The stretch ends above a row in the midst of the report."""
    found = own_text(paper, rng, rows_of(paper)[1:])
    if not found:
        return False
    put(keys_of(recipe), "ReadEndLine", found[1])
    put(keys_of(recipe), "ReadEndLineOffset", "-1")
    return True


def begun_late(recipe, paper, rng):
    found = own_text(paper, rng, rows_of(paper)[1:])
    if not found:
        return False
    put(keys_of(recipe), "ReadStartLine", found[1])
    return True


def until_blank(recipe, paper, rng):
    """The stretch ends at the first blank line, as if there were but one group or page."""
    put(keys_of(recipe), "Until", "blank")
    return True


def needs_too_much(recipe, paper, rng):
    """A column must hold what only some rows have there."""
    keys = keys_of(recipe)
    places = re.findall(r"(\d+)(?:-(\d*))?", value_of(keys, "Places").split("|")[0])
    if not places:
        return False
    index = rng.randrange(len(places))
    start, end = int(places[index][0]), int(places[index][1] or 0) or None
    cells = [paper.lines[i][start - 1:end].strip() for i in rows_of(paper)]
    cell = rng.choice(cells)
    character = cell[:1] or "0"
    needs = [need for need in value_of(keys, "Needs").split(", ") if need and not need.startswith(columns.letter(index))]
    keys[:] = [[k, v] for k, v in keys if k not in ("Like", "Needs")]
    put(keys, "Needs", ", ".join(needs + [f'{columns.letter(index)} "{character}"']))
    return True


def dropped(recipe, paper, rng):
    """Lines with a word of some row are dropped."""
    found = own_text(paper, rng)
    if not found:
        return False
    put(keys_of(recipe), "Drop", found[1])
    return True


def dropped_many(recipe, paper, rng):
    """A word that is dropped stands in many rows, too."""
    i = rng.choice(rows_of(paper))
    words = re.findall(r"[A-Za-z]{4,}", paper.lines[i])
    if not words:
        return False
    put(keys_of(recipe), "Drop", rng.choice(words))
    return True


def a_heading(recipe, paper, rng):
    """A heading is told by what rows hold, and the rows by a picture that these lack."""
    found = own_text(paper, rng)
    if not found or not any(name == "Heading 1.1" for name, _ in recipe):
        return False
    keys = keys_of(recipe, "Heading 1.1")
    keys[:] = [["Text", found[1]], ["Names", "Head"]]
    return needs_too_much(recipe, paper, rng)


def joined(recipe, paper, rng):
    """What is no row goes on to the row above."""
    if not needs_too_much(recipe, paper, rng):
        return False
    put(keys_of(recipe), "Join", "up")
    return True


def further(recipe, paper, rng):
    """A further line takes what looks like anything."""
    if not needs_too_much(recipe, paper, rng):
        return False
    recipe[:] = [section for section in recipe if not section[0].startswith("Line ")]
    keys = keys_of(recipe)
    start = re.match(r"\d+", value_of(keys, "Places"))
    recipe.append(["Line 1.2", [["Like", "_" * (int(start[0]) - 1) + "X"], ["Places", f"{start[0]}-"], ["Names", "More"]]])
    return True


def table_left_out(recipe, paper, rng):
    """One table of several is missing."""
    if not any(name == "Table 2" for name, _ in recipe):
        return False
    recipe[:] = [section for section in recipe if re.search(r" 1(\.|$)", section[0])]
    return True


def one_page(recipe, paper, rng):
    """The table ends where a page begins."""
    if len(paper.starts) < 2:
        return False
    put(keys_of(recipe), "ReadEndLine", f"PAGE {rng.randint(2, len(paper.starts)):>4}")
    put(keys_of(recipe), "ReadEndLineOffset", "-1")
    return True


def cut_place(recipe, rng, change):
    """Other places of one column that has several characters."""
    keys = keys_of(recipe)
    pieces = value_of(keys, "Places").split(" ")
    wide = [i for i, piece in enumerate(pieces) if re.fullmatch(r"\d+-\d+", piece)]
    if not wide:
        return False
    i = rng.choice(wide)
    start, end = map(int, pieces[i].split("-"))
    pieces[i] = change(start, end, rng.randint(1, 3))
    put(keys, "Places", " ".join(pieces))
    return True


def narrow(recipe, paper, rng):
    """A column ends too early."""
    return cut_place(recipe, rng, lambda start, end, less: f"{start}-{max(start, end - less)}")


def narrow_in_front(recipe, paper, rng):
    """A column begins too late."""
    return cut_place(recipe, rng, lambda start, end, less: f"{min(end, start + less)}-{end}")


BREAKS = {f.__name__: f for f in (ended_early, begun_late, until_blank, needs_too_much, dropped, dropped_many, a_heading,
                                  joined, further, table_left_out, one_page, narrow, narrow_in_front)}
