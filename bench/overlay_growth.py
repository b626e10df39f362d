"""What the same drag costs our overlay on screens of different sizes, and what the whole screen takes there."""

import contextlib
import dataclasses
import sys
import time

import contenders
from overlay_programs import Lumacap
from overlay_scene import OverlayScene
from session_bus import SessionBus
from virtual_desktop import VirtualDesktop

SIZES = {"1080p": (1920, 1080), "4K": (3840, 2160), "8K": (7680, 4320)}
STEPS = 300
WATCHED_STEPS = 100


@dataclasses.dataclass
class Drag:
    """One drag, in seconds a step; `alone` is what the server uses for the pointer's motion without an overlay.
    Beside it, in seconds: the overlay opened, the whole screen confirmed into a file, and taken by a command."""
    step: float
    own: float
    server: float
    alone: float
    latencies: list
    fresh: float
    file: float
    command: float


def show(desktop, screen):
    desktop.run("feh", "--no-fehbg", "--bg-tile", str(screen))


class Growth:
    """The desktops of all sizes side by side, each with an agent. Use as a context manager."""

    def __init__(self, lumacap, screen):
        self.lumacap, self.screen = lumacap, screen
        self.stack = contextlib.ExitStack()
        self.scenes = {}

    def __enter__(self):
        with self.stack:
            # All desktops first: the end of one ends the others' processes, so the instruments have to close before.
            desktops = {name: self.stack.enter_context(VirtualDesktop(*size)) for name, size in SIZES.items()}
            for name, desktop in desktops.items():
                show(desktop, self.screen)
                desktop.session_bus = SessionBus(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
                scene, program = OverlayScene(desktop), Lumacap(self.lumacap)
                self.stack.callback(scene.close)
                program.prepare(desktop)
                self.scenes[name] = (scene, program, scene.learn(program))
            self.stack = self.stack.pop_all()
        return self

    def __exit__(self, *_):
        self.stack.close()

    def take(self, rounds):
        """Drags by size, each size once a round."""
        results = {name: [] for name in self.scenes}
        for turn in range(rounds):
            names = list(self.scenes)
            for name in names[turn % len(names):] + names[:turn % len(names)]:
                results[name].append(self._drag(*self.scenes[name]))
            print(f"\rgrowth {turn + 1}/{rounds} ", end="", file=sys.stderr, flush=True)
        print(file=sys.stderr)
        return results

    @staticmethod
    def _drag(scene, program, look):
        fresh = scene.open(program, look)
        processes = scene.processes()
        scene.begin_drag()
        step, (own, server) = scene.paced_drag(look, processes, STEPS)
        scene.give_up_drag(program, look)
        scene.open(program, look)
        scene.begin_drag()
        latencies = scene.watched_drag(look, WATCHED_STEPS)
        scene.give_up_drag(program, look)
        time.sleep(0.2)
        alone = scene.moving_alone(scene.desktop.server, STEPS)
        scene.open(program, look)
        target = scene.desktop.folder / "whole" / "screen.png"
        target.parent.mkdir(exist_ok=True)
        file = scene.confirm_to_file(program, look, target)
        target.unlink()
        command = contenders.lumacap_one_shot(program.program).take(scene.desktop, target).seconds
        target.unlink()
        return Drag(step, own, server, alone, latencies, fresh, file, command)
