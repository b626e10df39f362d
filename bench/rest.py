"""Programs that stay: their start, what they hold and how often they wake at rest, and what is left of ten captures."""

import dataclasses
import sys
import time

import png_file
import process_rest
import rest_report
import starts
from captures import HEIGHT, WIDTH, show_busy_screen
from clipboard_reader import ClipboardReader
from clipboard_taker import ClipboardTaker
from name_watch import NameWatch
from overlay_programs import Goal
from overlay_programs import Lumacap as LumacapOverlay
from overlay_scene import OverlayScene
from resting_programs import Lumacap, resting_programs
from session_bus import SessionBus
from virtual_desktop import VirtualDesktop, end

SETTLED = 3.5  # seconds after which a program is taken to be at rest; longer than ours keeps its buffers
WATCHED = 10  # seconds for which wake-ups are counted
CAPTURES = 10
LIMIT_SECONDS = 60
SOON = 0.5  # seconds after an overlay has gone, when its buffers are still there for the next


@dataclasses.dataclass
class Memory:
    """Bytes: the proportional set size, and its anonymous part."""
    pss: int
    anonymous: int


@dataclasses.dataclass
class Rest:
    """What one program holds and does; what it holds after ten captures is None where it takes none."""
    first: Memory
    wake_ups: int
    others: int  # other processes of the machine with the same Qt in memory
    owning: Memory | None = None  # the clipboard with the last picture
    read: Memory | None = None  # after another program has read that picture
    taken: Memory | None = None  # after another program has taken the clipboard
    picture_bytes: int | None = None


@dataclasses.dataclass
class Buffers:
    """What ours holds before an overlay, soon after it, and later."""
    before: Memory
    soon: Memory
    later: Memory


def settled_memory(process, seconds=SETTLED):
    time.sleep(seconds)
    return Memory(*process_rest.memory(process.pid))


def start_and_rest(program, bus):
    """The process, and the Rest of it without captures."""
    watch = NameWatch(bus, program.bus_name) if program.bus_name else None
    process = program.start()
    if watch:
        watch.wait_until_owned()
        watch.close()
    time.sleep(SETTLED)
    wake_ups = process_rest.wake_ups(process.pid, WATCHED)
    if process.poll() is not None:
        raise RuntimeError(f"{program.name} does not stay")
    return process, Rest(Memory(*process_rest.memory(process.pid)), wake_ups,
                         process_rest.others_with_its_toolkit(process.pid))


def take_pictures(program, process, rest):
    """Ten captures to a file and the clipboard; then somebody reads the clipboard, and somebody takes it."""
    screen = program.desktop.environment["DISPLAY"]
    reader, taker = ClipboardReader(screen), ClipboardTaker(screen)
    for _ in range(CAPTURES):
        reader.forget()
        program.capture()
        reader.wait_for_owner(LIMIT_SECONDS)
        png_file.wait_for(program.pictures, program.name).unlink()
    rest.owning = settled_memory(process)
    content = reader.read_png(LIMIT_SECONDS)
    rest.picture_bytes = len(content)
    rest.read = settled_memory(process)
    pasted = program.desktop.folder / "pasted.png"
    pasted.write_bytes(content)
    png_file.check(pasted, WIDTH, HEIGHT)
    taker.take()
    rest.taken = settled_memory(process)
    reader.close()
    taker.close()


def rest_of(desktop, program, captures=True):
    """One program alone: nothing else of the same libraries runs on the desktop meanwhile."""
    process, rest = start_and_rest(program, desktop.session_bus)
    if captures and program.takes_pictures:
        take_pictures(program, process, rest)
    end(process)
    print(f"rest: {program.name} ", file=sys.stderr, flush=True)
    return rest


def buffers_of(desktop, lumacap):
    """What our agent keeps of an overlay that has been cancelled."""
    scene, program = OverlayScene(desktop), LumacapOverlay(lumacap)
    program.prepare(desktop)
    process = desktop.processes[-1]
    before = settled_memory(process)
    look = scene.learn(program)
    scene.open(program, look, Goal.FILE)
    scene.cancel(program, look)
    result = Buffers(before, settled_memory(process, SOON), settled_memory(process))
    scene.close()
    end(process)
    return result


def run(lumacap, rounds, facts):
    """Lines of Markdown, and every measurement; `facts` says what they were measured on, given a folder."""
    every = resting_programs(lumacap)
    present = [program for program in every if not program.missing()]
    with VirtualDesktop(WIDTH, HEIGHT) as desktop:
        show_busy_screen(desktop)
        desktop.session_bus = SessionBus(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        for program in present:
            program.prepare(desktop)
        started, answered = starts.take_turns(desktop, present, rounds)
        rests = {program.name: rest_of(desktop, program) for program in present}
        buffers = buffers_of(desktop, lumacap) if Lumacap.name in rests else None
        lines = facts(desktop.folder)
    return ([*lines, *rest_report.notes(WATCHED, SETTLED), "", *rest_report.started(every, started, answered), "",
             *rest_report.rested(every, rests), "", *rest_report.captured(rests, CAPTURES), "",
             *rest_report.kept(buffers)],
            {"starts": started, "answers": answered, "rests": rests, "buffers": buffers})
