# SPDX-License-Identifier: GPL-3.0-only
"""openpyxl_write.py TABLE OUT.xlsx: writes the rows of a table (.json or .csv) in the mode that keeps none, and prints the seconds that
took and how many rows there were."""
import csv
import json
import sys
import time

import openpyxl

with open(sys.argv[1], encoding="utf-8", newline="") as file:
    rows = json.load(file) if sys.argv[1].endswith(".json") else list(csv.reader(file))

begin = time.perf_counter()
book = openpyxl.Workbook(write_only=True)
sheet = book.create_sheet("Cues")
for row in rows:
    sheet.append(row)
book.save(sys.argv[2])
print(time.perf_counter() - begin, len(rows) - 1)
