"""Layouts in which a blank, a sign or a letter stands inside of a value or directly behind it."""

import other_layouts as base
from other_layouts import laid, money, person, some, text_of


def changed(text, marks):
    return text.translate(str.maketrans(",.", marks))


def french_balance(rng):
    """A blank parts thousands, a comma decimals."""
    rows = [["Compte", "Libellé", "Débit", "Crédit", "Solde"]]
    for _ in range(rng.randint(12, 30)):
        left, right = rng.randrange(100, 9999999), rng.randrange(100, 999999999)
        rows.append([f"{rng.randint(101000, 799999)}", rng.choice(("Capital social", "Emprunts bancaires", "Fournisseurs", "Caisse"))]
                    + [f"{value / 100:,.2f}" for value in (left, right, left - right)])
    printed = [row[:2] + [changed(cell, " ,") for cell in row[2:]] for row in rows]
    lines = laid(printed, "<<>>>", "   ")
    return text_of("BALANCE GÉNÉRALE au 31/03/2024", "", lines[0], "", lines[1:]), [rows]


def german_balances(rng):
    """S and H beside the figures, some figures lacking, account numbers that begin with a zero."""
    rows, lines = [["Konto", "Bezeichnung", "EB-Wert", "S/H", "Soll", "Haben", "Saldo", "S/H"]], []
    for _ in range(rng.randint(14, 30)):
        opening = (money(rng), rng.choice("SH")) if rng.random() < 0.7 else ("", "")
        rows.append([f"{rng.randint(20, 9000):04d}", rng.choice(("Kasse", "Bank 1", "Löhne und Gehälter", "Abziehbare Vorsteuer 19%", "Miete")),
                     *opening, money(rng), money(rng), money(rng), rng.choice("SH")])
    for row in rows[1:]:
        lines.append("{:<6} {:<28} {:>14} {:1} {:>15} {:>15} {:>14} {}".format(*(changed(cell, ".,") for cell in row)))
    head = "Konto  Bezeichnung                       EB-Wert S/H            Soll           Haben         Saldo S/H"
    return text_of("Summen- und Saldenliste   Zeitraum 01.03.2024 - 31.03.2024", "", head, "-" * 100, lines), [rows]


def price_list(rng):
    """Groups on lines of their own, a currency sign behind the price, article numbers with a point."""
    rows, lines = [["^Group", "Art.-Nr.", "Bezeichnung", "ME", "Preis", "Bestand"]], []
    for group in ("Befestigung", "Elektro", "Rohre und Fittings"):
        lines += ["", group, ""]
        for _ in range(rng.randint(5, 9)):
            stock = rng.choice((rng.randrange(5000), -rng.randrange(1, 50)))
            row = [f"{rng.randint(100, 999)}.{rng.randrange(1000):03d}", f"{some(rng, 2).title()} {rng.randint(2, 80)} mm", rng.choice(("St", "m", "Pkg")), money(rng, 400), str(stock)]
            rows.append([group, *row])
            lines.append("{:<11} {:<32} {:<5} {:>10} € {:>10}{}".format(*row[:3], changed(row[3], ".,"), changed(f"{abs(stock):,}", "."  + ","), "-" if stock < 0 else ""))
    head = "Art.-Nr.    Bezeichnung                      ME       Preis EUR    Bestand"
    return text_of("PREISLISTE gültig ab 01.04.2024", "", head, "-" * 74, lines, "", "Alle Preise zzgl. gesetzl. MwSt."), [rows]


def open_orders(rng):
    """Names over two lines; TERMS stands over a word and a number."""
    rows, lines = [["ORDER NO", "ORDER DATE", "CUSTOMER NAME", "TERMS", "QTY ORD", "UNIT PRICE", "ORDER AMOUNT"]], []
    for _ in range(rng.randint(15, 30)):
        row = [f"{rng.randrange(100, 99999):05d}", base.day(rng), some(rng, 2).upper(), f"NET {rng.choice((30, 60, 90))}", str(rng.randint(1, 400)), money(rng, 90), money(rng)]
        lines.append("{:<7} {:<9} {:<21} {} {:>10} {:>9} {:>11}".format(row[0], row[1].strftime("%d-%b-%y").upper(), *row[2:]))
        rows.append([row[0], row[1].isoformat(), *row[2:]])
    head = ["ORDER   ORDER     CUSTOMER              TERMS         QTY      UNIT       ORDER",
            "NO      DATE      NAME                               ORD     PRICE      AMOUNT"]
    return text_of("OPEN ORDERS BY DATE", "", head, lines), [rows]


def checks_paid(rng):
    """Three checks on a line, a star beside those that come out of turn, the last column shorter."""
    rows = [["NUMBER", "DATE", "AMOUNT"]] + [[f"{1040 + i}{rng.choice(('', '', '', '*'))}", f"03/{1 + i % 28:02d}", money(rng)] for i in range(40)]
    rows[-1][0] = "1079*"
    lines = ["  ".join("{:<6}    {}  {:>12} ".format(*row) for row in rows[1 + i::14]) for i in range(14)]
    head = "     ".join(["NUMBER    DATE      AMOUNT"] * 3)
    return text_of("CHECKS PAID", "", head, lines), [rows]


