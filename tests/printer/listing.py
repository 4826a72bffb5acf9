"""A table as reports list it: rows in groups with headings and totals, over pages, records of one line or several."""

import textwrap
from decimal import Decimal

import values
from columns import TEXTS, choose, letter, place, places, types
from paper import Line

GROUP_LABELS = ("DEPARTMENT", "REGION", "COST CENTER", "BRANCH", "SUPPLIER", "Warehouse", "Route", "Agency")


class Group:
    """A level of groups: how its heading is printed, found and what it gives."""

    def __init__(self, rng, label, indent):
        self.label = label
        self.indent = indent
        self.form = rng.choice(("label", "label", "places", "shape", "two"))
        self.mark = rng.choice((":", ":", " NO:", " ="))
        self.digits = rng.randint(2, 4)
        self.total = rng.choice(("{} TOTAL", "{} TOTALS", "TOTAL {}", "* {} TOTAL *")).format(label.upper())
        self.again = rng.choice(("", "", " (CONT.)"))

    def names(self):
        title = self.label.title()
        return {"label": [title], "shape": [title + " No", title], "places": [title + " No", title],
                "two": [title, title + " Head"]}[self.form]

    def make(self, rng):
        number = f"{rng.randrange(10 ** self.digits):0{self.digits}d}"
        name = rng.choice(values.UNIT)
        return {"label": [name], "two": [name, values.person(rng)]}.get(self.form, [number, name])

    def printed(self, value, again=False):
        tail = self.again if again else ""
        pad = " " * self.indent
        if self.form == "label":
            return f"{pad}{self.label}{self.mark} {value[0]}{tail}"
        if self.form == "two":
            return f"{pad}{self.label}{self.mark} {value[0]:<14}  HEAD OF UNIT: {value[1]}{tail}"
        if self.form == "places":
            return f"{pad}{self.label}{self.mark}  {value[0]}  {value[1]}{tail}"
        return f"{pad}** {value[0]} {value[1]}{tail}"

    def sections(self, n, k):
        """The sections of the recipe, one or two."""
        before = f"\nBefore={self.again.strip()[:5]}" if self.again else ""
        name = self.names()
        if self.form == "label":
            return [f"[Heading {n}.{k}]\nText={self.label}{self.mark}{before}\nNames={name[0]}\nTypes=text"]
        if self.form == "two":
            return [f"[Heading {n}.{k}]\nText={self.label}{self.mark}\nNames={name[0]}\nTypes=text",
                    f"[Heading {n}.{k + 1}]\nText=HEAD OF UNIT:{before}\nNames={name[1]}\nTypes=text"]
        if self.form == "places":
            start = self.indent + len(self.label + self.mark) + 3
            find = f"Text={self.label}{self.mark}"
        else:
            start = self.indent + 4
            find = "Like=" + "_" * self.indent + "**_" + "9" * self.digits + "_A"
        at = f"Places={start}-{start + self.digits - 1} {start + self.digits + (2 if self.form == 'places' else 1)}-"
        return [f"[Heading {n}.{k}]\n{find}{before}\n{at}\nNames={'|'.join(name)}\nTypes=text"]


