"""Reports whose rows stand in groups: headings above them, totals below them, over pages."""

from stationery import GOODS, PLACES, Report, Table, month_end, us


def payroll(rng, month):
    """Payroll register by department, 133 columns, with page heads."""
    table = Table("^Dept|^Department|Emp No|Employee Name|Hours|Gross|Fed Tax|FICA|Net")

    def head(page):
        return [f"RUN DATE: {month_end(month):%m/%d/%y}{'CONSOLIDATED MILLS INC.':>52}{'PAGE:':>50}{page:5d}",
                f"REPORT:   PR-0410{'PAYROLL REGISTER BY DEPARTMENT':>50}", "",
                f"{'EMP':<9}{'EMPLOYEE':<30}{'':>9}{'GROSS':>14}{'FEDERAL':>14}{'':>13}{'NET':>15}",
                f"{'NO':<9}{'NAME':<30}{'HOURS':>9}{'PAY':>14}{'TAX':>14}{'FICA':>13}{'PAY':>15}",
                f"{'------':<9}{'-' * 26:<30}{'-------':>9}{'-----------':>14}{'-----------':>14}{'----------':>13}{'-----------':>15}"]

    report = Report(head, 30)
    grand = [0.0] * 4
    for number, name in (("10", "SHIPPING"), ("20", "ASSEMBLY"), ("35", "MACHINE SHOP"), ("40", "OFFICE"), ("55", "QUALITY CONTROL")):
        report.put("", 5)
        report.put(f"DEPARTMENT NUMBER: {number}  {name}")
        report.put()
        sums = [0.0] * 4
        for _ in range(rng.randint(4, 14)):
            emp, who = f"{rng.randint(100, 99999):06d}", rng.person()
            hours, gross = rng.choice((80.0, 80.0, 76.5, 88.25)), rng.cents(4200, 900)
            tax, fica = round(gross * 0.18, 2), round(gross * 0.0765, 2)
            amounts = [gross, tax, fica, gross - tax - fica]
            report.put(f"{emp:<9}{who:<30}{hours:>9.2f}{us(gross):>14}{us(tax):>14}{us(fica):>13}{us(amounts[3]):>15}")
            table.add(number, name, emp, who, hours, *amounts)
            sums = [a + b for a, b in zip(sums, amounts)]
        report.put()
        report.put(f"{'':9}{'DEPARTMENT TOTAL':<30}{'':9}" + f"{us(sums[0]):>14}{us(sums[1]):>14}{us(sums[2]):>13}{us(sums[3]):>15}")
        grand = [a + b for a, b in zip(grand, sums)]
    report.put()
    report.put(f"{'':9}{'COMPANY TOTAL':<30}{'':9}" + f"{us(grand[0]):>14}{us(grand[1]):>14}{us(grand[2]):>13}{us(grand[3]):>15}")
    return report, [table]


def aged(rng, month):
    """Aged receivables: invoices below each customer, buckets mostly blank, a total with stars."""
    table = Table("^Customer|^Name|^Phone|Invoice|Date|Due|Current|31-60|61-90|Over 90|Balance")
    head = lambda page: [f"HARBOR WHOLESALE{'AGED TRIAL BALANCE':>44}{'PAGE':>36} {page}",
                         f"{'AS OF ' + format(month_end(month), '%m/%d/%Y'):>60}", "",
                         f"{'INVOICE':<10}{'DATE':<10}{'DUE':<10}{'CURRENT':>13}{'31-60':>13}{'61-90':>13}{'OVER 90':>13}{'BALANCE':>14}",
                         "=" * 96]
    report = Report(head, 44)
    total = [0.0] * 5
    for _ in range(rng.randint(9, 16)):
        number, name, phone = f"{rng.randint(10000, 49999)}", rng.firm(), f"{rng.randint(200, 900)}-{rng.randint(1000, 9999)}"
        report.put("", 4)
        report.put(f"CUSTOMER: {number}  {name}{'PHONE: ':>{44 - len(name)}}{phone}")
        sums = [0.0] * 5
        for _ in range(rng.randint(1, 6)):
            invoice, day, due = f"{rng.randint(300000, 399999)}", rng.day(month), rng.day(month % 12 + 1)
            amount = rng.cents(9000) * rng.choice((1, 1, 1, 1, -1))
            bucket = rng.randrange(4)
            cells = [amount if i == bucket else None for i in range(4)] + [amount]
            shown = "".join(f"{'' if c is None else us(c, 'behind'):>{w}}" for c, w in zip(cells, (14, 13, 13, 13, 14)))
            report.put(f"{invoice:<10}{day:%m/%d/%y}  {due:%m/%d/%y}  {shown[1:]}")
            table.add(number, name, phone, invoice, day.isoformat(), due.isoformat(), *cells)
            sums = [a + (b or 0) for a, b in zip(sums, cells)]
        report.put("** CUSTOMER TOTAL".ljust(30) + "".join(f"{us(s, 'behind'):>{w}}" for s, w in zip(sums, (14, 13, 13, 13, 14)))[1:])
        total = [a + b for a, b in zip(total, sums)]
    report.put()
    report.put("*** REPORT TOTAL".ljust(30) + "".join(f"{us(s, 'behind'):>{w}}" for s, w in zip(total, (14, 13, 13, 13, 14)))[1:])
    return report, [table]


