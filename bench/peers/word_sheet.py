# SPDX-License-Identifier: GPL-3.0-only
"""word_sheet.py LIST DOCX: writes the tables of a cue sheet (.json or .csv) with python-docx, to measure against, and prints the seconds
that took and how many cues there were.

The same cells with the same texts and styles as in ours; pictures, borders and shades are left out, which makes it the lighter work.
"""
import csv
import json
import sys
import time

import docx

COLUMNS = 26


def row_of(table, number, spans):
    cells = table.rows[number].cells
    merged, place = [], 0
    for span in spans:
        merged.append(cells[place].merge(cells[place + span - 1]) if span > 1 else cells[place])
        place += span
    return merged


def fill(cell, text, style):
    paragraph = cell.paragraphs[0]
    paragraph.style = style
    paragraph.add_run(text)


def write_block(document, styles, cue):
    notes = [(label, cue[key]["text"]) for label, key in (("NOTES", "cueNotes"), ("ENG. NOTES", "cueEngNotes")) if cue[key]["text"]]
    takes = cue.get("cueTakes")
    table = document.add_table(1 + len(notes) + (1 if takes else 0), COLUMNS)

    text, details = row_of(table, 0, (25, 1))
    fill(text, cue["cueText"]["text"], styles["text"])
    fill(details, cue["cueNumber"], styles["number"])
    for key in ("charName", "startTC", "endTC"):
        details.add_paragraph(cue[key], styles["details"])

    for number, (label, value) in enumerate(notes, 1):
        left, right, _ = row_of(table, number, (4, 21, 1))
        fill(left, label, styles["label"])
        fill(right, value, styles["notes"])

    if takes:
        for take, cell in enumerate(table.rows[-1].cells[:25], 1):
            fill(cell, str(take), styles["take"])

    document.add_paragraph()


def cues_of(path):
    with open(path, encoding="utf-8", newline="") as file:
        if path.endswith(".json"):
            return json.load(file)["cueContentList"]
        return [
            {
                "cueText": {"text": row[2]},
                "cueNumber": row[6],
                "charName": row[3],
                "startTC": row[0],
                "endTC": row[1],
                "cueNotes": {"text": row[7]},
                "cueEngNotes": {"text": row[8]},
                "cueTakes": None,
            }
            for row in list(csv.reader(file))[1:]
        ]


def main():
    cues = cues_of(sys.argv[1])
    begin = time.perf_counter()
    document = docx.Document()
    styles = {name: document.styles.add_style("Cue " + name, 1) for name in ("text", "notes", "number", "details", "label", "take")}
    for cue in cues:
        write_block(document, styles, cue)
    document.save(sys.argv[2])
    print(time.perf_counter() - begin, len(cues))


main()
