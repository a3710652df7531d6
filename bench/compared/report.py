# SPDX-License-Identifier: GPL-3.0-only
"""Tables and JSON of what was measured."""
from .works import Above, Ahead, Detail, Under, Within


def of_side(figures, *sides):
    return [figure for figure in figures if figure.side in sides and not figure.failure]


def spaced(number):
    """100 000"""
    return f"{number:,}".replace(",", " ")


def readable(seconds):
    if seconds is None:
        return "-"
    return f"{seconds:.3f} s" if seconds >= 0.0995 else f"{1000 * seconds:.2f} ms"


def ours_of(work, figures):
    """@returns the figure that the targets are about, and how to ask a figure for its seconds"""
    side = "program" if work.whole_process else "library"
    found = of_side(figures, side)
    ask = (lambda figure: figure.process_seconds()) if work.whole_process else (lambda figure: figure.seconds())
    return (found[0] if found else None), ask


def judged(work, figures):
    """@returns for each target its words, our seconds, the most that they may be, and whether that is met (None: nobody to compare with)"""
    ours, ask = ours_of(work, figures)
    answers = []
    if ours is None:
        return answers
    limits, peers = of_side(figures, "limit"), of_side(figures, "peer")

    for target in work.targets:
        if isinstance(target, Detail):
            answers += [detail_judged(target, figure.details) for figure in figures if figure.name == target.figure and figure.details]
            continue
        words, most = "", None
        if isinstance(target, Ahead):
            among = [p for p in peers if ask(p) and p.name not in target.but and (not target.names or p.name in target.names)]
            fastest = min(among, key=ask) if among else None
            words = ("as fast as " if target.times == 1 else f"{target.times:g} times as fast as ") + (fastest.name if fastest else ", ".join(target.names) or "the others")
            most = ask(fastest) / target.times if fastest else None
        elif isinstance(target, Within):
            words = f"within {target.times:g} times: {limits[0].name}" if limits else f"within {target.times:g} times the limit"
            most = target.times * ask(limits[0]) if limits else None
        elif isinstance(target, Under):
            words, most = f"under {readable(target.seconds)}", target.seconds
        elif isinstance(target, Above):
            words = f"no more than {target.seconds:g} s above {limits[0].name}" if limits else "near the limit"
            most = target.seconds + ask(limits[0]) if limits else None
        seconds = ask(ours)
        answers.append({"target": words, "seconds": seconds, "most": most, "met": None if most is None else seconds <= most})
    return answers


def detail_judged(target, details):
    value = details[target.name]
    words = f"{target.figure}: {target.name} at most {target.most:g} (it is {value:g})"
    return {"target": words, "value": value, "mostValue": target.most, "seconds": None, "most": None, "met": value <= target.most}


def rows_of(work, figures):
    """The two tables: (title, [(name, seconds, times ours, peak, count)])."""
    tables = []
    for title, sides, ask in (
        ("in the process, the work alone", ("library", "limit", "peer"), lambda f: f.seconds()),
        ("the whole process", ("program", "peer"), lambda f: f.process_seconds()),
    ):
        chosen = [f for f in figures if f.side in sides and ("library" in sides or not is_only_work(work, f))]
        own = next((ask(f) for f in chosen if f.side in ("library", "program") and not f.failure), None)
        if not any(f.side in ("library", "program") for f in chosen):
            continue
        lines = []
        for figure in chosen:
            seconds = ask(figure)
            times = f"{seconds / own:.2f}" if own and seconds is not None else "-"
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


def print_work(work, rows, figures, markdown):
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
    answers = judged(work, figures)
    if answers:
        print("" if markdown else "  targets")
    for answer in answers:
        met = {True: "met", False: "MISSED", None: "unknown"}[answer["met"]]
        bound = f": {readable(answer['seconds'])} of {readable(answer['most'])}" if answer["most"] is not None else ""
        print(f"{'- ' if markdown else '    '}{met:<8}{answer['target']}{bound}")


def print_details(title, details, markdown):
    print(f"\n| {title} | |\n|---|--:|" if markdown else f"  {title}")
    for name, value in details.items():
        print(f"| {name} | {value} |" if markdown else f"    {name:<56}{value:>14}")


LINEAR = 1.1  # the exponent of what should be linear, or nearly so


def print_growth(work, growths, markdown):
    """@param growths: (side, name) to [(rows, seconds)] and the exponents, between the ends last"""
    print(f"\n{'### ' if markdown else ''}{work.name}: growth, from step to step and, in brackets, from end to end")
    for (side, name), (points, exponents) in growths.items():
        steps = "  ".join(f"{spaced(rows)}: {readable(seconds)}" for rows, seconds in points)
        powers = ", ".join(f"{e:.2f}" for e in exponents[:-1])
        verdict = "" if side != "library" else "  met" if exponents[-1] <= LINEAR else f"  MISSED: {LINEAR} at most"
        label = f"limit: {name}" if side == "limit" else name
        print(f"{'- ' if markdown else '    '}{label:<44}{steps}   {powers} ({exponents[-1]:.2f}){verdict}")


def print_missing(missing, markdown):
    if not missing:
        return
    print("\nNot installed, and so not compared:")
    for name, get in sorted({(peer.name, peer.need.get) for peer in missing}):
        print(f"{'- ' if markdown else '  '}{name:<24}{get}")


def as_json(work, rows, figures):
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
        "targets": judged(work, figures),
    }
