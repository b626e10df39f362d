"""What is installed is valid, whole and works: InstallationTest.py SOURCE_FOLDER BUILD_FOLDER VERSION"""
import configparser
import gzip
import os
import pathlib
import shlex
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

VERSION = sys.argv.pop(3)
BUILD = pathlib.Path(sys.argv.pop(2))
SOURCE = pathlib.Path(sys.argv.pop(1))
ID = "app.lumacap.Lumacap"
WIDTH, HEIGHT = 800, 600
BACKGROUND = bytes.fromhex("3f6f8f")  # of the private desktop

CAPTURE_BY_ACTIVATION = """
waitFor() {
    local end=$((SECONDS + 30))
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $end ] || { echo "gave up waiting for: $*" >&2; exit 1; }
        sleep 0.05
    done
}
call() {
    gdbus call --session --timeout 30 --dest app.lumacap.Lumacap --object-path /app/lumacap/Lumacap \
        --method org.freedesktop.Application.ActivateAction "$1" '[]' '{}'
}
isRunning() {
    gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.NameHasOwner app.lumacap.Lumacap | grep -q true
}
isGone() { ! isRunning; }
pasted() { timeout 5 xclip -selection clipboard -t image/png -o >"$results/pasted.png"; }
saved() { ls "$results"/saved/*.png; }

mkdir -p "$XDG_CONFIG_HOME/Lumacap" "$results/saved"
printf '[General]\nsaveToFile=true\nsaveDirectory=%s\nimageFormat=png\n' "$results/saved" \
    >"$XDG_CONFIG_HOME/Lumacap/Lumacap.conf"
isGone
call full-screen
waitFor pasted
waitFor saved
isRunning
call quit
waitFor isGone
"""


def install(prefix, **environment):
    subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL,
                   env={**os.environ, **environment})


def entries(root, prefix):
    """The desktop entry and the service file installed under `root` for `prefix`."""
    share = pathlib.Path(f"{root}{prefix}", "share")
    parsed = []
    for path in [share / f"applications/{ID}.desktop", share / f"dbus-1/services/{ID}.service"]:
        entry = configparser.RawConfigParser(strict=True)
        entry.optionxform = str
        entry.read_string(path.read_text(encoding="utf-8"))
        parsed.append(entry)
    return parsed


def commands(root, prefix):
    """Every Exec line of both, split into words."""
    return [shlex.split(entry[group]["Exec"]) for entry in entries(root, prefix) for group in entry.sections()]


def expectedCommands(program):
    return [[program], [program, "full-screen"], [program, "selection"], [program, "preferences"], [program]]


def processesOf(program):
    """Ids of the processes that run the file `program`."""
    found = []
    for link in pathlib.Path("/proc").glob("[0-9]*/exe"):
        try:
            if os.readlink(link).removesuffix(" (deleted)") == str(program):
                found.append(int(link.parts[2]))
        except OSError:
            pass  # ended meanwhile, or another user's
    return found


