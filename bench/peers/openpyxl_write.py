# SPDX-License-Identifier: GPL-3.0-only
"""openpyxl_write.py TABLE.json OUT.xlsx: writes the rows of a table in the mode that keeps none, and prints the seconds that took."""
import json
import sys
import time

import openpyxl

with open(sys.argv[1], encoding="utf-8") as file:
    rows = json.load(file)

begin = time.perf_counter()
book = openpyxl.Workbook(write_only=True)
sheet = book.create_sheet("Cues")
for row in rows:
    sheet.append(row)
book.save(sys.argv[2])
print(time.perf_counter() - begin)
