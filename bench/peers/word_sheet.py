# SPDX-License-Identifier: GPL-3.0-only
"""word_sheet.py JSON DOCX: writes the tables of a cue sheet with python-docx, to measure against.

The same cells with the same texts and styles as in ours; pictures, borders and shades are left out, which makes it the lighter work.
"""
import json
import sys

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


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        sheet = json.load(file)
    document = docx.Document()
    styles = {name: document.styles.add_style("Cue " + name, 1) for name in ("text", "notes", "number", "details", "label", "take")}
    for cue in sheet["cueContentList"]:
        write_block(document, styles, cue)
    document.save(sys.argv[2])


main()
