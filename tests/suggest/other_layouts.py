"""Reports as tools, offices and databases print them, each with the tables that it should become.

A layout is a function of a random generator; it returns the text and its tables, each a list of rows whose first one
holds the names. A name that begins with ^ is that of a value which is carried from elsewhere.
"""

import datetime

WORD = "ash basin cedar dale embankment fen grove heathland inlet jetty knoll ledge moor northern oak plain quarry ridge stonework trail".split()
FIRST = "Ada Ben Cleo Dora Emil Finn Gwen Hal Ivy Jon Kai Lena Milo Nora Otto Pia Rolf Sue Theo Una".split()
LAST = "Abel Brandt Cole Dorn Ernst Falk Graf Holm Ibsen Jung Krug Lang Moss Nagel Orth Pohl Reuter Stark Thiel Wolf".split()
MONTH = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()


def some(rng, count, words=WORD, parting=" "):
    return parting.join(rng.choice(words) for _ in range(count))


def person(rng):
    return f"{rng.choice(FIRST)} {rng.choice(LAST)}"


def money(rng, most=5000):
    return f"{rng.randrange(100, most * 100) / 100:,.2f}"


def day(rng):
    return datetime.date(2024, 1, 1) + datetime.timedelta(rng.randrange(300))


def laid(rows, form, gap="  "):
    """Rows as lines, each column as wide as its widest cell; the form says < or > for each."""
    widths = [max(len(row[i]) for row in rows) for i in range(len(form))]
    return [gap.join(f"{cell:{side}{width}}" for cell, side, width in zip(row, form, widths)).rstrip() for row in rows]


def text_of(*blocks):
    return "\n".join("\n".join(block) if isinstance(block, list) else block for block in blocks) + "\n"


def process_list(rng):
    names = "USER PID %CPU %MEM VSZ RSS TTY STAT START TIME COMMAND".split()
    rows, lines = [], ["USER         PID %CPU %MEM    VSZ   RSS TTY      STAT START   TIME COMMAND"]
    for i in range(rng.randint(25, 60)):
        command = rng.choice(("/usr/sbin/", "", "[")) + some(rng, 1) + rng.choice(("", " -D", " --config /etc/" + some(rng, 1), " " + some(rng, 3)))
        row = [rng.choice(("root", "daemon", "messagebus", "www-data")), str(i * 37 + 1), f"{rng.random() * 9:.1f}",
               f"{rng.random() * 9:.1f}", str(rng.randrange(0, 2400000)), str(rng.randrange(0, 90000)), rng.choice(("?", "pts/0", "tty1")),
               rng.choice(("S", "Ss", "R+", "I<", "Ssl")), rng.choice(("08:12", "Nov03", "2023")), f"{rng.randrange(90)}:{rng.randrange(60):02d}", command]
        lines.append("{:<8} {:>7} {:>4} {:>4} {:>6} {:>5} {:<8} {:<4} {:<5} {:>6} {}".format(*row))
        rows.append(row)
    return text_of(lines), [[names, *rows]]


def disk_usage(rng):
    rows = [["Filesystem", "1K-blocks", "Used", "Available", "Use%", "Mounted on"]]
    for i in range(rng.randint(4, 12)):
        size, used = rng.randrange(10**3, 10**9), rng.randrange(10**3)
        rows.append([rng.choice(("udev", "tmpfs", f"/dev/sd{'abcd'[i % 4]}{i}", "/dev/mapper/" + some(rng, 1))), str(size), str(used), str(size - used),
                     f"{100 * used // size}%", "/" + some(rng, rng.randint(0, 2), parting="/")])
    return text_of(laid(rows, "<>>>><", " ")), [rows]


