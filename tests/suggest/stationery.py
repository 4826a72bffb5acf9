"""What business reports are written with: pages, amounts, names; and the truth of each table."""

import random
from datetime import date, timedelta

FIRST = "ANNA BRUNO CLARA DAVID ELENA FELIX GRACE HENRY IRENE JONAS KAREN LOUIS MARIA NORMA OSCAR PETER RUTH SIMON".split()
LAST = ("ABBOTT BECKER CASTRO DUNCAN ELLIS FISCHER GARCIA HANSEN IRVING JENSEN KELLER LARSEN MORENO NEWMAN OLSEN PARKER "
        "QUINN RAMOS SCHULZ TURNER UNGER VARGAS WALSH YOUNG ZIEGLER").split()
FIRMS = ("ACME SUPPLY CO", "BAYSIDE MARINE INC", "CORNER HARDWARE", "DELTA PRINTING", "EASTGATE MEDICAL GROUP", "FOX & SONS",
         "GRANITE WORKS LLC", "HILLTOP DAIRY", "IDEAL TOOL AND DIE", "JUNCTION CAFE", "KEYSTONE PAPER CORP", "LAKE TRANSPORT")
GOODS = ("BRACKET STEEL 4IN", "CABLE TIE BLACK 100", "DRILL BIT 6MM", "ENVELOPE WHITE A4", "FILTER OIL", "GLOVES NITRILE M",
         "HOSE CLAMP 25MM", "INK CARTRIDGE", "JOINT COMPOUND 5KG", "KEY BLANK", "LAMP LED 9W", "MASKING TAPE 2IN")
PLACES = ("BOSTON", "DAYTON", "EL PASO", "FRESNO", "MOBILE", "NEWARK", "SALEM", "TULSA")


class Rng(random.Random):
    def person(self):
        return f"{self.choice(LAST)}, {self.choice(FIRST)}" + self.choice(("", "", f" {self.choice('ABCDEFGHJKLM')}"))

    def firm(self):
        return self.choice(FIRMS)

    def cents(self, most=5000.0, least=1.0):
        return round(self.uniform(least, most), 2)

    def day(self, month):
        return date(2024, month, self.randint(1, 28))


def us(value, form="front"):
    """1,234.50, its sign in front, behind, in parentheses or as CR; places behind the digits stay free."""
    text = f"{abs(value):,.2f}"
    if form == "front":
        return ("-" if value < 0 else "") + text
    if form == "()":
        return f"({text})" if value < 0 else text + " "
    return text + ("-" if form == "behind" else "CR") if value < 0 else text + " " * (1 if form == "behind" else 2)


def german(value):
    return f"{value:,.2f}".translate(str.maketrans(",.", ".,"))


def plain(value):
    return "" if value is None else f"{value:.2f}"


def month_end(month):
    return date(2024 + month // 12, month % 12 + 1, 1) - timedelta(1)


class Table:
    """The truth of one kind of table."""

    def __init__(self, names):
        self.names = names.split("|")
        self.rows = []

    def add(self, *cells):
        assert len(cells) == len(self.names), (cells, self.names)
        self.rows.append([cell if isinstance(cell, str) else plain(cell) if isinstance(cell, float) else
                          "" if cell is None else str(cell) for cell in cells])


class Report:
    """Lines on pages. The head is called with the page's number; the rows go where it ends."""

    def __init__(self, head=None, length=10**9, foot=None, feed=True):
        self.lines, self.head, self.length, self.foot, self.feed = [], head, length, foot, feed
        self.page, self.left = 0, 0
        self.again = None  # called on top of a further page: what is repeated there

    def put(self, text="", keep=1):
        """A line; goes to a new page if less than `keep` lines are left."""
        if self.left < keep:
            self._turn()
        self.lines.append(text.rstrip())
        self.left -= 1

    def _turn(self):
        if self.page and self.foot:
            self.lines += self.foot(self.page)
        self.page += 1
        self.left = self.length
        top = self.head(self.page) if self.head else []
        if top and self.page > 1 and self.feed:
            top = ["\f" + top[0], *top[1:]]
        self.lines += [text.rstrip() for text in top]
        self.left -= len(top)
        if self.page > 1 and self.again:
            for text in self.again():
                self.put(text)

    def text(self, end="\n"):
        return end.join(self.lines) + end
