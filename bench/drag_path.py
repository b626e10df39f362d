"""The paths along which an area is dragged out, and where one sees that a step has reached the screen."""

import dataclasses


@dataclasses.dataclass
class Sight:
    """A pixel in the strip that a step uncovers or veils, and the colour that it has after the step."""
    x: int
    y: int
    colour: int


@dataclasses.dataclass(frozen=True)
class DragPath:
    """Steps out along a diagonal, and the same number back."""
    origin: tuple
    first: tuple  # the corner before the first step: already a drag
    step: tuple
    turn: int

    def corner(self, step):
        """Where the pointer is after that many steps."""
        phase = step % (2 * self.turn)
        out = phase if phase <= self.turn else 2 * self.turn - phase
        return self.first[0] + out * self.step[0], self.first[1] + out * self.step[1]

    def sight(self, look, step):
        """Where to look for step number `step`, 1 for the first; LookupError where the screen is too dark to tell."""
        grows = self.corner(step)[0] > self.corner(step - 1)[0]
        for x, y in self._strip(step):
            if look.tells(x, y):
                return Sight(x, y, look.plain_at(x, y) if grows else look.veiled_at(x, y))
        raise LookupError(f"no pixel shows step {step} of the drag")

    def _strip(self, step):
        """Places in the middle of the strips beside and below the area, away from what programs draw at the corners."""
        (left, right), (low, high) = (sorted(edge) for edge in zip(self.corner(step - 1), self.corner(step)))
        for y in range(self.origin[1] + (low - self.origin[1]) // 3, low - 8):
            yield (left + right) // 2, y
        for x in range(self.origin[0] + (left - self.origin[0]) // 3, left - 8):
            yield x, (low + high) // 2


# With care, within 1920x1080.
AREA = DragPath(origin=(400, 200), first=(460, 240), step=(8, 5), turn=145)
# With a sweep, over nearly all of 3840x2160.
SCREEN = DragPath(origin=(200, 120), first=(260, 160), step=(24, 13), turn=145)