def directory_tree(rng):
    rows, lines = [["^Folder", "Mode", "Links", "Owner", "Group", "Size", "Date", "Time", "Name"]], []
    for k in range(rng.randint(3, 8)):
        folder = "./" + some(rng, k, parting="/") if k else "."
        lines += ([""] if k else []) + [folder + ":", f"total {rng.randrange(4, 400)}"]
        block = []
        for _ in range(rng.randint(1, 14)):
            when = day(rng)
            date = f"{MONTH[when.month - 1]} {when.day:>2} " + rng.choice((f"{rng.randrange(24):02d}:{rng.randrange(60):02d}", " 2023"))
            block.append([rng.choice(("-rw-r--r--", "drwxr-xr-x", "-rwxr-xr-x")), str(rng.randint(1, 22)), "root", rng.choice(("root", "staff")),
                          str(rng.choice((0, 4096, rng.randrange(10**7)))), date, some(rng, 1) + rng.choice((".txt", ".d", "", " copy.c"))])
        lines += laid(block, "<><<><<", " ")
        rows += [[folder, *row[:5], row[5][:6], row[5][6:].strip(), row[6]] for row in block]
    return text_of(lines), [rows]


def package_list(rng):
    rows = [["||/ Name", "Version", "Architecture", "Description"]]
    for _ in range(rng.randint(30, 90)):
        name = some(rng, rng.randint(1, 3), parting="-") + rng.choice(("", "2", ":amd64"))
        rows.append([rng.choice(("ii", "ii", "rc")) + "  " + name, f"{rng.randint(0, 9)}.{rng.randint(0, 30)}-{rng.randint(1, 9)}" + rng.choice(("", "+deb12u1", "ubuntu3")),
                     rng.choice(("all", "amd64")), some(rng, rng.randint(2, 7))])
    lines = laid(rows, "<<<<", " ")
    widths = [max(len(row[i]) for row in rows) for i in range(3)]
    legend = ["Desired=Unknown/Install/Remove/Purge/Hold", "| Status=Not/Inst/Conf-files/Unpacked/halF-conf/Half-inst/trig-aWait/Trig-pend",
              "|/ Err?=(none)/Reinst-required (Status,Err: uppercase=bad)", lines[0], "+++-" + "=" * (widths[0] - 4) + "-" + "=" * widths[1] + "-" + "=" * widths[2] + "-" + "=" * 40]
    return text_of(legend, lines[1:]), [[["||/", "Name", "Version", "Architecture", "Description"]] + [row[0].split("  ") + row[1:] for row in rows[1:]]]


def settings(rng):
    """One form: a label and a value on each line."""
    labels = rng.sample(["Architecture", "Byte Order", "CPU(s)", "Thread(s) per core", "Model name", "Stepping", "CPU max MHz", "BogoMIPS", "L1d cache",
                         "L2 cache", "Vendor ID", "Socket(s)", "Virtualization", "Flags", "NUMA node(s)", "Address sizes"], 13)
    rows = [[label, rng.choice((str(rng.randint(0, 4000)), some(rng, rng.randint(1, 6)), f"{rng.randint(1, 64)} KiB"))] for label in labels]
    width = max(map(len, labels)) + rng.randint(2, 8)
    return text_of([f"{label + ':':<{width}}{value}" for label, value in rows]), [[["", ""], *rows]]


def label_records(rng):
    """Records of labels and values parted by blank lines; some lack a label."""
    labels = ["Package", "Version", "Maintainer", "Installed-Size", "Section", "Depends"]
    rows, lines = [], []
    for _ in range(rng.randint(8, 20)):
        row = [some(rng, 2, parting="-"), f"{rng.randint(1, 9)}.{rng.randint(0, 30)}", f"{person(rng)} <{some(rng, 1)}@example.org>", str(rng.randrange(10, 9000)),
               rng.choice(("admin", "net", "libs")), rng.choice(("", some(rng, 3, parting=", ")))]
        lines += [f"{label}: {value}" for label, value in zip(labels, row) if value] + [""]
        rows.append(row)
    return text_of(lines), [[labels, *rows]]


def tabbed_records(rng):
    labels = ["processor", "vendor_id", "cpu family", "model name", "cpu MHz", "cache size"]
    rows = [[str(i), "GenuineExample", "6", f"Example(R) CPU {some(rng, 1)} @ 2.40GHz", f"{rng.random() * 3000:.3f}", f"{rng.randint(1, 9) * 1024} KB"] for i in range(rng.randint(4, 16))]
    lines = [line for row in rows for line in [f"{label}\t{'' if len(label) > 8 else chr(9)}: {value}" for label, value in zip(labels, row)] + [""]]
    return text_of(lines), [[labels, *rows]]


