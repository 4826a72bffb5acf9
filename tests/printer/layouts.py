"""The kinds of reports. Each kind is made from a seed and prints any number of months with the truth of each."""

import textwrap

import values
from columns import choose, letter, place, places, types
from listing import Listing
from paper import Line, Paper

COMPANIES = ("NORTHWIND FOUNDRY", "Harbour Supplies Ltd", "CITY OF EASTVALE", "Mill & Sons")
TITLES = ("MONTHLY REGISTER", "Stock List", "OPEN ITEMS", "Payments by Unit", "TRIAL BALANCE", "Deliveries")


def named(columns):
    """The keys of a recipe that name columns and tell their types."""
    return f"Names={'|'.join(c.name for c in columns)}\nTypes={types(columns)}"


class Sheet:
    """What a table should become: its name (empty for the first), the names of its columns and its rows."""

    def __init__(self, name, names, rows):
        self.name, self.names, self.rows = name, names, rows


class Kind:
    """A layout; `month` gives text, kinds of lines and sheets, `recipe` what reads them."""

    wish = {}

    def __init__(self, rng):
        self.rng = rng
        self.company, self.title = rng.choice(COMPANIES), rng.choice(TITLES)
        self.end = rng.choice(("\n", "\n", "\r\n"))
        self.set_up()

    def year(self, month):
        return 2020 + month // 12

    def paper(self, rng, month):
        return Paper()

    def print(self, rng, month):
        paper = self.paper(rng, month)
        sheets = self.fill(paper, rng, month)
        paper.close()
        return paper, sheets


class Lists(Kind):
    """One listing under a title, over pages or not: most of what is printed."""

    def set_up(self):
        rng = self.rng
        wish = {key: rng.choice(value) if isinstance(value, tuple) else value for key, value in self.wish.items()}
        self.pages = wish.get("pages", 0)
        self.listing = Listing(rng, 1, wish)
        self.dated = rng.random() < 0.4
        self.date_form = rng.choice(sorted(values.DATES))
        self.foot_line = rng.choice(("", "", "* * * CONFIDENTIAL * * *", "Form 12-B"))
        self.feed = rng.choice(("char", "line", "blanks"))
        self.length = rng.randint(30, 60)
        self.marks = rng.random() < 0.3
        self.closing = rng.choice(("", "END OF REPORT", "*** END OF LIST ***"))

    def head(self, as_of):
        heads = self.listing.heads()

        def lines(page):
            date = f"AS OF: {as_of}" if self.dated else ""
            return [f"{self.company:<40}  {date:<20}  PAGE {page:>4}", f"{'':10}{self.title}", "", *heads, ""]

        return lines

    def paper(self, rng, month):
        self.as_of = values.day(rng, self.year(month))
        return Paper(self.length if self.pages else 0, self.head(values.printed_day(self.as_of, self.date_form)),
                     (lambda page: [self.foot_line]) if self.pages and self.foot_line else None, self.feed)

    def fill(self, paper, rng, month):
        rows = self.listing.print(paper, rng, self.year(month))
        if self.closing:
            paper.put("")
            paper.put(self.closing)
        names = self.listing.names()
        if self.dated:
            names = ["^As Of"] + names
            rows = [[self.as_of.isoformat()] + row for row in rows]
        return [Sheet("", names, rows)]

    def recipe(self):
        extra = []
        if self.marks:
            extra.append(f"ReadStartLine={self.title}")
            if self.closing and "*" not in self.closing:
                extra.append(f"ReadEndLine={self.closing}")
        sections = self.listing.recipe(extra, 2 if self.dated else 1)
        if self.dated:
            sections.insert(1, f"[Heading 1.1]\nText=AS OF:\nNames=As Of\nTypes=date {self.date_form}")
        return sections


class Plain(Lists):
    """Columns under headings, with a total or without."""

    wish = {"texts": (1, 2, 3)}


class Groups(Lists):
    """Groups with headings and totals, one level or two."""

    wish = {"groups": (1, 1, 2), "totals": True}


class Pages(Lists):
    """Heads and feet on each page, groups that go on, totals of pages."""

    wish = {"pages": 1, "groups": (0, 1, 2)}


class Repeats(Lists):
    """What is the same as in the row above is not printed again."""

    wish = {"repeats": (1, 2), "texts": 1, "groups": (0, 1), "pages": (0, 1)}


class Wrapped(Lists):
    """A text goes on below its column."""

    wish = {"wrap": True, "groups": (0, 1), "pages": (0, 1)}


