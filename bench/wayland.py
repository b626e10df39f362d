"""Everything that is measured under Wayland: captures, starts and rest, and our overlay, on sway and on KWin."""

import tempfile

import contenders
import rest
import rest_report
import starts
import wayland_captures
import wayland_overlays
from overlay_report import spread, values
from resting_programs import Lumacap, Spectacle
from session_bus import SessionBus
from wayland_desktops import KWinDesktop, SwayDesktop
from wayland_eyes import KWinEye, WlrootsEye
from wayland_keyboards import FakeKeyboard, VirtualKeyboard

DESKTOPS = wayland_captures.DESKTOPS
CLASSES = {"sway": SwayDesktop, "KWin": KWinDesktop}
# KWin draws a whole frame for each pixel that it is asked for: that is too slow to time an opening by.
INSTRUMENTS = {"sway": (WlrootsEye, VirtualKeyboard, True), "KWin": (KWinEye, FakeKeyboard, False)}


def measure_rest(desktop_class, programs, rounds):
    """Starts and rests by program."""
    present = [program for program in programs if not program.missing()]
    with desktop_class(wayland_captures.WIDTH, wayland_captures.HEIGHT) as desktop:
        desktop.session_bus = SessionBus(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        for program in present:
            program.prepare(desktop)
        started, answered = starts.take_turns(desktop, present, rounds)
        rests = {program.name: rest.rest_of(desktop, program, captures=False) for program in present}
    return started, answered, rests


def overlays_table(results):
    lines = ["### The overlay (lumacap alone)", "",
             "| desktop | request until it is seen, fresh: median (min–max) ms | warm, ms "
             "| confirmation until the file is complete, ms |", "|---|---:|---:|---:|"]
    for title, rounds in results.items():
        lines.append(f"| {title} | {' | '.join(spread(values(rounds, field)) for field in ('fresh', 'warm', 'file'))} |")
    return lines


def run(lumacap, rounds, facts):
    """Lines of Markdown, and every measurement; `facts` says what they were measured on, given a folder."""
    lines, everything = wayland_captures.run(lumacap, rounds)
    witness = contenders.lumacap_one_shot(lumacap)
    for title, programs in {"sway": [Lumacap(lumacap)], "KWin": [Lumacap(lumacap), Spectacle()]}.items():
        started, answered, rests = measure_rest(CLASSES[title], programs, rounds)
        everything |= {f"{title}, starts": started, f"{title}, rests": rests}
        lines += ["", *rest_report.started(programs, started, answered, f"{title}: start until the bus name is owned"), "",
                  *rest_report.rested(programs, rests, f"{title}: at rest")]
    overlays = {title: wayland_overlays.measure(CLASSES[title], witness, *INSTRUMENTS[title], lumacap, rounds)
                for title in CLASSES}
    return [*facts(tempfile.gettempdir()), "", *lines, "", *overlays_table(overlays)], everything | {"overlay": overlays}
