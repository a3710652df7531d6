# SPDX-License-Identifier: GPL-3.0-only
"""Tables and JSON of what was measured."""
from .works import Ahead, Detail, Under, Within


def spaced(number):
    """100 000"""
    return f"{number:,}".replace(",", " ")


def readable(seconds):
    if seconds is None:
        return "-"
    return f"{seconds:.3f} s" if seconds >= 0.0995 else f"{1000 * seconds:.2f} ms"


class Judge:
    """What the targets of a work make of its figures. A target is about one figure of ours and, mostly, one limit: where these failed it is
    unknown, and none of the others stands in for them."""

    def __init__(self, work, rows, figures, absent):
        """@param absent: the name of whom wasn't measured, and why"""
        self.work, self.rows, self.absent = work, rows, absent
        self.figures = {figure.name: figure for figure in figures}

    def answer(self, target):
        """@returns what the target is about, our seconds, the most that they may be, whether that is met (None: it can't be told, and why), and
        which of the peers that it is about aren't in it"""
        if isinstance(target, Detail):
            return self._detail(target)
        words, most, why, without = self._bound(target)
        ours = self.work.judged_name()
        why_not_ours = self._why_not(ours)
        seconds = None if why_not_ours else self._seconds(ours)
        if why_not_ours:
            why = f"{ours}: {why_not_ours}"
        answer = {"target": words, "seconds": seconds, "most": most, "met": None if why else seconds <= most}
        if why:
            answer["why"] = why
        if without:
            answer["without"] = [{"peer": name, "why": reason} for name, reason in without.items()]
        return answer

    def _bound(self, target):
        """@returns words, the most seconds or None, why there are none, and peers that should be in it with the reasons why they aren't"""
        if isinstance(target, Ahead):
            return self._ahead(target)
        if isinstance(target, Under):
            why = "" if self.rows == target.rows else f"it is meant for {spaced(target.rows)} rows"
            return f"under {readable(target.seconds)}", target.seconds, why, {}
        limit = self.work.limit_name()
        why = self._why_not(limit)
        seconds = None if why else self._seconds(limit)
        if isinstance(target, Within):
            words, most = f"within {target.times:g} times: {limit}", None if why else target.times * seconds
        else:
            words, most = f"no more than {target.seconds:g} s above {limit}", None if why else target.seconds + seconds
        return words, most, why, {}

    def _ahead(self, target):
        names = target.names or [peer.name for peer in self.work.peers if peer.name not in target.but]
        without = {name: self._why_not(name) for name in names if self._why_not(name)}
        fastest = min((name for name in names if name not in without), key=self._seconds, default=None)
        times = "as fast as " if target.times == 1 else f"{target.times:g} times as fast as "
        words = times + (fastest or ", ".join(target.names) or "the others")
        if fastest is None:
            return words, None, "nobody to compare with", without
        return words, self._seconds(fastest) / target.times, "", without

    def _detail(self, target):
        words = f"{target.figure}: {target.name} at most {target.most:g}"
        answer = {"target": words, "value": None, "mostValue": target.most, "seconds": None, "most": None, "met": None}
        why = self._why_not(target.figure)
        if why:
            return {**answer, "why": why}
        value = self.figures[target.figure].details[target.name]
        return {**answer, "target": f"{words} (it is {value:g})", "value": value, "met": value <= target.most}

    def _seconds(self, name):
        figure = self.figures[name]
        return figure.process_seconds() if self.work.whole_process else figure.seconds()

    def _why_not(self, name):
        """Why nothing can be judged by a figure, or nothing."""
        if name not in self.figures:
            return self.absent.get(name, "not measured")
        if self.figures[name].failure:
            return "failed"
        return "" if self._seconds(name) is not None else "hardly more than a start"


def judged(work, rows, figures, absent):
    judge = Judge(work, rows, figures, absent)
    return [judge.answer(target) for target in work.targets]


def verdict(answer):
    """A line."""
    met = {True: "met", False: "MISSED", None: "unknown"}[answer["met"]]
    by_reason = {}
    for each in answer.get("without", ()):
        by_reason.setdefault(each["why"], []).append(each["peer"])
    without = "; ".join(f"{', '.join(names)}: {why}" for why, names in by_reason.items())
    without = f" (without {without})" if without else ""
    if "why" in answer:
        tail = f": {answer['why']}"
    else:
        tail = f": {readable(answer['seconds'])} of {readable(answer['most'])}" if answer["most"] is not None else ""
    return f"{met:<8}{answer['target']}{without}{tail}"


