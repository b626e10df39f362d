"""The measurements of the overlays as Markdown tables."""

import statistics

from overlay_timings import percentile
from report import milliseconds, ratio, version

REFERENCE = "lumacap"


def values(rounds, field):
    """What the rounds hold for `field`; empty where the program cannot do it."""
    return [value for value in (getattr(done, field) for done in rounds) if value is not None]


def microseconds(times):
    return f"{statistics.median(times) * 1e6:.0f}"


def together(drags):
    return [drag.own + drag.server for drag in drags]


def late(drags):
    """The 95th percentile of the motion's latency in each drag."""
    return [percentile(drag.latencies, 0.95) for drag in drags]


def spread(times):
    return f"{milliseconds(times)} ({min(times) * 1000:.0f}–{max(times) * 1000:.0f})" if times else "–"


def openings(programs, results, undriven):
    lines = ["### Request until the overlay is on the screen", "",
             "| program | version | asked by | fresh: median (min–max) ms | ratio to lumacap "
             "| warm: median (min–max) ms | ratio to lumacap |", "|---|---|---|---:|---:|---:|---:|"]
    reference = results.get(REFERENCE, [])
    for program in programs:
        fresh, warm = values(results[program.name], "fresh"), values(results[program.name], "warm")
        lines.append(f"| {program.name} | {version(program)} | {program.asked} | {spread(fresh)} "
                     f"| {ratio(fresh, values(reference, 'fresh'))} | {spread(warm)} "
                     f"| {ratio(warm, values(reference, 'warm'))} |")
    lines += [f"| {name} | {reason} | | | | | |" for name, reason in undriven.items()]
    return lines


def steps(programs, results, field, title, alone=()):
    """Of the drags that the rounds hold for `field`; `alone` is what the pointer's motion costs the X server."""
    lines = [f"### {title}", "",
             "| program | own processor µs | X server's µs | together µs | ratio to lumacap | by the clock, ms "
             "| motion to pixels: median ms | 95 % within, ms | ratio to lumacap |",
             "|---|---:|---:|---:|---:|---:|---:|---:|---:|"]
    reference = values(results.get(REFERENCE, []), field)
    for program in programs:
        drags = values(results[program.name], field)
        if not drags:
            continue
        all_latencies = [latency for drag in drags for latency in drag.latencies]
        lines.append(f"| {program.name} | {microseconds([drag.own for drag in drags])} "
                     f"| {microseconds([drag.server for drag in drags])} | {microseconds(together(drags))} "
                     f"| {ratio(together(drags), together(reference))} "
                     f"| {statistics.median(drag.step for drag in drags) * 1000:.1f} | {milliseconds(all_latencies)} "
                     f"| {milliseconds(late(drags))} | {ratio(late(drags), late(reference))} |")
    if alone:
        lines.append(f"| the pointer alone, without an overlay | | {microseconds(alone)} | {microseconds(alone)} "
                     "| | | | | |")
    return lines


def confirmations(programs, results):
    lines = ["### Confirmation of the whole screen", "",
             "| program | until the file is complete: median (min–max) ms | ratio to lumacap "
             "| until the clipboard is owned, ms | ratio to lumacap "
             "| until another program has read its PNG, ms | ratio to lumacap |", "|---|---:|---:|---:|---:|---:|---:|"]
    reference = results.get(REFERENCE, [])
    for program in programs:
        if not values(results[program.name], "file"):
            continue
        cells = []
        for field in ("file", "owned", "read"):
            times = values(results[program.name], field)
            cells += [spread(times), ratio(times, values(reference, field)) if times else "–"]
        lines.append(f"| {program.name} | {' | '.join(cells)} |")
    return lines


def growth(results):
    """Ratios are to the smallest screen, round by round."""
    lines = ["### The same drag on screens of other sizes (lumacap alone)", "",
             "| screen | own processor µs | X server's µs | of it for the pointer alone µs | together µs "
             "| ratio to 1080p | by the clock, ms | motion to pixels: 95 % within, ms |",
             "|---|---:|---:|---:|---:|---:|---:|---:|"]
    sums = {name: [drag.own + drag.server for drag in drags] for name, drags in results.items()}
    smallest = next(iter(sums.values()))
    for name, drags in results.items():
        lines.append(f"| {name} | {microseconds(values(drags, 'own'))} | {microseconds(values(drags, 'server'))} "
                     f"| {microseconds(values(drags, 'alone'))} | {microseconds(sums[name])} "
                     f"| {ratio(sums[name], smallest)} | {statistics.median(values(drags, 'step')) * 1000:.1f} "
                     f"| {milliseconds(late(drags))} |")
    return lines


def whole_screens(results):
    """Ratios are to the smallest screen, round by round."""
    lines = ["### The whole of screens of other sizes (lumacap alone)", "",
             "| screen | command until its file is complete, ms | ratio to 1080p "
             "| request until the overlay is there, ms | ratio to 1080p | confirmation until the file is complete, ms | ratio to 1080p |",
             "|---|---:|---:|---:|---:|---:|---:|"]
    smallest = next(iter(results.values()))
    for name, drags in results.items():
        cells = []
        for field in ("command", "fresh", "file"):
            cells += [milliseconds(values(drags, field)), ratio(values(drags, field), values(smallest, field))]
        lines.append(f"| {name} | {' | '.join(cells)} |")
    return lines


def marks(results):
    """Ratios are to the same drag without marks, round by round."""
    lines = ["### The same drag with marks on the screen (lumacap alone)", "",
             "| drag | marks | own processor µs | X server's µs | together µs | ratio to no marks |",
             "|---|---:|---:|---:|---:|---:|"]
    sums = {kind: [drag.own + drag.server for drag in drags] for kind, drags in results.items()}
    for (selecting, count), drags in results.items():
        what = "selecting an area" if selecting else "drawing an arrow"
        lines.append(f"| {what} | {count} | {microseconds(values(drags, 'own'))} "
                     f"| {microseconds(values(drags, 'server'))} | {microseconds(sums[selecting, count])} "
                     f"| {ratio(sums[selecting, count], sums[selecting, 0])} |")
    return lines
