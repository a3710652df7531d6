# SPDX-License-Identifier: GPL-3.0-only
"""sqlite_list.py WORK LIST.csv: puts a list that SQLite has in memory in order, and prints the seconds that took and how many rows came of
it. WORK is sort-time or sort-cue."""
import csv
import sqlite3
import sys
import time

work, path = sys.argv[1:3]
with open(path, encoding="utf-8", newline="") as file:
    rows = list(csv.reader(file))[1:]

base = sqlite3.connect(":memory:")
base.execute("CREATE TABLE list (" + ", ".join(f"c{i} TEXT" for i in range(11)) + ")")
base.executemany("INSERT INTO list VALUES (" + ", ".join("?" * 11) + ")", rows)
base.commit()

# "R3 1200": the reel and the number, both as numbers.
order = "c0" if work == "sort-time" else "CAST(substr(c6, 2, 1) AS INTEGER), CAST(substr(c6, 4) AS INTEGER)"
begin = time.perf_counter()
numbers = base.execute(f"SELECT rowid FROM list ORDER BY {order}").fetchall()
print(time.perf_counter() - begin, len(numbers))