def dotted_forms(rng):
    """Cards with two labels on a line, dots in front of the colon, a title between."""
    names = ["Number", "Name", "Street", "City", "Since", "Limit"]
    rows, lines = [], []
    for i in range(rng.randint(6, 15)):
        row = [f"{rng.randrange(10**5):05d}", person(rng), f"{some(rng, 1).title()} Road {rng.randint(1, 99)}", some(rng, 1).title(), day(rng).isoformat(), money(rng)]
        lines += ["CUSTOMER CARD", "-" * 60]
        for k in (0, 2, 4):
            left = f"{names[k] + ' ':.<14} : {row[k]}"
            lines.append(f"{left:<42}{names[k + 1] + ' ':.<12} : {row[k + 1]}")
        lines.append("")
        rows.append(row)
    return text_of(lines), [[names, *rows]]


def counters(rng):
    head = ["procs -----------memory---------- ---swap-- -----io---- -system-- ------cpu-----",
            " r  b   swpd   free   buff  cache   si   so    bi    bo   in   cs us sy id wa st"]
    widths = [2, 2, 6, 6, 6, 6, 4, 4, 5, 5, 4, 4, 2, 2, 2, 2, 2]
    rows, lines = [], []
    for i in range(rng.randint(10, 50)):
        if i % 20 == 0:
            lines += head
        row = [str(rng.randrange(rng.choice((9, 10**(width - 1))))) for width in widths]
        lines.append(" ".join(f"{cell:>{width}}" for cell, width in zip(row, widths)))
        rows.append(row)
    return text_of(lines), [[head[1].split(), *rows]]


def memory(rng):
    rows = [["", "total", "used", "free", "shared", "buff/cache", "available"]]
    rows += [["Mem:"] + [str(rng.randrange(10**5, 10**8)) for _ in range(6)], ["Swap:"] + [str(rng.randrange(10**7)) for _ in range(3)] + [""] * 3]
    return text_of([f"{row[0]:<7}" + "".join(f"{cell:>12}" for cell in row[1:]) for row in rows]), [rows]


def sockets(rng):
    rows = [["Netid", "State", "Recv-Q", "Send-Q", "Local Address:Port", "Peer Address:Port"]]
    for _ in range(rng.randint(10, 40)):
        rows.append([rng.choice(("tcp", "udp", "u_str")), rng.choice(("ESTAB", "LISTEN", "UNCONN", "TIME-WAIT")), str(rng.choice((0, 0, rng.randrange(900)))), str(rng.randrange(4096)),
                     f"10.{rng.randrange(256)}.{rng.randrange(256)}.7:{rng.randrange(65536)}", rng.choice(("0.0.0.0:*", f"192.168.0.{rng.randrange(256)}:{rng.randrange(65536)}"))])
    return text_of(laid(rows, "<<><<<" if rng.random() < 0.5 else "<<>>><", " ")), [rows]


def sections(rng):
    """Records of two lines: the second one holds words that belong to the first."""
    lines, rows = ["", "prog:     file format elf64", "", "Sections:", "Idx Name          Size      VMA               LMA               File off  Algn"], []
    for i in range(rng.randint(12, 30)):
        row = [str(i), "." + some(rng, 1), f"{rng.randrange(16**5):08x}", f"{rng.randrange(16**6):016x}", f"{rng.randrange(16**6):016x}", f"{rng.randrange(16**5):08x}", f"2**{rng.randint(0, 5)}"]
        flags = ", ".join(["CONTENTS", "ALLOC", "LOAD", "READONLY", "DATA"][:rng.randint(1, 5)])
        lines += ["{:>3} {:<13} {}  {}  {}  {}  {}".format(*row), " " * 18 + flags]
        rows.append([*row, flags])
    return text_of(lines), [[["Idx", "Name", "Size", "VMA", "LMA", "File off", "Algn", ""], *rows]]


def colon_file(rng):
    rows = [[some(rng, 1), "x", str(rng.randint(0, 60000)), str(rng.randint(0, 60000)), rng.choice((person(rng), "")), "/home/" + some(rng, 1), rng.choice(("/bin/bash", "/usr/sbin/nologin"))]
            for _ in range(rng.randint(15, 40))]
    return text_of([":".join(row) for row in rows]), [[[""] * 7, *rows]]


