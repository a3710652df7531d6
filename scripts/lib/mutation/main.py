# SPDX-License-Identifier: GPL-3.0-only
"""scripts/mutate, see there."""
import argparse
import glob
import json
import os
import random
import re
import shutil
import sys
from collections import Counter
from concurrent.futures import ThreadPoolExecutor, as_completed

from breaks import breaks_of
from confined import Confinement
from programs import PROGRAMS, Workshop

JOBS = 2
FOLDERS = list(PROGRAMS)
LEAST_IN_FOLDER = 60
SECONDS_AT_FIRST, SECONDS_IN_ALL, SECONDS_OF_SLOW_TEST = 3, 20, 1


def chosen(seed, count, folders):
    """The breaks of this run, the same ones for the same seed. Of the texts a third, since they are all of one kind."""
    found = {folder: [] for folder in folders}
    for folder in folders:
        for file in sorted(glob.glob(f"{folder}/**/*.cpp", recursive=True)):
            with open(file, encoding="utf-8") as source:
                found[folder] += breaks_of(file, source.read())
    total = sum(map(len, found.values()))
    result = []
    for folder in folders:
        dice = random.Random(f"{seed} {folder}")
        candidates = [b for b in found[folder] if b.kind != "text" or dice.random() < 1 / 3]
        share = count if len(folders) == 1 else max(LEAST_IN_FOLDER, round(count * len(found[folder]) / total))
        result += dice.sample(candidates, min(share, len(candidates)))
    return sorted(result, key=lambda b: (FOLDERS.index(b.folder), b.file, b.line, b.id)), found


class Equivalents:
    """Breaks that can't be noticed: blocks of source, code line, change and reason, with an empty line between them."""

    def __init__(self, path):
        self.reasons = {}
        with open(path, encoding="utf-8") as file:
            text = "\n".join(line for line in file.read().splitlines() if not line.startswith("#"))
        for block in filter(None, (block.strip() for block in text.split("\n\n"))):
            lines = [line.strip() for line in block.splitlines()]
            if len(lines) < 4:
                raise SystemExit(f"{path}: this block has no four lines:\n{block}")
            self.reasons[tuple(lines[:3])] = " ".join(lines[3:])

    def outdated(self, breaks):
        """Those of which the sources know nothing any more."""
        known = {(b.file, b.code, b.change) for b in breaks}
        folders = {b.folder for b in breaks}
        return [place for place in self.reasons if place not in known and place[0].split("/")[0] in folders]

    def reason(self, found):
        return self.reasons.get((found.file, found.code, found.change))


class Results:
    """What came out for each break, kept in a file so that a run can go on."""

    def __init__(self, path):
        self.path, self.outcomes = path, {}
        if os.path.exists(path):
            with open(path) as file:
                for line in file:
                    entry = json.loads(line)
                    self.outcomes[entry["id"]] = entry

    def add(self, found, outcome, by, stamp):
        self.outcomes[found.id] = {"id": found.id, "outcome": outcome, "by": by, "stamp": stamp}
        with open(self.path, "a") as file:
            file.write(json.dumps(self.outcomes[found.id]) + "\n")

    def known(self, found, stamp):
        entry = self.outcomes.get(found.id)
        return entry if entry and (entry["stamp"] == stamp or entry["outcome"] in ("noticed", "time")) else None


class Reach:
    """Which tests come by which switch, from one run of a program with all switches off."""

    def __init__(self, lines):
        self.tests, self.milliseconds, self.failing = {}, {}, []
        everywhere = {}
        for line in lines:
            name, result, milliseconds, numbers = line.rstrip("\n").split("\t")
            numbers = [int(number) for number in numbers.split()]
            if name.endswith(".*"):
                for number in numbers:
                    everywhere.setdefault(number, []).append(name)
                continue
            if result == "failed":
                self.failing.append(name)
                continue
            self.milliseconds[name] = int(milliseconds)
            for number in numbers:
                self.tests.setdefault(number, set()).add(name)
        for number, patterns in everywhere.items():
            for name in self.milliseconds:
                if any(pattern == "*.*" or name.startswith(pattern[:-1]) for pattern in patterns):
                    self.tests.setdefault(number, set()).add(name)

    def of(self, numbers):
        return set().union(*(self.tests.get(number, set()) for number in numbers))


