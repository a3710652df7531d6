# SPDX-License-Identifier: GPL-3.0-only
"""srt_module.py LIST.srt: reads subtitles with python3-srt, and prints the seconds that took and how many there were."""
import sys
import time

import srt

begin = time.perf_counter()
with open(sys.argv[1], encoding="utf-8") as file:
    subtitles = list(srt.parse(file.read()))
print(time.perf_counter() - begin, len(subtitles))