def ledger(rng, month):
    """General ledger detail: accounts as titles, beginning and ending balances, a running balance."""
    table = Table("^Account|^Account Name|Date|Jrnl|Reference|Description|Debit|Credit|Balance")
    head = lambda page: [f"General Ledger Detail{'Page':>80} {page}", f"Period {month:02d}/2024", "",
                         "Date      Jrnl  Reference   Description                         Debit        Credit         Balance",
                         "--------  ----  ----------  ------------------------  -------------  ------------  --------------"]
    report = Report(head, 50)
    for number, name in (("1000", "Cash"), ("1100", "Accounts Receivable"), ("1200", "Inventory"), ("2000", "Accounts Payable"),
                         ("4000", "Sales"), ("6100", "Office Supplies"), ("6200", "Rent")):
        balance = rng.cents(90000)
        report.put("", 5)
        report.put(f"Account {number} {name}")
        report.put(f"{'':32}{'Beginning balance':<24}{us(balance):>43}")
        debits = credits = 0.0
        for day in sorted(rng.day(month) for _ in range(rng.randint(2, 9))):
            ref, text = f"{rng.choice(('INV', 'CHK', 'ADJ'))}-{rng.randint(1000, 9999)}", rng.choice(GOODS).title()
            value = rng.cents(3000)
            debit, credit = (value, None) if rng.random() < 0.5 else (None, value)
            balance += (debit or 0) - (credit or 0)
            journal = rng.choice(("GJ", "CR", "CD", "SJ"))
            report.put(f"{day:%m/%d/%y}  {journal:<4}  {ref:<10}  {text:<24}{us(debit) if debit else '':>15}{us(credit) if credit else '':>14}{us(balance):>16}")
            table.add(number, name, day.isoformat(), journal, ref, text, debit, credit, balance)
            debits, credits = debits + (debit or 0), credits + (credit or 0)
        report.put(f"{'':56}{'-' * 13:>15}{'-' * 12:>14}")
        report.put(f"{'':32}{'Ending balance':<24}{us(debits):>15}{us(credits):>14}{us(balance):>16}")
    return report, [table]


def stock(rng, month):
    """Stock status by warehouse, items over pages, the warehouse printed on each page."""
    table = Table("^Warehouse|^Site|Item|Description|UM|On Hand|On Order|Unit Cost|Value")
    head = lambda page: [f"{month_end(month):%d-%b-%y}{'STOCK STATUS REPORT':>45}{'Page':>30}{page:4d}", ""]
    names = ["Item No    Description              UM    On Hand   On Order   Unit Cost         Value",
             "---------  -----------------------  --  ---------  ---------  ----------  ------------"]
    report = Report(head, 36, lambda page: ["", f"{'*** continued ***':>48}"])
    here = ["", ""]
    report.again = lambda: [f"Warehouse: {here[0]} - {here[1]} (continued)", "", *names]
    for number, site in (("01", "MAIN STREET"), ("02", "AIRPORT"), ("07", "RIVER YARD")):
        here[:] = number, site
        report.put(f"Warehouse: {number} - {site}", 6)
        report.put()
        for text in names:
            report.put(text)
        value = 0.0
        for _ in range(rng.randint(18, 42)):
            item, text = f"{rng.choice('ABC')}{rng.randint(10, 99)}-{rng.randint(1000, 9999)}", rng.choice(GOODS)
            hand, order, cost = rng.randint(-20, 4000), rng.choice((0, 0, rng.randint(1, 900))), rng.cents(80, 0.05)
            unit = rng.choice(("EA", "BX", "CS"))
            report.put(f"{item:<11}{text:<25}{unit}{hand:>11,}{order:>11,}{cost:>12,.2f}{us(hand * cost):>14}")
            table.add(number, site, item, text, unit, hand, order, cost, hand * cost)
            value += hand * cost
        report.put(f"{'':11}{'Total for warehouse ' + number:<59}{us(value):>16}", 2)
        report.put()
    return report, [table]


