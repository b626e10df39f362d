"""Reads single pixels of a Wayland screen from outside: by wlroots' protocol, and by KWin's interface on the bus."""

import ctypes
import mmap
import os
import struct

from wayland_wire import Connection, memory_file

CREATE_POOL, CREATE_BUFFER, CAPTURE_REGION, COPY, DESTROY_FRAME, DESTROY_BUFFER = 0, 0, 1, 0, 1, 0
BUFFER, READY, FAILED = 0, 2, 3
PIXEL_BYTES = 4
COLOURS = 0xFFFFFF  # the fourth byte of a pixel means nothing on a screen


class WlrootsEye:
    """By zwlr_screencopy. The compositor copies when it draws its next frame, so an answer takes one of these."""

    def __init__(self, desktop):
        self.connection = Connection(desktop.folder / "run" / desktop.environment["WAYLAND_DISPLAY"])
        self.manager = self.connection.bind("zwlr_screencopy_manager_v1", 1)
        self.output, self.shm = self.connection.bind("wl_output", 1), self.connection.bind("wl_shm", 1)
        self.file = memory_file(b"\0" * mmap.PAGESIZE)
        self.memory = mmap.mmap(self.file, mmap.PAGESIZE)
        self.pool = self.connection.new()
        self.connection.request(self.shm, CREATE_POOL, self.pool, mmap.PAGESIZE, file=self.file)

    def close(self):
        self.connection.close()
        self.memory.close()
        os.close(self.file)

    def _ask(self, number, point, done):
        """Asks for a copy of one pixel, which goes to place `number` of the memory."""
        wire, objects = self.connection, {}

        def on_event(event, body):
            if event == BUFFER:
                form, width, height, stride = struct.unpack("=IIII", body)
                objects["buffer"] = wire.new()
                wire.request(self.pool, CREATE_BUFFER, objects["buffer"], number * PIXEL_BYTES, width, height, stride, form)
                wire.request(objects["frame"], COPY, objects["buffer"])
            elif event == FAILED:
                raise RuntimeError("the compositor did not copy a pixel")
            elif event == READY:
                wire.request(objects["frame"], DESTROY_FRAME)
                wire.request(objects["buffer"], DESTROY_BUFFER)
                done.append(number)

        objects["frame"] = wire.new(on_event)
        wire.request(self.manager, CAPTURE_REGION, objects["frame"], 0, self.output, *point, 1, 1)

    def pixels(self, points):
        """The colours at `points`, a list of (x, y), of one frame of the screen or two."""
        done = []
        for number, point in enumerate(points):
            self._ask(number, point, done)
        self.connection.wait(lambda: len(done) == len(points), "pixels of the screen")
        return [struct.unpack_from("=I", self.memory, number * PIXEL_BYTES)[0] & COLOURS
                for number in range(len(points))]


class KWinEye:
    """By CaptureArea of KWin's ScreenShot2."""

    def __init__(self, desktop):
        self.bus = desktop.session_bus

    def close(self):
        """There is nothing to give back."""

    def pixels(self, points):
        """The colours at `points`, a list of (x, y), each of another frame."""
        return [self._pixel(*point) for point in points]

    def _pixel(self, x, y):
        reader, writer = os.pipe()
        try:
            self.bus.call_with_file("org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2",
                                    "CaptureArea", f"({x}, {y}, uint32 1, uint32 1, @a{{sv}} {{}}, handle 0)", writer)
        finally:
            os.close(writer)
        with os.fdopen(reader, "rb") as pixel:
            return ctypes.c_uint32.from_buffer_copy(pixel.read(PIXEL_BYTES)).value & COLOURS
