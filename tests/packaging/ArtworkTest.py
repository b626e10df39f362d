"""The icons and the sound in the repository are what their scripts make: ArtworkTest.py SOURCE_FOLDER"""
import pathlib
import struct
import subprocess
import sys
import tempfile
import unittest
import wave

SOURCE = pathlib.Path(sys.argv.pop(1))
PACKAGING = SOURCE / "packaging"
NAME = "app.lumacap.Lumacap"


class Artwork(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.made = pathlib.Path(folder.name)

    def testTheSoundIsMadeAgainByteForByte(self):
        made = self.made / "screen-capture.wav"
        subprocess.run([PACKAGING / "sounds/make-sound", made], check=True)
        self.assertEqual(made.read_bytes(), (PACKAGING / "sounds/screen-capture.wav").read_bytes())

    def testTheSoundIsShortAndNeitherSilentNorLoudAndEndsSoftly(self):
        with wave.open(str(PACKAGING / "sounds/screen-capture.wav")) as sound:
            self.assertEqual(sound.getparams()[:3], (1, 2, 44100))
            count = sound.getnframes()
            samples = struct.unpack(f"<{count}h", sound.readframes(count))
        self.assertTrue(0.2 <= count / 44100 <= 0.3)
        self.assertTrue(8000 < max(map(abs, samples)) < 20000)
        self.assertLess(max(map(abs, samples[-40:])), 100)

    def testTheDrawingsAreMadeAgainByteForByte(self):
        tray = self.made / "tray.svg"
        subprocess.run([PACKAGING / "icons/make-icons", self.made, tray], check=True)
        self.assertEqual((self.made / f"{NAME}.svg").read_bytes(), (PACKAGING / f"icons/{NAME}.svg").read_bytes())
        self.assertEqual(tray.read_bytes(), (SOURCE / "src/app/resources/AppIcon.svg").read_bytes())

    def testEverySizeHasAPictureOfThatSize(self):
        for size in [16, 22, 24, 32, 48, 64, 128, 256, 512]:
            start = (PACKAGING / f"icons/{NAME}-{size}.png").read_bytes()[:26]
            self.assertEqual(start[:8], b"\x89PNG\r\n\x1a\n")
            # Width, height, 8 bits, colour with alpha: panels show through the corners.
            self.assertEqual(struct.unpack(">IIBB", start[16:]), (size, size, 8, 6))


unittest.main()
