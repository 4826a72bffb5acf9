"""Reports that print what a group is in other ways than with a label: bare titles, page heads, stars, indentation."""

from datetime import date, timedelta

from stationery import GOODS, PLACES, Report, Table, month_end, us


def vendors(rng, month):
    """Open payables: number and name of the vendor alone on a line, invoices indented below, discounts often blank."""
    table = Table("^Vendor|^Name|Invoice|Inv Date|Due Date|Amount|Discount|Net")
    head = lambda page: [f"{format(month_end(month), '%m/%d/%Y')}{'ACCOUNTS PAYABLE OPEN ITEMS':>50}{'Page':>30}{page:4d}", "",
                         "Vendor / Invoice      Inv Date    Due Date          Amount    Discount           Net",
                         "--------------------  ----------  ----------  ------------  ----------  ------------"]
    report = Report(head, 48)
    for _ in range(rng.randint(8, 15)):
        number, name, total = f"{rng.randint(1, 99999):05d}", rng.firm(), 0.0
        report.put("", 5)
        report.put(f"{number} {name}")
        for _ in range(rng.randint(1, 5)):
            invoice, day = f"{rng.choice(('A', 'INV-', ''))}{rng.randint(1000, 99999)}", rng.day(month)
            amount = rng.cents(8000)
            discount = round(amount * 0.02, 2) if rng.random() < 0.4 else None
            due = day + timedelta(30)
            report.put(f"   {invoice:<19}{day:%m/%d/%Y}  {due:%m/%d/%Y}{us(amount):>14}{us(discount) if discount else '':>12}{us(amount - (discount or 0)):>14}")
            table.add(number, name, invoice, day.isoformat(), due.isoformat(), amount, discount, amount - (discount or 0))
            total += amount
        report.put(f"   {'Vendor total':<41}{us(total):>14}")
    return report, [table]


def branches(rng, month):
    """Teller totals: the branch stands in the head of each page, a new one begins on a new page."""
    table = Table("^Branch|^City|Teller|Name|Deposits|Withdrawals|Items|Over/Short")
    here = ["", ""]
    head = lambda page: [f"FIRST HARBOR BANK{'TELLER BALANCE REPORT':>45}{'PAGE':>26}{page:5d}",
                         f"BRANCH: {here[0]} {here[1]:<30}{'DATE: ' + format(month_end(month), '%m/%d/%y'):>50}", "",
                         f"{'TELLER':<8}{'NAME':<26}{'DEPOSITS':>16}{'WITHDRAWALS':>16}{'ITEMS':>8}{'OVER/SHORT':>14}", ""]
    report = Report(head, 30)
    for number in sorted(rng.sample(range(1, 400), 4)):
        here[:] = f"{number:03d}", rng.choice(PLACES)
        report.left = 0
        for _ in range(rng.randint(6, 30)):
            teller, who, into, out, items = f"{rng.randint(1, 999):03d}", rng.person(), rng.cents(90000), rng.cents(60000), rng.randint(3, 400)
            diff = rng.choice((0.0, 0.0, 0.0, rng.cents(20) * rng.choice((1, -1))))
            report.put(f"{teller:<8}{who:<26}{us(into):>16}{us(out):>16}{items:>8}{us(diff, 'behind'):>15}")
            table.add(here[0], here[1], teller, who, into, out, items, diff)
    return report, [table]


