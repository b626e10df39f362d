"""How a program's overlay looks from outside: learned from the screen once, recognised by a few pixels afterwards."""

import dataclasses

BRIGHT = 150  # the least sum of red, green and blue of a pixel that a veil changes visibly
APART = 30  # how far the sums of the plain and of the veiled pixel are apart at least
POINTER_ROOM = 300  # pixels around the pointer that may show a hint or a magnifying glass
SAMPLED = 997  # every so many pixels the whole screen is compared


def colour(screen, place):
    """The colour at pixel number `place` of a screen's bytes."""
    return int.from_bytes(screen[4 * place:4 * place + 3], "little")


def brightness(value):
    return (value >> 16) + (value >> 8 & 255) + (value & 255)


@dataclasses.dataclass
class Look:
    """`points` spread over the screen, what they show without the overlay and with it."""
    width: int
    plain_screen: bytes
    veiled_screen: bytes
    points: list
    plain: list
    veiled: list

    def tells(self, x, y):
        """Whether one can see at that pixel if it is veiled."""
        place = y * self.width + x
        return tells(self.plain_screen, self.veiled_screen, place)

    def plain_at(self, x, y):
        return colour(self.plain_screen, y * self.width + x)

    def veiled_at(self, x, y):
        return colour(self.veiled_screen, y * self.width + x)


def tells(plain, veiled, place):
    light = brightness(colour(plain, place))
    return light >= BRIGHT and light - brightness(colour(veiled, place)) >= APART


def covered_share(plain, veiled):
    """The share of the bright pixels, sampled all over the screen, that the overlay has darkened."""
    bright = [place for place in range(0, len(plain) // 4, SAMPLED) if brightness(colour(plain, place)) >= BRIGHT]
    return sum(tells(plain, veiled, place) for place in bright) / len(bright)


def learn(plain, veiled, again, width, height, pointer):
    """The look from a plain screen and two with the overlay up: a point counts where both of those agree."""
    points = []
    for row in range(3):
        for column in range(3):
            points.append(next(
                (x, y) for y in range(row * height // 3 + 20, (row + 1) * height // 3, 7)
                for x in range(column * width // 3 + 60, (column + 1) * width // 3, 7)
                if (abs(x - pointer[0]) > POINTER_ROOM and abs(y - pointer[1]) > POINTER_ROOM // 4
                    and tells(plain, veiled, y * width + x)
                    and colour(veiled, y * width + x) == colour(again, y * width + x))))
    return Look(width, plain, veiled, points, [colour(plain, y * width + x) for x, y in points],
                [colour(veiled, y * width + x) for x, y in points])
