#!/usr/bin/env python3
"""Business reports become their tables without help, and so do those of the next months by the recipe of the first one.

  tests/suggest/months_test.py --program build-dev/bin/quillon
"""

import argparse
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent.parent / "scripts"))

from suggest_months import business, measure  # noqa: E402
from suggest_report import Runner  # noqa: E402

# Of a bank statement over pages some texts that go on below are parted from their row by the page's end; names of funds
# whose words stand below each other in most rows are taken for columns.
SHARES = {"bank": 0.9, "brokers": 0}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True)
    options = parser.parse_args()
    faults = []
    with tempfile.TemporaryDirectory(prefix="quillon-months-") as folder:
        results = measure(Runner(options.program), business(1, 3, Path(folder)), False)
    for name, reports in results.items():
        for month, share in enumerate(reports[0], 1):
            if share < SHARES.get(name, 1):
                faults.append(f"{name}, month {month}: {100 * share:.0f} % of the records")
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults or not results else 0


if __name__ == "__main__":
    sys.exit(main())