class Listing:
    """Chosen once for a seed; prints any number of months. `wish` forces features that a kind of report is about."""

    def __init__(self, rng, number, wish, style=None):
        self.rng, self.number, self.wish = rng, number, wish
        self.style = style or values.NumberStyle(rng, wish.get("negative"))
        self.gap = rng.choice((1, 2, 2, 3))
        self.margin = rng.choice((0, 0, 1, 2, 5))
        self.indent_totals = self.margin + rng.choice((0, 0, 2))
        self.rule = rng.choice(("", "-", "=", "words"))
        self.rule_totals = rng.choice(("", "-", "words"))
        self.blank_after_group = rng.random() < 0.7
        self.currency_first = rng.random() < 0.4
        self.lower = rng.random() < 0.5
        self.groups = [Group(rng, label, rng.choice((0, 0, self.margin, 3)))
                       for label in rng.sample(GROUP_LABELS, wish.get("groups", 0))]
        if len({group.form for group in self.groups}) < len(self.groups):
            # Each level is told by a text or shape of its own.
            self.groups[-1].form = "label"
        self.grand = "GRAND TOTAL" if not self.groups or rng.random() < 0.8 else ""
        self.totals = wish.get("totals", rng.random() < 0.7)
        self.page_totals = bool(wish.get("pages")) and self.totals and rng.random() < 0.3
        self._columns()
        self.needs = self._needs()

    def _columns(self):
        rng, wish = self.rng, self.wish
        texts = rng.sample(TEXTS, wish.get("texts", rng.randint(1, 2)))
        if wish.get("wrap") or wish.get("wide"):
            texts = ["product"]
        amounts = ["amount"] * rng.randint(1, 4) + ["count"] * rng.randint(0, 1)
        rng.shuffle(amounts)
        rest = texts + rng.choice(([], ["date"], ["tag"]))
        if not (wish.get("wrap") or wish.get("wide")):
            rng.shuffle(rest)
        carried = ["place", "person"][:wish.get("repeats", 0)]
        self.columns = choose(rng, self.style, carried + ["code"] + [k for k in rest if k not in carried] + amounts)
        self.key = self.columns[len(carried)]
        self.carried = self.columns[:len(carried)]
        for column in self.carried:
            column.carried = True
        for column in self.columns[:-1]:
            if column.number and rng.random() < wish.get("missing", 0.2):
                column.missing = rng.uniform(0.05, 0.5)
        place(self.columns, self.margin + 1, lambda: self.gap + rng.choice((0, 0, 1, 3)))
        self.wrap = next((c for c in self.columns if c.kind == "product"), None) if wish.get("wrap") else None
        self.wide = next((c for c in self.columns if c.kind == "product"), None) if wish.get("wide") else None
        if self.wide:
            self.wide.width = 15
            place(self.columns, self.margin + 1, lambda: max(2, self.gap))
        self.further = choose(rng, self.style, rng.sample(("person", "date", "tag", "place"), wish.get("further", 0)))
        taken = {column.name for column in self.columns}
        for column in self.further:
            column.name = "Second " + column.name if column.name in taken else column.name
        self.further_at = rng.choice(("distance", "label"))
        if self.further and self.further_at == "distance":
            place(self.further, self.columns[1].start, lambda: 2)
        self.total_columns = [c for c in self.columns if c.number]
        # The words of totals have room in front of the numbers.
        room = self.indent_totals + max((len(words) for words in self.total_words()), default=0) + 2
        missing = max(0, room - self.total_columns[0].start)
        for column in self.total_columns:
            column.start += missing

    def _needs(self):
        shapes = any(group.form in ("shape", "places") for group in self.groups)
        if self.key.start == 1 + self.margin and not self.wrap and self.rng.random() < 0.3 and not shapes:
            return "Like=" + "_" * self.margin + "9" * self.key.width if self.key.width == self.key.digits else \
                f"Needs={letter(self.columns.index(self.key))} digits"
        parts = [f"{letter(self.columns.index(self.key))} digits"]
        # A heading that prints digits as well is told from a row by what it lacks.
        if self.rng.random() < 0.7 or shapes:
            parts.append(f"{letter(len(self.columns) - 1)} number")
        return "Needs=" + ", ".join(parts)

    # ---- the recipe

    def recipe(self, extra=(), first_heading=1):
        lines = [f"[Table {self.number}]", *extra, self.needs]
        lines.append("Places=" + places(self.columns, self.rng.random() < 0.3))
        lines.append("Names=" + "|".join(c.name for c in self.columns))
        lines.append("Types=" + types(self.columns))
        if self.style.missing and any(c.missing for c in self.columns):
            lines.append("Blank=" + self.style.missing)
        carried = [letter(i) for i, c in enumerate(self.columns) if c.carried]
        if carried:
            lines.append("Fill=" + " ".join(carried))
        if self.wrap:
            lines.append("Join=up")
        words = self.total_words()
        if words:
            lines.append("Totals=" + "|".join(words))
        sections = ["\n".join(lines)]
        k = first_heading
        for group in self.groups:
            found = group.sections(self.number, k)
            sections += found
            k += len(found)
        return sections + self._further_sections()

    def _further_sections(self):
        if not self.further:
            return []
        if self.further_at == "distance":
            return [f"[Line {self.number}.2]\nPlaces={places(self.further, True)}\n"
                    f"Names={'|'.join(c.name for c in self.further)}\nTypes={types(self.further)}"]
        return [f"[Line {self.number}.{i}]\nText={c.name.upper()}:\nNames={c.name}\nTypes={c.type()}"
                for i, c in enumerate(self.further, 2)]

    def total_words(self):
        if not self.totals:
            return []
        words = [group.total for group in self.groups] + ([self.grand] if self.grand else [])
        return words + (["PAGE TOTAL"] if self.page_totals else [])

    def names(self):
        return [f"^{name}" for group in self.groups for name in group.names()] + \
            [("^" if c.carried else "") + c.name for c in self.columns] + [c.name for c in self.further]

    # ---- the report

    def heads(self):
        """Lines of column headings with their rule."""
        line = Line()
        for column in self.columns:
            name = column.name if self.lower else column.name.upper()
            if column.number:
                line.right(column.end - self.style.slot(), name)
            else:
                line.put(column.start, name)
        return [line.text] + self.drawn(self.rule)

    def drawn(self, form, columns=None):
        if form == "words":
            line = Line()
            for column in columns or self.columns:
                line.put(column.start, "-" * column.width)
            return [line.text]
        return ["".ljust(self.margin) + form * (self.columns[-1].end - self.margin)] if form else []

    def print(self, paper, rng, year, rows=None):
        """Prints all and returns the rows of the truth."""
        self.paper, self.month, self.year = paper, rng, year
        self.truth, self.count = [], 0
        self.total_lines = self.total_values = 0
        self.page_sums = self._zeros()
        if self.page_totals:
            paper.closers.append(self._page_total)
        sums = self._zeros()
        if rows is not None:
            self._rows(rows, [], [sums])
        else:
            self._level(0, [], [sums])
        if self.totals and self.grand:
            paper.need(3)
            self._total(self.grand, sums)
        return self.truth

    def _zeros(self):
        return {id(column): Decimal(0) for column in self.total_columns}

    def _level(self, depth, path, sums):
        rng = self.month
        if depth == len(self.groups):
            return self._rows(rng.randint(1, 9) if self.groups else rng.randint(4, 60), path, sums)
        group = self.groups[depth]
        last = None
        for _ in range(rng.randint(1, 4)):
            value = group.make(rng)
            if value == last:
                continue
            last = value
            own = self._zeros()
            self.paper.need(8)
            self.paper.put(group.printed(value), "heading")
            again = lambda v=value, g=group: self.paper.put(g.printed(v, True), "heading")  # noqa: E731
            self.paper.breaks.append(again)
            self._level(depth + 1, path + value, sums + [own])
            self.paper.breaks.remove(again)
            if self.totals:
                self._total(group.total, own)
            if self.blank_after_group:
                self.paper.put("")
        return None

    def _rows(self, count, path, sums):
        held = []
        size = 1 + len(self.further) + (3 if self.wrap else 0) + (2 if self.page_totals else 0)
        for i in range(count):
            shown = 0 if self.paper.need(size + 4) or i == 0 else len(self.carried)
            new = next((k for k in range(len(self.carried)) if self.month.random() < 0.3), len(self.carried))
            if i == 0:
                new = 0
            # What stands behind a changed value is printed again.
            held = held[:new] + [c.make(self.month, self.year) for c in self.carried[new:]]
            self._row(path, held, min(shown, new), i == 0, sums)

    def _row(self, path, held, shown, first, sums):
        line = Line()
        cells, wrapped = [], []
        for k, column in enumerate(self.columns):
            value = held[k] if column.carried else column.make(self.month, self.year)
            if column is self.wrap:
                value = values.product(self.month, self.month.choice((1, 2, 5, 7)))
                wrapped = textwrap.wrap(value, column.width)
                column.put(line, wrapped.pop(0))
            elif column is not self.wide and k >= shown:
                column.put(line, value, first or not self.currency_first)
            cells.append(column.truth(value))
            if column.number:
                for each in sums + [self.page_sums]:
                    each[id(column)] += value or 0
        if self.wide:
            cells[self.columns.index(self.wide)] = self._put_wide(line)
        self.paper.put(line.text, "row")
        cells += self._further()
        for piece in wrapped:
            self.paper.put(Line().put(self.wrap.start, piece).text, "joined")
        self.truth.append(path + cells)

    def _put_wide(self, line):
        """A word that may stick out of its column, up to the blank in front of what stands behind it."""
        word = self.month.choice(values.THING)
        if self.month.random() < 0.5:
            word = "".join(self.month.sample(values.THING, 5))
        behind = line.text[self.wide.start - 1:]
        room = len(behind) - len(behind.lstrip()) - 1
        word = word[:room]
        line.text = line.text[:self.wide.start - 1].ljust(self.wide.start - 1) + word + \
            line.text[self.wide.start - 1 + len(word):]
        return word

    def _further(self):
        cells = []
        made = [(c, c.make(self.month, self.year)) for c in self.further]
        if self.further_at == "distance" and made:
            line = Line()
            for column, value in made:
                column.put(line, value)
            self.paper.put(line.text, "further")
        for column, value in made:
            if self.further_at == "label":
                if self.month.random() < 0.2:
                    cells.append("")
                    continue
                self.paper.put(" " * (self.margin + 6) + f"{column.name.upper()}: {column.printed(value)}", "further")
            cells.append(column.truth(value))
        return cells

    def _total(self, words, sums, kind="total"):
        if self.wrap and not self.rule_totals:
            self.paper.put("")
        for text in self.drawn(self.rule_totals, self.total_columns):
            self.paper.put(text, "drawn")
        line = Line().put(self.indent_totals + 1, words)
        for column in self.total_columns:
            column.put(line, sums[id(column)])
        self.paper.put(line.text, kind)
        self.total_lines += 1
        self.total_values += len(self.total_columns)

    def _page_total(self):
        self._total("PAGE TOTAL", self.page_sums)
        self.page_sums = self._zeros()