class Records(Lists):
    """Records of several lines."""

    wish = {"further": (1, 2, 3), "texts": 1, "groups": (0, 0, 1), "pages": (0, 1)}


class Negatives(Lists):
    """Minus behind, parentheses, CR and DR, currency signs and marks for what is missing."""

    wish = {"negative": values.NumberStyle.FORMS[1:], "missing": 0.6, "groups": (0, 1)}


class Wide(Lists):
    """Texts that stick out of their column."""

    wish = {"wide": True, "negative": "front", "groups": (0, 1)}


class Bare(Kind):
    """Fields of fixed width without a heading; some touch each other, numbers have leading zeros and no point."""

    def set_up(self):
        rng = self.rng
        style = values.NumberStyle(rng, plain=True)
        style.thousands = False
        kinds = ["code"] + rng.sample(("person", "place", "tag", "date"), rng.randint(1, 3)) + ["amount"] * rng.randint(1, 3)
        self.columns = choose(rng, style, kinds)
        for column in self.columns:
            if column.number:
                column.decimals = 2
                column.digits = rng.randint(3, 6)
                column.width = column.digits + 2
            if column.kind == "date":
                column.form = "YYYYMMDD"
                column.width = 8
        place(self.columns, 1, lambda: rng.choice((0, 0, 1, 2)))

    def fill(self, paper, rng, month):
        rows = []
        for _ in range(rng.randint(3, 60)):
            line, cells = Line(), []
            for column in self.columns:
                value = column.make(rng, self.year(month))
                if column.number:
                    value = abs(value)
                    line.put(column.start, f"{int(value * 100):0{column.width}d}")
                else:
                    column.put(line, value)
                cells.append(column.truth(value))
            paper.put(line.text, "row")
            rows.append(cells)
        return [Sheet("", [c.name for c in self.columns], rows)]

    def recipe(self):
        kinds = ", ".join(f"{letter(i)} {'number /100' if c.number else c.type()}" for i, c in enumerate(self.columns))
        return [f"[Table 1]\nPlaces={places(self.columns)}\nNames={'|'.join(c.name for c in self.columns)}\nTypes={kinds}"]


class Touching(Kind):
    """A printed list whose columns leave no blank between them where values are long."""

    def set_up(self):
        rng = self.rng
        style = values.NumberStyle(rng, "front")
        style.currency = ""
        self.columns = choose(rng, style, ["code", rng.choice(("place", "product")), "amount", "amount", "count"])
        for column in self.columns:
            if column.number:
                column.width = max(style.widest(column.digits, column.decimals), len(column.name))
                column.currency = False
            elif column.kind == "product":
                column.width = 20
        place(self.columns, rng.choice((1, 4)), lambda: 0)

    def fill(self, paper, rng, month):
        paper.put(f"     {self.title} {self.year(month)}")
        paper.put("")
        rows = []
        for _ in range(rng.randint(3, 60)):
            line, cells = Line(), []
            for column in self.columns:
                value = column.make(rng, self.year(month))
                if column.kind == "product":
                    value = value[:column.width].rstrip()
                column.put(line, value)
                cells.append(column.truth(value))
            paper.put(line.text, "row")
            rows.append(cells)
        return [Sheet("", [c.name for c in self.columns], rows)]

    def recipe(self):
        return [f"[Table 1]\nNeeds=A digits, C number\nPlaces={places(self.columns)}\n" + named(self.columns)]


class Side(Kind):
    """The sum of a group stands beside its last row, in a column of its own."""

    def set_up(self):
        rng = self.rng
        self.style = values.NumberStyle(rng, "front")
        self.columns = choose(rng, self.style, ["person", "code", "amount", "amount"])
        self.columns[0].carried = True
        self.columns[3].name = "Subtotal"
        self.columns[3].width = max(self.columns[3].width, self.columns[2].width + 2)
        place(self.columns, rng.choice((1, 3)), lambda: rng.choice((2, 3, 4)))

    def fill(self, paper, rng, month):
        name, code, amount, sub = self.columns
        sub.decimals = amount.decimals
        rows = []
        line = Line()
        for column in self.columns:
            line.put(column.start, column.name) if not column.number else line.right(column.end, column.name)
        paper.put(line.text)
        for _ in range(rng.randint(2, 9)):
            who, total = name.make(rng, 0), 0
            count = rng.randint(1, 6)
            for i in range(count):
                value = amount.make(rng, 0)
                total += value
                cells = [who, code.make(rng, 0), value, total if i == count - 1 else None]
                line = Line()
                for column, cell in zip(self.columns, cells):
                    if cell is not None and not (column is name and i):
                        column.put(line, cell)
                paper.put(line.text, "row")
                rows.append([column.truth(cell) for column, cell in zip(self.columns, cells)])
        return [Sheet("", ["^" + name.name, code.name, amount.name, sub.name], rows)]

    def recipe(self):
        return [f"[Table 1]\nNeeds=B digits, C number\nFill=A\nPlaces={places(self.columns)}\n" + named(self.columns)]


