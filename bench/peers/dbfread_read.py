# SPDX-License-Identifier: GPL-3.0-only
"""dbfread_read.py LIST.dbf: reads a dBase table, and prints the seconds that took and how many records there were."""
import sys
import time

import dbfread

begin = time.perf_counter()
records = list(dbfread.DBF(sys.argv[1], encoding="latin-1"))
print(time.perf_counter() - begin, len(records))
