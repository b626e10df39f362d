"""Just enough of Wayland's wire protocol to be a client of a compositor: requests, events, globals."""

import array
import os
import select
import socket
import struct
import time

DISPLAY, SYNC, GET_REGISTRY, BIND = 1, 0, 1, 0
ERROR, DELETE_ID, GLOBAL = 0, 1, 0
LIMIT_SECONDS = 20


def fixed(number):
    """A number with a fraction, as requests have it."""
    return round(number * 256)


def _encode(argument):
    if isinstance(argument, int):
        return struct.pack("=I", argument & 0xFFFFFFFF)
    words = argument.encode() + b"\0"
    return struct.pack("=I", len(words)) + words + b"\0" * (-len(words) % 4)


class Connection:
    """A client of the compositor whose socket is at `path`."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.socket.connect(str(path))
        self.received, self.handlers, self.globals, self.last = b"", {}, {}, DISPLAY
        self.handlers[DISPLAY] = self._on_display
        self.registry = self.new(self._on_registry)
        self.request(DISPLAY, GET_REGISTRY, self.registry)
        self.wait_for_server()

    def close(self):
        self.socket.close()

    def new(self, handler=lambda event, body: None):
        """The identifier of a new object, which the next request has to make: compositors count along. `handler` gets
        the number and the bytes of each of its events."""
        self.last += 1
        self.handlers[self.last] = handler
        return self.last

    def request(self, target, opcode, *arguments, file=None):
        """Sends a request; numbers and strings are its arguments, `file` is a descriptor that goes with it."""
        body = b"".join(_encode(argument) for argument in arguments)
        message = struct.pack("=IHH", target, opcode, 8 + len(body)) + body
        extra = [] if file is None else [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", [file]))]
        self.socket.sendmsg([message], extra)

    def bind(self, interface, version):
        """The identifier of the compositor's global of that interface."""
        if interface not in self.globals:
            raise RuntimeError(f"the compositor has no {interface}")
        bound = self.new()
        self.request(self.registry, BIND, self.globals[interface], interface, version, bound)
        return bound

    def wait(self, done, what):
        """Handles events until `done` holds."""
        deadline = time.monotonic() + LIMIT_SECONDS
        while not done():
            left = deadline - time.monotonic()
            if left <= 0 or not select.select([self.socket], [], [], left)[0]:
                raise TimeoutError(f"waited {LIMIT_SECONDS} s in vain for {what}")
            piece = self.socket.recv(1 << 16)
            if not piece:
                raise RuntimeError("the compositor has closed the connection")
            self.received += piece
            self._handle()

    def wait_for_server(self):
        """Returns when the compositor has handled everything."""
        answers = []
        self.request(DISPLAY, SYNC, self.new(lambda event, body: answers.append(event)))
        self.wait(lambda: answers, "the compositor")

    def _handle(self):
        while len(self.received) >= 8:
            target, opcode, size = struct.unpack_from("=IHH", self.received)
            if len(self.received) < size:
                return
            body, self.received = self.received[8:size], self.received[size:]
            self.handlers.get(target, lambda event, body: None)(opcode, body)

    def _on_display(self, event, body):
        if event == ERROR:
            raise RuntimeError(f"the compositor refuses: {body[12:].decode(errors='replace')}")
        if event == DELETE_ID:
            self.handlers.pop(struct.unpack("=I", body)[0], None)

    def _on_registry(self, event, body):
        if event == GLOBAL:
            number, length = struct.unpack_from("=II", body)
            self.globals.setdefault(body[8:8 + length - 1].decode(), number)


def memory_file(content):
    """The descriptor of a nameless file with that content."""
    file = os.memfd_create("lumacap bench")
    os.write(file, content)
    return file