class Several(Kind):
    """Two or three tables below each other, each with a title, to sheets of their own."""

    def set_up(self):
        rng = self.rng
        self.titles = [f"SECTION {i} - {title.upper()}" for i, title in enumerate(rng.sample(TITLES, rng.randint(2, 3)), 1)]
        self.listings = [Listing(rng, i, {"totals": rng.random() < 0.5, "texts": 1}) for i, _ in enumerate(self.titles, 1)]
        self.until = [not listing.totals and rng.random() < 0.5 for listing in self.listings]

    def fill(self, paper, rng, month):
        paper.put(self.company)
        sheets = []
        for title, listing in zip(self.titles, self.listings):
            paper.put("")
            paper.put(title)
            for text in listing.heads():
                paper.put(text)
            rows = listing.print(paper, rng, self.year(month), rng.randint(2, 15))
            name = f"Part {listing.number}" if listing.number > 1 else ""
            sheets.append(Sheet(name, listing.names(), rows))
        paper.put("")
        paper.put("END OF ALL SECTIONS")
        return sheets

    def recipe(self):
        sections = []
        for i, (title, listing) in enumerate(zip(self.titles, self.listings)):
            following = self.titles[i + 1] if i + 1 < len(self.titles) else "END OF ALL SECTIONS"
            extra = [f"ReadStartLine={title}"]
            extra += ["ReadStartLineOffset=1", "Until=blank"] if self.until[i] else [f"ReadEndLine={following}"]
            if i:
                extra.append(f"Sheet=Part {listing.number}")
            sections += listing.recipe(extra)
        return sections


class Forms(Kind):
    """A record is a form: labels with values behind them, on lines of their own."""

    def set_up(self):
        rng = self.rng
        style = values.NumberStyle(rng, "front")
        style.missing = ""
        kinds = ["code", "person", "place", "date", "amount", "state"][:rng.randint(4, 6)]
        self.columns = choose(rng, style, kinds)
        self.break_line = rng.choice(("-" * 60, "", "=" * 48))
        self.lines = [self.columns[:2]] + [self.columns[i:i + 2] for i in range(2, len(self.columns), 2)]
        for line in self.lines:
            start = 1
            for column in line:
                column.label = column.name.upper() + ":"
                column.label_at = start
                column.start = start + len(column.label) + rng.randint(1, 4)
                start = column.end + rng.randint(3, 8)

    def fill(self, paper, rng, month):
        paper.put(self.title.upper())
        paper.put("")
        rows = []
        for _ in range(rng.randint(2, 30)):
            record = []
            for i, columns in enumerate(self.lines):
                line = Line()
                for column in columns:
                    value = column.make(rng, self.year(month))
                    line.put(column.label_at, column.label)
                    column.put(line, value)
                    record.append(column.truth(value))
                paper.put(line.text, "further" if i else "row")
            paper.put(self.break_line)
            rows.append(record)
        return [Sheet("", [c.name for c in self.columns], rows)]

    def recipe(self):
        like = "".join("\\" + c if c in "AX9_.\\" else c for c in self.columns[0].label)
        sections = []
        for i, columns in enumerate(self.lines, 1):
            section = f"[Table 1]\nLike={like}" if i == 1 else f"[Line 1.{i}]"
            sections.append(f"{section}\nPlaces={places(columns, True)}\n" + named(columns))
        return sections


