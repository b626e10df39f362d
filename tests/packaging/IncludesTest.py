"""The include checker lets the layout's own directions pass and rejects the others: IncludesTest.py CHECKER"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECKER = sys.argv.pop(1)


def check(files):
    """Runs the checker on a tree of {path: text}; answers its exit code and what it printed."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = pathlib.Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        run = subprocess.run([CHECKER, folder], capture_output=True, text=True, check=False)
        return run.returncode, run.stdout


class CheckIncludes(unittest.TestCase):
    def accepts(self, file, *targets):
        text = "".join(f'#include "{target}"\n' for target in targets)
        self.assertEqual(check({file: text}), (0, ""))

    def rejects(self, file, target, marks='""', reason=""):
        code, printed = check({file: f"#pragma once\n  #  include {marks[0]}{target}{marks[1]}\n"})
        self.assertEqual(code, 1, f"{file} included {target} unnoticed")
        self.assertIn(f"{file}:2: {target}: ", printed)
        self.assertIn(reason, printed)

    def testAnIncludeDownwardPasses(self):
        self.accepts("app/Desktop.cpp", "platform/x11/X11Screens.h", "capture/CaptureEngine.h", "overlay/OverlayView.h")
        self.accepts("overlay/OverlayView.cpp", "annotation/Annotation.h", "capture/WindowDetector.h")
        self.accepts("preferences/PreferencesView.cpp", "preferences/storage/KeyCombo.h", "annotation/Annotation.h")
        self.accepts("capture/ImageSaver.cpp", "capture/encoding/Png.h", "preferences/storage/ImageFormat.h")
        self.accepts("capture/encoding/Png.cpp", "capture/encoding/Strips.h", "platform/Result.h", "graphics/Geometry.h")
        self.accepts("platform/kwin/KWinScreens.cpp", "platform/wayland/Registry.h", "platform/Screens.h")
        self.accepts("platform/Screens.h", "graphics/Geometry.h", "platform/Result.h")
        self.accepts("annotation/toolbar/IconButton.h", "controls/PaintedButton.h")

    def testAnIncludeUpwardIsRejected(self):
        self.rejects("graphics/Geometry.h", "platform/Result.h", reason="graphics/ may not include platform/")
        self.rejects("platform/Screens.h", "preferences/storage/KeyCombo.h")
        self.rejects("controls/PaintedButton.h", "annotation/toolbar/IconButton.h")
        self.rejects("preferences/storage/KeyCombo.h", "preferences/KeyRecorder.h")
        self.rejects("preferences/storage/KeyCombo.h", "capture/ImageSaver.h")
        self.rejects("capture/ImageSaver.cpp", "overlay/OverlayView.h")
        self.rejects("capture/encoding/Png.cpp", "capture/ImageSaver.h")
        self.rejects("capture/encoding/Png.cpp", "preferences/storage/ImageFormat.h")
        self.rejects("platform/x11/X11Screens.cpp", "capture/ImageSaver.h")

    def testNeighboursAreRejected(self):
        self.rejects("annotation/Annotation.cpp", "capture/ImageSaver.h")
        self.rejects("capture/ImageSaver.cpp", "annotation/Annotation.h")
        self.rejects("overlay/OverlayView.cpp", "preferences/KeyRecorder.h")
        self.rejects("preferences/KeyRecorder.cpp", "overlay/OverlayView.h")

    def testABackendIsIncludedByTheApplicationAlone(self):
        self.rejects("platform/x11/X11Screens.cpp", "platform/freedesktop/Sound.h")
        self.rejects("platform/xcb/Connection.cpp", "platform/x11/X11Screens.h")
        self.rejects("platform/Screens.h", "platform/x11/X11Screens.h")
        self.rejects("capture/ImageSaver.cpp", "platform/xcb/Connection.h")
        self.rejects("overlay/OverlayView.cpp", "platform/x11/X11Screens.h")

    def testNothingIncludesTheApplication(self):
        for folder in ["overlay", "preferences", "capture", "platform", "platform/x11", "graphics"]:
            self.rejects(f"{folder}/Some.cpp", "app/Desktop.h", reason="may not include app/")

    def testX11HeadersStayInTheSourceFilesOfBackends(self):
        self.accepts("platform/x11/X11Screens.cpp", "xcb/xcb.h", "X11/Xlib.h")
        self.rejects("platform/x11/X11Screens.h", "xcb/randr.h", marks="<>", reason="belong in .cpp files")
        self.rejects("platform/xcb/Connection.h", "X11/Xlib.h", marks="<>")
        self.rejects("app/main.cpp", "xcb/xcb.h", marks="<>")

    def testAngleBracketsHideNothing(self):
        self.rejects("graphics/Geometry.h", "app/Desktop.h", marks="<>")

    def testPathsStartAtTheRootOfTheSources(self):
        self.rejects("capture/ImageSaver.cpp", "../graphics/Geometry.h", reason="from src/")
        code, printed = check({"graphics/Geometry.h": "", "graphics/Text.cpp": '#include "Geometry.h"\n'})
        self.assertEqual(code, 1)
        self.assertIn("graphics/Text.cpp:1: Geometry.h: write the path from src/", printed)

    def testAFolderOutsideTheLayoutIsRejected(self):
        self.assertEqual(check({"gadgets/Gadget.cpp": ""})[0], 1)
        self.assertEqual(check({"gadgets/Gadget.h": "", "app/main.cpp": '#include "gadgets/Gadget.h"\n'})[0], 1)

    def testOtherPeoplesHeadersAndGeneratedFilesPass(self):
        self.accepts("capture/ImageSaver.cpp", "ImageSaver.moc", "sys/mman.h", "QString")

    def testAMissingTreeIsAnError(self):
        run = subprocess.run([CHECKER, "/no/such/tree"], capture_output=True, text=True, check=False)
        self.assertNotEqual(run.returncode, 0)


unittest.main()
