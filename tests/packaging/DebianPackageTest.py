"""The Debian package holds what it should and lintian finds no error in it: DebianPackageTest.py BUILD_FOLDER VERSION"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

VERSION = sys.argv.pop(2)
BUILD = pathlib.Path(sys.argv.pop(1))
ID = "app.lumacap.Lumacap"

FILES = {
    "bin/lumacap",
    "lib/lumacap/modules/gnome.so",
    f"share/applications/{ID}.desktop",
    f"share/dbus-1/services/{ID}.service",
    f"share/metainfo/{ID}.metainfo.xml",
    f"share/icons/hicolor/scalable/apps/{ID}.svg",
    *(f"share/icons/hicolor/{size}x{size}/apps/{ID}.png" for size in [16, 22, 24, 32, 48, 64, 128, 256, 512]),
    "share/lumacap/screen-capture.wav",
    "share/doc/lumacap/changelog.gz",
    "share/doc/lumacap/copyright",
    "share/man/man1/lumacap.1.gz",
}


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True, timeout=120).stdout


class DebianPackage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="lumacap-package.")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        run = subprocess.run(["cpack", "-G", "DEB", "--config", BUILD / "CPackConfig.cmake", "-B", folder.name],
                             capture_output=True, text=True, check=False, timeout=180)
        assert run.returncode == 0, run.stdout + run.stderr
        cls.package, = cls.folder.glob("*.deb")

    def field(self, name):
        return output("dpkg-deb", "--field", self.package, name).strip()

    def testItsNameSaysVersionAndArchitecture(self):
        architecture = output("dpkg", "--print-architecture").strip()
        self.assertEqual(self.package.name, f"lumacap_{VERSION}_{architecture}.deb")

    def testItHoldsTheInstalledFilesAndNoOthers(self):
        lines = output("dpkg-deb", "--contents", self.package).splitlines()
        held = {line.split()[5] for line in lines if not line.startswith("d")}
        self.assertEqual(held, {f"./usr/{file}" for file in FILES})
        self.assertTrue(all(line.split()[1] == "root/root" for line in lines))

    def testItsExecLinesNameTheProgramWhereThePackagePutsIt(self):
        output("dpkg-deb", "--extract", self.package, self.folder / "unpacked")
        share = self.folder / "unpacked/usr/share"
        for file in [f"applications/{ID}.desktop", f"dbus-1/services/{ID}.service"]:
            lines = (share / file).read_text(encoding="utf-8").splitlines()
            programs = [line.split()[0] for line in lines if line.startswith("Exec=")]
            self.assertTrue(programs)
            self.assertEqual(set(programs), {"Exec=/usr/bin/lumacap"})

    def testItDependsOnTheLibrariesAndPluginsItLoads(self):
        depends = {entry.split()[0] for entry in self.field("Depends").split(", ")}
        self.assertLessEqual({"libqt6widgets6", "libqt6dbus6", "libxcb1", "libcanberra0", "qt6-qpa-plugins",
                              "qt6-wayland",
                              "libqt6svg6", "libpipewire-0.3-0"}, depends)
        self.assertEqual(self.field("Recommends"), "libcanberra-pulse, qt6-translations-l10n, sound-theme-freedesktop")

    def testLintianFindsNoError(self):
        run = subprocess.run(["lintian", "--fail-on", "error,warning", "--allow-root", self.package],
                             capture_output=True, text=True, check=False, timeout=120)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)


unittest.main()