class Indented(Kind):
    """A statement: what a line belongs to is told by how far it is indented."""

    def set_up(self):
        rng = self.rng
        style = values.NumberStyle(rng)
        style.missing = ""
        self.columns = choose(rng, style, ["product"] + ["amount"] * rng.randint(1, 3))
        self.columns[0].name = "Item"
        self.columns[0].width = 44
        self.step = rng.randint(2, 4)
        self.depth = rng.randint(1, 2)
        self.total = rng.choice(("Total", "TOTAL"))
        place(self.columns, 1, lambda: rng.randint(2, 4))

    def fill(self, paper, rng, month):
        paper.put(" " * 20 + self.title)
        paper.put(" " * 20 + self.company)
        paper.put("-" * 60)
        rows = []
        for section in rng.sample(values.UNIT, rng.randint(2, 4)):
            paper.put(section, "level")
            if self.depth == 1:
                self._items(paper, rng, 1, [section], rows)
            else:
                for place_name in rng.sample(values.PLACE, rng.randint(1, 3)):
                    paper.put(" " * self.step + place_name, "level")
                    self._items(paper, rng, 2, [section, place_name], rows)
            paper.put("")
        return [Sheet("", ["^Section", "^Group"][:self.depth] + [c.name for c in self.columns], rows)]

    def _items(self, paper, rng, depth, path, rows):
        sums = {column: 0 for column in self.columns[1:]}
        for _ in range(rng.randint(2, 6)):
            item = values.product(rng)
            line = Line().put(1 + depth * self.step, item)
            cells = [item]
            for column in self.columns[1:]:
                value = column.make(rng, 0)
                sums[column] += value
                column.put(line, value)
                cells.append(column.truth(value))
            paper.put(line.text, "row")
            rows.append(path + cells)
        line = Line().put(1 + depth * self.step, f"{self.total} {path[-1]}")
        for column in self.columns[1:]:
            column.put(line, sums[column])
        paper.put(line.text, "total")

    def recipe(self):
        return [f"[Table 1]\nNeeds=A any, B number\nDrop={self.total}\nLevels=A {'|'.join(['Section', 'Group'][:self.depth])}\n"
                f"Places={places(self.columns)}\n" + named(self.columns)]


class Separated(Kind):
    """Pieces parted by a text or by blanks."""

    def set_up(self):
        rng = self.rng
        style = values.NumberStyle(rng, plain=True)
        self.mark, self.split = rng.choice(((",", ","), (" | ", "\\x7C"), (";", "\\x3B"), (" ", "blanks"), ("    ", "gaps")))
        style.thousands = style.thousands and self.mark != ","
        kinds = ["code", "tag", "place", "date", "amount", "count"]
        kinds = ["code"] + rng.sample(kinds[1:4], rng.randint(1, 3)) + rng.choice((["amount"], ["amount", "count"]))
        if self.split == "gaps":
            kinds.insert(1, "person")
        self.columns = choose(rng, style, kinds)

    def fill(self, paper, rng, month):
        if self.split not in ("blanks", "gaps"):
            paper.put(self.mark.join(c.name for c in self.columns))
        rows = []
        for _ in range(rng.randint(3, 60)):
            made = [column.make(rng, self.year(month)) for column in self.columns]
            paper.put(self.mark.join(c.printed(v).strip() for c, v in zip(self.columns, made)), "row")
            rows.append([c.truth(v) for c, v in zip(self.columns, made)])
        return [Sheet("", [c.name for c in self.columns], rows)]

    def recipe(self):
        return [f"[Table 1]\nNeeds=A digits\nSplit={self.split}\n" + named(self.columns)]


class Panels(Kind):
    """Newspaper columns: two or three records stand side by side on a line."""

    def set_up(self):
        rng = self.rng
        style = values.NumberStyle(rng, "front")
        style.missing, style.currency = "", ""
        self.columns = choose(rng, style, ["code", rng.choice(("place", "person")), "amount"])
        self.across = rng.randint(2, 3)
        place(self.columns, 1, lambda: rng.randint(1, 3))
        self.step = self.columns[-1].end + rng.randint(3, 8)

    def fill(self, paper, rng, month):
        paper.put(self.title)
        paper.put("")
        rows = []
        left = rng.randint(3, 60)
        while left:
            line = Line()
            for panel in range(min(left, self.across)):
                cells = []
                for column in self.columns:
                    value = column.make(rng, 0)
                    start, column.start = column.start, column.start + panel * self.step
                    column.put(line, value)
                    column.start = start
                    cells.append(column.truth(value))
                rows.append(cells)
            left -= min(left, self.across)
            paper.put(line.text, "row")
        return [Sheet("", [c.name for c in self.columns], rows)]

    def recipe(self):
        panels = []
        for panel in range(self.across):
            panels.append(" ".join(f"{c.start + panel * self.step}-{c.end + panel * self.step}" for c in self.columns))
        return [f"[Table 1]\nNeeds=A digits, C number\nPlaces={' | '.join(panels)}\n" + named(self.columns)]


KINDS = {kind.__name__.lower(): kind for kind in (
    Plain, Groups, Pages, Repeats, Wrapped, Records, Negatives, Wide, Bare, Touching, Side, Several, Forms, Indented,
    Separated, Panels)}
