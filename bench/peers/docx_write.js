// SPDX-License-Identifier: GPL-3.0-only
// docx_write.js LIST.csv OUT.docx: writes the tables of a cue sheet, and prints the seconds that took and how many cues there were.
const fs = require("fs");
const { Document, Packer, Paragraph, Table, TableCell, TableRow, TextRun } = require("docx");

// No cell of the list holds a comma or a line break.
const lines = fs.readFileSync(process.argv[2], "utf8").trimEnd().split("\n").slice(1);
const rows = lines.map(line => line.split(",").map(cell => cell.replaceAll('"', "")));

const cell = (columnSpan, ...texts) =>
    new TableCell({ columnSpan, children: texts.map(text => new Paragraph({ children: [new TextRun(text)] })) });

const block = ([start, end, text, character, , , cue, notes]) =>
    new Table({
        rows: [
            new TableRow({ children: [cell(2, text), cell(1, cue, character, start, end)] }),
            new TableRow({ children: [cell(1, "NOTES"), cell(1, notes), cell(1, "")] }),
        ],
    });

const begin = process.hrtime.bigint();
const children = rows.flatMap(row => [block(row), new Paragraph("")]);
Packer.toBuffer(new Document({ sections: [{ children }] })).then(bytes => {
    fs.writeFileSync(process.argv[3], bytes);
    console.log(Number(process.hrtime.bigint() - begin) / 1e9, rows.length);
});
