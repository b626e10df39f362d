"""What a capture costs on KWin before any program has its pixels: one call of the interface that all of them use."""

import os
import threading
import time

CHUNK = 1 << 20


class KWinCapture:
    """One CaptureScreen of KWin's ScreenShot2, to the last byte, thrown away as it comes."""
    name = "one CaptureScreen call of KWin, its pixels thrown away"

    def __init__(self, bus, output, frame_bytes):
        """`output` is the name of KWin's output, whose picture has `frame_bytes`."""
        self.bus, self.frame_bytes = bus, frame_bytes
        self.arguments = f"('{output}', {{'native-resolution': <true>}}, handle 0)"

    def measure(self):
        """Seconds of one capture."""
        reader, writer = os.pipe()
        count = 0

        def drain():
            nonlocal count
            while chunk := os.read(reader, CHUNK):
                count += len(chunk)

        thread = threading.Thread(target=drain)
        start = time.perf_counter()
        thread.start()
        try:
            self.bus.call_with_file("org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2",
                                    "CaptureScreen", self.arguments, writer)
        finally:
            os.close(writer)
            thread.join()
            os.close(reader)
        seconds = time.perf_counter() - start
        if count != self.frame_bytes:
            raise RuntimeError(f"KWin sent {count} bytes")
        return seconds