def parted_file(rng):
    """Values parted by one character, their names in the first line."""
    mark = rng.choice((",", ";", "|", "\t"))
    rows = [["id", "name", "city", "amount", "date"]]
    rows += [[str(i + 1), person(rng), some(rng, rng.randint(0, 2)), f"{rng.random() * 10**rng.randint(1, 5):.2f}", day(rng).isoformat()] for i in range(rng.randint(15, 60))]
    return text_of([mark.join(row) for row in rows]), [rows]


def box(rng):
    """A table that a database draws."""
    rows = [["id", "customer", "city", "balance"]]
    rows += [[str(i + 1), person(rng), rng.choice((some(rng, 1), "NULL", "")), f"{rng.randrange(-9999, 99999) / 100:.2f}"] for i in range(rng.randint(8, 40))]
    style = rng.choice(("plus", "lines", "mark", "bare"))
    lines = laid(rows, "><<>", " | ")
    wide = [max(len(row[i]) for row in rows) for i in range(4)]
    if style == "bare":
        lines = laid(rows, "><<>", " | ")
        return text_of(lines[0], "-+-".join("-" * width for width in wide), lines[1:], f"({len(rows) - 1} rows)"), [rows]
    lines = [f"| {' | '.join(f'{cell:{side}{width}}' for cell, side, width in zip(row, '><<>', wide))} |" for row in rows]
    rule = "+" + "+".join("-" * (width + 2) for width in wide) + "+"
    if style == "mark":
        return text_of("# Balances", "", lines[0], "|" + "|".join("-" * (width + 2) for width in wide) + "|", lines[1:], "", "See above."), [rows]
    if style == "lines":
        lines = [line.replace("|", "\u2502") for line in lines]
        return text_of(rule.replace("-", "\u2500").replace("+", "\u252c"), lines[0], rule.replace("-", "\u2500").replace("+", "\u253c"), lines[1:],
                       rule.replace("-", "\u2500").replace("+", "\u2534")), [rows]
    return text_of(rule, lines[0], rule, lines[1:], rule, f"{len(rows) - 1} rows in set (0.00 sec)"), [rows]


def invoice(rng):
    rows, lines, total = [["Pos", "Article", "Description", "Qty", "Price", "Amount"]], [], 0
    for i in range(rng.randint(4, 18)):
        quantity, price = rng.randint(1, 40), rng.randrange(100, 90000)
        words = some(rng, rng.randint(1, 7)).split()
        parts = [" ".join(words[k:k + 4]) for k in range(0, len(words), 4)]
        total += quantity * price
        row = [str(i + 1), f"A-{rng.randrange(1000):03d}", " ".join(words), str(quantity), f"{price / 100:,.2f}", f"{quantity * price / 100:,.2f}"]
        lines.append("{:>3}  {:<9}{:<30}{:>5}{:>12}{:>14}".format(row[0], row[1], parts[0], *row[3:]))
        lines += [" " * 14 + part for part in parts[1:]]
        rows.append(row)
    head = [f"{some(rng, 2).title()} Ltd.", f"{rng.randint(1, 99)} {some(rng, 1).title()} Street", "", f"INVOICE No. {rng.randrange(10000)}        Date: {day(rng).isoformat()}", "Customer: " + person(rng), "",
            "{:>3}  {:<9}{:<30}{:>5}{:>12}{:>14}".format(*rows[0]), "-" * 73]
    foot = ["-" * 73, f"{'Subtotal':<52}{total / 100:>21,.2f}", f"{'VAT 20 %':<52}{total / 500:>21,.2f}", f"{'Total due':<52}{total * 1.2 / 100:>21,.2f}", "", "Payable within 30 days. Thank you for your order."]
    return text_of(head, lines, foot), [rows]


