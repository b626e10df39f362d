"""The overlay in each of its states, as somebody annotates a window, on the desktop of make-pictures."""

import pathlib

from virtual_desktop import wait_until

CONTROLS = pathlib.Path(__file__).resolve().parent / "controls.py"
SELECTED = ((120, 115), (830, 650))
BELOW = (900, 760)  # where the pointer is in nobody's way


class Annotator:
    """A person at the mouse of `scene`, in front of its overlay."""

    def __init__(self, scene):
        self.scene, self.desktop = scene, scene.desktop

    def use(self, *controls):
        for name in controls:
            # A process of its own: a library of assistive technology belongs to one desktop for life.
            found = wait_until(lambda: self.desktop.output("/usr/bin/python3", str(CONTROLS), name).split(), 20, name)
            self.desktop.run("xdotool", "mousemove", *found, "click", "1")

    def drag(self, *places):
        steps = []
        for x, y in places:
            steps += ["mousemove", str(x), str(y)]
        self.desktop.run("xdotool", *steps[:3], "mousedown", "1", *steps[3:], "mouseup", "1")

    def click(self, x, y):
        self.desktop.run("xdotool", "mousemove", str(x), str(y), "click", "1")

    def type(self, text):
        self.desktop.run("xdotool", "type", text)

    def key(self, name):
        self.desktop.run("xdotool", "key", name)

    def state(self, publish):
        self.scene.move_pointer(*BELOW)
        publish(self.scene.capture())

    def draw_marks(self):
        """One of each kind that a drag or a click makes."""
        self.use("rectangle", "blue")
        self.drag((172, 256), (492, 346))
        self.use("ellipse", "green")
        self.drag((490, 356), (608, 394))
        self.use("arrow", "red")
        self.drag((706, 470), (616, 392))
        self.use("numberedPoint", "orange")
        self.click(518, 269)
        self.click(518, 332)
        self.use("freehand", "red")
        self.drag(*((165 + 12 * step, 242 + (3 if step % 2 else -1)) for step in range(17)))
        self.use("blur")
        self.drag((163, 404), (588, 450))

    def place_loupe(self):
        self.use("magnifier", "thin", "black", "3x")
        self.drag((182, 280), (238, 302))
        self.drag((300, 291), (430, 260), (690, 240))  # the loupe, by its middle

    def go_through(self, publish):
        """Calls `publish(name)(picture)` in every state, and leaves the overlay ready to be confirmed."""
        self.scene.move_pointer(*BELOW)
        self.desktop.run(self.scene.lumacap, "selection")
        wait_until(self.scene.overlay_is_up, 10, "the overlay")
        self.drag(SELECTED[0], (400, 300), SELECTED[1])
        self.draw_marks()
        self.use("text", "red", "medium")
        self.click(626, 488)
        self.type("bring this")
        self.state(publish("typing"))
        self.key("Tab")
        self.place_loupe()
        self.state(publish("loupe"))
        self.use("selection")  # the loupe is done
        self.use("frame", "frameBackground")
        self.state(publish("frame-menu"))
        self.use("Océan")
        self.state(publish("annotated"))
