# SPDX-License-Identifier: GPL-3.0-only
"""python_list.py WORK LIST.csv: sorts a list with what Python brings, and with natsort; prints the seconds that took and how many rows
came of it. WORK is sort-time or sort-cue."""
import csv
import operator
import sys
import time

work, path = sys.argv[1:3]
with open(path, encoding="utf-8", newline="") as file:
    rows = list(csv.reader(file))[1:]

if work == "sort-cue":
    import natsort

begin = time.perf_counter()
if work == "sort-time":
    rows = sorted(rows, key=operator.itemgetter(0))
else:
    rows = natsort.natsorted(rows, key=operator.itemgetter(6))
print(time.perf_counter() - begin, len(rows))
