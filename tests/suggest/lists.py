"""Reports that are one list, or some: statements, registers, schedules."""

from datetime import date, timedelta

from stationery import GOODS, Report, Table, german, month_end, us


def bank(rng, month):
    """Bank statement: texts go on below, credits say CR, balances are carried over pages."""
    table = Table("Date|Description|Withdrawals|Deposits|Balance")
    balance = [rng.cents(9000, 3000)]
    head = lambda page: [f"FIRST HARBOR BANK{'STATEMENT OF ACCOUNT':>50}", f"Account Number: 00-4471-{month:04d}{'Page ' + str(page):>42}", "",
                         "Date        Description                       Withdrawals      Deposits        Balance",
                         f"{'':12}{'Balance brought forward':<34}{us(balance[0], 'CR'):>42}"]
    report = Report(head, 34, lambda page: [f"{'':12}{'Balance carried forward':<34}{us(balance[0], 'CR'):>42}", ""])
    day = date(2024, month, 1)
    for _ in range(rng.randint(30, 60)):
        day += timedelta(rng.choice((0, 0, 1)))
        text = rng.choice(("CARD PAYMENT " + rng.firm(), "DIRECT DEBIT " + rng.firm(), "TRANSFER " + rng.person(), "ATM WITHDRAWAL"))
        more = rng.choice(("", "", f"REF {rng.randint(10**7, 10**8)}", f"MANDATE {rng.randint(100, 999)} MONTHLY"))
        value = rng.cents(900)
        out, into = (value, None) if rng.random() < 0.6 else (None, value)
        balance[0] += (into or 0) - (out or 0)
        report.put(f"{day:%m/%d/%Y}  {text:<32.32}{us(out) if out else '':>13}{us(into) if into else '':>14}{us(balance[0], 'CR'):>17}", 2)
        if more:
            report.put(f"{'':12}{more}")
        table.add(day.isoformat(), text[:32].strip() + (" " + more if more else ""), out, into, balance[0])
    return report, [table]


def invoices(rng, month):
    """Invoice register: a plain list over pages, page totals and a total."""
    table = Table("Invoice|Date|Cust|Customer Name|Terms|Taxable|Tax|Freight|Total")
    head = lambda page: [f"AR300{'INVOICE REGISTER':>50}{'PAGE':>40}{page:5d}",
                         f"{format(month_end(month), '%m/%d/%y')}{'14:22:07':>12}", "",
                         f"{'INVOICE':>8}{'INVOICE':>10}{'CUST':>7}  {'CUSTOMER':<26}{'TERMS':<10}{'TAXABLE':>12}{'SALES':>10}{'':>10}{'INVOICE':>13}",
                         f"{'NUMBER':>8}{'DATE':>10}{'NO':>7}  {'NAME':<26}{'':<10}{'AMOUNT':>12}{'TAX':>10}{'FREIGHT':>10}{'TOTAL':>13}", ""]
    report = Report(head, 50)
    sums = [0.0] * 4
    number = rng.randint(10000, 80000)
    for _ in range(rng.randint(60, 120)):
        number += 1
        day, amount = rng.day(month), rng.cents(4000)
        cells = [amount, round(amount * 0.07, 2), rng.choice((0.0, 12.5)), 0.0]
        cells[3] = sum(cells)
        cust, name, terms = f"{rng.randint(1, 9999)}", rng.firm(), rng.choice(("NET 30", "2% 10", "COD"))
        report.put(f"{number:>8}{format(day, '%m/%d/%y'):>10}{cust:>7}  {name:<26}{terms:<10}" + "".join(f"{us(c):>{w}}" for c, w in zip(cells, (12, 10, 10, 13))))
        table.add(number, day.isoformat(), cust, name, terms, *cells)
        sums = [a + b for a, b in zip(sums, cells)]
    report.put()
    report.put(f"{'':27}{'REGISTER TOTALS':<36}" + "".join(f"{us(c):>{w}}" for c, w in zip(sums, (12, 10, 10, 13))))
    return report, [table]


