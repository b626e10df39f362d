"""What is kept of the measurements: the medians that the goals and the plot need, by part, in seconds and bytes.

They are in a file beside this one, so that the run of one part alone leaves those of the others as they were."""

import json
import pathlib
import statistics

from overlay_timings import percentile
from starts import EMPTY

FILE = pathlib.Path(__file__).with_name("measured.json")


def load():
    """The medians of each part that has been stored."""
    return json.loads(FILE.read_text()) if FILE.exists() else {}


def store(values):
    FILE.write_text(json.dumps(values, indent=1, sort_keys=True) + "\n")


def _medians(results, value):
    """By program: the median of `value` of each measurement; programs that have none are left out."""
    found = {name: [value(done) for done in rounds if value(done) is not None] for name, rounds in results.items()}
    return {name: statistics.median(numbers) for name, numbers in found.items() if numbers}


def _of_captures(parts):
    return {"command": _medians(parts["one command"], lambda done: done.seconds),
            "command, bytes": _medians(parts["one command"], lambda done: done.file_bytes)}


def _of_encoding(parts):
    busy = parts["PNG in memory"]["busy"]
    return {"busy": {name: encoding.seconds for name, encoding in busy.items()},
            "busy, bytes": {name: encoding.file_bytes for name, encoding in busy.items()},
            "PNG by size": parts["PNG by size of screen"]}


def _step(drag):
    return None if drag is None else drag.own + drag.server


def _late(drag):
    return None if drag is None else percentile(drag.latencies, 0.95)


def _of_overlays(parts):
    rounds, drags = parts["overlays"], parts["growth"]
    return {
        **{field: _medians(rounds, lambda done, field=field: getattr(done, field))
           for field in ("fresh", "warm", "file", "owned", "read")},
        "area": _medians(rounds, lambda done: _step(done.area)),
        "area, late": _medians(rounds, lambda done: _late(done.area)),
        "screen": _medians(rounds, lambda done: _step(done.screen)),
        "screen, late": _medians(rounds, lambda done: _late(done.screen)),
        "step by size": _medians(drags, lambda drag: drag.own + drag.server),
        **{f"{field} by size": _medians(drags, lambda drag, field=field: getattr(drag, field))
           for field in ("command", "fresh", "file")}}


def _of_rest(parts):
    rests, buffers = parts["rests"], parts["buffers"]
    captured = {name: rest for name, rest in rests.items() if rest.taken}
    return {"start": {name: statistics.median(times) for name, times in parts["starts"].items() if name != EMPTY},
            "PSS": {name: rest.first.pss for name, rest in rests.items()},
            "wake-ups": {name: rest.wake_ups for name, rest in rests.items()},
            "others": {name: rest.others for name, rest in rests.items()},
            "owning": {name: rest.owning.pss for name, rest in captured.items()},
            "taken": {name: rest.taken.pss for name, rest in captured.items()},
            "picture": {name: rest.picture_bytes for name, rest in captured.items()},
            "buffers": {"before": buffers.before.pss, "soon": buffers.soon.pss, "later": buffers.later.pss}}


MEDIANS = {"captures": _of_captures, "encoding": _of_encoding, "overlays": _of_overlays, "rest": _of_rest,
           "wayland": lambda _: {}}


def growth(values):
    """Seconds by size of screen for everything that is known of how it grows, by what is done."""
    names = {("overlays", "command by size"): "full-screen command",
             ("overlays", "file by size"): "confirmation, PNG complete",
             ("overlays", "fresh by size"): "request, overlay seen",
             ("encoding", "PNG by size"): "PNG in memory",
             ("overlays", "step by size"): "one step of a drag"}
    return {name: values[part][key] for (part, key), name in names.items() if key in values.get(part, {})}
