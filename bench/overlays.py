"""The selection overlays: several programs on a 4K screen, then ours alone on three sizes of screen and among marks."""

import overlay_report
from captures import HEIGHT, WIDTH, show_busy_screen
from overlay_growth import Growth, show
from overlay_marks import MarkedDrags
from overlay_programs import NOT_DRIVEN, overlay_programs
from overlay_scene import STEPS_A_SECOND, OverlayScene
from overlay_timings import STEPS, WATCHED_STEPS, Turns
from session_bus import SessionBus
from virtual_desktop import VirtualDesktop

# At most: nobody is beside us there.
GROWTH_ROUNDS, MARKED_ROUNDS = 7, 3


def compare_programs(lumacap, rounds, facts, screen_copy):
    """Lines and measurements of all programs; the screen's picture is left at `screen_copy`."""
    with VirtualDesktop(WIDTH, HEIGHT) as desktop:
        screen_copy.write_bytes(show_busy_screen(desktop).read_bytes())
        desktop.session_bus = SessionBus(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        scene = OverlayScene(desktop)
        turns = Turns(scene, screen_copy)
        programs = turns.admit(overlay_programs(lumacap))
        results, alone = turns.take(programs, rounds)
        lines = [*facts(desktop.folder),
                 f"- a drag is {STEPS} steps at {STEPS_A_SECOND} a second; latencies are of {WATCHED_STEPS} steps of "
                 "another",
                 f"- lumacap alone is measured in {min(rounds, GROWTH_ROUNDS)} rounds on screens of other sizes, and in "
                 f"{min(rounds, MARKED_ROUNDS)} with marks",
                 *(f"- {reason}" for reason in NOT_DRIVEN), "",
                 *overlay_report.openings(programs, results, turns.undriven), "",
                 *overlay_report.steps(programs, results, "area", "One step of dragging out an area", alone), "",
                 *overlay_report.steps(programs, results, "screen", "One step of a sweep over the whole screen"), "",
                 *overlay_report.confirmations(programs, results)]
        scene.close()
    return lines, {"overlays": results, "pointer alone": alone}


def drag_among_marks(lumacap, rounds, screen):
    with VirtualDesktop(WIDTH, HEIGHT) as desktop:
        show(desktop, screen)
        desktop.session_bus = SessionBus(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        return MarkedDrags(desktop, lumacap).take(min(rounds, MARKED_ROUNDS))


def run(lumacap, rounds, facts, folder):
    """Lines of Markdown, and every measurement; `folder` is for files that go with the caller."""
    screen = folder / "screen.ppm"
    lines, everything = compare_programs(lumacap, rounds, facts, screen)
    with Growth(lumacap, screen) as growth:
        drags = growth.take(min(rounds, GROWTH_ROUNDS))
    marked = drag_among_marks(lumacap, rounds, screen)
    return ([*lines, "", *overlay_report.growth(drags), "", *overlay_report.whole_screens(drags), "",
             *overlay_report.marks(marked)],
            everything | {"growth": drags, "marks": [(*kind, drags) for kind, drags in marked.items()]})
