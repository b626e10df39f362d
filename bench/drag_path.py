"""The path along which an area is dragged out, and where one sees that a step has reached the screen."""

import dataclasses

ORIGIN = (400, 200)
FIRST = (460, 240)  # the corner before the first step: already a drag
STEP = (8, 5)
TURN = 145  # steps out before the same number back: the whole path fits on 1920x1080


def corner(step):
    """Where the pointer is after that many steps."""
    phase = step % (2 * TURN)
    out = phase if phase <= TURN else 2 * TURN - phase
    return FIRST[0] + out * STEP[0], FIRST[1] + out * STEP[1]


@dataclasses.dataclass
class Sight:
    """A pixel in the strip that a step uncovers or veils, and the colour that it has after the step."""
    x: int
    y: int
    colour: int


def sight(look, step):
    """Where to look for step number `step`, 1 for the first; LookupError where the screen is too dark to tell."""
    earlier, later = corner(step - 1), corner(step)
    x = min(earlier[0], later[0]) + STEP[0] // 2  # away from the lines on both edges
    low, high = ORIGIN[1], min(earlier[1], later[1])
    # Away from what programs draw at the corners.
    for y in range(low + (high - low) // 3, high - 8):
        if look.tells(x, y):
            grows = later[0] > earlier[0]
            return Sight(x, y, look.plain_at(x, y) if grows else look.veiled_at(x, y))
    raise LookupError(f"no pixel shows step {step} of the drag")
