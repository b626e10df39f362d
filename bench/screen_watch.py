"""Reads single pixels of the screen from outside, as often as wanted and at next to no cost for the X server."""

import ctypes
import time

from machine_limits import ALL_PLANES, Z_PIXMAP, Cookie, SharedMemoryGet

COLOURS = 0xFFFFFF  # the fourth byte of a pixel means nothing on a screen
LOOK_SECONDS = 0.0003  # between two looks: the watcher shall not take a processor from what it watches


class ScreenWatch:
    """A connection of its own to `display`, which shows `width` x `height` pixels."""

    def __init__(self, display, width, height):
        self.width, self.height = width, height
        self.frame = SharedMemoryGet(width, height, display)
        self.xcb, self.connection, self.root = self.frame.xcb, self.frame.connection, self.frame.root
        self.xcb.xcb_get_image.restype = Cookie
        self.xcb.xcb_get_image_reply.restype = ctypes.c_void_p
        self.xcb.xcb_get_image_data.restype = ctypes.POINTER(ctypes.c_uint32)

    def close(self):
        self.frame.close()

    def pixels(self, points):
        """The colours at `points`, a list of (x, y), asked for in one go."""
        cookies = [self.xcb.xcb_get_image(self.connection, ctypes.c_uint8(Z_PIXMAP), ctypes.c_uint32(self.root),
                                          ctypes.c_int16(x), ctypes.c_int16(y), ctypes.c_uint16(1), ctypes.c_uint16(1),
                                          ctypes.c_uint32(ALL_PLANES)) for x, y in points]
        return [self._colour(cookie) for cookie in cookies]

    def _colour(self, cookie):
        reply = self.xcb.xcb_get_image_reply(self.connection, cookie, None)
        if not reply:
            raise RuntimeError("the X server refused a GetImage of its root window")
        colour = self.xcb.xcb_get_image_data(ctypes.c_void_p(reply))[0] & COLOURS
        self.frame.libc.free(ctypes.c_void_p(reply))
        return colour

    def wait_for(self, points, colours, seconds, what):
        """The time (perf_counter) at which all `points` were first seen in their `colours`."""
        deadline = time.perf_counter() + seconds
        while self.pixels(points) != colours:
            if time.perf_counter() > deadline:
                raise TimeoutError(f"waited {seconds} s in vain to see {what}")
            time.sleep(LOOK_SECONDS)
        return time.perf_counter()

    def whole(self):
        """The screen's bytes, four a pixel, by one MIT-SHM get."""
        return self.frame.picture()

    def at_rest(self, seconds=20, still=0.4):
        """The screen's bytes once nothing on it has changed for `still` seconds."""
        deadline = time.monotonic() + seconds
        last, since = self.whole(), time.monotonic()
        while time.monotonic() - since < still:
            if time.monotonic() > deadline:
                raise TimeoutError(f"the screen did not rest within {seconds} s")
            time.sleep(0.05)
            now = self.whole()
            if now != last:
                last, since = now, time.monotonic()
        return last