def bank_statement(rng):
    """The date is printed once a day; debit and credit stand in columns of their own."""
    rows, lines, balance = [["Date", "Details", "Paid out", "Paid in", "Balance"]], [], 100000
    for when in sorted({day(rng) for _ in range(rng.randint(6, 20))}):
        for k in range(rng.randint(1, 3)):
            amount = rng.randrange(100, 90000)
            paid_in = rng.random() < 0.4
            balance += amount if paid_in else -amount
            row = [when.strftime("%d.%m.%Y"), some(rng, rng.randint(1, 4)).upper(), "" if paid_in else f"{amount / 100:,.2f}", f"{amount / 100:,.2f}" if paid_in else "",
                   f"{abs(balance) / 100:,.2f}" + ("-" if balance < 0 else "")]
            lines.append("{:<12}{:<32}{:>12}{:>12}{:>14}".format(row[0] if k == 0 else "", *row[1:4], row[4] + (" " if not row[4].endswith("-") else "")).rstrip())
            rows.append([when.isoformat(), *row[1:]])
    head = ["STATEMENT OF ACCOUNT", "", "Account: 12-345-678     Sheet 3", "", "{:<12}{:<32}{:>12}{:>12}{:>13}".format(*rows[0]), ""]
    return text_of(head, lines), [rows]


def matrix(rng):
    """Months over two blocks with the same labels in front."""
    labels, tables, lines = rng.sample([word.title() for word in WORD], rng.randint(5, 12)), [], ["SALES BY REGION AND MONTH", ""]
    for block in (MONTH[:6], MONTH[6:]):
        rows = [["Region", *block]] + [[label] + [str(rng.randrange(10**rng.randint(2, 5))) for _ in block] for label in labels]
        lines += [f"{row[0]:<12}" + "".join(f"{cell:>10}" for cell in row[1:]) for row in rows] + [""]
        tables.append(rows)
    return text_of(lines), tables


def mailing_labels(rng):
    """Three labels beside each other, four lines each."""
    people = [[person(rng), f"{rng.randint(1, 99)} {some(rng, 1).title()} {rng.choice(('Road', 'Lane', 'Street'))}", f"{some(rng, 1).title()} {rng.randrange(10000, 99999)}"] for _ in range(3 * rng.randint(5, 15))]
    lines = []
    for i in range(0, len(people), 3):
        lines += ["".join(f"{entry[k]:<32}" for entry in people[i:i + 3]).rstrip() for k in range(3)] + [""]
    return text_of(lines), [[["", "", ""], *people]]


def two_up(rng):
    """A list in two halves beside each other."""
    rows = [[str(100 + i), person(rng), f"{rng.randrange(100, 99999) / 100:.2f}"] for i in range(2 * rng.randint(8, 20))]
    one = "{:<6}{:<22}{:>10}"
    head = one.format("No", "Name", "Amount")
    half = len(rows) // 2
    lines = [one.format(*left) + "     " + one.format(*right) for left, right in zip(rows[:half], rows[half:])]
    return text_of("MEMBERS", "", head + "     " + head, lines), [[["No", "Name", "Amount"], *rows]]


def chart_of_accounts(rng):
    rows, lines = [["^Group", "^Subgroup", "Account", "Debit", "Credit"]], []
    for group in ("Assets", "Liabilities", "Revenue"):
        lines.append(group)
        for sub in rng.sample(("Current", "Fixed", "Other", "Foreign"), rng.randint(1, 3)):
            lines.append("  " + sub)
            for _ in range(rng.randint(2, 6)):
                name, amount, debit = some(rng, 2).title(), money(rng), rng.random() < 0.5
                lines.append(f"{'    ' + name:<40}" + (f"{amount:>14}" if debit else f"{amount:>30}"))
                rows.append([group, sub, name, amount if debit else "", "" if debit else amount])
    return text_of("TRIAL BALANCE", "", f"{'Account':<40}{'Debit':>14}{'Credit':>16}", "", lines), [rows]


def no_names(rng):
    """A file of fixed width: codes, names and figures that touch."""
    rows = [[f"{rng.randrange(10**6):06d}", person(rng).upper(), day(rng).strftime("%Y%m%d"), f"{rng.randrange(10**7):09d}", rng.choice("ABC")] for _ in range(rng.randint(30, 90))]
    return text_of(["{}{:<24}{}{}{}".format(*row) for row in rows]), [[[""] * 5, *[[*row[:2], f"{row[2][:4]}-{row[2][4:6]}-{row[2][6:]}", *row[3:]] for row in rows]]]