def trial(rng, month):
    """Trial balance: accounts of one width, debits or credits, totals at the end."""
    table = Table("Account|Account Name|Debit|Credit")
    report = Report()
    for text in ("GRANITE WORKS LLC", "TRIAL BALANCE", f"AS OF {month_end(month):%B %d, %Y}", "",
                 f"{'ACCOUNT':<10}{'ACCOUNT NAME':<34}{'DEBIT':>16}{'CREDIT':>16}", f"{'-' * 8:<10}{'-' * 32:<34}{'-' * 14:>16}{'-' * 14:>16}"):
        report.put(text)
    sums = [0.0, 0.0]
    for number in sorted(rng.sample(range(1000, 9999), rng.randint(18, 40))):
        name = rng.choice(("Cash in Bank", "Accrued Wages", "Rent Expense", "Sales Returns", "Prepaid Insurance", "Notes Payable")) + rng.choice(("", " - Other", " #2"))
        value, side = rng.cents(99000, 5), rng.random() < 0.5
        debit, credit = (value, None) if side else (None, value)
        report.put(f"{number}-00   {name:<34}{us(debit) if side else '':>16}{us(credit) if not side else '':>16}")
        table.add(f"{number}-00", name, debit, credit)
        sums = [sums[0] + (debit or 0), sums[1] + (credit or 0)]
    report.put(f"{'':44}{'=' * 14:>16}{'=' * 14:>16}")
    report.put(f"{'':10}{'TOTALS':<34}{us(sums[0]):>16}{us(sums[1]):>16}")
    return report, [table]


def loan(rng, month):
    """Loan schedule with a total for each year."""
    table = Table("No|Due|Payment|Principal|Interest|Balance")
    report = Report()
    balance, rate = float(rng.randint(50, 400) * 1000), rng.choice((0.045, 0.0625))
    for text in ("AMORTIZATION SCHEDULE", "", f"Loan amount: ${balance:,.2f}      Rate: {rate * 100:.3f} %", "",
                 "Pmt    Due Date        Payment      Principal       Interest         Balance"):
        report.put(text)
    payment, day = round(balance / 48 + balance * rate / 24, 2), date(2024, month, 1)
    sums, numbers = [0.0] * 3, rng.randint(30, 47)
    for number in range(1, numbers + 1):
        interest = round(balance * rate / 12, 2)
        cells = [payment, payment - interest, interest]
        balance -= cells[1]
        report.put(f"{number:>3}    {day:%m/%d/%Y}" + "".join(f"{us(c):>15}" for c in cells) + f"{us(balance):>16}")
        table.add(number, day.isoformat(), *cells, balance)
        sums = [a + b for a, b in zip(sums, cells)]
        year, day = day.year, (day.replace(day=28) + timedelta(5)).replace(day=1)
        if day.year != year or number == numbers:
            report.put(f"       {year} Totals" + "".join(f"{us(s):>15}" for s in sums).replace(" ", "", 2))
            report.put()
            sums = [0.0] * 3
    return report, [table]


def cobol(rng, month):
    """Fields edited one beside the other without blanks, headings cut to fit, 133 columns."""
    table = Table("Policy|Insured|Issued|Plan|Premium|Commission|Status")
    head = lambda page: [f"1PGM LF0210{'POLICY LISTING':>42}{'DATE ' + format(month_end(month), '%m/%d/%y'):>45}  PAGE {page:>4}"[1:],
                         "", "POLICY   INSURED NAME            ISSUED  PLAN    PREMIUM COMMISSIONST"]
    report = Report(head, 56)
    for _ in range(rng.randint(50, 140)):
        number, who, day = f"{rng.randint(1, 9999999):08d}", rng.person(), rng.day(rng.randint(1, 12))
        plan, premium = rng.choice(("WL20", "TERM", "UL10")), rng.cents(9999, 10)
        share = round(premium * 0.11, 2) * rng.choice((1, 1, 1, -1))
        status = rng.choice(("A", "L", "P"))
        report.put(f"{number}{who:<25.25}{day:%m/%d/%y}{plan}{premium:>10,.2f}{us(share, 'behind'):>11}{status}")
        table.add(number, who, day.isoformat(), plan, premium, share, status)
    return report, [table]


