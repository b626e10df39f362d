"""A private X11 desktop: its own X server, session bus, folders and window manager, gone without a trace at the end."""

import ctypes
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir={folder}/run</listen>
  <servicedir>{folder}/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
  </policy>
</busconfig>
"""

# What a caller's own desktop would otherwise leak into this one.
FOREIGN_VARIABLES = ("WAYLAND_DISPLAY", "XAUTHORITY", "SWAYSOCK", "XDG_SESSION_ID", "XDG_DATA_DIRS",
                     "XDG_CONFIG_DIRS", "QT_QPA_PLATFORM", "QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE",
                     "QT_SCALE_FACTOR", "GDK_SCALE", "GTK_THEME")
PR_SET_CHILD_SUBREAPER = 36


def wait_until(condition, seconds, what):
    """Polls until `condition` holds and returns its value; after `seconds` gives up with an error naming `what`."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if value := condition():
            return value
        time.sleep(0.02)
    raise TimeoutError(f"waited {seconds} s in vain for {what}")


class VirtualDesktop:
    """Use as a context manager. `environment` is what its programs run with, `folder` is where they live."""

    def __init__(self, width, height, bus_services=(), window_manager=("openbox", "--sm-disable"), configuration=None):
        """`bus_services` may be started by the bus; `configuration` is a folder to fill XDG_CONFIG_HOME from."""
        self.width, self.height = width, height
        self.bus_services, self.window_manager, self.configuration = bus_services, window_manager, configuration
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lumacap-desktop-"))
        self.environment = {k: v for k, v in os.environ.items() if k not in FOREIGN_VARIABLES}
        self.processes = []

    def __enter__(self):
        # Programs that the bus starts, or that daemonize, come back to this process, which can then end them too.
        ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
        try:
            self._make_folders()
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            end(process)
        end_remaining_children()
        shutil.rmtree(self.folder, ignore_errors=True)

    @property
    def server(self):
        """The X server's process identifier."""
        return self.processes[0].pid

    def spawn(self, *command, **variables):
        """Starts a program that stays until the desktop ends; its output is kept in `folder`/NAME.log meanwhile."""
        log = self.folder / (pathlib.Path(command[0]).name + ".log")
        with log.open("ab") as sink:
            process = subprocess.Popen(command, env=self.environment | variables, stdin=subprocess.DEVNULL,
                                       stdout=sink, stderr=sink)
        self.processes.append(process)
        return process

    def run(self, *command, seconds=60):
        """Runs a program to its end and raises when it fails."""
        subprocess.run(command, env=self.environment, check=True, timeout=seconds, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)

    def output(self, *command):
        """What a program prints on standard output; empty when it fails."""
        done = subprocess.run(command, env=self.environment, timeout=20, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, check=False)
        return done.stdout if done.returncode == 0 else ""

    def owns(self, bus_name):
        """Whether somebody on the private session bus owns `bus_name`."""
        return "true" in self.output("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                                     "/", "--method", "org.freedesktop.DBus.NameHasOwner", bus_name)

    def _start(self):
        """What makes a desktop of the folders: servers and a window manager."""
        self._start_display()
        self._start_bus()
        self.spawn(*self.window_manager)
        wait_until(lambda: "0x" in self.output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"), 20,
                   "the window manager")

    def _make_folders(self):
        for name in ("run", "config", "data", "cache", "state", "home", "services", "tmp"):
            (self.folder / name).mkdir(mode=0o700)
        for name in ("config", "data", "cache", "state"):
            self.environment[f"XDG_{name.upper()}_HOME"] = str(self.folder / name)
        # Programs that run once for a user find the one that runs by a file among the temporary ones.
        self.environment |= {"XDG_RUNTIME_DIR": str(self.folder / "run"), "HOME": str(self.folder / "home"),
                             "TMPDIR": str(self.folder / "tmp"),
                             "XDG_SESSION_TYPE": "x11", "LC_ALL": "C.UTF-8", "NO_AT_BRIDGE": "1",
                             "QT_QPA_PLATFORM": "xcb", "GDK_BACKEND": "x11", "LIBGL_ALWAYS_SOFTWARE": "1"}
        if self.configuration:
            shutil.copytree(self.configuration, self.folder / "config", dirs_exist_ok=True)
        for service in self.bus_services:
            installed = pathlib.Path("/usr/share/dbus-1/services", service + ".service")
            if installed.exists():
                shutil.copy(installed, self.folder / "services")

    def _start_display(self):
        self._number_end, writer = os.pipe()
        os.set_inheritable(writer, True)
        with (self.folder / "Xvfb.log").open("wb") as sink:
            self.processes.append(subprocess.Popen(
                ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{self.width}x{self.height}x24", "-nolisten",
                 "tcp", "-noreset", "-dpi", "96"], pass_fds=[writer], stdout=sink, stderr=sink))
        os.close(writer)
        with os.fdopen(self._number_end) as numbers:
            number = numbers.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        self.environment["DISPLAY"] = ":" + number

    def _start_bus(self):
        configuration = self.folder / "session.conf"
        configuration.write_text(BUS_CONFIGURATION.format(folder=self.folder))
        reader, writer = os.pipe()
        with (self.folder / "dbus-daemon.log").open("wb") as sink:
            self.processes.append(subprocess.Popen(
                ["dbus-daemon", f"--config-file={configuration}", f"--print-address={writer}", "--nofork"],
                pass_fds=[writer], env=self.environment, stdout=sink, stderr=sink))
        os.close(writer)
        with os.fdopen(reader) as addresses:
            self.environment["DBUS_SESSION_BUS_ADDRESS"] = addresses.readline().strip()


def end(process):
    """Asks a process to end, and makes it end when it has not after two seconds."""
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(2)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


def end_remaining_children():
    """Ends whatever this process has inherited from programs that have ended."""
    me = os.getpid()
    for _ in range(100):
        children = pathlib.Path(f"/proc/{me}/task/{me}/children").read_text().split()
        if not children:
            return
        for child in children:
            os.kill(int(child), signal.SIGKILL)
            os.waitpid(int(child), 0)