def sales(rng, month):
    """Sales by rep: region and rep printed once, subtotals and drawn lines below each rep."""
    table = Table("^Region|^Rep|Customer|Order|Sales|Cost|Margin")
    head = lambda page: [f"Sales Analysis by Representative - {month_end(month):%B %Y}", "",
                         "Region    Sales Rep           Customer                  Order          Sales          Cost      Margin %",
                         "========  ==================  ========================  =======  ============  ============  ==========="]
    report = Report(head)
    for region in ("EAST", "MIDWEST", "WEST"):
        first_of_region = True
        for rep in rng.sample(("Anders, Jill", "Boone, Mark", "Cole, Terry", "Dunn, Pat", "Ewing, Lou", "Frost, Kim"), 3):
            sums, first = [0.0, 0.0], True
            for _ in range(rng.randint(2, 7)):
                who, order, amount = rng.firm().title(), f"{rng.randint(50000, 59999)}", rng.cents(9000, 200)
                cost = round(amount * rng.uniform(0.5, 0.9), 2)
                margin = round(100 * (amount - cost) / amount, 1)
                report.put(f"{region if first_of_region else '':<10}{rep if first else '':<20}{who:<26}{order:<7}{us(amount):>14}{us(cost):>14}{margin:>13.1f}")
                table.add(region, rep, who, order, amount, cost, f"{margin:.1f}")
                first = first_of_region = False
                sums = [sums[0] + amount, sums[1] + cost]
            report.put(f"{'':63}{'-' * 12:>14}{'-' * 12:>14}")
            report.put(f"{'':30}{'Total ' + rep:<33}{us(sums[0]):>14}{us(sums[1]):>14}")
            report.put()
    return report, [table]


def orders(rng, month):
    """Open orders: regions and branches as two headings, totals for both."""
    table = Table("^Region|^Branch|^City|Order|Ordered|Customer|Qty|Amount")
    head = lambda page: [f"PROGRAM OE220R{'OPEN ORDERS BY BRANCH':>50}{'PAGE':>20}{page:6d}",
                         f"{'FOR THE MONTH ENDED ' + format(month_end(month), '%m/%d/%y'):>66}", "",
                         f"{'ORDER':<9}{'ORDERED':<10}{'CUSTOMER':<34}{'QTY':>8}{'AMOUNT':>16}"]
    report = Report(head, 40)
    for region in ("NORTH", "SOUTH", "CENTRAL"):
        report.put("", 6)
        report.put(f"REGION: {region}")
        everything = 0.0
        for branch in sorted(rng.sample(range(1, 99), 3)):
            city, total = rng.choice(PLACES), 0.0
            report.put("", 4)
            report.put(f"  BRANCH: {branch:03d} {city}")
            for _ in range(rng.randint(2, 9)):
                order, day, who = f"{rng.randint(700000, 799999)}", rng.day(month), rng.firm()
                count, amount = rng.randint(1, 1200), rng.cents(20000, 50)
                report.put(f"{order:<9}{day:%m/%d/%y}  {who:<34}{count:>8,}{us(amount, 'CR'):>16}")
                table.add(region, f"{branch:03d}", city, order, day.isoformat(), who, count, amount)
                total += amount
            report.put(f"{'':19}{f'TOTAL BRANCH {branch:03d}':<42}{us(total, 'CR'):>16}")
            everything += total
        report.put(f"{'':19}{f'TOTAL REGION {region}':<42}{us(everything, 'CR'):>16}")
    return report, [table]