def commissions(rng, month):
    """Commission statements: the salesman between stars, percentages, lines of totals with stars."""
    table = Table("^Salesman|^Name|Date|Order|Customer|Sale|Pct|Commission")
    head = lambda page: [f"COMMISSION STATEMENT{f'PERIOD {month:02d}/24':>30}{'PAGE':>40}{page:4d}", "",
                         f"{'DATE':<10}{'ORDER':<9}{'CUSTOMER':<30}{'SALE':>14}{'PCT':>8}{'COMMISSION':>14}"]
    report = Report(head, 52)
    for number in sorted(rng.sample(range(1, 99), 6)):
        name = rng.person()
        report.put("", 5)
        report.put(f"*** SALESMAN {number:02d} - {name} ***")
        sums = [0.0, 0.0]
        for day in sorted(rng.day(month) for _ in range(rng.randint(2, 9))):
            order, who, sale, pct = f"{rng.randint(10000, 99999)}", rng.firm(), rng.cents(20000, 100), rng.choice((2.5, 3.0, 5.0))
            share = round(sale * pct / 100, 2)
            report.put(f"{day:%m/%d/%y}  {order:<9}{who:<30}{us(sale):>14}{pct:>7.2f}%{us(share):>14}")
            table.add(f"{number:02d}", name, day.isoformat(), order, who, sale, f"{pct:.2f}", share)
            sums = [sums[0] + sale, sums[1] + share]
        report.put(f"{'':19}{'** TOTAL **':<30}{us(sums[0]):>14}{'':8}{us(sums[1]):>14}")
    return report, [table]


def calls(rng, month):
    """Telephone calls by extension: times, durations, numbers with dashes, dates without a year."""
    table = Table("^Extension|^User|Date|Time|Number Called|City|Duration|Cost")
    head = lambda page: ["CALL DETAIL REPORT", f"{month_end(month):%B %Y}{'page ' + str(page):>60}", ""]
    report = Report(head, 56)
    for ext in sorted(rng.sample(range(200, 399), 7)):
        user, total = rng.person().title(), 0.0
        report.put(f"Extension {ext}   {user}", 6)
        report.put("  Date    Time      Number Called    City          Duration     Cost")
        for _ in range(rng.randint(2, 12)):
            day, length = rng.day(month), rng.randint(6, 3000)
            cost, number, city = round(length * 0.004, 2), f"{rng.randint(201, 989)}-{rng.randint(200, 999)}-{rng.randint(0, 9999):04d}", rng.choice(PLACES).title()
            clock, lasted = f"{rng.randint(7, 18):02d}:{rng.randint(0, 59):02d}:{rng.randint(0, 59):02d}", f"{length // 3600}:{length // 60 % 60:02d}:{length % 60:02d}"
            report.put(f"  {day:%m/%d}   {clock}  {number:<15}  {city:<12}  {lasted:>8}  {cost:>7.2f}")
            table.add(str(ext), user, f"{day:%m/%d}", clock, number, city, lasted, cost)
            total += cost
        report.put(f"  Total for extension {ext}{total:>45.2f}")
        report.put()
    return report, [table]


def budget(rng, month):
    """Budget by account: sections as titles, variances in parentheses, percentages, a department in the head."""
    table = Table("^Section|Account|Description|Budget|Actual|Variance|Pct Used")
    report = Report()
    for text in ("CITY OF EASTVALE", "Budget to Actual Report", f"For the period ended {month_end(month):%m/%d/%Y}", "",
                 f"{'Account':<12}{'Description':<28}{'Budget':>14}{'Actual':>14}{'Variance':>15}{'% Used':>9}", "=" * 92):
        report.put(text)
    for title in ("REVENUES", "PERSONNEL SERVICES", "OPERATING EXPENSES", "CAPITAL OUTLAY"):
        report.put(title)
        sums = [0.0] * 3
        for _ in range(rng.randint(3, 9)):
            account, text = f"{rng.randint(100, 999)}-{rng.randint(1000, 9999)}", rng.choice(GOODS).title()
            planned = float(rng.randint(5, 900) * 100)
            actual = round(planned * rng.uniform(0.3, 1.4), 2)
            cells = [planned, actual, planned - actual]
            used = f"{100 * actual / planned:.1f}"
            report.put(f"{account:<12}{text:<28}{us(planned):>14}{us(actual):>14}{us(cells[2], '()'):>16}{used:>8}")
            table.add(title, account, text, *cells, used)
            sums = [a + b for a, b in zip(sums, cells)]
        report.put(f"{'':12}{'TOTAL ' + title:<28}{us(sums[0]):>14}{us(sums[1]):>14}{us(sums[2], '()'):>16}")
        report.put()
    return report, [table]


