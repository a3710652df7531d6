#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-only
"""What bench/compare counts and judges. Stand-ins for our programs take a second for everything."""
import os
import signal
import subprocess
import sys
import tempfile
import unittest
import unittest.mock
import zipfile

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.realpath(__file__)), "../../bench"))

from compared import report  # noqa: E402
from compared.measuring import Figure, Measuring, Place  # noqa: E402
from compared.works import WORKS, Above, Ahead, Detail, Need, Peer, Prepared, Under, Within, Work, json_rows, overmarks, pieces  # noqa: E402

SHELL = Need("program", "sh", "")
NOWHERE = Need("program", "no program has this name", "")


def took(name, side, seconds, failure="", details=None):
    return Figure(name, side, [seconds] if seconds else [], [seconds or 1.0], failure=failure, details=details)


def peer(name, need=SHELL, **more):
    return Peer(name, need, ("true",), **more)


def lines_of(target, figures, absent=None, rows=100):
    work = Work("w", "W", ours=("w", ("by text", "w.by-text")), floors=(("floor", "w.floor"), ("other floor", "w.other")), targets=(target,))
    work = Work(**{**work.__dict__, "peers": (peer("Miller"), peer("pandas"), peer("Node"))})
    return [report.verdict(answer) for answer in report.judged(work, rows, figures, absent or {})]


class Judged(unittest.TestCase):
    def test_a_target_that_is_met_tells_both_times(self):
        figures = [took("Overmarks", "library", 1.0), took("Miller", "peer", 3.0), took("pandas", "peer", 4.0), took("Node", "peer", 5.0)]
        self.assertEqual(lines_of(Ahead(2), figures), ["met     2 times as fast as Miller: 1.000 s of 1.500 s"])
        self.assertEqual(lines_of(Ahead(4), figures), ["MISSED  4 times as fast as Miller: 1.000 s of 0.750 s"])

    def test_another_figure_of_ours_never_stands_in_for_the_one_that_failed(self):
        figures = [took("Overmarks", "library", None, "broken"), took("by text", "library", 0.001)]
        self.assertEqual(lines_of(Under(0.03, 100), figures), ["unknown under 30.00 ms: Overmarks: failed"])

    def test_another_limit_never_stands_in_for_the_one_that_failed_or_is_not_there(self):
        figures = [took("Overmarks", "library", 1.0), took("floor", "limit", 2.0, "broken"), took("other floor", "limit", 9.0)]
        self.assertEqual(lines_of(Within(3), figures), ["unknown within 3 times: floor: failed"])
        self.assertEqual(lines_of(Above(0.5), figures), ["unknown no more than 0.5 s above floor: failed"])
        del figures[1]
        self.assertEqual(lines_of(Within(3), figures, {"floor": "not installed"}), ["unknown within 3 times: floor: not installed"])

    def test_a_detail_of_a_figure_that_failed_is_unknown(self):
        figures = [took("Overmarks", "library", 1.0, "broken", {"bytes": 2})]
        self.assertEqual(lines_of(Detail("Overmarks", "bytes", 3), figures), ["unknown Overmarks: bytes at most 3: failed"])
        figures[0].failure = ""
        self.assertEqual(lines_of(Detail("Overmarks", "bytes", 3), figures), ["met     Overmarks: bytes at most 3 (it is 2)"])

    def test_peers_that_a_target_is_judged_without_are_told(self):
        figures = [took("Overmarks", "library", 1.0), took("pandas", "peer", None), took("Node", "peer", 3.0)]
        absent = {"Miller": "not installed"}
        self.assertEqual(
            lines_of(Ahead(1), figures, absent),
            ["met     as fast as Node (without Miller: not installed; pandas: hardly more than a start): 1.000 s of 3.000 s"],
        )
        self.assertEqual(
            lines_of(Ahead(1, ("Miller", "pandas")), figures, absent),
            ["unknown as fast as Miller, pandas (without Miller: not installed; pandas: hardly more than a start): nobody to compare with"],
        )
        self.assertEqual(lines_of(Ahead(1, but=("Miller", "pandas")), figures, absent), ["met     as fast as Node: 1.000 s of 3.000 s"])

    def test_they_are_told_in_json_too(self):
        figures = [took("Overmarks", "library", 1.0), took("Node", "peer", 3.0, "broken")]
        work = Work("w", "W", ours=("w",), peers=(peer("Node"),), targets=(Ahead(1),))
        answer = report.as_json(work, 100, figures, {})["targets"][0]
        self.assertEqual((answer["met"], answer["without"]), (None, [{"peer": "Node", "why": "failed"}]))

    def test_seconds_are_a_target_for_one_number_of_rows(self):
        figures = [took("Overmarks", "library", 0.01)]
        self.assertEqual(lines_of(Under(0.03, 100), figures), ["met     under 30.00 ms: 10.00 ms of 30.00 ms"])
        self.assertEqual(lines_of(Under(0.03, 100000), figures), ["unknown under 30.00 ms: it is meant for 100 000 rows"])

    def test_growth_is_judged_as_it_is_printed(self):
        self.assertEqual(report.growth_verdict(1.1003, True), "met")
        self.assertEqual(report.growth_verdict(1.1051, True), "MISSED: 1.1 at most")
        self.assertEqual(report.growth_verdict(1.0, False), "unknown: it failed with another number of rows")

    def test_a_ratio_is_to_the_first_of_ours_or_to_none(self):
        work = Work("w", "W", ours=("w", ("by text", "w.by-text")))
        figures = [took("Overmarks", "library", 1.0, "broken"), took("by text", "library", 2.0)]
        self.assertEqual([line[1:3] for line in report.rows_of(work, figures)[0][1]], [("failed", "-"), ("2.000 s", "-")])


