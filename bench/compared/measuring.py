# SPDX-License-Identifier: GPL-3.0-only
"""Runs works, one process after the other on one core, and keeps what each took."""
import json
import math
import os
import shutil
import signal
import statistics
import subprocess
from dataclasses import dataclass, field

from .works import PYTHON, Need, Peer, Program

SLOW = ((3.0, 3), (30.0, 1))  # what takes so many seconds has no more than so many rounds
MOSTLY_START = 0.8
LONGEST = 180  # seconds, for a single process


class Failure(Exception):
    """A work that couldn't be done, with the reason in words."""


@dataclass
class Figure:
    """What one of those who do a work took, in every round."""

    name: str
    side: str  # library, limit, program or peer
    work: list = field(default_factory=list)  # seconds of the work alone
    process: list = field(default_factory=list)  # seconds of the whole process
    peak: list = field(default_factory=list)  # KiB
    count: int | None = None
    details: dict | None = None
    failure: str = ""

    def seconds(self):
        return statistics.median(self.work) if self.work else None

    def process_seconds(self):
        return statistics.median(self.process) if self.process else None

    def peak_kib(self):
        return statistics.median(self.peak) if self.peak else None

    def is_done(self, rounds):
        for seconds, most in SLOW:
            if self.process and min(self.process) > seconds:
                rounds = min(most, rounds)
        return bool(self.failure) or len(self.process) >= rounds


def pin(core):
    """This process and all that it starts, where the system knows how. @returns the core"""
    if not hasattr(os, "sched_setaffinity"):
        return None
    core = max(os.sched_getaffinity(0)) if core is None else core
    os.sched_setaffinity(0, {core})
    return core


class Place:
    """Where programs, lists and results lie."""

    def __init__(self, root):
        self.root = root
        self.programs = os.path.join(root, "build/release/bin")
        self.works = os.path.join(self.programs, "compare_works")
        self.results = os.path.join(root, "build/compare")
        self.peers = os.path.join(root, "bench/peers")
        modules = [os.path.join(root, "build/npm/node_modules"), os.environ.get("NODE_PATH", "")]
        self.environment = dict(os.environ, NODE_PATH=":".join(m for m in modules if m), LC_ALL="C.UTF-8")

    def lists(self, rows):
        """The lists of one size, which are made where they aren't there or where the program that makes them is newer."""
        folder = os.path.join(self.results, str(rows))
        done = os.path.join(folder, "made")
        if not os.path.exists(done) or os.path.getmtime(done) < os.path.getmtime(self.works):
            shutil.rmtree(folder, ignore_errors=True)
            subprocess.run([self.works, "--make", folder, str(rows)], check=True)
            open(done, "w").close()
        return folder

    def has(self, need, built):
        """Whether a peer can be measured here."""
        if need.kind == "program":
            return shutil.which(need.name) is not None
        if need.kind == "work":
            return need.name in built
        question = [PYTHON, "-c", f"import {need.name}"] if need.kind == "python" else ["node", "-e", f'require("{need.name}")']
        try:
            return subprocess.run(question, env=self.environment, capture_output=True, check=False).returncode == 0
        except OSError:
            return False


