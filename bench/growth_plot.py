"""How times grow with the screen, as a picture: both axes are logarithmic, so that proportional things rise evenly."""

import html
import math

PIXELS = {"1080p": 1920 * 1080, "4K": 3840 * 2160, "8K": 7680 * 4320}
COLOURS = ("#0072b2", "#d55e00", "#009e73", "#8b5a9e", "#444444")  # told apart by people who see few colours, too
WIDTH, HEIGHT = 880, 480
LEFT, RIGHT, TOP, BOTTOM = 80, 320, 50, 70  # margins; the right one holds the names
NAME_PITCH = 20  # between two names, at least


def _text(x, y, words, anchor="start", size=14, fill="#333333", turn=""):
    return (f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" font-size="{size}" fill="{fill}"{turn}>'
            f"{html.escape(words)}</text>")


def _line(x1, y1, x2, y2, colour, width=1.0):
    return (f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}" '
            f'stroke-width="{width}"/>')


def _time(seconds):
    milliseconds = seconds * 1000
    return f"{milliseconds:.0f}" if milliseconds >= 10 else f"{milliseconds:.1f}"


class Axes:
    """From pixels of a screen and seconds to places in the picture."""

    def __init__(self, seconds):
        self.decades = range(math.floor(math.log10(min(seconds))), math.ceil(math.log10(max(seconds))) + 1)
        self.columns = [math.log(pixels) for pixels in PIXELS.values()]

    def x(self, pixels):
        share = (math.log(pixels) - self.columns[0]) / (self.columns[-1] - self.columns[0])
        return LEFT + share * (WIDTH - LEFT - RIGHT)

    def y(self, seconds):
        share = (math.log10(seconds) - self.decades[0]) / (self.decades[-1] - self.decades[0])
        return HEIGHT - BOTTOM - share * (HEIGHT - TOP - BOTTOM)

    def draw(self):
        parts = []
        for decade in self.decades:
            y = self.y(10 ** decade)
            parts += [_line(LEFT, y, WIDTH - RIGHT, y, "#dddddd"),
                      _text(LEFT - 8, y + 5, f"{10 ** (decade + 3):g}", "end")]
        for name, pixels in PIXELS.items():
            x = self.x(pixels)
            parts += [_line(x, TOP, x, HEIGHT - BOTTOM, "#dddddd"), _text(x, HEIGHT - BOTTOM + 20, name, "middle"),
                      _text(x, HEIGHT - BOTTOM + 36, f"{pixels / 1e6:.1f}", "middle", 12)]
        middle = (TOP + HEIGHT - BOTTOM) / 2
        turn = f' transform="rotate(-90 22 {middle:.1f})"'
        return [*parts, _line(LEFT, TOP, LEFT, HEIGHT - BOTTOM, "#333333"),
                _line(LEFT, HEIGHT - BOTTOM, WIDTH - RIGHT, HEIGHT - BOTTOM, "#333333"),
                _text(22, middle, "milliseconds", "middle", turn=turn),
                _text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - BOTTOM + 58, "screen, millions of pixels", "middle")]


def _names_apart(places):
    """The heights of the names beside the ends of their lines: as near as can be without touching."""
    last = -math.inf
    apart = {}
    for name, y in sorted(places.items(), key=lambda place: place[1]):
        last = apart[name] = max(y, last + NAME_PITCH)
    return apart


def draw(series):
    """The text of an SVG: `series` has seconds by size of screen, by what is done."""
    axes = Axes([seconds for times in series.values() for seconds in times.values()])
    sizes = list(PIXELS)
    ends = _names_apart({name: axes.y(times[sizes[-1]]) for name, times in series.items()})
    parts = axes.draw()
    for colour, (name, times) in zip(COLOURS, series.items()):
        points = [(axes.x(PIXELS[size]), axes.y(times[size])) for size in sizes]
        parts.append(f'<polyline points="{" ".join(f"{x:.1f},{y:.1f}" for x, y in points)}" fill="none" '
                     f'stroke="{colour}" stroke-width="2"/>')
        parts += [f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3.5" fill="{colour}"/>' for x, y in points]
        parts.append(_text(WIDTH - RIGHT + 12, ends[name] + 5, f"{name}: "
                           + " · ".join(_time(times[size]) for size in sizes), size=12, fill=colour))
    title = _text(LEFT, 26, "What grows with the screen, and what does not: ms at 1080p · 4K · 8K", size=15)
    return "\n".join([f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
                      f'viewBox="0 0 {WIDTH} {HEIGHT}" font-family="DejaVu Sans, Helvetica, Arial, sans-serif">',
                      f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#ffffff"/>', title, *parts, "</svg>", ""])


def write(path, series):
    """Writes the picture to `path`; nothing where nothing has been measured."""
    if series:
        path.write_text(draw(series))
