"""Private Wayland desktops without a monitor: a compositor, a session bus and folders of their own."""

import os
import shutil

from virtual_desktop import VirtualDesktop, wait_until


class WaylandDesktop(VirtualDesktop):
    """A compositor and what it runs on; no X server. Used as any virtual desktop is."""

    def _start(self):
        for name in ("DISPLAY", "WAYLAND_DISPLAY"):
            self.environment.pop(name, None)
        self.environment |= {"XDG_SESSION_TYPE": "wayland", "QT_QPA_PLATFORM": "wayland", "GDK_BACKEND": "wayland"}
        self._start_compositor()

    def show(self, picture):
        """Puts a picture as large as the screen below all windows."""
        self.spawn("swaybg", "--mode", "center", "--image", str(picture))

    def _start_compositor(self):
        raise NotImplementedError

    def _wait_for(self, condition, compositor, name):
        """What `condition` returns once it holds; raises when the compositor has ended before."""
        def ready():
            if compositor.poll() is not None:
                log = self.folder / f"{compositor.args[0]}.log"
                raise RuntimeError(f"{name} ended: {log.read_text(errors='replace')[-2000:]}")
            return condition()
        return wait_until(ready, 30, name)


class SwayDesktop(WaylandDesktop):
    """sway on wlroots' headless backend, drawn by pixman."""

    def _start_compositor(self):
        self._start_bus()
        self.environment["XDG_CURRENT_DESKTOP"] = "sway"
        configuration = self.folder / "sway.conf"
        configuration.write_text("xwayland disable\ndefault_border none\ndefault_floating_border none\n"
                                 f"output HEADLESS-1 resolution {self.width}x{self.height} position 0 0 scale 1\n")
        # It refuses to run as root: there is none in a user namespace of its own.
        name_space = ["unshare", "--user", "--map-user=1000", "--map-group=1000"] if os.getuid() == 0 else []
        sway = self.spawn(*name_space, "sway", "--config", str(configuration), WLR_BACKENDS="headless",
                          WLR_LIBINPUT_NO_DEVICES="1", WLR_RENDERER="pixman", WLR_HEADLESS_OUTPUTS="1")
        self.environment["WAYLAND_DISPLAY"] = self._wait_for(self._socket, sway, "sway")

    def _socket(self):
        names = [path.name for path in (self.folder / "run").glob("wayland-*") if path.suffix != ".lock"]
        return names[0] if names else None


class KWinDesktop(WaylandDesktop):
    """KWin with a virtual output, drawn by OpenGL on the processor. Everybody may take pictures of it."""

    def _start_compositor(self):
        self.environment |= {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5"}
        self.environment["WAYLAND_DISPLAY"] = "wayland-0"  # the bus starts programs with what it has been started with
        self._start_bus()
        # The installed program has a capability that containers do not grant; a copy has none.
        copy = self.folder / "kwin_wayland"
        shutil.copyfile(shutil.which("kwin_wayland"), copy)
        copy.chmod(0o700)
        # It takes pictures of itself only where it draws by OpenGL.
        kwin = self.spawn("env", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM", str(copy), "--virtual",
                          "--no-lockscreen", "--socket", self.environment["WAYLAND_DISPLAY"], "--width",
                          str(self.width), "--height", str(self.height), "--scale", "1", "--output-count", "1",
                          KWIN_COMPOSE="O2", KWIN_SCREENSHOT_NO_PERMISSION_CHECKS="1",
                          KWIN_WAYLAND_NO_PERMISSION_CHECKS="1")
        self._wait_for(lambda: "CaptureScreen" in self.output(
            "gdbus", "introspect", "--session", "--dest", "org.kde.KWin", "--object-path",
            "/org/kde/KWin/ScreenShot2"), kwin, "KWin")