def freight(rng, month):
    """Freight bills: a comment line below some records, weights with commas, no line between heading and rows."""
    table = Table("Pro No|Ship Date|Consignee|City|Pcs|Weight|Charges|Comment")
    head = lambda page: [f"OVERLAND EXPRESS{'FREIGHT BILL REGISTER':>48}{'PAGE':>30}{page:4d}",
                         f"{'PRO NO':<10}{'SHIP DT':<10}{'CONSIGNEE':<26}{'CITY':<10}{'PCS':>5}{'WEIGHT':>9}{'CHARGES':>12}"]
    report = Report(head, 50)
    total = 0.0
    for _ in range(rng.randint(35, 80)):
        pro, day, who, city = f"{rng.randint(10**7, 10**8 - 1)}", rng.day(month), rng.firm(), rng.choice(PLACES)
        pieces, weight, charge = rng.randint(1, 99), rng.randint(20, 19999), rng.cents(1500, 30)
        note = rng.choice(("", "", "", "DELIVER BEFORE NOON", "CALL CONSIGNEE FIRST", "DAMAGED CARTON"))
        report.put(f"{pro:<10}{day:%m/%d/%y}  {who:<26}{city:<10}{pieces:>5}{weight:>9,}{us(charge):>12}", 2)
        if note:
            report.put(f"{'':10}COMMENT: {note}")
        table.add(pro, day.isoformat(), who, city, pieces, weight, charge, note)
        total += charge
    report.put()
    report.put(f"{'':20}{'TOTAL CHARGES':<50}{us(total):>12}")
    return report, [table]


def census(rng, month):
    """Patients by ward: flags in one-character columns, room and bed, ages, a count below each ward."""
    table = Table("^Ward|Room|Bed|Patient No|Name|Sex|Age|Admitted|Iso|Diet|Physician")
    head = lambda page: [f"ST. MARY HOSPITAL{'DAILY CENSUS':>40}{'Page ' + str(page):>40}",
                         f"{format(month_end(month), '%m/%d/%Y'):>57}", "",
                         "ROOM BED PATIENT NO NAME                      SEX AGE ADMITTED   ISO DIET PHYSICIAN"]
    report = Report(head, 48)
    for ward in ("2 NORTH", "2 SOUTH", "ICU", "MATERNITY"):
        report.put("", 4)
        report.put(f"WARD: {ward}")
        count = 0
        for room in sorted(rng.sample(range(200, 260), rng.randint(4, 12))):
            number, who, sex, age = f"{rng.randint(100000, 999999)}", rng.person(), rng.choice("MF"), rng.randint(1, 97)
            day, iso, diet, doctor = rng.day(month), rng.choice(("", "", "Y")), rng.choice(("REG", "DIAB", "NPO", "")), f"DR {rng.choice(('ADAMS', 'BLAKE', 'CHO', 'DIAZ'))}"
            bed = rng.choice("AB")
            report.put(f"{room:<5}{bed:<4}{number:<11}{who:<26}{sex:<4}{age:>3} {day:%m/%d/%Y} {iso:<4}{diet:<5}{doctor}")
            table.add(ward, str(room), bed, number, who, sex, age, day.isoformat(), iso, diet, doctor)
            count += 1
        report.put(f"PATIENTS IN {ward}: {count}")
    return report, [table]