class Run:
    def __init__(self, root, breaks, verbose, tag):
        self.shop, self.confinement, self.verbose = Workshop(root), Confinement(root), verbose
        self.breaks, self.tag = breaks, tag
        for number, found in enumerate(breaks):
            found.number = number
            self.shop.read(found.file)
        wanted = dict.fromkeys(p for folder in FOLDERS if any(b.folder == folder for b in breaks) for p in PROGRAMS[folder])
        self.names = list(wanted)
        self.switched, self.no_code, self.reach = {}, [], {}
        tests = glob.glob("tests/**/*.cpp", recursive=True) + glob.glob("tests/**/*.h", recursive=True)
        self.stamp = max(map(os.path.getmtime, tests))

    def program(self, name):
        return os.path.join(self.shop.folder, "bin", f"test_{name}-{self.tag}")

    def prepare(self):
        files = {}
        for found in self.breaks:
            files.setdefault(found.file, []).append(found)
        objects = {}
        with ThreadPoolExecutor(JOBS) as pool:
            self.shop.require_build(self.names)
            self.shop.make_switchboard()
            for file, (made, inside, broken) in zip(files, pool.map(lambda f: self.shop.switched_object(f, files[f]), files)):
                if made is not None:
                    objects[self.shop.object_in_build(file)] = made
                self.switched.update({b.number: True for b in inside})
                self.no_code += broken
            print(f"{len(self.switched)} of {len(self.breaks)} breaks are in {len(objects)} objects behind switches.", flush=True)
            linked = list(pool.map(lambda name: self.shop.link(name, objects, self.program(name)), self.names))
            if not all(linked):
                raise SystemExit("The test programs can't be linked.")
            for name, reach in zip(self.names, pool.map(self.measure, self.names)):
                self.reach[name] = reach
                print(f"test_{name}: {len(reach.milliseconds)} tests, {sum(reach.milliseconds.values()) / 1000:.1f} s; "
                      f"{reach.left_out} slow ones are left out", flush=True)
                for test in reach.failing:
                    print(f"  left out, since it fails here without any break: {test}")

    def measure(self, name):
        """Runs all tests, but for those that were slow the last time."""
        folder = os.path.join(self.shop.folder, "scratch", f"measure-{name}-{self.tag}")
        notes, slow = os.path.join(self.shop.folder, f"slow-{name}"), []
        if os.path.exists(notes):
            with open(notes) as file:
                slow = file.read().split()
        flags = os.path.join(self.shop.folder, "scratch", f"measure-{name}-{self.tag}.flags")
        os.makedirs(os.path.dirname(flags), exist_ok=True)
        with open(flags, "w") as file:
            file.write("--gtest_brief=1\n--gtest_filter=*" + ("-" + ":".join(slow) if slow else "") + "\n")
        status, _, printed = self.confinement.run([self.program(name), f"--gtest_flagfile={flags}"], folder,
                                                  {"MUTATION_REACH": f"{folder}/reach"}, 1800)
        if status is None or not os.path.exists(f"{folder}/reach"):
            raise SystemExit(f"test_{name} doesn't run: {status}\n{printed}")
        with open(f"{folder}/reach") as file:
            reach = Reach(file)
        if not slow:
            with open(notes, "w") as file:
                file.write("\n".join(t for t, spent in reach.milliseconds.items() if spent > 1000 * SECONDS_OF_SLOW_TEST))
        reach.left_out = len(slow)
        return reach

    def test(self, found, program, name, tests):
        """None when these tests notice nothing, else how it was noticed."""
        reach = self.reach[name]
        folder = os.path.join(self.shop.folder, "scratch", found.id)
        normal = sum(reach.milliseconds[test] for test in tests) / 1000
        flags = os.path.join(self.shop.folder, "scratch", f"{found.id}.flags")
        with open(flags, "w") as file:
            file.write("--gtest_filter=" + ":".join(tests) + "\n--gtest_fail_fast\n--gtest_brief=1\n")
        status, _, printed = self.confinement.run([program, f"--gtest_flagfile={flags}"], folder,
                                                  {"MUTATION_ACTIVE": str(found.number)}, 30 + 5 * normal)
        os.remove(flags)
        shutil.rmtree(folder, ignore_errors=True)
        if self.verbose:
            print(printed)
        if status is None:
            return "time", name
        if status == 0:
            return None
        failed = re.findall(r"\[  FAILED  \] (\S+?)(?:,| \()", printed)
        return "noticed", failed[0] if failed else f"test_{name} ended with {status}"

    def cheapest(self, name, tests, seconds):
        """As many of the tests as take no longer than this together, the shortest first; one at least."""
        chosen, spent = [], 0
        for test in sorted(tests, key=lambda test: (self.reach[name].milliseconds[test], test)):
            spent += self.reach[name].milliseconds[test]
            if spent > 1000 * seconds and chosen:
                break
            chosen.append(test)
        return chosen

    def parts(self, found, name, alone):
        """The tests that a program is asked for: first those that are quick, then more, but never the slowest of a large number.
        A table that is made once is come by in the first test that asks for it, and by all others that read it, so the tests of the
        folder are asked too; what can't be switched may be come by anywhere."""
        reach, own = self.reach[name], name == found.folder
        tests = reach.of([b.number for b in self.breaks if b.file == found.file] if alone else [found.number])
        if not tests and not (alone and own):
            return []
        quick = self.cheapest(name, tests, SECONDS_AT_FIRST) if tests else []
        more = self.cheapest(name, tests, SECONDS_IN_ALL) if tests else []
        if own:
            more += [test for test in self.cheapest(name, reach.milliseconds, SECONDS_IN_ALL) if test not in tests]
        return [part for part in (quick, [test for test in more if test not in quick]) if part]

    def try_break(self, found):
        alone = found.number not in self.switched
        made = None
        if alone:
            made = self.shop.broken_object(found) if found not in self.no_code else None
            if made is None:
                return "no code", ""
        reached = False
        for name in PROGRAMS[found.folder]:
            parts, program = self.parts(found, name, alone), self.program(name)
            if not parts:
                continue
            reached = True
            if alone:
                program += f"-{found.id}"
                if not self.shop.link(name, {self.shop.object_in_build(found.file): made}, program):
                    return "no code", ""
            try:
                for part in parts:
                    if outcome := self.test(found, program, name, part):
                        return outcome
            finally:
                if alone:
                    os.remove(program)
        return "survived", "" if reached else "no test comes there"