def german_list(rng, month):
    """Umsätze je Kostenstelle, German numbers and dates, carried sums at the page's ends."""
    table = Table("^Kostenstelle|^Bezeichnung|Beleg|Datum|Text|Soll|Haben")
    carried = [0.0]
    head = lambda page: ([f"Werkzeugbau Muster GmbH{'Seite':>50} {page}", f"Umsatzliste je Kostenstelle {month:02d}/2024", "",
                          "Beleg     Datum       Buchungstext                          Soll           Haben", "-" * 79]
                         + ([f"{'':22}{'Übertrag':<28}{german(carried[0]):>14}"] if page > 1 else []))
    report = Report(head, 40, lambda page: [f"{'':22}{'Übertrag':<28}{german(carried[0]):>14}"])
    for number, name in (("4711", "Vertrieb Süd"), ("4712", "Fertigung"), ("4720", "Verwaltung"), ("4735", "Fuhrpark")):
        report.put("", 5)
        report.put(f"Kostenstelle: {number} {name}")
        report.put()
        sums = [0.0, 0.0]
        for _ in range(rng.randint(5, 16)):
            number_of, day, text = f"{rng.randint(100000, 999999)}", rng.day(month), rng.choice(("Büromaterial", "Kfz-Steuer", "Telefon", "Miete Halle 2", "Gutschrift Müller"))
            value, side = rng.cents(5000), rng.random() < 0.7
            report.put(f"{number_of:<10}{day:%d.%m.%Y}  {text:<28}{german(value) if side else '':>14}{german(value) if not side else '':>16}")
            table.add(number, name, number_of, day.isoformat(), text, value if side else None, None if side else value)
            sums[0 if side else 1] += value
            carried[0] += value if side else 0
        report.put(f"{'':22}{'Summe Kostenstelle ' + number:<28}{german(sums[0]):>14}{german(sums[1]):>16}")
    return report, [table]


def checks(rng, month):
    """Check register: voided checks without an amount, a second table of totals by bank."""
    table = Table("Check|Date|Payee|Bank|Amount|Status")
    second = Table("Bank|Checks|Amount")
    head = lambda page: [f"CHECK REGISTER{'PAGE':>52} {page}", "", "CHECK NO  DATE      PAYEE                     BANK        AMOUNT  STATUS", "-" * 72]
    report = Report(head, 45)
    number, sums = rng.randint(1000, 8000), {bank: [0, 0.0] for bank in ("FNB", "HARB", "UNION")}
    for _ in range(rng.randint(40, 80)):
        number += 1
        day, payee, bank, amount = rng.day(month), rng.firm(), rng.choice(list(sums)), rng.cents(6000)
        void = rng.random() < 0.06
        status = "VOID" if void else rng.choice(("OPEN", "CLEARED", ""))
        report.put(f"{number:>8}  {day:%m/%d/%y}  {payee:<26}{bank:<6}{'' if void else us(amount):>12}  {status}")
        table.add(number, day.isoformat(), payee, bank, None if void else amount, status)
        sums[bank] = [sums[bank][0] + 1, sums[bank][1] + (0 if void else amount)]
    report.put()
    report.put("SUMMARY BY BANK", 8)
    report.put()
    report.put("BANK      CHECKS          AMOUNT")
    for bank, (count, amount) in sums.items():
        report.put(f"{bank:<10}{count:>6}{us(amount):>16}")
        second.add(bank, count, amount)
    return report, [table, second]


