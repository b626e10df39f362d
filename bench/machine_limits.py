"""What this machine can do at best with one frame: copy it in memory, get it from the X server and put it there."""

import ctypes
import ctypes.util
import time

IPC_PRIVATE, IPC_CREAT, IPC_RMID = 0, 0o1000, 0
ALL_PLANES, Z_PIXMAP = 0xFFFFFFFF, 2
COPY_FROM_PARENT, OVERRIDE_REDIRECT, DEPTH = 0, 1 << 9, 24


class Cookie(ctypes.Structure):
    """XCB's handle of a request whose answer is awaited."""
    _fields_ = [("sequence", ctypes.c_uint)]


def library(name):
    return ctypes.CDLL(ctypes.util.find_library(name) or f"lib{name}.so", use_errno=True)


class FrameCopy:
    """Copies one frame from one buffer to another. Both are touched first, so that no page fault is timed."""
    name = "memory copy of the frame"

    def __init__(self, width, height):
        self.size = width * height * 4
        self.source = ctypes.create_string_buffer(b"\x55" * self.size, self.size)
        self.target = ctypes.create_string_buffer(b"\xaa" * self.size, self.size)

    def measure(self):
        """Seconds of one copy."""
        start = time.perf_counter()
        ctypes.memmove(self.target, self.source, self.size)
        return time.perf_counter() - start


class SharedMemoryGet:
    """One MIT-SHM GetImage of the root window on a connection that stays open."""
    name = "one MIT-SHM get of the screen"

    def __init__(self, width, height, display):
        self.width, self.height = width, height
        self.xcb, self.shm, self.libc = library("xcb"), library("xcb-shm"), library("c")
        self.xcb.xcb_connect.restype = ctypes.c_void_p
        self.connection = ctypes.c_void_p(self.xcb.xcb_connect(display.encode(), None))
        if self.xcb.xcb_connection_has_error(self.connection):
            raise RuntimeError(f"no connection to display {display}")
        self.root = self._root_window()
        self.segment = self._attach(width * height * 4)

    def _root_window(self):
        class Screens(ctypes.Structure):
            _fields_ = [("data", ctypes.POINTER(ctypes.c_uint32)), ("rem", ctypes.c_int), ("index", ctypes.c_int)]
        self.xcb.xcb_get_setup.restype = ctypes.c_void_p
        self.xcb.xcb_setup_roots_iterator.restype = Screens
        setup = ctypes.c_void_p(self.xcb.xcb_get_setup(self.connection))
        return self.xcb.xcb_setup_roots_iterator(setup).data[0]  # a screen record begins with its root window

    def _attach(self, size):
        self.libc.shmat.restype = ctypes.c_void_p
        identifier = self.libc.shmget(IPC_PRIVATE, ctypes.c_size_t(size), IPC_CREAT | 0o600)
        if identifier < 0:
            raise OSError(ctypes.get_errno(), "no shared memory for the frame")
        self.address = self.libc.shmat(identifier, None, 0)
        segment = self.xcb.xcb_generate_id(self.connection)
        self.shm.xcb_shm_attach(self.connection, ctypes.c_uint32(segment), ctypes.c_uint32(identifier), 0)
        self.measure_with(segment)  # the server has answered, so it is attached and the segment may lose its name
        self.libc.shmctl(identifier, IPC_RMID, None)
        return segment

    def close(self):
        """Gives the segment and the connection back."""
        self.xcb.xcb_disconnect(self.connection)
        self.libc.shmdt(ctypes.c_void_p(self.address))

    def measure_with(self, segment):
        """Seconds of one get into `segment`."""
        self.shm.xcb_shm_get_image.restype = Cookie
        self.shm.xcb_shm_get_image_reply.restype = ctypes.c_void_p
        start = time.perf_counter()
        cookie = self.shm.xcb_shm_get_image(
            self.connection, ctypes.c_uint32(self.root), ctypes.c_int16(0), ctypes.c_int16(0),
            ctypes.c_uint16(self.width), ctypes.c_uint16(self.height), ctypes.c_uint32(ALL_PLANES),
            ctypes.c_uint8(Z_PIXMAP), ctypes.c_uint32(segment), ctypes.c_uint32(0))
        reply = self.shm.xcb_shm_get_image_reply(self.connection, cookie, None)
        elapsed = time.perf_counter() - start
        if not reply:
            raise RuntimeError("the X server refused an MIT-SHM GetImage of its root window")
        self.libc.free(ctypes.c_void_p(reply))
        return elapsed

    def measure(self):
        """Seconds of one get."""
        return self.measure_with(self.segment)

    def picture(self):
        """The screen's bytes as they are now, four a pixel."""
        self.measure()
        return ctypes.string_at(self.address, self.width * self.height * 4)


class SharedMemoryPut:
    """One MIT-SHM PutImage of the whole screen into a window that covers it, on the connection of `get`."""
    name = "one MIT-SHM put of the screen"

    def __init__(self, get):
        """The frame is the one that `get` has got last."""
        self.get, self.xcb = get, get.xcb
        self.window, self.context = (self.xcb.xcb_generate_id(get.connection) for _ in range(2))
        override_redirect = (ctypes.c_uint32 * 1)(1)
        self.xcb.xcb_create_window(
            get.connection, ctypes.c_uint8(COPY_FROM_PARENT), ctypes.c_uint32(self.window), ctypes.c_uint32(get.root),
            ctypes.c_int16(0), ctypes.c_int16(0), ctypes.c_uint16(get.width), ctypes.c_uint16(get.height),
            ctypes.c_uint16(0), ctypes.c_uint16(COPY_FROM_PARENT), ctypes.c_uint32(COPY_FROM_PARENT),
            ctypes.c_uint32(OVERRIDE_REDIRECT), override_redirect)
        self.xcb.xcb_create_gc(get.connection, ctypes.c_uint32(self.context), ctypes.c_uint32(self.window), 0, None)

    def _wait_for_server(self):
        self.xcb.xcb_get_input_focus.restype = Cookie
        self.xcb.xcb_get_input_focus_reply.restype = ctypes.c_void_p
        cookie = self.xcb.xcb_get_input_focus(self.get.connection)
        self.get.libc.free(ctypes.c_void_p(self.xcb.xcb_get_input_focus_reply(self.get.connection, cookie, None)))

    def measure(self):
        """Seconds from the request until the server has done it. The window is on the screen for that time only."""
        self.xcb.xcb_map_window(self.get.connection, ctypes.c_uint32(self.window))
        self._wait_for_server()
        start = time.perf_counter()
        self.get.shm.xcb_shm_put_image(
            self.get.connection, ctypes.c_uint32(self.window), ctypes.c_uint32(self.context),
            ctypes.c_uint16(self.get.width), ctypes.c_uint16(self.get.height), ctypes.c_uint16(0), ctypes.c_uint16(0),
            ctypes.c_uint16(self.get.width), ctypes.c_uint16(self.get.height), ctypes.c_int16(0), ctypes.c_int16(0),
            ctypes.c_uint8(DEPTH), ctypes.c_uint8(Z_PIXMAP), ctypes.c_uint8(0), ctypes.c_uint32(self.get.segment),
            ctypes.c_uint32(0))
        self._wait_for_server()
        elapsed = time.perf_counter() - start
        self.xcb.xcb_unmap_window(self.get.connection, ctypes.c_uint32(self.window))
        self._wait_for_server()
        return elapsed
