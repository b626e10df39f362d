"""The selection overlays of several programs in turns: from the request, through a drag, to the picture."""

import dataclasses
import sys
import time

import png_file
from drag_path import AREA, SCREEN
from overlay_programs import Goal

FRESH_AFTER = 3  # seconds at least since the last capture
WARM_WITHIN = 2.0  # seconds at most since the last overlay has gone
STEPS = 300
WATCHED_STEPS = 100


@dataclasses.dataclass
class Drag:
    """Seconds a step: by the clock, and of the overlay's process and the X server; and how late each motion was seen."""
    step: float
    own: float
    server: float
    latencies: list


@dataclasses.dataclass
class Round:
    """What one program did in one round, in seconds; None where it cannot do it."""
    fresh: float
    warm: float
    file: float | None = None
    owned: float | None = None
    read: float | None = None
    area: Drag | None = None
    screen: Drag | None = None


class Turns:
    """Lets every program take its turn. `screen` is a file that shows what the desktop shows."""

    def __init__(self, scene, screen):
        self.scene, self.screen = scene, screen
        self.folder = scene.desktop.folder / "confirmed"
        self.folder.mkdir(exist_ok=True)
        self.looks = {}
        self.undriven = {}

    def admit(self, programs):
        """Those that are there and do what they are timed for, proved on one untimed turn; the others in `undriven`."""
        admitted = []
        for program in programs:
            if program.missing():
                self.undriven[program.name] = "not built" if program.name.startswith("lumacap") else "not installed"
                continue
            program.prepare(self.scene.desktop)
            self.looks[program.name] = self.scene.learn(program)
            self._prove_pictures(program)
            admitted.append(program)
        return admitted

    def _prove_pictures(self, program):
        look = self.looks[program.name]
        for goal in program.goals:
            self.scene.open(program, look, goal)
            target = self._confirm(program, goal)[0]
            width, height = self._size(program)
            png_file.compare(target, self.screen, program.name, width, height)

    def _size(self, program):
        return self.scene.desktop.width - program.lost, self.scene.desktop.height - program.lost

    def _confirm(self, program, goal):
        """The confirmed picture's file, known to be complete and of the screen's size, and the times."""
        target = self.folder / "picture.png"
        act = self.scene.confirm_to_clipboard if goal is Goal.CLIPBOARD else self.scene.confirm_to_file
        times = act(program, self.looks[program.name], target)
        png_file.check(target, *self._size(program))
        return target, times

    def take(self, programs, rounds):
        """Rounds by program and, by "pointer alone", what a step costs the server without an overlay."""
        results = {program.name: [] for program in programs}
        alone = []
        for turn in range(rounds):
            first = turn % len(programs)
            for program in programs[first:] + programs[:first]:
                results[program.name].append(self._round(program))
            alone.append(self.scene.moving_alone(self.scene.desktop.server, STEPS))
            print(f"\roverlay {turn + 1}/{rounds} ", end="", file=sys.stderr, flush=True)
        print(file=sys.stderr)
        return results, alone

    def _round(self, program):
        scene, look = self.scene, self.looks[program.name]
        time.sleep(FRESH_AFTER)
        done = Round(scene.open(program, look), 0)
        if program.only_opens:
            scene.cancel(program, look)
            done.warm = self._warm(program, Goal.FILE)
            scene.cancel(program, look)
            return done
        done.file = self._confirm(program, Goal.FILE)[1]
        if Goal.CLIPBOARD in program.goals:
            done.warm = self._warm(program, Goal.CLIPBOARD)
            done.owned, done.read = self._confirm(program, Goal.CLIPBOARD)[1]
            scene.open(program, look)
        else:
            done.warm = self._warm(program, Goal.FILE)
        done.area = self._drag(program, AREA)
        scene.open(program, look)
        done.screen = self._drag(program, SCREEN)
        return done

    def _warm(self, program, goal):
        """Opens the overlay again, so soon after the last one that what a program keeps for a while is still there."""
        pause = time.perf_counter() - self.scene.gone_at
        if pause > WARM_WITHIN:
            raise RuntimeError(f"{program.name} is asked again only after {pause:.1f} s")
        return self.scene.open(program, self.looks[program.name], goal)

    def _drag(self, program, path):
        """In the overlay that is up, and in another."""
        scene, look = self.scene, self.looks[program.name]
        processes = scene.processes()
        scene.begin_drag(path)
        step, (own, server) = scene.paced_drag(look, processes, STEPS)
        scene.give_up_drag(program, look)
        scene.open(program, look)
        scene.begin_drag(path)
        latencies = scene.watched_drag(look, WATCHED_STEPS)
        scene.give_up_drag(program, look)
        return Drag(step, own, server, latencies)


def percentile(values, share):
    """The smallest of `values` that at least that share of them does not exceed."""
    ordered = sorted(values)
    return ordered[min(len(ordered) - 1, max(0, round(share * len(ordered) + 0.5) - 1))]