def journal(rng, month):
    """A journal in a drawn box, bars between the columns."""
    table = Table("No|Date|Text|Account|Debit|Credit")
    rule = "+------+------------+----------------------------+---------+--------------+--------------+"
    head = lambda page: [f"Journal {month:02d}/2024{'Page ' + str(page):>60}", rule,
                         "|  No  | Date       | Text                       | Account |        Debit |       Credit |", rule]
    report = Report(head, 40, lambda page: [rule])
    for number in range(1, rng.randint(40, 90)):
        day, text, account, value = rng.day(month), rng.choice(GOODS).lower(), f"{rng.randint(1000, 9999)}", rng.cents(9000)
        side = rng.random() < 0.5
        report.put(f"| {number:>4} | {day:%Y-%m-%d} | {text:<26} | {account:>7} | {us(value) if side else '':>12} | {'' if side else us(value):>12} |")
        table.add(number, day.isoformat(), text, account, value if side else None, None if side else value)
    report.put(rule)
    return report, [table]


def utilities(rng, month):
    """Meter readings: a record has a second line with the address."""
    table = Table("Account|Name|Meter|Previous|Present|Usage|Amount|Address")
    head = lambda page: [f"CITY OF EASTVALE - UTILITY BILLING{'PAGE':>50} {page}", f"BILLING REGISTER FOR {month_end(month):%m/%Y}", "",
                         "ACCOUNT     NAME / SERVICE ADDRESS        METER      PREVIOUS   PRESENT     USAGE       AMOUNT", "=" * 91]
    report = Report(head, 52)
    for _ in range(rng.randint(40, 70)):
        account, who, meter = f"{rng.randint(1, 99):02d}-{rng.randint(1, 9999):04d}-{rng.randint(0, 9)}", rng.person(), f"M{rng.randint(10000, 99999)}"
        address = f"{rng.randint(1, 9999)} {rng.choice(('OAK ST', 'MAIN ST', 'HILL RD', 'LAKE AVE APT ' + str(rng.randint(1, 40))))}"
        before, usage = rng.randint(1000, 90000), rng.randint(0, 900)
        amount = round(12 + usage * 0.31, 2)
        report.put(f"{account:<12}{who:<30}{meter:<9}{before:>10}{before + usage:>10}{usage:>10}{us(amount):>13}", 2)
        report.put(f"{'':12}{address}")
        table.add(account, who, meter, before, before + usage, usage, amount, address)
    report.put()
    report.put(f"{'':12}{'TOTAL BILLED':<40}{us(sum(float(r[6]) for r in table.rows)):>42}")
    return report, [table]


def brokers(rng, month):
    """Positions with $ at the first row, parentheses, and wrapped descriptions."""
    table = Table("Symbol|Description|Shares|Price|Market Value|Gain or Loss|Yield %")
    report = Report()
    for text in ("Portfolio Positions", f"{month_end(month):%B %d, %Y}", "",
                 "                                                                 Market          Gain or      Est.",
                 "Symbol   Description                    Shares       Price         Value           (Loss)     Yield %",
                 "-------  -------------------------  ----------  ----------  ------------  ---------------  ---------"):
        report.put(text)
    for k in range(rng.randint(15, 30)):
        symbol, shares, price = "".join(rng.choice("ABCDEFGH") for _ in range(rng.randint(3, 4))), rng.randint(1, 2000), rng.cents(300)
        words = rng.choice((["Growth Fund"], ["International Equity Fund", "Institutional Class"], ["Treasury Note 4.25%", "due 2031"], ["Common Stock"]))
        gain, share = rng.cents(9000) * rng.choice((1, -1)), round(rng.uniform(0, 6), 2)
        sign = "$" if k == 0 else ""
        report.put(f"{symbol:<9}{words[0]:<25}{shares:>12,.3f}{sign + us(price):>12}{sign + us(shares * price):>14}{us(gain, '()'):>17}{share:>11.2f}")
        for more in words[1:]:
            report.put(f"{'':9}{more}")
        table.add(symbol, " ".join(words), f"{shares}.000", price, shares * price, gain, share)
    report.put(f"{'':46}{'':12}{'-' * 12:>14}")
    report.put(f"{'':9}{'Total portfolio':<25}{'':24}{'$' + us(sum(float(r[4]) for r in table.rows)):>14}")
    return report, [table]
