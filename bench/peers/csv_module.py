# SPDX-License-Identifier: GPL-3.0-only
"""csv_module.py LIST.csv [OUT.csv]: reads a list with Python's own csv, or writes what was read, and prints the seconds that took and
how many rows there were."""
import csv
import sys
import time

begin = time.perf_counter()
with open(sys.argv[1], encoding="utf-8", newline="") as file:
    rows = list(csv.reader(file))

if len(sys.argv) > 2:
    begin = time.perf_counter()
    with open(sys.argv[2], "w", encoding="utf-8", newline="") as file:
        csv.writer(file, quoting=csv.QUOTE_ALL).writerows(rows)

print(time.perf_counter() - begin, len(rows) - 1)