class Measuring:
    """One work with one size of list."""

    def __init__(self, place, work, rows, built):
        self.place, self.work, self.rows = place, work, rows
        self.folder = place.lists(rows)
        self.out = os.path.join(place.results, "out")
        self.printed = os.path.join(place.results, "printed")
        self.built = built
        os.makedirs(self.out, exist_ok=True)
        self.missing = []
        self.doers = self._doers()
        self._prepare()

    def run(self, rounds):
        """@returns the figures, in the order of the table"""
        for _ in range(rounds):
            for figure, do in self.doers:
                if not figure.is_done(rounds):
                    try:
                        do(figure)
                    except Failure as failure:
                        figure.failure = str(failure)
        figures = [figure for figure, _ in self.doers]
        self._check(figures)
        return figures

    # ---- who does it ---------------------------------------------------------------------------------------------------------------

    def _doers(self):
        doers = []
        for ours in self.work.ours:
            name, ours = ("Overmarks", ours) if isinstance(ours, str) else ours
            doers.append((Figure(name, "library"), self._doing_work(ours)))
        for floor in self.work.floors:
            self._add_limit(doers, floor)
        if self.work.program:
            doers.append((Figure(self.work.program.name, "program"), self._doing_process(self.work.program)))
        for peer in self.work.peers:
            if peer.most_rows and self.rows > peer.most_rows:
                continue
            if not self.place.has(peer.need, self.built):
                self.missing.append(peer)
            elif peer.need.kind == "work":
                doers.append((Figure(peer.name, "peer"), self._doing_work(peer.need.name)))
            else:
                doers.append((Figure(peer.name, "peer"), self._doing_process(peer)))
        return doers

    def _add_limit(self, doers, floor):
        peer = floor if isinstance(floor, Peer) else Peer(floor[0], Need("work", floor[1], floor[2] if len(floor) > 2 else ""), ())
        if not self.place.has(peer.need, self.built):
            self.missing.append(peer)
        elif peer.need.kind == "work":
            doers.append((Figure(peer.name, "limit"), self._doing_work(peer.need.name)))
        else:
            doers.append((Figure(peer.name, "limit"), self._doing_process(peer)))

    def _prepare(self):
        for name, command in self.work.prepared:
            if not os.path.exists(os.path.join(self.folder, name)):
                self._start(command)

    def _words(self, words):
        return [
            word.format(
                folder=self.folder, rows=self.rows, out=self.out, work=self.work.name, works=self.place.works, python=PYTHON,
                overmarks=os.path.join(self.place.programs, "overmarks"), peers=self.place.peers,
            )
            for word in words
        ]

    def _start(self, words):
        """@returns what the process took"""
        command = [os.path.join(self.place.programs, "compare_process"), self.printed, *self._words(words)]
        with subprocess.Popen(
            command, env=self.place.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, start_new_session=True
        ) as process:
            try:
                answer, said = process.communicate(timeout=LONGEST)
            except subprocess.TimeoutExpired as late:
                os.killpg(process.pid, signal.SIGKILL)
                raise Failure(f"not done after {LONGEST} seconds") from late
        taken = json.loads(answer) if answer else {"status": process.returncode}
        if taken["status"] != 0:
            lines = said.strip().splitlines()
            raise Failure(lines[-1] if lines else f"ended with {taken['status']}")
        return taken

    def _doing_work(self, name):
        def do(figure):
            self._start(("{works}", name, "{folder}", "{rows}", "{out}"))
            with open(self.printed, encoding="utf-8") as file:
                done = json.load(file)
            figure.work.append(done["seconds"])
            figure.process.append(done["seconds"])  # it has no process of its own
            figure.peak.append(done["peakKiB"])
            figure.count = done["count"]
            figure.details = done.get("details")

        return do

    def _doing_process(self, doer: Peer | Program):
        def do(figure):
            written = os.path.join(self.out, doer.writes) if doer.writes else self.printed
            if doer.writes and os.path.exists(written):
                os.remove(written)
            starting = self._start(doer.start)["seconds"] if getattr(doer, "start", None) else 0.0
            taken = self._start(doer.command)
            figure.process.append(taken["seconds"])
            figure.peak.append(taken["peakKiB"])
            if doer.count is None and isinstance(doer, Peer):
                with open(self.printed, encoding="utf-8") as file:
                    seconds, count = file.read().split()
                figure.work.append(float(seconds))
                figure.count = int(count)
                return
            # Where a process is hardly more than its start, what it does can't be told from it.
            if isinstance(doer, Peer) and starting < MOSTLY_START * taken["seconds"]:
                figure.work.append(taken["seconds"] - starting)
            if not os.path.exists(written) or (doer.writes and not os.path.getsize(written)):
                raise Failure("wrote nothing")
            if doer.count:
                figure.count = doer.count(written)

        return do

    def _check(self, figures):
        """Nobody wins by leaving rows out."""
        counts = [figure.count for figure in figures if figure.count is not None]
        expected = self.work.expects(self.rows) if self.work.expects else counts[0] if counts else None
        for figure in figures:
            if figure.count is not None and figure.count != expected and not figure.failure:
                figure.failure = f"{figure.count} rows, not {expected}"


def exponent(smaller, larger):
    """How time grows between two (rows, seconds): 1.0 is ten times as long for ten times as many."""
    (few, brief), (many, long) = smaller, larger
    return math.log(long / brief) / math.log(many / few) if brief and long and few != many else None