def report(breaks, found, results, equivalents):
    print(f"\n{'':10}{'places':>8}{'made':>7}{'no code':>9}{'noticed':>9}{'by time':>9}{'equivalent':>12}{'survived':>10}")
    for folder in dict.fromkeys(b.folder for b in breaks):
        here = [b for b in breaks if b.folder == folder and b.id in results.outcomes]
        count = Counter(results.outcomes[b.id]["outcome"] for b in here)
        same = sum(1 for b in here if results.outcomes[b.id]["outcome"] == "survived" and equivalents.reason(b))
        survived, tried = count["survived"] - same, len(here) - count["no code"] - same
        print(f"{folder:10}{len(found[folder]):8}{len(here):7}{count['no code']:9}{count['noticed']:9}{count['time']:9}"
              f"{same:12}{survived:10}   {100 * survived / max(1, tried):.1f} %")


def told(found, entry, equivalents):
    if entry["outcome"] == "survived":
        word = "equivalent" if equivalents.reason(found) else "survived"
        return f"{word:10}  {found}" + (f"   ({entry['by']})" if entry["by"] else "")
    if entry["outcome"] in ("noticed", "time") and equivalents.reason(found):
        return f"noticed, though it stands among the equivalent ones: {found}   by {entry['by']}"
    return None


def main():
    parser = argparse.ArgumentParser(prog="scripts/mutate", add_help=False)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=300)
    parser.add_argument("--folder", choices=FOLDERS)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--one", metavar="ID")
    parser.add_argument("--no-build", action="store_true")
    options = parser.parse_args()

    root = os.getcwd()
    folders = [options.folder] if options.folder else FOLDERS
    breaks, found = chosen(options.seed, options.count, folders)
    if options.one:
        breaks = [b for folder in folders for b in found[folder] if b.id == options.one]
        if not breaks:
            raise SystemExit(f"There is no break {options.one}.")
    equivalents = Equivalents("tests/mutants/equivalent")
    outdated = equivalents.outdated([b for folder in folders for b in found[folder]])
    for place in outdated:
        print("tests/mutants/equivalent speaks of what isn't there: " + " | ".join(place), file=sys.stderr)
    if options.list:
        print(*breaks, sep="\n")
        return 1 if outdated else 0

    tag = f"{options.seed}-{options.count}-{options.folder or 'all'}"
    run = Run(root, breaks, bool(options.one), tag)
    results = Results(os.path.join(run.shop.folder, f"results-{tag}"))
    open_breaks = [b for b in breaks if options.one or not results.known(b, run.stamp)]
    if open_breaks:
        run.prepare()
        with ThreadPoolExecutor(JOBS) as pool:
            tries = {pool.submit(run.try_break, tried): tried for tried in open_breaks}
            for number, done in enumerate(as_completed(tries), 1):
                results.add(tries[done], *done.result(), run.stamp)
                if sys.stdout.isatty():
                    print(f"\r{number} of {len(open_breaks)}", end="\r", flush=True)
    for line in filter(None, (told(b, results.outcomes[b.id], equivalents) for b in breaks)):
        print(line)
    if options.one:
        print(*breaks, results.outcomes[options.one], sep="\n")
    else:
        report(breaks, found, results, equivalents)
    return 0


if __name__ == "__main__":
    sys.exit(main())
