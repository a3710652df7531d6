# SPDX-License-Identifier: GPL-3.0-only
"""reportlab_sheet.py LIST.csv OUT.pdf: draws a cue sheet with the boxes of the takes, and prints the seconds that took and how many cues
there were."""
import csv
import sys
import time

from reportlab.lib.pagesizes import A4
from reportlab.lib.utils import simpleSplit
from reportlab.pdfgen.canvas import Canvas

MARGIN, HEIGHT, GAP, RIGHT, TAKES = 30, 98, 8, 100, 25
WIDTH, LENGTH = A4


def text(canvas, x, y, width, size, words):
    canvas.setFont("Helvetica", size)
    for line in simpleSplit(words, "Helvetica", size, width):
        y -= 1.2 * size
        canvas.drawString(x, y, line)


def cue(canvas, row, top):
    right = WIDTH - MARGIN - RIGHT
    fields = MARGIN + 67
    canvas.rect(MARGIN, top - HEIGHT, WIDTH - 2 * MARGIN, HEIGHT)
    text(canvas, MARGIN + 4, top - 4, right - MARGIN - 8, 11, row[2])
    for place, label, words in ((34, "NOTES", row[7]), (52, "REASON", row[9])):
        text(canvas, MARGIN + 4, top - place, 60, 8, label)
        canvas.rect(fields, top - place - 12, right - fields - 4, 14)
        text(canvas, fields + 3, top - place, right - fields - 8, 8, words)
    for place, size, words in ((4, 11, row[6]), (24, 8, row[3]), (40, 8, row[0]), (54, 8, row[1])):
        text(canvas, right + 4, top - place, RIGHT - 8, size, words)
    side = (right - MARGIN) / TAKES
    for take in range(TAKES):
        canvas.rect(MARGIN + take * side, top - HEIGHT, side, side)
        text(canvas, MARGIN + take * side + 5, top - HEIGHT + side - 4, side, 8, str(take + 1))


with open(sys.argv[1], encoding="utf-8", newline="") as file:
    rows = list(csv.reader(file))[1:]

begin = time.perf_counter()
canvas = Canvas(sys.argv[2], pagesize=A4, pageCompression=1)
top = LENGTH - MARGIN
for row in rows:
    if top - HEIGHT < MARGIN:
        canvas.showPage()
        top = LENGTH - MARGIN
    cue(canvas, row, top)
    top -= HEIGHT + GAP
canvas.save()
print(time.perf_counter() - begin, len(rows))