def log_lines(rng):
    rows, lines = [["", "", "", ""]], []
    for i in range(rng.randint(30, 90)):
        row = [f"2024-03-{1 + i // 10:02d}", f"{i % 24:02d}:{rng.randrange(60):02d}:{rng.randrange(60):02d}", rng.choice(("INFO", "WARN", "ERROR")), some(rng, rng.randint(3, 9))]
        lines.append("{} {} {:<5} {}".format(*row))
        rows.append(row)
    return text_of(lines), [rows]


def activity(rng):
    """Repeated headings that begin with a time, blank lines between, averages at the end."""
    rows, lines = [["Time", "CPU", "%user", "%nice", "%system", "%iowait", "%steal", "%idle"]], ["Linux 6.1.0 (example)   03/11/24   _x86_64_   (2 CPU)", ""]
    for hour in range(rng.randint(4, 12)):
        for cpu in ("all", "0", "1"):
            if cpu == "all":
                lines.append(f"{hour:02d}:10:01        CPU     %user     %nice   %system   %iowait    %steal     %idle")
            row = [f"{hour:02d}:20:01", cpu] + [f"{rng.random() * 40:.2f}" for _ in range(6)]
            lines.append(f"{row[0]:<11}{cpu:>8}" + "".join(f"{cell:>10}" for cell in row[2:]))
            rows.append(row)
        lines.append("")
    lines.append("Average:        CPU     %user     %nice   %system   %iowait    %steal     %idle")
    lines += [f"{'Average:':<11}{cpu:>8}" + "".join(f"{rng.random() * 40:>10.2f}" for _ in range(6)) for cpu in ("all", "0", "1")]
    return text_of(lines), [rows]


def drifting(rng):
    """Columns parted by two blanks and more that don't stand below each other, as text taken from a proportional print."""
    rows = [["Invoice", "Customer", "Date", "Amount"]]
    rows += [[f"INV-{rng.randrange(10**4):04d}", person(rng), day(rng).strftime("%d/%m/%Y"), money(rng)] for _ in range(rng.randint(15, 50))]
    truth = [rows[0]] + [[*row[:2], "-".join(reversed(row[2].split("/"))), row[3]] for row in rows[1:]]
    return text_of("Open invoices", "", [(" " * rng.randint(0, 2)) + "".join(cell + " " * rng.randint(2, 9) for cell in row).rstrip() for row in rows]), [truth]


def payroll(rng):
    """Names over two lines with rulers, a heading of pages, groups, totals of groups and a grand total."""
    rows, lines, page = [["^Department No", "^Department", "Empl No", "Employee Name", "Hours Worked", "Gross Pay", "Net Pay"]], [], 0
    head = ["EMPL   EMPLOYEE                   HOURS        GROSS          NET", "NO     NAME                      WORKED          PAY          PAY",
            "-----  ----------------------  --------  -----------  -----------"]
    line = "{:<5}  {:<22}  {:>8}  {:>11}  {:>11}"
    grand = 0
    for number in sorted(rng.sample(range(10, 99), rng.randint(3, 6))):
        page += 1
        lines += ([""] * 2 if page > 1 else []) + [f"{'ACME MILLS':<40}PAGE {page:>4}", "PAYROLL REGISTER", "", f"DEPARTMENT: {number} {WORD[number % 20].upper()}", "", *head]
        total = 0
        for _ in range(rng.randint(3, 15)):
            gross = rng.randrange(100000, 900000)
            row = [f"{rng.randrange(10**5):05d}", person(rng), f"{rng.randrange(100, 2000) / 10:.1f}", f"{gross / 100:,.2f}", f"{gross * 7 // 10 / 100:,.2f}"]
            total += gross
            lines.append(line.format(*row))
            rows.append([str(number), WORD[number % 20].upper(), *row])
        lines += ["", line.format("", "DEPARTMENT TOTAL", "", f"{total / 100:,.2f}", "")]
        grand += total
    lines += ["", line.format("", "GRAND TOTAL", "", f"{grand / 100:,.2f}", "")]
    return text_of(lines), [rows]


