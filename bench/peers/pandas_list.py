# SPDX-License-Identifier: GPL-3.0-only
"""pandas_list.py WORK LIST.csv [OUT.csv]: reads, writes, sorts or filters a list, and prints the seconds that took and how many rows came
of it. WORK is csv-in, csv-out, sort-time, sort-cue or filter."""
import sys
import time

import pandas

work, path = sys.argv[1:3]
begin = time.perf_counter()
table = pandas.read_csv(path, dtype=str, keep_default_na=False)

if work != "csv-in":
    begin = time.perf_counter()

if work == "csv-out":
    table.to_csv(sys.argv[3], index=False)
elif work == "sort-time":
    table = table.sort_values("Start TC", kind="stable")
elif work == "sort-cue":
    # "R3 1200": the reel and the number, both as numbers.
    parts = table["Cue Number"].str[1:].str.split(" ", n=1, expand=True).astype(int)
    table = table.loc[parts.sort_values([0, 1], kind="stable").index]
elif work == "filter":
    table = table[table["Text"].str.contains("captain never", regex=False)]

print(time.perf_counter() - begin, len(table))
