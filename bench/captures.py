"""Full-screen captures by several programs in turns, and the machine's own limits in the same rounds."""

import sys

import contenders
import machine_limits
import png_file
import report
import screen_content
from session_bus import SessionBus
from virtual_desktop import VirtualDesktop

WIDTH, HEIGHT = 3840, 2160


def show_busy_screen(desktop):
    """Paints the root window and returns the picture that is now on the screen."""
    picture = desktop.folder / "screen.ppm"
    screen_content.paint(picture, WIDTH, HEIGHT)
    desktop.run("feh", "--no-fehbg", "--bg-center", str(picture))
    return picture


def check_once(desktop, contender, screen):
    """An untimed turn that warms the caches and proves that the program's file is a picture of this screen."""
    target = desktop.folder / "check" / "check.png"
    target.parent.mkdir(exist_ok=True)
    contender.take(desktop, target)
    png_file.check(target, WIDTH, HEIGHT)
    png_file.compare(target, screen, contender.name, WIDTH, HEIGHT)
    target.unlink()


def take_turns(desktop, present, limits, rounds):
    """Measurements by program and by limit. One turn each a round, so that a change of the machine's pace hits all."""
    results = {contender.name: [] for contender in present}
    limit_results = {limit.name: [] for limit in limits}
    target = desktop.folder / "timed" / "picture.png"
    target.parent.mkdir(exist_ok=True)
    for turn in range(rounds):
        first = turn % len(present) if present else 0
        for contender in present[first:] + present[:first]:
            results[contender.name].append(contender.take(desktop, target))
            png_file.check(target, WIDTH, HEIGHT)
            target.unlink()
        for limit in limits:
            limit_results[limit.name].append(limit.measure())
        print(f"\rcaptures {turn + 1}/{rounds} ", end="", file=sys.stderr, flush=True)
    print(file=sys.stderr)
    return results, limit_results


def measure(desktop, group, limits, rounds, screen):
    present = [contender for contender in group if not contender.missing()]
    for contender in present:
        contender.prepare(desktop)
        check_once(desktop, contender, screen)
    return take_turns(desktop, present, limits, rounds)


def run(lumacap, rounds, facts):
    """Lines of Markdown, and every measurement; `facts` says what they were measured on, given a folder."""
    one_shots, residents = contenders.one_shots(lumacap), contenders.residents(lumacap)
    # One desktop a group: an agent that is already there would answer for a program that is meant to start afresh.
    with VirtualDesktop(WIDTH, HEIGHT) as desktop:
        screen = show_busy_screen(desktop)
        get = machine_limits.SharedMemoryGet(WIDTH, HEIGHT, desktop.environment["DISPLAY"])
        limits = [machine_limits.FrameCopy(WIDTH, HEIGHT), get, machine_limits.SharedMemoryPut(get)]
        one_shot_results, limit_results = measure(desktop, one_shots, limits, rounds, screen)
        lines = facts(desktop.folder)
    with VirtualDesktop(WIDTH, HEIGHT, bus_services=["org.kde.Spectacle"]) as desktop:
        screen = show_busy_screen(desktop)
        desktop.session_bus = SessionBus(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        resident_results, _ = measure(desktop, residents, [], rounds, screen)
    lines += ["- grim is not in the tables: it captures Wayland outputs, and this is an X11 screen", "",
              *report.table("One command, one PNG of the screen", one_shots, one_shot_results), "",
              *report.table("Asked while running", residents, resident_results), "",
              *report.limits_table(limit_results)]
    return lines, {"one command": one_shot_results, "asked while running": resident_results, "limits": limit_results}
