"""Full-screen captures under Wayland: beside grim on sway, beside Spectacle on KWin."""

import shutil
import subprocess
import time

import captures
import contenders
import machine_limits
import report
import screen_content
from kwin_capture import KWinCapture
from session_bus import SessionBus
from virtual_desktop import end
from wayland_desktops import KWinDesktop, SwayDesktop

WIDTH, HEIGHT = 3840, 2160
DESKTOPS = {"sway": "sway", "wlroots": "libwlroots10", "KWin": "kwin-wayland", "swaybg": "swaybg"}
PAINT_SECONDS = 60


class HandOver:
    """`lumacap selection` beside a running agent: from the command's start until it has ended."""
    name = "lumacap selection, until the command has ended"

    def __init__(self, desktop, agent):
        self.desktop, self.agent = desktop, agent

    def measure(self):
        """Seconds of one command. The agent, which now shows its overlay, is replaced by one that is as warm."""
        start = time.perf_counter()
        subprocess.run([self.agent.program, "selection"], env=self.desktop.environment, check=True, timeout=60,
                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        seconds = time.perf_counter() - start
        end(self.agent.process)
        self.agent.start(self.desktop)
        untimed = self.desktop.folder / "untimed.png"
        self.agent.take(self.desktop, untimed)
        untimed.unlink()
        return seconds


def show_busy_screen(desktop, witness):
    """Paints the screen and returns the picture that is on it, once `witness` has seen it there."""
    picture = desktop.folder / "screen.ppm"
    screen_content.paint(picture, WIDTH, HEIGHT)
    desktop.show(picture)
    deadline = time.monotonic() + PAINT_SECONDS
    while True:
        try:
            captures.check_once(desktop, witness, picture)
            return picture
        except RuntimeError:
            if time.monotonic() > deadline:
                raise


def measure_one_shots(desktop_class, group, rounds):
    """Pictures by a command: measurements by program and by limit."""
    with desktop_class(WIDTH, HEIGHT) as desktop:
        screen = show_busy_screen(desktop, group[0])
        limits = [machine_limits.FrameCopy(WIDTH, HEIGHT)]
        if desktop_class is KWinDesktop:
            bus = SessionBus(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
            limits.append(KWinCapture(bus, "Virtual-0", WIDTH * HEIGHT * 4))
        return captures.measure(desktop, group, limits, rounds, screen)


def measure_residents(desktop_class, witness, group, rounds, bus_services=()):
    """Pictures by a call, and ours handed a selection, in the same rounds; the first of `group` is ours."""
    with desktop_class(WIDTH, HEIGHT, bus_services=bus_services) as desktop:
        screen = show_busy_screen(desktop, witness)
        desktop.session_bus = SessionBus(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        return captures.measure(desktop, group, [HandOver(desktop, group[0])], rounds, screen)


def measure_desktop(title, desktop_class, one_shots, residents, rounds, bus_services=()):
    """Lines and measurements of one compositor."""
    one_shot_results, limits = measure_one_shots(desktop_class, one_shots, rounds)
    resident_results, hand_overs = measure_residents(desktop_class, one_shots[0], residents, rounds, bus_services)
    lines = [*report.table(f"{title}: one command, one PNG of the screen", one_shots, one_shot_results), "",
             *report.table(f"{title}: asked while running", residents, resident_results), "",
             *report.limits_table(limits | hand_overs, f"{title}: in the same rounds")]
    return lines, {f"{title}, one command": one_shot_results, f"{title}, asked while running": resident_results,
                   f"{title}, beside": limits | hand_overs}


def run(lumacap, rounds):
    """Lines of Markdown, and every measurement."""
    if not shutil.which(lumacap):
        raise RuntimeError(f"{lumacap} is not built")
    sway_lines, sway_results = measure_desktop(
        "sway", SwayDesktop, [contenders.lumacap_one_shot(lumacap), contenders.grim_one_shot()],
        [contenders.lumacap_resident(lumacap)], rounds)
    kwin_lines, kwin_results = measure_desktop(
        "KWin", KWinDesktop, [contenders.lumacap_one_shot(lumacap), contenders.spectacle_one_shot()],
        [contenders.lumacap_resident(lumacap), contenders.spectacle_resident()], rounds, ["org.kde.Spectacle"])
    return [*sway_lines, "", *kwin_lines], sway_results | kwin_results
