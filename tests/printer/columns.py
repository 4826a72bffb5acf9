"""Columns of a printed table: what they hold, how it is printed and where."""

from decimal import Decimal

import values

LABELS = {
    "code": ("No", "Code", "Item", "Acct", "Id", "Emp", "Ref"),
    "tag": ("Part", "Order", "Batch", "Lot"),
    "person": ("Name", "Employee", "Customer", "Contact"),
    "product": ("Description", "Article", "Product", "Material"),
    "place": ("City", "Plant", "Site", "Depot"),
    "state": ("Status", "State", "Flag"),
    "date": ("Date", "Due", "Posted", "Shipped"),
    "amount": ("Gross", "Tax", "Net", "Amount", "Debit", "Credit", "Value", "Balance", "Fees"),
    "count": ("Qty", "Pieces", "Hours", "Units", "Cases"),
}
TEXTS = ("person", "product", "place", "state")
NUMBERS = ("amount", "count")


class Column:
    def __init__(self, rng, kind, style, taken=(), decimals=None, digits=None):
        self.kind = kind
        free = [label for label in LABELS[kind] if label not in taken]
        self.name = rng.choice(free)
        self.style = style
        self.missing = 0.0
        self.wide = False
        self.start = 0
        self.carried = False
        if kind == "code":
            self.digits = rng.randint(3, 8)
            self.width = self.digits
        elif kind == "tag":
            self.width = 7
        elif kind == "date":
            self.form = rng.choice(sorted(values.DATES))
            self.width = len(values.printed_day(values.day(rng, 2024), self.form))
        elif kind in NUMBERS:
            self.decimals = decimals if decimals is not None else 0 if kind == "count" else rng.choice((2, 2, 2, 3))
            self.digits = digits or (rng.randint(1, 3) if kind == "count" else rng.randint(2, 5))
            self.currency = kind == "amount" and style.currency != ""
            # The sums have more digits than the rows.
            self.width = style.widest(self.digits + 2, self.decimals)
        else:
            self.width = {"person": 17, "product": 24, "place": 8, "state": 5}[kind]
        if kind not in NUMBERS:
            self.width = max(self.width, len(self.name))
        else:
            self.width = max(self.width, len(self.name) + style.slot())

    @property
    def number(self):
        return self.kind in NUMBERS

    @property
    def end(self):
        return self.start + self.width - 1

    def make(self, rng, year):
        if self.missing and rng.random() < self.missing:
            return None
        if self.kind == "code":
            return f"{rng.randrange(10 ** self.digits):0{self.digits}d}"
        if self.kind == "tag":
            return f"{rng.choice('ABCDEFGH')}{rng.choice('KLMN')}-{rng.randrange(10000):04d}"
        if self.kind == "person":
            return values.person(rng)
        if self.kind == "product":
            return values.product(rng)
        if self.kind == "place":
            return rng.choice(values.PLACE)
        if self.kind == "state":
            return rng.choice(values.STATE)
        if self.kind == "date":
            return values.day(rng, year)
        value = Decimal(rng.randint(1, 10 ** (self.digits + self.decimals) - 1)).scaleb(-self.decimals)
        return -value if self.kind == "amount" and rng.random() < 0.15 else value

    def printed(self, value, currency=True):
        if value is None:
            return self.style.missing + " " * self.style.slot() if self.number else ""
        if self.number:
            return self.style.printed(value, currency and self.currency)
        return values.printed_day(value, self.form) if self.kind == "date" else value

    def truth(self, value):
        if value is None:
            return ""
        return values.plain(value) if self.number else value.isoformat() if self.kind == "date" else value

    def put(self, line, value, currency=True):
        text = self.printed(value, currency)
        if self.number:
            line.right(self.end, text)
        else:
            line.put(self.start, text)

    def type(self):
        """Its entry of Types=, without the letter."""
        if self.number:
            return self.style.kind()
        return f"date {self.form}" if self.kind == "date" else "text"


def choose(rng, style, kinds):
    """Columns of these kinds with names that differ."""
    columns = []
    for kind in kinds:
        columns.append(Column(rng, kind, style, {column.name for column in columns}))
    return columns


def place(columns, start, gaps):
    """Sets the columns side by side, each gap called for."""
    for column in columns:
        column.start = start
        start = column.end + 1 + gaps()
    return columns


def letter(index):
    return chr(ord("A") + index)


def types(columns, first=0):
    return ", ".join(f"{letter(first + i)} {column.type()}" for i, column in enumerate(columns))


def places(columns, open_end=False):
    parts = [f"{column.start}-{column.end}" for column in columns]
    if open_end:
        parts[-1] = f"{columns[-1].start}-"
    return " ".join(parts)