def picture(path):
    """Width, height and the first pixel's three bytes of a whole 8-bit RGB or RGBA PNG."""
    data, chunks, offset = path.read_bytes(), b"", 8
    while offset < len(data):
        length, kind = struct.unpack_from(">I4s", data, offset)
        checked = data[offset + 4:offset + 8 + length]
        if struct.pack(">I", zlib.crc32(checked)) != data[offset + 8 + length:offset + 12 + length]:
            raise ValueError(f"{path} is damaged: {kind}")
        if kind == b"IDAT":
            chunks += checked[4:]
        offset += length + 12
    # Every PNG filter leaves the very first pixel as it is: nothing is to its left and nothing above it.
    return (*struct.unpack_from(">II", data, 16), zlib.decompress(chunks)[1:4])


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="lumacap install.")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        # A space in the path is where Exec lines go wrong.
        cls.prefix = cls.folder / "a prefix"
        install(cls.prefix)
        cls.program = cls.prefix / "bin/lumacap"

    def check(self, *command):
        run = subprocess.run(command, capture_output=True, text=True, check=False, timeout=60)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        return run.stdout

    def testTheDesktopEntryIsValid(self):
        printed = self.check("desktop-file-validate", self.prefix / f"share/applications/{ID}.desktop")
        self.assertNotIn("warning", printed)

    def testTheMetainfoIsValid(self):
        self.check("appstreamcli", "validate", "--no-net", "--pedantic", self.prefix / f"share/metainfo/{ID}.metainfo.xml")

    def testEveryExecIsTheInstalledProgram(self):
        self.assertEqual(commands("", self.prefix), expectedCommands(str(self.program)))
        self.assertTrue(os.access(self.program, os.X_OK))

    def testThePrefixOfTheInstallationGoesIntoExecAndTheStagingFolderDoesNot(self):
        for prefix in ["/usr", "/usr/local", "/home/someone/.local"]:
            root = self.folder / "staging"
            install(prefix, DESTDIR=str(root))
            self.assertEqual(commands(root, prefix), expectedCommands(f"{prefix}/bin/lumacap"))

    def testAPrefixThatNoExecLineCanHoldIsRefused(self):
        run = subprocess.run(["cmake", "--install", BUILD, "--prefix", self.folder / "a$prefix"], capture_output=True,
                             text=True, check=False)
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("An Exec line cannot hold this path", run.stderr)

    def testTheNamesBelongTogether(self):
        desktop, service = entries("", self.prefix)
        self.assertEqual(service["D-BUS Service"]["Name"], ID)
        self.assertEqual(desktop["Desktop Entry"]["DBusActivatable"], "true")
        icon = desktop["Desktop Entry"]["Icon"]
        icons = self.prefix / "share/icons/hicolor"
        self.assertTrue((icons / f"scalable/apps/{icon}.svg").is_file())
        for size in [16, 22, 24, 32, 48, 64, 128, 256, 512]:
            self.assertTrue((icons / f"{size}x{size}/apps/{icon}.png").is_file())

    def testTheSoundIsInstalledAndInTheBuildTree(self):
        sound = (SOURCE / "packaging/sounds/screen-capture.wav").read_bytes()
        for share in [self.prefix / "share", BUILD / "share"]:
            self.assertEqual((share / "lumacap/screen-capture.wav").read_bytes(), sound)

    def testWhatOneDesktopNeedsIsALibraryThatOthersDoNotLoad(self):
        for library in [self.prefix / "lib/lumacap/modules/gnome.so", BUILD / "src/lib/lumacap/modules/gnome.so"]:
            self.assertIn("libpipewire", self.check("ldd", library))
            self.assertIn("libgio", self.check("ldd", library))
        for program in [self.program, BUILD / "src/app/lumacap"]:
            self.assertNotIn("libpipewire", self.check("ldd", program))

    def testTheProgramSaysItsVersion(self):
        self.assertEqual(self.check(self.program, "--version"), f"lumacap {VERSION}\n")

    def testTheVersionIsTheSameEverywhere(self):
        share = self.prefix / "share"
        newest = (share / f"metainfo/{ID}.metainfo.xml").read_text(encoding="utf-8").partition("<release ")[2]
        self.assertTrue(newest.startswith(f'version="{VERSION}"'), newest)
        changelog = gzip.decompress((share / "doc/lumacap/changelog.gz").read_bytes()).decode()
        self.assertTrue(changelog.startswith(f"lumacap ({VERSION}) "), changelog)
        manual = gzip.decompress((share / "man/man1/lumacap.1.gz").read_bytes()).decode()
        self.assertIn(f'"Lumacap {VERSION}"', manual)

    def testActivationOverDBusTakesACapture(self):
        results = self.folder / "results"
        run = subprocess.run(
            [SOURCE / "scripts/virtual-desktop", "--services", self.prefix / "share/dbus-1/services",
             "bash", "-euc", CAPTURE_BY_ACTIVATION],
            env={**os.environ, "results": str(results), "LUMACAP_VIRTUAL_SIZE": f"{WIDTH}x{HEIGHT}"},
            capture_output=True, text=True, check=False, timeout=180)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        for image in [results / "pasted.png", *(results / "saved").iterdir()]:
            self.assertEqual(picture(image), (WIDTH, HEIGHT, BACKGROUND), image)
        self.assertEqual(processesOf(self.program), [], "the agent outlived its desktop")


unittest.main()
