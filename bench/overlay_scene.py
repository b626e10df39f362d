"""A desktop with a person, a watcher and one program's overlay on it: the single acts that are timed."""

import time

import overlay_look
import png_file
from clipboard_reader import ClipboardReader
from drag_path import AREA
from overlay_programs import Goal
from pointer import Person
from processor_time import Meter
from screen_watch import ScreenWatch
from virtual_desktop import wait_until

LIMIT_SECONDS = 20
POINTER = (1500, 850)  # where the pointer rests when an overlay is asked for
STEPS_A_SECOND = 100
QUIET = 0.3  # seconds for an overlay that has just been painted to come to rest before it is used


class OverlayScene:
    """The instruments on one desktop. The plain screen is read when it is made."""

    def __init__(self, desktop):
        self.desktop = desktop
        screen = desktop.environment["DISPLAY"]
        self.watch = ScreenWatch(screen, desktop.width, desktop.height)
        self.person, self.clipboard = Person(screen), ClipboardReader(screen)
        self.person.move(*POINTER)
        self.plain = self.watch.at_rest()

    def close(self):
        for instrument in (self.watch, self.person, self.clipboard):
            instrument.close()

    def learn(self, program):
        """Opens the overlay twice, untimed, and proves that it covers the screen."""
        screens = []
        for _ in range(2):
            program.aim(Goal.FILE)
            program.request(Goal.FILE)
            wait_until(lambda: self.watch.whole() != self.plain, LIMIT_SECONDS, f"the overlay of {program.name}")
            screens.append(self.watch.at_rest(still=0.8))
            self._check_cover(program, screens[-1])
            self.person.type("Escape")
            wait_until(lambda: self.watch.whole() == self.plain, LIMIT_SECONDS, f"the end of {program.name}'s overlay")
            program.settle()
        return overlay_look.learn(self.plain, *screens, self.desktop.width, self.desktop.height, POINTER)

    def _check_cover(self, program, veiled):
        shape = self.person.topmost_window().get_geometry()
        if (shape.x, shape.y, shape.width, shape.height) != (0, 0, self.desktop.width, self.desktop.height):
            raise RuntimeError(f"{program.name}'s overlay is {shape.width}x{shape.height}+{shape.x}+{shape.y}")
        share = overlay_look.covered_share(self.plain, veiled)
        if share < 0.97:
            raise RuntimeError(f"{program.name}'s overlay darkens only {share:.0%} of the screen")

    def open(self, program, look, goal=Goal.FILE):
        """Seconds from the request until all of the look's points show the overlay."""
        program.aim(goal)
        start = time.perf_counter()
        program.request(goal)
        seen = self.watch.wait_for(look.points, look.veiled, LIMIT_SECONDS, f"the overlay of {program.name}")
        time.sleep(QUIET)
        return seen - start

    def wait_until_gone(self, program, look):
        self.gone_at = self.watch.wait_for(look.points, look.plain, LIMIT_SECONDS,
                                           f"the end of {program.name}'s overlay")
        program.settle()
        self.person.move(*POINTER)

    def cancel(self, program, look):
        self.person.type("Escape")
        self.wait_until_gone(program, look)

    def _select_all(self, program, look):
        program.select_all(self.person)
        time.sleep(QUIET)

    def confirm_to_file(self, program, look, target):
        """Seconds from the confirmation until the file is complete; the picture is at `target` then."""
        self._select_all(program, look)
        start = time.perf_counter()
        program.confirm(self.person)
        picture = png_file.wait_for(program.pictures, program.name)
        seconds = time.perf_counter() - start
        self.wait_until_gone(program, look)
        picture.rename(target)
        return seconds

    def confirm_to_clipboard(self, program, look, target):
        """Seconds from the confirmation until the clipboard has an owner, and until its PNG is read, into `target`."""
        self._select_all(program, look)
        self.clipboard.forget()
        start = time.perf_counter()
        program.confirm(self.person)
        owned = self.clipboard.wait_for_owner(LIMIT_SECONDS)
        content = self.clipboard.read_png(LIMIT_SECONDS)
        read = time.perf_counter()
        target.write_bytes(content)
        self.wait_until_gone(program, look)
        return owned - start, read - start

    def begin_drag(self, path=AREA):
        """Takes the path's first corner with the button down; what follows goes along that path."""
        self.path = path
        self.person.move(*path.origin)
        time.sleep(QUIET)
        x, y = path.origin
        self.person.begin_drag((x, y), (x + 20, y + 20), path.corner(0))
        time.sleep(QUIET)

    def give_up_drag(self, program, look):
        """Escape while the button is down ends every one of these overlays; the release then meets nothing."""
        self.person.type("Escape")
        self.person.release()
        self.wait_until_gone(program, look)

    def paced_drag(self, look, processes, steps):
        """Seconds a step: by the clock until the last one is seen, and of each process. Nobody looks before that."""
        last = self.path.sight(look, steps)
        meter = Meter(*processes)
        meter.start()
        start = time.perf_counter()
        self._pace(start, steps)
        seen = self.watch.wait_for([(last.x, last.y)], [last.colour], LIMIT_SECONDS, "the last step of the drag")
        self._sleep_until(start + steps / STEPS_A_SECOND)
        return (seen - start) / steps, [used / steps for used in meter.read()]

    def paced_work(self, processes, steps):
        """Seconds of processor time a step of each process; nobody looks."""
        meter = Meter(*processes)
        meter.start()
        start = time.perf_counter()
        self._pace(start, steps)
        self._sleep_until(start + steps / STEPS_A_SECOND + QUIET)
        return [used / steps for used in meter.read()]

    def _pace(self, start, steps):
        for step in range(1, steps + 1):
            self._sleep_until(start + (step - 1) / STEPS_A_SECOND)
            self.person.move(*self.path.corner(step))

    @staticmethod
    def _sleep_until(moment):
        left = moment - time.perf_counter()
        if left > 0:
            time.sleep(left)

    def watched_drag(self, look, steps):
        """Seconds from each motion until its strip of pixels has changed."""
        latencies = []
        for step in range(1, steps + 1):
            place = self.path.sight(look, step)
            begin = time.perf_counter()
            self.person.move(*self.path.corner(step))
            seen = self.watch.wait_for([(place.x, place.y)], [place.colour], LIMIT_SECONDS, f"step {step}")
            latencies.append(seen - begin)
            self._sleep_until(begin + 1 / STEPS_A_SECOND)
        return latencies

    def moving_alone(self, server, steps):
        """What a step costs the server without an overlay: its own drawing of the pointer."""
        meter = Meter(server)
        meter.start()
        start = time.perf_counter()
        self._pace(start, steps)
        self._sleep_until(start + steps / STEPS_A_SECOND)
        used, = meter.read()
        self.person.move(*POINTER)
        return used / steps

    def processes(self):
        """The process of the overlay that is up, and the X server."""
        return self.person.process_of(self.person.topmost_window()), self.desktop.server
