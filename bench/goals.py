"""What Lumacap is meant to reach on a busy 4K screen, beside what has been measured."""

import dataclasses
import os

OURS = "lumacap"
MEBIBYTE = 1 << 20
PAGE = os.sysconf("SC_PAGE_SIZE")
RAW_BYTES = 3840 * 2160 * 3
FRAME_BYTES = 3840 * 2160 * 4
SAME = 0.3  # what a step may differ by between sizes of screens


@dataclasses.dataclass
class Outcome:
    """One row of the table, but for what the goal is."""
    limit: str
    ours: str
    peer: str
    ratio: str
    met: bool


def text(value, unit):
    scale = {"ms": 1e3, "µs": 1e6, "MiB": 1 / MEBIBYTE, "MB": 1e-6}[unit]
    scaled = value * scale
    return f"{scaled:.0f} {unit}" if scaled >= 100 else f"{scaled:.1f} {unit}"


def against(limit, ours, name, theirs, unit, of="the best peer"):
    ratio = ours / theirs
    return Outcome(f"≤ {limit} × {of}", text(ours, unit), f"{name}: {text(theirs, unit)}", f"{ratio:.3f}",
                   ratio <= limit)


def best_peer(results, eligible=lambda name: True):
    """Name and value of the peer with the least value; LookupError without one."""
    peers = {name: value for name, value in results.items() if not name.startswith(OURS) and eligible(name)}
    if not peers:
        raise LookupError("no peer was measured")
    return min(peers.items(), key=lambda peer: peer[1])


def against_best(part, key, limit, unit):
    """At most `limit` times what the best peer takes in the same rounds."""
    def outcome(values):
        results = values[part][key]
        return against(limit, results[OURS], *best_peer(results), unit)
    return outcome


def command(values):
    times, sizes = values["captures"]["command"], values["captures"]["command, bytes"]
    peer = best_peer(times, lambda name: sizes[name] < RAW_BYTES / 2)  # a picture of this screen that is compressed
    return against(0.35, times[OURS], *peer, "ms", "the best peer that compresses")


def encoding(key, limit, level, unit):
    def outcome(values):
        results = values["encoding"][key]
        return against(limit, results[OURS], level, results[level], unit, level)
    return outcome


def same_at_all_sizes(values):
    steps = values["overlays"]["step by size"]
    smallest = steps["1080p"]
    ratios = [step / smallest for step in steps.values()]
    return Outcome(f"the same ± {SAME:.0%}", ", ".join(text(step, "µs") for step in steps.values()), "itself at 1080p",
                   ", ".join(f"{ratio:.2f}" for ratio in ratios), max(abs(ratio - 1) for ratio in ratios) <= SAME)


def buffers(values):
    kept = values["rest"]["buffers"]
    more = kept["later"] - kept["before"]
    return Outcome("no picture: ≤ 0.1 × the frame", text(more, "MiB"), f"the frame: {text(FRAME_BYTES, 'MiB')}",
                   f"{more / FRAME_BYTES:.2f}", more <= FRAME_BYTES / 10)


def memory(values):
    sizes = values["rest"]["PSS"]
    name, theirs = best_peer(sizes)
    is_alone = not values["rest"]["others"][OURS]
    return Outcome("PSS ≤ 12 MiB and below every peer", text(sizes[OURS], "MiB"), f"{name}: {text(theirs, 'MiB')}",
                   f"{sizes[OURS] / theirs:.2f}", is_alone and sizes[OURS] <= min(12 * MEBIBYTE, theirs))


def wake_ups(values):
    counts = values["rest"]["wake-ups"]
    name, theirs = best_peer(counts)
    return Outcome("none", str(counts[OURS]), f"{name}: {theirs}", "", counts[OURS] == 0)


def after_captures(values):
    first, taken = values["rest"]["PSS"], values["rest"]["taken"]
    name, theirs = best_peer({name: size / first[name] for name, size in taken.items()})
    ratio = taken[OURS] / first[OURS]
    return Outcome("PSS ≤ 1.2 × the first rest", text(taken[OURS], "MiB"), f"{name}: {theirs:.2f} ×", f"{ratio:.2f}",
                   ratio <= 1.2)


def owning(values):
    rest = values["rest"]
    more = {name: size - rest["taken"][name] for name, size in rest["owning"].items()}
    name, theirs = best_peer(more)
    picture = -(-rest["picture"][OURS] // PAGE) * PAGE  # memory comes in whole pages
    return Outcome("at most one PNG of the frame more", text(more[OURS], "MiB"), f"{name}: {text(theirs, 'MiB')}",
                   f"{more[OURS] / picture:.2f} PNGs", more[OURS] <= picture)


GOALS = {
    "`full-screen --output` to PNG, whole process": command,
    "PNG of a busy frame in memory, two cores: time": encoding("busy", 0.14, "libpng, level 1", "ms"),
    "… its size": encoding("busy, bytes", 1.1, "libpng, level 6", "MB"),
    "request until the overlay is seen, fresh": against_best("overlays", "fresh", 0.9, "ms"),
    "… within two seconds of the last capture": against_best("overlays", "warm", 0.6, "ms"),
    "… what is held of it more than two seconds after": buffers,
    "step of dragging out an area, own processor time and the X server's": against_best("overlays", "area", 0.35, "µs"),
    "… at 1080p, 4K, 8K": same_at_all_sizes,
    "… motion of the pointer until its pixels, 95th percentile": against_best("overlays", "area, late", 0.5, "ms"),
    "step of a sweep over the whole screen": against_best("overlays", "screen", 0.35, "µs"),
    "… a sweep's motion until its pixels, 95th percentile": against_best("overlays", "screen, late", 0.5, "ms"),
    "confirmation until the file is complete, whole frame": against_best("overlays", "file", 0.17, "ms"),
    "confirmation until the clipboard is owned": against_best("overlays", "owned", 1, "ms"),
    "… until another program has read the PNG": against_best("overlays", "read", 0.17, "ms"),
    "at rest, alone: memory": memory,
    "… wake-ups in ten seconds": wake_ups,
    "start until the bus name is owned": against_best("rest", "start", 0.8, "ms"),
    "after ten captures, the clipboard since taken by another program": after_captures,
    "… while it is ours": owning,
}


def occasions(values):
    """Lines that say of what run each part's figures are."""
    return [f"- {part}: measured {kept['of']}" for part, kept in values.items()]


def table(values):
    """Lines of Markdown from what is known of each part; what is not known is said to be."""
    lines = ["| 3840x2160, busy screen | goal | lumacap | best peer | ratio | met |", "|---|---|---:|---:|---:|---|"]
    for goal, outcome_of in GOALS.items():
        try:
            outcome = outcome_of(values)
        except LookupError:
            lines.append(f"| {goal} | | not measured | | | |")
            continue
        lines.append(f"| {goal} | {outcome.limit} | {outcome.ours} | {outcome.peer} | {outcome.ratio} "
                     f"| {'yes' if outcome.met else '**no**'} |")
    return lines
