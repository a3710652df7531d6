// SPDX-License-Identifier: GPL-3.0-only
// subsrt.js LIST.srt: reads subtitles, and prints the seconds that took and how many there were.
const fs = require("fs");
const subsrt = require("subsrt");

const begin = process.hrtime.bigint();
const captions = subsrt.parse(fs.readFileSync(process.argv[2], "utf8"), { format: "srt" });
console.log(Number(process.hrtime.bigint() - begin) / 1e9, captions.length);