def sessions(rng):
    """Names one blank apart, times with their unit, names in capitals over texts with digits."""
    rows = [["USER", "TTY", "FROM", "LOGIN@", "IDLE", "JCPU", "PCPU", "WHAT"]]
    for i in range(rng.randint(8, 20)):
        rows.append([person(rng).split()[0].lower(), f"pts/{i}", f"10.0.0.{rng.randrange(255)}", rng.choice(("08:12", "Mon01", "12Mar24")), rng.choice(("1:02", "3.00s", "10days")),
                     f"0.{rng.randrange(100):02d}s", f"0.{rng.randrange(100):02d}s", rng.choice(("-bash", "w", "vim a.txt"))])
    lines = ["{:<8} {:<8} {:<16} {:<8} {:<6} {:<6} {:<5} {}".format(*row).rstrip() for row in rows]
    return text_of(lines), [rows]


def units(rng):
    """Texts alone under names in capitals, a mark in front of some rows, a legend behind them."""
    rows = [["", "UNIT", "LOAD", "ACTIVE", "SUB", "DESCRIPTION"]]
    for _ in range(rng.randint(20, 40)):
        is_bad = rng.random() < 0.15
        state = ["not-found", "inactive", "dead"] if is_bad else ["loaded", "active", rng.choice(("running", "exited"))]
        rows.append(["●" if is_bad else "", f"{some(rng, 2, parting='-')}.service", *state, f"{some(rng, 1).title()} {some(rng, 1)} daemon"])
    lines = ["{:1} {:<34} {:<9} {:<8} {:<9} {}".format(*row).rstrip() for row in rows]
    legend = ["LOAD   = Reflects whether the unit definition was properly loaded.", "ACTIVE = The high-level activation state.", f"{len(rows) - 1} loaded units listed."]
    return text_of(lines, "", legend), [rows]


def budget(rng):
    """Groups on lines of their own, totals of groups whose words are many, percents in parentheses."""
    rows, lines = [["^Group", "ACCOUNT", "DESCRIPTION", "BUDGET", "ACTUAL", "VARIANCE", "PCT"]], []
    for group in ("REVENUES", "EXPENDITURES", "OTHER FINANCING SOURCES"):
        lines.append(group)
        sums = [0, 0, 0]
        for _ in range(rng.randint(4, 8)):
            wanted, actual = rng.randint(1000, 900000), rng.randint(0, 900000)
            share = 100 * (wanted - actual) / wanted
            values = [wanted, actual, wanted - actual]
            sums = [a + b for a, b in zip(sums, values)]
            row = [f"{rng.randint(100, 300)}-{rng.randint(4000, 5999)}-{rng.randint(0, 99):02d}", some(rng, 2).title()]
            lines.append("{:<13} {:<24} {:>11} {:>13} {:>13} {:>8}".format(*row, *map(signed, values), f"({-share:.1f}%)" if share < 0 else f"{share:.1f}% "))
            rows.append([group, *row, *map(str, values), f"{share:.1f}"])
        lines += [" " * 39 + "{0:>11} {0:>13} {0:>13}".format("---------- "), f"TOTAL {group:<33}{signed(sums[0]):>11} {signed(sums[1]):>13} {signed(sums[2]):>13}", ""]
    head = "ACCOUNT       DESCRIPTION                   BUDGET        ACTUAL      VARIANCE     PCT"
    return text_of("                 BUDGET VS ACTUAL - GENERAL FUND", "", head, "", lines), [rows]


def signed(value):
    return f"({-value:,})" if value < 0 else f"{value:,} "


def processor_load(rng):
    """Times under no name, names with a time that come again, averages that are no rows."""
    rows, lines = [["", "CPU", "%user", "%nice", "%system", "%idle"]], []
    minute = 0
    for _ in range(4):
        lines.append(f"{minute // 60:02d}:{minute % 60:02d}:01        CPU     %user     %nice   %system     %idle")
        for _ in range(rng.randint(6, 12)):
            minute += 10
            rows.append([f"{minute // 60:02d}:{minute % 60:02d}:01", "all", *(f"{rng.random() * 90:.2f}" for _ in range(4))])
            lines.append("{}        {} {:>9} {:>9} {:>9} {:>9}".format(*rows[-1]))
        lines += ["Average:        all " + " ".join(f"{rng.random() * 90:>9.2f}" for _ in range(4)), ""]
    return text_of("Kernel 5.10.0 (web01)   03/14/2024", "", lines), [rows]


LAYOUTS = {function.__name__: function for function in
           (french_balance, german_balances, price_list, open_orders, checks_paid, sessions, units, budget,
            processor_load)}
