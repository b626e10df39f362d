"""The screenshot programs that are compared: how each is started, and how each is asked when it is already running."""

import dataclasses
import os
import pathlib
import shutil
import subprocess
import time

import png_file
from virtual_desktop import wait_until


@dataclasses.dataclass
class Measurement:
    """One picture taken: wall-clock and, where the whole process is timed, processor seconds; the file's size."""
    seconds: float
    cpu_seconds: float | None
    file_bytes: int


class OneShot:
    """A program that is started for one picture: timed from its start until it has ended and the file is complete."""

    def __init__(self, name, program, command, package=None, stays=()):
        self.name, self.program, self.command = name, program, command
        self.package = package or name
        self.stays = stays  # what this program's users have running beside it: bus name, command

    def missing(self):
        return shutil.which(self.program) is None

    def prepare(self, desktop):
        if self.stays:
            bus_name, *command = self.stays
            desktop.spawn(*command)
            wait_until(lambda: desktop.owns(bus_name), 20, bus_name)

    def take(self, desktop, target):
        start = time.perf_counter()
        child = subprocess.Popen(self.command(str(target)), env=desktop.environment, stdin=subprocess.DEVNULL,
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(child.pid, 0)
        child.returncode = os.waitstatus_to_exitcode(status)
        if child.returncode != 0:
            raise RuntimeError(f"{self.name} ended with {child.returncode}")
        png_file.wait_for(target.parent, self.name)
        seconds = time.perf_counter() - start
        return Measurement(seconds, usage.ru_utime + usage.ru_stime, target.stat().st_size)


class Resident:
    """A program that is asked over the session bus: timed from the call until the file is complete."""

    def __init__(self, name, program, request, package=None, stays=(), configuration=None):
        self.name, self.program, self.request = name, program, request
        self.package = package or name
        self.stays = stays
        self.configuration = configuration  # relative path, text with {folder} for where pictures go

    def missing(self):
        return shutil.which(self.program) is None

    def prepare(self, desktop):
        self.folder = desktop.folder / f"pictures-of-{self.name}"
        self.folder.mkdir()
        if self.configuration:
            path, text = self.configuration
            file = pathlib.Path(desktop.environment["XDG_CONFIG_HOME"], path)
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(text.format(folder=self.folder))
        self.start(desktop)

    def start(self, desktop):
        """Starts what stays, if there is any; it can be asked when this returns."""
        if not self.stays:
            return
        bus_name, *command = self.stays
        self.process = desktop.spawn(*command)
        wait_until(lambda: desktop.owns(bus_name), 20, bus_name)

    def take(self, desktop, target):
        start = time.perf_counter()
        desktop.session_bus.call(*self.request)
        picture = png_file.wait_for(self.folder, self.name)
        seconds = time.perf_counter() - start
        size = picture.stat().st_size
        picture.rename(target)
        return Measurement(seconds, None, size)


SETTINGS = "[General]\nsaveToFile=true\ncopyToClipboard=false\nsaveDirectory={folder}\n"
SPECTACLE_SETTINGS = ("[General]\nclipboardGroup=PostScreenshotDoNothing\n\n"
                      "[Save]\ndefaultSaveLocation=file://{folder}\n")
FLAMESHOT_DAEMON = ("org.flameshot.Flameshot", "flameshot")


def lumacap_one_shot(lumacap):
    return OneShot("lumacap", lumacap, lambda file: [lumacap, "full-screen", "--output", file])


def lumacap_resident(lumacap):
    return Resident("lumacap", lumacap,
                    ("app.lumacap.Lumacap", "/app/lumacap/Lumacap", "org.freedesktop.Application", "ActivateAction",
                     "('full-screen', @av [], @a{sv} {})"),
                    stays=("app.lumacap.Lumacap", lumacap), configuration=("Lumacap/Lumacap.conf", SETTINGS))


def spectacle_one_shot():
    return OneShot("spectacle", "spectacle", lambda file: ["spectacle", "-b", "-f", "-n", "-o", file],
                   package="kde-spectacle")


def spectacle_resident():
    """The bus starts it for each picture, and it ends after it: that is how its key bindings reach it."""
    return Resident("spectacle", "spectacle", ("org.kde.Spectacle", "/", "org.kde.Spectacle", "FullScreen", "(0,)"),
                    package="kde-spectacle", configuration=("spectaclerc", SPECTACLE_SETTINGS))


def one_shots(lumacap):
    """Everybody who can be asked for one full-screen PNG by a command."""
    return [
        lumacap_one_shot(lumacap),
        OneShot("maim", "maim", lambda file: ["maim", file]),
        OneShot("scrot", "scrot", lambda file: ["scrot", file]),
        OneShot("flameshot", "flameshot", lambda file: ["flameshot", "full", "-p", file], stays=FLAMESHOT_DAEMON),
        spectacle_one_shot(),
    ]


def residents(lumacap):
    """Everybody who has something running that a key binding asks for a picture."""
    return [
        lumacap_resident(lumacap),
        # Its bus interface takes no pictures; the daemon's users bind this command to a key.
        OneShot("flameshot", "flameshot", lambda file: ["flameshot", "full", "-p", file], stays=FLAMESHOT_DAEMON),
        spectacle_resident(),
    ]


def grim_one_shot():
    return OneShot("grim", "grim", lambda file: ["grim", file])
