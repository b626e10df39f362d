"""The measurements of programs that stay as Markdown tables."""

from report import milliseconds, ratio, version
from starts import EMPTY


def mebibytes(amount):
    return f"{amount / 2**20:.1f}"


def state(program, results):
    if program.name in results:
        return version(program)
    return "not built" if program.name == "lumacap" else "not installed"


def notes(watched, settled):
    return [f"- each program rests alone on the desktop; wake-ups are counted for {watched} s, beginning {settled} s "
            f"after its start, and then its memory is read; later {settled} s after the last thing that happened"]


def started(programs, results, answers, title="Start until the bus name is owned"):
    lines = [f"### {title}", "",
             "| program | version | started by | median ms | min–max ms | ratio to lumacap "
             "| until it has answered a call, ms | ratio to lumacap |", "|---|---|---|---:|---:|---:|---:|---:|"]
    reference, answered = results.get("lumacap", []), answers.get("lumacap", [])
    for program in programs:
        times = results.get(program.name, [])
        if not program.bus_name:
            lines.append(f"| {program.name} | | owns no name | | | | | |")
        elif not times:
            lines.append(f"| {program.name} | {state(program, results)} | | | | | | |")
        else:
            command = " ".join(["lumacap" if program.name == "lumacap" else program.program, *program.command[1:]])
            lines.append(f"| {program.name} | {version(program)} | `{command}` | {milliseconds(times)} "
                         f"| {min(times) * 1000:.0f}–{max(times) * 1000:.0f} | {ratio(times, reference)} "
                         f"| {milliseconds(answers[program.name])} | {ratio(answers[program.name], answered)} |")
    times = results[EMPTY]
    return [*lines, f"| {EMPTY} | | | {milliseconds(times)} | {min(times) * 1000:.0f}–{max(times) * 1000:.0f} "
            f"| {ratio(times, reference)} | | |"]


def rested(programs, results, title="At rest, alone"):
    lines = [f"### {title}", "",
             "| program | version | PSS MiB | of it anonymous MiB | wake-ups | other processes with the same Qt |",
             "|---|---|---:|---:|---:|---:|"]
    for program in programs:
        rest = results.get(program.name)
        cells = ["", "", "", ""]
        if rest:
            cells = [mebibytes(rest.first.pss), mebibytes(rest.first.anonymous), str(rest.wake_ups), str(rest.others)]
        lines.append(f"| {program.name} | {state(program, results)} | {' | '.join(cells)} |")
    return lines


def captured(results, captures):
    lines = [f"### After {captures} captures of the screen, to a file and the clipboard: PSS in MiB", "",
             "| program | at rest before | owning the clipboard | after somebody has read it "
             "| after somebody has taken it | ratio to the first rest | a PNG of the frame |",
             "|---|---:|---:|---:|---:|---:|---:|"]
    for name, rest in results.items():
        if not rest.taken:
            continue
        sizes = [rest.first.pss, rest.owning.pss, rest.read.pss, rest.taken.pss]
        lines.append(f"| {name} | {' | '.join(mebibytes(size) for size in sizes)} "
                     f"| {rest.taken.pss / rest.first.pss:.2f} | {mebibytes(rest.picture_bytes)} |")
    return lines


def kept(buffers):
    lines = ["### What an overlay leaves behind (lumacap alone): PSS in MiB", "",
             "| before | half a second after | later than two seconds after |", "|---:|---:|---:|"]
    if not buffers:
        return [*lines, "| not built | | |"]
    sizes = (buffers.before.pss, buffers.soon.pss, buffers.later.pss)
    return [*lines, f"| {' | '.join(mebibytes(size) for size in sizes)} |"]
