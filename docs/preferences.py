"""The preferences window in each of its states, light and dark, at one and at two pixels a point."""

import pathlib
import re

from virtual_desktop import VirtualDesktop, wait_until

CONTROLS = pathlib.Path(__file__).resolve().parent / "controls.py"
SCREEN = (1100, 1320)  # takes the window and its frame at two pixels a point
# The toolkit takes KDE's colours by itself, other desktops' by plugins that not everybody has.
LOOKS = {"": {"XDG_CURRENT_DESKTOP": "XFCE"}, "-dark": {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"}}
SCALES = {"": 1, "@2x": 2}


class PreferencesUser:
    """A person in front of the window, on a desktop of its own."""

    def __init__(self, desktop, lumacap, scale):
        self.desktop, self.lumacap, self.scale = desktop, lumacap, scale
        self.agent = self.window = None

    def open(self, **variables):
        self.agent = self.desktop.spawn(self.lumacap, "preferences", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                                        QT_SCALE_FACTOR=str(self.scale), **variables)
        search = ("xdotool", "search", "--onlyvisible", "--name", "^Lumacap$")
        self.window = wait_until(lambda: self.desktop.output(*search).split(), 20, "the window")[0]
        self.move_aside()

    def close(self):
        self.desktop.run(self.lumacap, "quit")
        self.agent.wait(20)

    def settings(self, **values):
        file = self.desktop.folder / "config" / "Lumacap" / "Lumacap.conf"
        file.parent.mkdir(exist_ok=True)
        file.write_text("[General]\n" + "".join(f"{key}={value}\n" for key, value in values.items()))

    def frame(self):
        """Left, top, width and height of the window with its frame."""
        told = self.desktop.output("xwininfo", "-id", self.window)
        x, y, width, height = (int(re.search(rf"{name}:\s+(-?\d+)", told)[1]) for name in
                               ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        around = self.desktop.output("xprop", "-id", self.window, "_NET_FRAME_EXTENTS").split("=")[1]
        left, right, top, bottom = map(int, around.split(","))
        return x - left, y - top, width + left + right, height + top + bottom

    def move_aside(self):
        self.desktop.run("xdotool", "mousemove", "2", "2")

    def middle_of(self, name):
        find = ("/usr/bin/python3", str(CONTROLS), name)
        return [self.scale * int(unit) for unit in
                wait_until(lambda: self.desktop.output(*find).split(), 20, name)]

    def click(self, name):
        self.desktop.run("xdotool", "mousemove", *map(str, self.middle_of(name)), "click", "1")
        self.move_aside()

    def scroll(self, button):
        left, top, width, height = self.frame()
        steps = ["click", str(button)] * 20
        self.desktop.run("xdotool", "mousemove", str(left + width // 2), str(top + height // 2), *steps)
        self.move_aside()

    def picture(self):
        """The window with its frame, once it rests: two pictures in a row are the same."""
        previous = b""
        whole, cut = self.desktop.folder / "screen.png", self.desktop.folder / "window.png"

        def rests():
            nonlocal previous
            self.desktop.run(self.lumacap, "full-screen", "--output", str(whole))
            content = whole.read_bytes()
            same, previous = content == previous, content
            return same

        wait_until(rests, 30, "a window at rest")
        left, top, width, height = self.frame()
        self.desktop.run("convert-im6.q16", str(whole), "-crop", f"{width}x{height}+{left}+{top}", "+repage", str(cut))
        return cut

    def go_through(self, publish):
        """Calls `publish(name, picture)` in every state."""
        publish("preferences", self.picture())
        self.click("Plein ecran")
        publish("preferences-recording", self.picture())
        self.desktop.run("xdotool", "key", "Escape")
        self.click("Cadre fenetre")
        publish("preferences-backgrounds", self.picture())
        self.scroll(5)
        self.click("Fichier")
        self.scroll(5)
        publish("preferences-output", self.picture())


def take(lumacap, configuration, publish):
    """Takes all pictures and calls `publish(name, picture)` for each."""
    for scaled, scale in SCALES.items():
        for look, variables in LOOKS.items():
            with VirtualDesktop(*SCREEN, bus_services=["org.xfce.Xfconf", "org.a11y.Bus"], window_manager=("xfwm4",),
                                configuration=configuration) as desktop:
                desktop.environment |= {"GSETTINGS_BACKEND": "keyfile"}
                desktop.run("xsetroot", "-solid", "#8d99a6")  # seen beside the corners of the frame
                user = PreferencesUser(desktop, lumacap, scale)
                user.settings(saveDirectory=desktop.folder / "home" / "Captures")
                user.open(**variables)
                user.go_through(lambda name, picture: publish(f"{name}{look}{scaled}", picture))
                user.close()
