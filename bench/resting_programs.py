"""The programs that stay: how each is started, and how it takes a picture of the screen to the clipboard and a file."""

import pathlib
import shutil
import subprocess

LUMACAP_SETTINGS = "[General]\nsaveToFile=true\ncopyToClipboard=true\nsaveDirectory={folder}\n"
SPECTACLE_SETTINGS = ("[General]\nautoSaveImage=true\nclipboardGroup=PostScreenshotCopyImage\n\n"
                      "[Save]\ndefaultSaveLocation=file://{folder}\n")


class RestingProgram:
    """A program that stays until it is ended."""
    name = package = ""
    command = ()
    bus_name = None
    bus_path = "/"
    takes_pictures = True  # of the whole screen, by itself, when it is asked
    settings = None  # relative path, text with {folder} for where pictures go

    @property
    def program(self):
        return self.command[0]

    def missing(self):
        return shutil.which(self.program) is None

    def prepare(self, desktop):
        self.desktop = desktop
        self.pictures = desktop.folder / f"pictures-of-{self.name}"
        self.pictures.mkdir(exist_ok=True)
        if self.settings:
            path, text = self.settings
            file = pathlib.Path(desktop.environment["XDG_CONFIG_HOME"], path)
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(text.format(folder=self.pictures))

    def start(self):
        return self.desktop.spawn(*self.command)

    def capture(self):
        """Asks for a picture of the whole screen, without waiting for it."""
        raise NotImplementedError


class Lumacap(RestingProgram):
    name, bus_name, bus_path = "lumacap", "app.lumacap.Lumacap", "/app/lumacap/Lumacap"
    settings = ("Lumacap/Lumacap.conf", LUMACAP_SETTINGS)
    action = (bus_name, bus_path, "org.freedesktop.Application", "ActivateAction")

    def __init__(self, program):
        self.command = (program,)

    def capture(self):
        self.desktop.session_bus.send(*self.action, "('full-screen', @av [], @a{sv} {})")


class Flameshot(RestingProgram):
    name = package = "flameshot"
    command, bus_name = ("flameshot",), "org.flameshot.Flameshot"

    def capture(self):
        subprocess.run(["flameshot", "full", "-c", "-p", str(self.pictures / "full.png")], check=True, timeout=60,
                       env=self.desktop.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)


class Spectacle(RestingProgram):
    """Its service, with the command that its service file has the bus start."""
    name, package = "spectacle", "kde-spectacle"
    command, bus_name = ("spectacle", "--dbus"), "org.kde.Spectacle"
    settings = ("spectaclerc", SPECTACLE_SETTINGS)

    def capture(self):
        self.desktop.session_bus.send(self.bus_name, "/", self.bus_name, "FullScreen", "(0,)")


class Ksnip(RestingProgram):
    """Stays with its window, owns no name on the bus, and a command reaches no ksnip that runs."""
    name = package = "ksnip"
    command = ("ksnip",)
    takes_pictures = False


def resting_programs(lumacap):
    return [Lumacap(lumacap), Flameshot(), Spectacle(), Ksnip()]
