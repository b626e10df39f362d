"""The programs that let one select on the screen: how each is asked, and how the whole screen is selected in it."""

import enum
import pathlib
import shutil
import subprocess

from virtual_desktop import wait_until


class Goal(enum.Enum):
    """Where a confirmed picture goes: to one place only, so that nothing else is in the time."""
    FILE = enum.auto()
    CLIPBOARD = enum.auto()


class OverlayProgram:
    """A program with its settings and its resident part, if it has one. `prepare` comes first."""
    name = program = package = ""
    asked = ""  # how the request is sent
    goals = frozenset(Goal)
    only_opens = False  # another way to ask a program that is timed further already
    lost = 0  # columns and rows of the screen that a selection cannot reach

    def missing(self):
        return shutil.which(self.program) is None

    def prepare(self, desktop):
        self.desktop = desktop
        self.pictures = desktop.folder / f"selected-with-{self.name.split()[0]}"
        self.pictures.mkdir(exist_ok=True)
        self.commands = []
        self.start()

    def start(self):
        """Starts what its users have running."""

    def aim(self, goal):
        """Makes sure that the next picture goes to `goal`: settings that are read with a request are written here."""

    def request(self, goal):
        """Sends the request for an overlay, without waiting for it."""
        raise NotImplementedError

    def select_all(self, person):
        """Selects the whole screen in the overlay that is up."""
        raise NotImplementedError

    def confirm(self, person):
        """The act that takes what is selected."""
        person.type("Return")

    def run(self, *command):
        """Starts a command that ends by itself, sooner or later."""
        self.commands.append(subprocess.Popen(command, env=self.desktop.environment, stdin=subprocess.DEVNULL,
                                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))

    def settle(self):
        """Waits until what a request has started has ended."""
        for command in self.commands:
            command.wait(20)
        self.commands.clear()

    def write_settings(self, path, text):
        file = pathlib.Path(self.desktop.environment["XDG_CONFIG_HOME"], path)
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def stay(self, bus_name, *command):
        if not self.desktop.owns(bus_name):
            self.desktop.spawn(*command)
            wait_until(lambda: self.desktop.owns(bus_name), 20, bus_name)


class Lumacap(OverlayProgram):
    name, asked = "lumacap", "bus call to the agent"
    actions = ("app.lumacap.Lumacap", "/app/lumacap/Lumacap", "org.freedesktop.Application", "ActivateAction",
               "('selection', @av [], @a{sv} {})")

    def __init__(self, program):
        self.program = program

    def start(self):
        self.aim(Goal.FILE)
        self.stay("app.lumacap.Lumacap", self.program)

    def aim(self, goal):
        to_file, to_clipboard = str(goal is Goal.FILE).lower(), str(goal is Goal.CLIPBOARD).lower()
        self.write_settings("Lumacap/Lumacap.conf",
                            f"[General]\nsaveToFile={to_file}\ncopyToClipboard={to_clipboard}\n"
                            f"saveDirectory={self.pictures}\n")

    def request(self, goal):
        self.desktop.session_bus.send(*self.actions)

    def select_all(self, person):
        """Without a selection the whole screen is taken."""


class LumacapCommand(Lumacap):
    name, asked = "lumacap selection", "command that asks the agent"
    only_opens = True

    def request(self, goal):
        self.run(self.program, "selection")


class Flameshot(OverlayProgram):
    name = program = package = "flameshot"
    asked = "command, its daemon running"

    def start(self):
        self.stay("org.flameshot.Flameshot", "flameshot")

    def request(self, goal):
        self.run("flameshot", "gui", *(["-c"] if goal is Goal.CLIPBOARD else ["-p", str(self.pictures / "all.png")]))

    def select_all(self, person):
        person.type("Control_L", "a")


class Spectacle(OverlayProgram):
    name = program = "spectacle"
    package = "kde-spectacle"
    asked = "command that starts it"

    def request(self, goal):
        self.run("spectacle", "-r", "-b", "-n",
                 *(["-c"] if goal is Goal.CLIPBOARD else ["-o", str(self.pictures / "all.png")]))

    def select_all(self, person):
        person.drag((0, 0), (self.desktop.width // 2, self.desktop.height // 2),
                    (self.desktop.width - 1, self.desktop.height - 1))


class Ksnip(OverlayProgram):
    name = program = package = "ksnip"
    asked = "command that starts it"
    goals = frozenset([Goal.FILE])  # a command of it copies nothing
    lost = 1

    def request(self, goal):
        self.run("ksnip", "-r", "-p", str(self.pictures / "all.png"))

    def select_all(self, person):
        person.begin_drag((0, 0), (self.desktop.width // 2, self.desktop.height // 2),
                          (self.desktop.width - 1, self.desktop.height - 1))

    def confirm(self, person):
        person.release()


def overlay_programs(lumacap):
    """Everybody who freezes the screen and lets one select on it."""
    return [Lumacap(lumacap), LumacapCommand(lumacap), Flameshot(), Spectacle(), Ksnip()]


NOT_DRIVEN = (
    "maim -s and scrot -s are not in the tables: they freeze nothing and cover nothing, they draw a line on the screen "
    "as it goes on and take the picture afterwards",
    "grim is not in the tables: it captures Wayland outputs and leaves selecting to another program",
)