def assets(rng, month):
    """Fixed assets: class titles that stand alone, totals named after them."""
    table = Table("^Class|Asset|Description|Acquired|Life|Cost|Accumulated|Book Value")
    head = lambda page: ["FIXED ASSET SCHEDULE", f"Period ending {month_end(month):%m/%d/%Y}", "",
                         "Asset  Description               Acquired    Life            Cost     Accumulated      Book Value",
                         "-----  ------------------------  ----------  ----  --------------  --------------  --------------"]
    report = Report(head)
    for title in ("BUILDINGS", "FURNITURE AND FIXTURES", "MACHINERY", "VEHICLES"):
        report.put()
        report.put(title)
        report.put()
        sums = [0.0] * 3
        for _ in range(rng.randint(3, 9)):
            number, text, day = f"{rng.randint(1, 9999):05d}", rng.choice(GOODS).capitalize(), rng.day(rng.randint(1, 12))
            life, cost = rng.choice((3, 5, 7, 10, 39)), rng.cents(90000, 500)
            used = round(cost * rng.uniform(0, 1), 2)
            cells = [cost, used, cost - used]
            report.put(f"{number}  {text:<24}  {day:%m/%d/%Y}  {life:>4}" + "".join(f"{us(c):>16}" for c in cells))
            table.add(title, number, text, day.isoformat(), life, *cells)
            sums = [a + b for a, b in zip(sums, cells)]
        report.put(f"{'':51}" + f"{'-' * 14:>16}" * 3)
        report.put(f"{'':7}{'Total ' + title.title():<44}" + "".join(f"{us(s):>16}" for s in sums))
    return report, [table]


def timesheet(rng, month):
    """Time cards: employee and shift on one heading line, days below."""
    table = Table("^Employee|^Name|^Shift|Date|In|Out|Regular|Overtime")
    head = lambda page: [f"TIME CARD REPORT{'Page ' + str(page):>50}", ""]
    report = Report(head, 48)
    for _ in range(rng.randint(6, 10)):
        number, who, shift = f"{rng.randint(1, 999):05d}", rng.person(), rng.choice("123")
        report.put(f"Employee: {number} {who:<28} Shift: {shift}", 9)
        report.put()
        report.put("  Date        In     Out    Regular  Overtime")
        hours = 0.0
        first = rng.randint(1, 20)
        for k in range(rng.randint(3, 6)):
            extra = rng.choice((0.0, 0.0, 1.5, 2.25))
            start, end = f"{rng.randint(5, 9):02d}:{rng.randint(0, 59):02d}", f"{rng.randint(14, 19)}:{rng.randint(0, 59):02d}"
            report.put(f"  2024-{month:02d}-{first + k:02d}  {start}  {end}  {8.0:>7.2f}  {extra:>8.2f}")
            table.add(number, who, shift, f"2024-{month:02d}-{first + k:02d}", start, end, 8.0, extra)
            hours += 8 + extra
        report.put(f"  Total hours for {number}: {hours:.2f}")
        report.put()
    return report, [table]


def purchases(rng, month):
    """Purchase orders with lines: a block of labels above each, totals below."""
    table = Table("^PO Number|^Vendor|^Vendor Name|^Date|^Buyer|Line|Part|Description|Qty|Price|Amount")
    head = lambda page: [f"PURCHASE ORDER REGISTER{'PAGE':>60}{page:4d}", ""]
    report = Report(head, 54)
    for _ in range(rng.randint(8, 14)):
        number, vendor, name, day = f"{rng.randint(40000, 49999)}", f"V{rng.randint(100, 999)}", rng.firm(), rng.day(month)
        report.put(f"PO NUMBER: {number}      VENDOR: {vendor} {name}", 8)
        buyer = rng.choice(("KLM", "RST", "TVW"))
        report.put(f"PO DATE:   {day:%m/%d/%y}   BUYER:  {buyer}")
        report.put("LINE  PART         DESCRIPTION               QTY       PRICE         AMOUNT")
        total = 0.0
        for line in range(1, rng.randint(2, 6)):
            part, text, count, price = f"{rng.randint(1000, 9999)}-{rng.choice('AB')}", rng.choice(GOODS), rng.randint(1, 500), rng.cents(99)
            report.put(f"{line:4d}  {part:<11}  {text:<22}{count:>7,}{price:>12,.2f}{us(count * price):>15}")
            table.add(number, vendor, name, day.isoformat(), buyer, line, part, text, count, price, count * price)
            total += count * price
        report.put(f"{'':41}{'PO TOTAL':>19}{us(total):>15}")
        report.put()
    return report, [table]
