# SPDX-License-Identifier: GPL-3.0-only
"""Runs works, one process after the other on one core, and keeps what each took."""
import glob
import json
import math
import os
import shutil
import signal
import statistics
import subprocess
import zipfile
import zlib
from dataclasses import dataclass, field

from .works import PYTHON, Peer, Program

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


def understood(read, path):
    """@returns what a function makes of what a process has written"""
    try:
        return read(path)
    except (OSError, ValueError, LookupError, zipfile.BadZipFile, zlib.error) as fault:
        raise Failure(f"what it wrote can't be understood: {fault}") from fault


def answer_of_work(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def answer_of_script(path):
    """@returns its seconds and the number of rows"""
    with open(path, encoding="utf-8") as file:
        seconds, count = file.read().split()
    return float(seconds), int(count)


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
            made = subprocess.run([self.works, "--make", folder, str(rows)], check=False)
            if made.returncode != 0:
                raise Failure(f"the lists can't be made: ended with {made.returncode}")
            open(done, "w").close()
        return folder

    def time_of_programs(self):
        """When the newest of what makes our documents was built."""
        release = os.path.dirname(self.programs)
        parts = ("bin/overmarks", "share/overmarks/resources/docxHandler", "lib/*.so*")
        return max((os.path.getmtime(file) for part in parts for file in glob.glob(os.path.join(release, part))), default=0)

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

    def __init__(self, place, work, rows, built, with_peers=True):
        self.place, self.work, self.rows = place, work, rows
        self.folder = os.path.join(place.results, str(rows))
        self.out = os.path.join(place.results, "out")
        self.printed = os.path.join(place.results, "printed")
        self.built, self.with_peers = built, with_peers
        os.makedirs(self.out, exist_ok=True)
        self.missing = []  # peers that aren't installed
        self.absent = {}  # the name of whom isn't measured, and why
        self.lacking = {}  # what couldn't be made, in the words of a command, and why
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
        doers = [(Figure(name, "library"), self._doing_work(ours)) for name, ours in self.work.own_works()]
        for limit in self.work.limits():
            self._add(doers, "limit", limit)
        if self.work.program:
            doers.append((Figure(self.work.program.name, "program"), self._doing_process(self.work.program)))
        for peer in self.work.peers:
            if not self.with_peers:
                self.absent[peer.name] = "not asked for"
            elif peer.most_rows and self.rows > peer.most_rows:
                self.absent[peer.name] = f"only up to {peer.most_rows} rows"
            else:
                self._add(doers, "peer", peer)
        return doers

    def _add(self, doers, side, peer):
        if not self.place.has(peer.need, self.built):
            self.missing.append(peer)
            self.absent[peer.name] = "not installed"
        elif peer.need.kind == "work":
            doers.append((Figure(peer.name, side), self._doing_work(peer.need.name)))
        else:
            doers.append((Figure(peer.name, side), self._doing_process(peer)))

    def _prepare(self):
        """What can't be made is the failure of those who need it."""
        try:
            self.place.lists(self.rows)
        except Failure as failure:
            self.lacking["{folder}"] = str(failure)
        for prepared in self.work.prepared:
            path = os.path.join(self.folder, prepared.name)
            if os.path.exists(path):
                if os.path.getmtime(path) >= self.place.time_of_programs():
                    continue
                os.remove(path)
            is_made = False
            try:
                self._look_for(prepared.command)
                self._start(prepared.command)
                if not os.path.exists(path):
                    raise Failure("wrote nothing")
                is_made = True
            except Failure as failure:
                self.lacking["{folder}/" + prepared.name] = f"{prepared.name} can't be made: {failure}"
            finally:
                if not is_made and os.path.exists(path):
                    os.remove(path)  # half of it would do for a whole one the next time, after Ctrl-C too

    def _look_for(self, words):
        """Fails where something isn't there that a command names."""
        for lacking, why in self.lacking.items():
            if any(lacking in word for word in words):
                raise Failure(why)

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
            command, env=self.place.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
            errors="replace", start_new_session=True,
        ) as process:
            try:
                answer, said = process.communicate(timeout=LONGEST)
            except BaseException as reason:  # Ctrl-C doesn't reach a session of its own
                if process.returncode is None:
                    os.killpg(process.pid, signal.SIGKILL)
                if isinstance(reason, subprocess.TimeoutExpired):
                    raise Failure(f"not done after {LONGEST} seconds") from reason
                raise
        taken = json.loads(answer) if answer else {"status": process.returncode}
        if taken["status"] != 0:
            lines = said.strip().splitlines()
            raise Failure(lines[-1] if lines else f"ended with {taken['status']}")
        return taken

    def _doing_work(self, name):
        command = ("{works}", name, "{folder}", "{rows}", "{out}")
        reads = tuple("{folder}/" + prepared.name for prepared in self.work.prepared if name in prepared.works)

        def do(figure):
            self._look_for(command + reads)
            self._start(command)
            done = understood(answer_of_work, self.printed)
            figure.work.append(done["seconds"])
            figure.process.append(done["seconds"])  # it has no process of its own
            figure.peak.append(done["peakKiB"])
            figure.count = done.get("count")
            figure.details = done.get("details")

        return do

    def _doing_process(self, doer: Peer | Program):
        def do(figure):
            self._look_for(doer.command)
            written = os.path.join(self.out, doer.writes) if doer.writes else self.printed
            if doer.writes and os.path.exists(written):
                os.remove(written)
            starting = self._start(doer.start)["seconds"] if getattr(doer, "start", None) else 0.0
            taken = self._start(doer.command)
            figure.process.append(taken["seconds"])
            figure.peak.append(taken["peakKiB"])
            if doer.count is None:
                seconds, figure.count = understood(answer_of_script, self.printed)
                figure.work.append(seconds)
                return
            # Where a process is hardly more than its start, what it does can't be told from it.
            if isinstance(doer, Peer) and starting < MOSTLY_START * taken["seconds"]:
                figure.work.append(taken["seconds"] - starting)
            if not os.path.exists(written) or (doer.writes and not os.path.getsize(written)):
                raise Failure("wrote nothing")
            figure.count = understood(doer.count, written)

        return do

    def _check(self, figures):
        """Nobody wins by leaving rows out."""
        counted = [figure for figure in figures if figure.count is not None and not figure.failure]
        expected = self._expected(counted)
        if expected is None and len({figure.count for figure in counted}) > 1:
            for figure in counted:
                figure.failure = f"{figure.count} rows, others have others, and the limit that would tell who is right has none"
        for figure in counted:
            if expected is not None and figure.count != expected:
                figure.failure = f"{figure.count} rows, not {expected}"

    def _expected(self, counted):
        if self.work.expects:
            return self.work.expects(self.rows)
        return next((figure.count for figure in counted if figure.name == self.work.limit_name()), None)


def exponent(smaller, larger):
    """How time grows between two (rows, seconds): 1.0 is ten times as long for ten times as many."""
    (few, brief), (many, long) = smaller, larger
    return math.log(long / brief) / math.log(many / few) if brief and long and few != many else None
