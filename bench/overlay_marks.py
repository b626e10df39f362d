"""What a step of a drag costs our overlay with many marks on the screen and with none, on a 4K screen."""

import dataclasses
import sys
import time

from overlay_programs import Lumacap
from overlay_scene import QUIET, OverlayScene

STEPS = 300
MANY = 50
MARK = (60, 40)  # each arrow's way


def places(count):
    """Where the arrows begin: in rows under the path of the drag, whose line sweeps over them."""
    return [(700 + index % 10 * 90, 400 + index // 10 * 110) for index in range(count)]


@dataclasses.dataclass
class Drag:
    """Seconds of processor time a step."""
    own: float
    server: float


class MarkedDrags:
    """Drags in the overlay of an agent that runs on `desktop`."""

    def __init__(self, desktop, lumacap):
        self.scene, self.program = OverlayScene(desktop), Lumacap(lumacap)
        self.program.prepare(desktop)
        self.look = self.scene.learn(self.program)

    def _draw(self, count):
        """Draws with the toolbar's second control, the arrow, and goes back to its first, the selection."""
        person = self.scene.person
        for key in ("Tab", "Tab", "space"):
            person.type(key)
        for x, y in places(count):
            person.drag((x, y), (x + MARK[0] // 2, y + MARK[1] // 2), (x + MARK[0], y + MARK[1]))
        time.sleep(QUIET)

    def _drag(self, count, selecting):
        scene = self.scene
        scene.open(self.program, self.look)
        self._draw(count)
        if selecting:
            scene.person.type("Shift_L", "Tab")
            scene.person.type("space")
        processes = scene.processes()
        scene.begin_drag()
        own, server = scene.paced_work(processes, STEPS)
        scene.give_up_drag(self.program, self.look)
        return Drag(own, server)

    def take(self, rounds):
        """Drags by what is dragged and how many marks there are."""
        kinds = [(selecting, count) for selecting in (True, False) for count in (0, MANY)]
        results = {kind: [] for kind in kinds}
        for turn in range(rounds):
            for kind in kinds[turn % len(kinds):] + kinds[:turn % len(kinds)]:
                selecting, count = kind
                results[kind].append(self._drag(count, selecting))
            print(f"\rmarks {turn + 1}/{rounds} ", end="", file=sys.stderr, flush=True)
        print(file=sys.stderr)
        self.scene.close()
        return results
