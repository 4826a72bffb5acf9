"""Values as business reports print them, each with what it means."""

import datetime
from decimal import Decimal

FIRST = "Ann Bernd Carla Dan Eve Frank Greta Hugo Ines Jan Klara Leo Mara Nils Olga Paul Quinn Rosa Sven Tina Uwe Vera".split()
LAST = ("Adler Baker Costa Dietz Evans Fox Gruber Hill Iwata Jones Kovac Lund Meyer Novak Ortega Palmer Quist Rossi "
        "Smith Turner Ueda Vogel Weber Young Zander").split()
THING = ("Bolt Cable Drill Engine Filter Gasket Hinge Insulator Joint Key Lamp Motor Nozzle Oring Pump Relay Sensor "
         "Timer Union Valve Washer").split()
TRAIT = "steel brass small large rubber zinc copper blue heavy light round square left right hollow spare".split()
PLACE = "Aachen Boston Cadiz Dover Essen Fulda Genoa Hull Izmir Jena Kiel Leeds Milan Nantes Oslo Porto Riga Split".split()
UNIT = "Sales Freight Assembly Finance Stores Repairs Paint Transport Security Kitchen Garden Research".split()
STATE = "OPEN PAID HELD SENT DUE LATE".split()

MONTHS = "JAN FEB MAR APR MAY JUN JUL AUG SEP OCT NOV DEC".split()
DATES = {"MM/DD/YY": "%m/%d/%y", "DD.MM.YY": "%d.%m.%y", "DD.MM.YYYY": "%d.%m.%Y", "YYYY-MM-DD": "%Y-%m-%d",
         "YYYYMMDD": "%Y%m%d", "MM/DD/YYYY": "%m/%d/%Y", "DD-MMM-YY": None}


def person(rng):
    return f"{rng.choice(LAST)}, {rng.choice(FIRST)}" if rng.random() < 0.5 else f"{rng.choice(FIRST)} {rng.choice(LAST)}"


def product(rng, words=0):
    words = words or rng.randint(1, 3)
    traits = rng.sample(TRAIT, words - 1)
    return " ".join([rng.choice(THING)] + traits)


def day(rng, year):
    return datetime.date(year, 1, 1) + datetime.timedelta(rng.randrange(365))


def printed_day(value, form):
    if form == "DD-MMM-YY":
        return f"{value.day:02d}-{MONTHS[value.month - 1]}-{value.year % 100:02d}"
    return value.strftime(DATES[form])


class NumberStyle:
    """How the numbers of one report are printed. The negative forms: in front, behind, parentheses, CR."""

    FORMS = ("front", "behind", "parentheses", "CR", "CRDR")

    def __init__(self, rng, form=None, plain=False):
        self.comma = not plain and rng.random() < 0.15
        self.thousands = rng.random() < 0.7
        self.form = form or ("front" if plain else rng.choice(self.FORMS))
        self.currency = "" if plain or self.comma else rng.choice(("", "", "", "$"))
        self.missing = rng.choice(("", "", "---", "N/A", "*"))

    def kind(self):
        return "number comma" if self.comma else "number"

    def slot(self):
        """Characters that stand behind the last digit of any number of a column."""
        return {"front": 0, "behind": 1, "parentheses": 1}.get(self.form, 2)

    def digits(self, value):
        text = f"{abs(value):,f}" if self.thousands else f"{abs(value):f}"
        return text.translate(str.maketrans(",.", ".,")) if self.comma else text

    def printed(self, value, currency=False):
        """The text, padded behind so that the last digits of a column stand below each other."""
        text = (self.currency if currency else "") + self.digits(value)
        minus = value < 0
        if self.form == "front":
            return "-" + text if minus else text
        if self.form == "behind":
            return text + ("-" if minus else " ")
        if self.form == "parentheses":
            return f"({text})" if minus else text + " "
        return text + ("CR" if minus else "DR" if self.form == "CRDR" else "  ")

    def widest(self, digits, decimals):
        value = Decimal(10) ** digits - 1
        return len(self.printed(-value.quantize(Decimal(1).scaleb(-decimals)), True))


def plain(value):
    """A number as a tidy table writes it."""
    text = f"{value:f}"
    return text.lstrip("-") if value == 0 else text