def rows_of(work, figures):
    """The two tables: (title, [(name, seconds, times ours, peak, count)])."""
    tables = []
    for title, sides, ask in (
        ("in the process, the work alone", ("library", "limit", "peer"), lambda f: f.seconds()),
        ("the whole process", ("program", "peer"), lambda f: f.process_seconds()),
    ):
        chosen = [f for f in figures if f.side in sides and ("library" in sides or not is_only_work(work, f))]
        ours = next((f for f in chosen if f.side in ("library", "program")), None)
        if ours is None:
            continue
        own = None if ours.failure else ask(ours)
        lines = []
        for figure in chosen:
            seconds = ask(figure)
            times = f"{seconds / own:.2f}" if own and seconds is not None and not figure.failure else "-"
            peak = figure.peak_kib()
            lines.append(
                (
                    f"limit: {figure.name}" if figure.side == "limit" else figure.name,
                    "failed" if figure.failure else readable(seconds),
                    times,
                    f"{peak / 1024:.0f} MiB" if peak else "-",
                    spaced(figure.count) if figure.count is not None else "",
                )
            )
        tables.append((title, lines))
    return tables


def is_only_work(work, figure):
    """Peers that are libraries within our own program of works have no process to compare."""
    return any(peer.name == figure.name and peer.need.kind == "work" for peer in work.peers)


HEADS = ("", "seconds", "times ours", "peak memory", "rows")


def print_work(work, rows, figures, absent, markdown):
    title = f"{work.name}: {work.title}, {spaced(rows)} rows"
    print(f"\n### {title}" if markdown else f"\n{title}")
    for name, lines in rows_of(work, figures):
        if markdown:
            print(f"\n| {name} | " + " | ".join(HEADS[1:]) + " |\n|---|--:|--:|--:|--:|")
            for line in lines:
                print("| " + " | ".join(line) + " |")
        else:
            print(f"  {name:<44}{HEADS[1]:>11}{HEADS[2]:>12}{HEADS[3]:>13}{HEADS[4]:>11}")
            for line in lines:
                print(f"    {line[0]:<42}{line[1]:>11}{line[2]:>12}{line[3]:>13}{line[4]:>11}")
    for figure in figures:
        if figure.failure:
            print(f"{'- ' if markdown else '  '}{figure.name} failed: {figure.failure}")
        if figure.details:
            print_details(figure.name, figure.details, markdown)
    if work.targets:
        print("" if markdown else "  targets")
    for answer in judged(work, rows, figures, absent):
        print(f"{'- ' if markdown else '    '}{verdict(answer)}")


def print_details(title, details, markdown):
    print(f"\n| {title} | |\n|---|--:|" if markdown else f"  {title}")
    for name, value in details.items():
        print(f"| {name} | {value} |" if markdown else f"    {name:<56}{value:>14}")


LINEAR = 1.1  # the exponent of what should be linear, or nearly so


def growth_verdict(exponent, is_whole):
    """@param is_whole: whether there are figures of all sizes"""
    if not is_whole:
        return "unknown: it failed with another number of rows"
    return "met" if round(exponent, 2) <= LINEAR else f"MISSED: {LINEAR} at most"  # as it is printed


def print_growth(work, growths, sizes, markdown):
    """@param growths: (side, name) to [(rows, seconds)] and the exponents, between the ends last
    @param sizes: how many there were"""
    print(f"\n{'### ' if markdown else ''}{work.name}: growth, from step to step and, in brackets, from end to end")
    for (side, name), (points, exponents) in growths.items():
        steps = "  ".join(f"{spaced(rows)}: {readable(seconds)}" for rows, seconds in points)
        powers = ", ".join(f"{e:.2f}" for e in exponents[:-1])
        linear = "  " + growth_verdict(exponents[-1], len(points) == sizes) if side == "library" else ""
        label = f"limit: {name}" if side == "limit" else name
        print(f"{'- ' if markdown else '    '}{label:<44}{steps}   {powers} ({exponents[-1]:.2f}){linear}")


def print_missing(missing, markdown):
    if not missing:
        return
    print("\nNot installed, and so not compared:")
    for name, get in sorted({(peer.name, peer.need.get) for peer in missing}):
        print(f"{'- ' if markdown else '  '}{name:<24}{get}")


def as_json(work, rows, figures, absent):
    return {
        "work": work.name,
        "title": work.title,
        "rows": rows,
        "figures": [
            {
                "name": f.name,
                "side": f.side,
                "seconds": f.seconds(),
                "processSeconds": f.process_seconds() if f.side in ("program", "peer") and not is_only_work(work, f) else None,
                "peakKiB": f.peak_kib(),
                "count": f.count,
                "rounds": f.work or f.process,
                **({"details": f.details} if f.details else {}),
                **({"failure": f.failure} if f.failure else {}),
            }
            for f in figures
        ],
        "targets": judged(work, rows, figures, absent),
    }