def receipts(rng, month):
    """Cash receipts: batches with their number and date, the customer repeated as dots, no totals by batch."""
    table = Table("^Batch|^Deposited|Customer|Check|Applied To|Amount")
    report = Report(lambda page: [f"CASH RECEIPTS JOURNAL{'Page ' + str(page):>59}", "",
                                  f"{'CUSTOMER':<30}{'CHECK':>10}{'APPLIED TO':>14}{'AMOUNT':>16}", "-" * 70], 50)
    for batch in range(rng.randint(100, 400), rng.randint(405, 412)):
        if rng.random() < 0.96:
            continue
        report.put("", 4)
        day = rng.day(month)
        report.put(f"Batch # {batch}  Deposit date {day:%m/%d/%Y}")
        for _ in range(rng.randint(2, 6)):
            who, check, invoice, amount = rng.firm(), f"{rng.randint(100, 99999)}", f"{rng.randint(30000, 39999)}", rng.cents(4000)
            report.put(f"{who:<30}{check:>10}{invoice:>14}{us(amount):>16}")
            table.add(str(batch), day.isoformat(), who, check, invoice, amount)
    if not table.rows:
        return receipts(rng, month)
    report.put()
    report.put(f"{'*** GRAND TOTAL ***':<54}{us(sum(float(r[5]) for r in table.rows)):>16}")
    return report, [table]


def production(rng, month):
    """Production by work centre and shift: two levels of titles by indentation, quantities without decimals."""
    table = Table("^Work Center|^Shift|Order|Part|Good|Scrap|Yield")
    report = Report(lambda page: [f"WEEKLY PRODUCTION REPORT   WEEK {month * 4:02d}{'PAGE ' + str(page):>40}", "",
                                  "           ORDER     PART                        GOOD     SCRAP    YIELD", ""], 54)
    for center in ("LATHES", "MILLS", "PRESSES", "WELDING"):
        report.put(f"WORK CENTER {center}", 6)
        for shift in ("FIRST", "SECOND"):
            report.put(f"   SHIFT {shift}", 3)
            good_sum = scrap_sum = 0
            for _ in range(rng.randint(2, 7)):
                order, part, good, scrap = f"W{rng.randint(1000, 9999)}", rng.choice(GOODS), rng.randint(10, 9000), rng.randint(0, 300)
                yields = f"{100 * good / (good + scrap):.1f}"
                report.put(f"           {order:<10}{part:<24}{good:>8,}{scrap:>10}{yields:>9}")
                table.add(center, shift, order, part, good, scrap, yields)
                good_sum, scrap_sum = good_sum + good, scrap_sum + scrap
            report.put(f"{'':21}{'SHIFT TOTAL':<24}{good_sum:>8,}{scrap_sum:>10}")
        report.put()
    return report, [table]


def schedule(rng, month):
    """Bond schedule: years as rows, amounts with a currency sign in each, long dashes for nothing."""
    table = Table("Maturity|Principal|Rate|Interest|Debt Service")
    report = Report()
    for text in (f"{'EASTVALE WATER AUTHORITY':^84}", f"{'DEBT SERVICE SCHEDULE':^84}", f"{f'As of {month_end(month):%m/%d/%Y}':^84}", "",
                 "Maturity          Principal        Rate          Interest        Debt Service",
                 "----------  ---------------  ----------  ----------------  ------------------"):
        report.put(text)
    for k in range(rng.randint(14, 30)):
        day = date(2024 + k // 2, 3 if k % 2 == 0 else 9, 1)
        principal = float(rng.randint(10, 900) * 1000) if k % 2 else None
        rate, interest = (f"{rng.uniform(2, 6):.3f}" if principal else None), rng.cents(90000, 900)
        report.put(f"{day:%m/%d/%Y}  {'$' + us(principal) if principal else '--':>15}  {rate + '%' if rate else '--':>10}  {'$' + us(interest):>16}  {'$' + us((principal or 0) + interest):>18}")
        table.add(day.isoformat(), principal, rate, interest, (principal or 0) + interest)
    report.put(f"{'':12}{'-' * 15}  {'':10}  {'-' * 16}  {'-' * 18}")
    report.put(f"{'Total':<12}{'$' + us(sum(float(r[1] or 0) for r in table.rows)):>15}  {'':10}  {'$' + us(sum(float(r[3]) for r in table.rows)):>16}  {'$' + us(sum(float(r[4]) for r in table.rows)):>18}")
    return report, [table]
