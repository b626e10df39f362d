"""Our overlay on Wayland desktops: until it is seen where one can look often enough, and from Return to the file."""

import dataclasses
import sys
import time

import png_file
from name_watch import NameWatch
from overlay_look import APART, BRIGHT, brightness
from overlay_timings import FRESH_AFTER
from resting_programs import Lumacap
from session_bus import SessionBus
from wayland_captures import HEIGHT, WIDTH, show_busy_screen
from wayland_keyboards import ESCAPE, RETURN

LIMIT_SECONDS = 30
STILL = 0.8  # seconds without a change, after which the overlay is taken to be painted
BETWEEN_LOOKS = 0.001


@dataclasses.dataclass
class Round:
    """Seconds; None where looking takes too long to time what is seen."""
    fresh: float | None
    warm: float | None
    file: float


def bright_places(picture):
    """Three pixels far apart that a veil changes visibly, of the PPM file that is on the screen."""
    pixels = picture.read_bytes()[-WIDTH * HEIGHT * 3:]
    return [next((x, y) for x in range(column, WIDTH)
                 if sum(pixels[3 * (y * WIDTH + x):3 * (y * WIDTH + x) + 3]) >= BRIGHT + APART)
            for column, y in ((WIDTH // 6, HEIGHT // 6), (5 * WIDTH // 6, HEIGHT // 5), (WIDTH // 5, 5 * HEIGHT // 6))]


class WaylandOverlay:
    """An agent on a desktop whose screen shows `picture`, an eye and a keyboard."""

    def __init__(self, desktop, lumacap, picture, eye, keyboard):
        self.eye, self.keyboard, self.desktop = eye, keyboard, desktop
        self.program = Lumacap(lumacap)
        self.program.prepare(desktop)
        watch = NameWatch(desktop.session_bus, self.program.bus_name)
        self.program.start()
        watch.wait_until_owned()
        watch.close()
        self.points = bright_places(picture)
        self.plain = eye.pixels(self.points)
        self.veiled = self._learn()

    def close(self):
        self.eye.close()
        self.keyboard.close()

    def _learn(self):
        """The points' colours under the overlay, from an untimed opening."""
        self._request()
        self._wait(lambda now: now != self.plain, "the overlay")
        colours, since = self.eye.pixels(self.points), time.monotonic()
        while time.monotonic() - since < STILL:
            now = self.eye.pixels(self.points)
            if now != colours:
                colours, since = now, time.monotonic()
        if any(brightness(before) - brightness(now) < APART for before, now in zip(self.plain, colours)):
            raise RuntimeError("the overlay does not darken the screen")
        self.cancel()
        return colours

    def _wait(self, holds, what):
        deadline = time.monotonic() + LIMIT_SECONDS
        while not holds(self.eye.pixels(self.points)):
            if time.monotonic() > deadline:
                raise TimeoutError(f"waited {LIMIT_SECONDS} s in vain for {what}")
            time.sleep(BETWEEN_LOOKS)
        return time.perf_counter()

    def _request(self):
        self.desktop.session_bus.send(*self.program.action, "('selection', @av [], @a{sv} {})")

    def open(self):
        """Seconds from the request until all points show the overlay."""
        start = time.perf_counter()
        self._request()
        return self._wait(lambda now: now == self.veiled, "the overlay") - start

    def cancel(self):
        self.keyboard.type(ESCAPE)
        self._wait(lambda now: now == self.plain, "the end of the overlay")

    def confirm(self):
        """Seconds from Return until the file of the whole screen is complete."""
        start = time.perf_counter()
        self.keyboard.type(RETURN)
        picture = png_file.wait_for(self.program.pictures, self.program.name)
        seconds = time.perf_counter() - start
        png_file.check(picture, WIDTH, HEIGHT)
        picture.unlink()
        self._wait(lambda now: now == self.plain, "the end of the overlay")
        return seconds


def take(overlay, rounds, sees_soon):
    """So many rounds; openings are timed where the eye `sees_soon`."""
    done = []
    for turn in range(rounds):
        fresh = warm = None
        if sees_soon:
            time.sleep(FRESH_AFTER)
            fresh = overlay.open()
            overlay.cancel()
            warm = overlay.open()
        else:
            overlay.open()
        done.append(Round(fresh, warm, overlay.confirm()))
        print(f"\roverlay {turn + 1}/{rounds} ", end="", file=sys.stderr, flush=True)
    print(file=sys.stderr)
    return done


def measure(desktop_class, witness, eye_class, keyboard_class, sees_soon, lumacap, rounds):
    """The rounds on one desktop; `witness` is a program that sees when the screen is painted."""
    with desktop_class(WIDTH, HEIGHT) as desktop:
        picture = show_busy_screen(desktop, witness)
        desktop.session_bus = SessionBus(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        overlay = WaylandOverlay(desktop, lumacap, picture, eye_class(desktop), keyboard_class(desktop))
        done = take(overlay, rounds, sees_soon)
        overlay.close()
        return done