def three_tables(rng):
    """Different tables under titles."""
    stock = [["Part", "Name", "On hand", "Cost"]] + [[f"P{rng.randrange(10**4):04d}", some(rng, 2), str(rng.randrange(900)), money(rng, 90)] for _ in range(rng.randint(6, 20))]
    orders = [["Order", "Date", "Customer", "Lines", "Value"]] + [[str(5000 + i), day(rng).isoformat(), person(rng), str(rng.randint(1, 9)), money(rng)] for i in range(rng.randint(6, 20))]
    staff = [["Name", "Team", "Phone"]] + [[person(rng), some(rng, 1), f"0{rng.randrange(10**3):03d} {rng.randrange(10**5):05d}"] for _ in range(rng.randint(8, 16))]
    return text_of("1. STOCK", "", laid(stock, "<<>>", "   "), "", "", "2. ORDERS", "", laid(orders, "><<>>", "   "), "", "", "3. STAFF", "", laid(staff, "<<<", "   ")), [stock, orders, staff]


def german_list(rng):
    """Umlauts, decimal commas, dates with points."""
    rows = [["Konto", "Bezeichnung", "Datum", "Betrag"]]
    for _ in range(rng.randint(12, 40)):
        amount = rng.randrange(100, 9999999)
        printed = f"{amount / 100:,.2f}".translate(str.maketrans(",.", ".,"))
        rows.append([f"{rng.randrange(1000, 9999)}", rng.choice(("Bürobedarf", "Löhne", "Gebühren", "Größe übrig", "Miete")) + " " + some(rng, 1), day(rng).strftime("%d.%m.%Y"), printed + rng.choice(("", "-"))])
    lines = [f"{row[0]:<8}{row[1]:<28}{row[2]:<12}{row[3].rstrip('-'):>14}{'-' if row[3].endswith('-') else ''}" for row in rows]
    truth = [rows[0]] + [[*row[:2], "-".join(reversed(row[2].split("."))), ("-" if row[3].endswith("-") else "") + row[3].strip("-").replace(".", "").replace(",", ".")] for row in rows[1:]]
    return text_of("BUCHUNGSLISTE", "", lines[0], "=" * 62, lines[1:]), [truth]


def two_line_records(rng):
    """Names over two lines, values below each of them."""
    rows, lines = [["Account", "Customer", "Balance", "Street", "City", "Phone"]], []
    form = ["{:<10}{:<28}{:>14}", "          {:<28}{:<16}{:>14}"]
    for _ in range(rng.randint(10, 30)):
        row = [str(rng.randrange(10**6, 10**7)), person(rng), money(rng), f"{rng.randint(1, 99)} {some(rng, 1).title()} Road", some(rng, 1).title(), f"555-{rng.randrange(10**4):04d}"]
        lines += [form[0].format(*row[:3]), form[1].format(*row[3:])]
        rows.append(row)
    return text_of("CUSTOMER MASTER LIST", "", form[0].format(*rows[0][:3]), form[1].format(*rows[0][3:]), "-" * 68, lines), [rows]


def logins(rng):
    rows = [[""] * 5]
    for _ in range(rng.randint(15, 50)):
        when = day(rng)
        out = rng.choice(("still logged in", f"- {rng.randrange(24):02d}:{rng.randrange(60):02d}  (00:{rng.randrange(60):02d})", f"- down   (0{rng.randrange(9)}:{rng.randrange(60):02d})"))
        rows.append([rng.choice(FIRST).lower(), rng.choice(("pts/0", "pts/1", "tty1", "console")), rng.choice(("", f"10.0.0.{rng.randrange(255)}", some(rng, 1) + ".local")),
                     f"{'Mon Tue Wed Thu Fri Sat Sun'.split()[when.weekday()]} {MONTH[when.month - 1]} {when.day:>2} {rng.randrange(24):02d}:{rng.randrange(60):02d}", out])
    lines = [f"{row[0]:<9}{row[1]:<13}{row[2]:<17}{row[3]}   {row[4]}" for row in rows[1:]]
    return text_of(lines, "", "wtmp begins Mon Jan  1 08:00:12 2024"), [rows]


LAYOUTS = {name: function for name, function in list(globals().items())
           if callable(function) and name not in ("some", "person", "money", "day", "laid", "text_of")}
