"""A busy 3840x2160 screen: half of it photograph-like, half of it text on light and dark grounds."""

import random
import subprocess
import sys

WORDS = ("the light over the harbour was grey and even so that every rope and every crate on the quay stood out "
         "as if drawn with a fine pen while the gulls went round the masts and nobody looked up from the work").split()
KEYWORDS = "auto const return if while struct template co_await namespace static_assert for switch".split()


def prose(lines, words_a_line):
    """Lines of ordinary words in an order that is the same each time."""
    draw = random.Random(words_a_line)
    return "\n".join(" ".join(draw.choices(WORDS, k=words_a_line)) for _ in range(lines))


def program_text(lines):
    """Lines that look like source code: indents, short names, numbers."""
    draw = random.Random(lines)
    return "\n".join("    " * draw.randint(1, 4) + f"{draw.choice(KEYWORDS)} value{draw.randint(0, 99)} = "
                     f"compute({draw.randint(0, 999)}, {draw.choice(WORDS)}); // {draw.choice(WORDS)}"
                     for _ in range(lines))


def page(size, position, ground, ink, font, point_size, text):
    """ImageMagick's arguments for one window-like page of text."""
    return ["(", "-size", size, f"xc:{ground}", "-font", font, "-pointsize", str(point_size), "-fill", ink,
            "-interline-spacing", "6", "-annotate", "+40+70", text, ")", "-geometry", position, "-composite"]


def paint(path, width, height):
    """Writes the screen's picture to `path`; the same bytes of pixels each time on one version of ImageMagick."""
    # One thread: with several, the noise depends on which thread drew which row.
    subprocess.run(
        ["convert-im6.q16", "-limit", "thread", "1", "-seed", "20", "-size", f"{width // 4}x{height // 4}",
         "plasma:fractal", "-resize", f"{width}x{height}!", "-attenuate", "0.12", "+noise", "Gaussian",
         *page("1500x1260", "+120+90", "#fdfdfb", "#1c1c1c", "DejaVu-Sans", 26, prose(36, 21)),
         *page("1560x1200", "+2100+160", "#20242b", "#c8d3de", "DejaVu-Sans-Mono", 24, program_text(34)),
         *page("1500x640", "+120+1430", "#eef1f4", "#24303c", "DejaVu-Serif", 22, prose(19, 27)),
         *page("1000x620", "+2400+1440", "#101418", "#7fd18b", "DejaVu-Sans-Mono", 20, program_text(20)),
         "-depth", "8", "-type", "TrueColor", str(path)], check=True, timeout=120)


if __name__ == "__main__":
    paint(sys.argv[1], 3840, 2160)