class Counted(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = os.path.join(folder.name, "file")

    def test_rows_of_json_are_counted_without_their_titles(self):
        with open(self.path, "w", encoding="utf-8") as file:
            file.write('{\n "rows": [\n  [\n   "Text"\n  ],\n  [\n   "  [ no row"\n  ]\n ]\n}\n')
        self.assertEqual(json_rows(1)(self.path), 1)

    def test_pieces_are_found_across_the_blocks_that_are_read(self):
        text = b"x" * ((1 << 20) - 3) + b"<row />" + b"<row />"
        with zipfile.ZipFile(self.path, "w") as archive:
            archive.writestr("part", text)
        self.assertEqual(pieces("part", b"<row ", 1)(self.path), 1)

    def test_all_names_of_a_work_are_different(self):
        for work in WORKS:
            names = [name for name, _ in work.own_works()] + [p.name for p in (*work.limits(), *work.peers)]
            names += [work.program.name] if work.program else []
            self.assertEqual(len(names), len(set(names)), work.name)


STARTER = """#!/bin/sh
out=$1; shift
"$@" >"$out"; status=$?
echo "{\\"seconds\\": 1.0, \\"peakKiB\\": 1, \\"status\\": $status}"
"""
# Of a work "w.7" the count is 7.
WORKER = """#!/bin/sh
case $1 in
    --make) [ "$3" != 13 ] && mkdir -p "$2" ;;
    *) echo "{\\"seconds\\": 1.0, \\"peakKiB\\": 1, \\"count\\": ${1#w.}}" ;;
esac
"""


class Measured(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.place = Place(folder.name)
        os.makedirs(self.place.programs)
        self.program("compare_process", STARTER)
        self.program("compare_works", WORKER)

    def program(self, name, text):
        path = os.path.join(self.place.programs, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        os.chmod(path, 0o755)

    def failures(self, work, rows=7, **more):
        measuring = Measuring(self.place, work, rows, {"w.7", "w.8", "w.9"}, **more)
        return {figure.name: figure.failure for figure in measuring.run(1) if figure.failure}, measuring.absent

    def test_a_wrong_number_is_the_failure_of_who_has_it(self):
        work = Work("w", "W", ours=("w.7",), floors=(("floor", "w.8"),))
        self.assertEqual(self.failures(work)[0], {"floor": "8 rows, not 7"})

    def test_where_the_number_is_not_known_the_limit_is_right_and_not_ours(self):
        work = Work("w", "W", ours=("w.8",), floors=(("floor", "w.7"),), peers=(Peer("peer", Need("work", "w.7", ""), ()),), expects=None)
        self.assertEqual(self.failures(work)[0], {"Overmarks": "8 rows, not 7"})

    def test_without_the_limit_nobody_is_right(self):
        work = Work("w", "W", ours=("w.8",), floors=(("floor", "none"),), peers=(Peer("peer", Need("work", "w.7", ""), ()),), expects=None)
        why = "rows, others have others, and the limit that would tell who is right has none"
        self.assertEqual(self.failures(work), ({"Overmarks": f"8 {why}", "peer": f"7 {why}"}, {"floor": "not installed"}))

    def test_who_is_not_measured_is_absent_with_a_reason(self):
        work = Work("w", "W", ours=("w.7",), peers=(peer("gone", NOWHERE), peer("slow", most_rows=5)))
        self.assertEqual(self.failures(work)[1], {"gone": "not installed", "slow": "only up to 5 rows"})
        self.assertEqual(self.failures(work, with_peers=False)[1], {"gone": "not asked for", "slow": "not asked for"})

    def test_a_document_that_can_not_be_made_fails_those_who_read_it_alone(self):
        made = Prepared("sheet", ("sh", "-c", "echo half >'{folder}/sheet'; echo why >&2; false"), ("w.7",))
        reading = Peer("reading", SHELL, ("cat", "{folder}/sheet"), lambda path: None)
        other = Peer("other", SHELL, ("echo", "1.0", "8"))
        work = Work("w", "W", ours=("w.7", ("again", "w.8")), peers=(reading, other), prepared=(made,))
        why = "sheet can't be made: why"
        for _ in ("the first time", "and with what was left behind"):
            self.assertEqual(self.failures(work, 8)[0], {"Overmarks": why, "reading": why})

    def test_nothing_of_a_document_stays_when_its_making_is_stopped(self):
        work = Work("w", "W", ours=("w.7",), prepared=(Prepared("sheet", ("true",), ()),))
        sheet = os.path.join(self.place.results, "7/sheet")
        seen = []

        def stopped(_, words):
            seen.append(words)
            open(sheet, "w", encoding="utf-8").close()
            raise KeyboardInterrupt

        with unittest.mock.patch.object(Measuring, "_start", stopped):
            self.assertRaises(KeyboardInterrupt, self.failures, work)
        self.assertEqual(seen, [("true",)])
        self.assertFalse(os.path.exists(sheet))

    def test_a_process_ends_when_the_measuring_is_stopped(self):
        measuring = Measuring(self.place, Work("w", "W", ours=("w.7",)), 7, {"w.7"})
        with unittest.mock.patch.object(subprocess.Popen, "communicate", side_effect=KeyboardInterrupt):
            with unittest.mock.patch.object(os, "killpg", side_effect=os.killpg) as killed:
                self.assertRaises(KeyboardInterrupt, measuring._start, ("sleep", "1000"))
        killed.assert_called_once_with(unittest.mock.ANY, signal.SIGKILL)

    def test_lists_that_can_not_be_made_fail_what_needs_them_and_no_more(self):
        work = Work("w", "W", ours=("w.7",), program=overmarks("program", "version"), peers=(Peer("start", SHELL, ("echo", "1.0", "13")),))
        self.program("overmarks", "#!/bin/sh\necho 1\n")
        self.assertEqual(self.failures(work, 13)[0], {"Overmarks": "the lists can't be made: ended with 1"})

    def test_an_answer_that_can_not_be_understood_is_a_failure(self):
        work = Work("w", "W", peers=(Peer("odd", SHELL, ("echo", "odd")),))
        self.assertIn("what it wrote can't be understood", self.failures(work)[0]["odd"])

    def test_documents_are_made_anew_when_one_of_our_programs_is_newer(self):
        work = Work("w", "W", ours=("w.7",), prepared=(Prepared("sheet", ("sh", "-c", "echo >'{folder}/sheet'"), ()),))
        sheet = os.path.join(self.place.results, "7/sheet")
        self.failures(work)
        for part in ("bin/overmarks", "share/overmarks/resources/docxHandler", "lib/libOurs.so.1"):
            program = os.path.join(os.path.dirname(self.place.programs), part)
            os.makedirs(os.path.dirname(program), exist_ok=True)
            open(program, "w", encoding="utf-8").close()
            for built, is_made in ((1, False), (3, True)):
                os.utime(sheet, (2, 2))
                os.utime(program, (built, built))
                self.failures(work)
                self.assertEqual(os.path.getmtime(sheet) > 3, is_made, part)
            os.remove(program)


if __name__ == "__main__":
    unittest.main()
