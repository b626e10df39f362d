"""A person at the keyboard of a Wayland compositor: by a virtual keyboard on sway, by KWin's fake input there."""

import os

from wayland_wire import Connection, memory_file

ESCAPE, RETURN = 1, 28  # evdev's codes
XKB_OFFSET = 8
UP, DOWN = 0, 1
KEYMAP = f"""xkb_keymap {{
xkb_keycodes "bench" {{ minimum = 8; maximum = 255; <ESC> = {ESCAPE + XKB_OFFSET}; <RTRN> = {RETURN + XKB_OFFSET}; }};
xkb_types "bench" {{ include "complete" }};
xkb_compatibility "bench" {{ include "complete" }};
xkb_symbols "bench" {{ key <ESC> {{ [ Escape ] }}; key <RTRN> {{ [ Return ] }}; }};
}};
"""
CREATE_KEYBOARD, SET_KEYMAP, KEY = 0, 0, 1
AUTHENTICATE, FAKE_KEY = 0, 10


def connect(desktop):
    return Connection(desktop.folder / "run" / desktop.environment["WAYLAND_DISPLAY"])


class VirtualKeyboard:
    """By zwp_virtual_keyboard, with a keymap of two keys."""

    def __init__(self, desktop):
        self.connection = connect(desktop)
        manager = self.connection.bind("zwp_virtual_keyboard_manager_v1", 1)
        seat = self.connection.bind("wl_seat", 1)
        self.keyboard = self.connection.new()
        self.connection.request(manager, CREATE_KEYBOARD, seat, self.keyboard)
        file = memory_file(KEYMAP.encode() + b"\0")
        self.connection.request(self.keyboard, SET_KEYMAP, 1, len(KEYMAP) + 1, file=file)
        self.connection.wait_for_server()
        os.close(file)

    def close(self):
        self.connection.close()

    def type(self, code):
        """Presses a key and lets it go; both have reached the compositor when this returns."""
        for state in (DOWN, UP):
            self.connection.request(self.keyboard, KEY, 0, code, state)
        self.connection.wait_for_server()


class FakeKeyboard:
    """By org_kde_kwin_fake_input."""

    def __init__(self, desktop):
        self.connection = connect(desktop)
        self.input = self.connection.bind("org_kde_kwin_fake_input", 4)
        self.connection.request(self.input, AUTHENTICATE, "bench", "bench")
        self.connection.wait_for_server()

    def close(self):
        self.connection.close()

    def type(self, code):
        """Presses a key and lets it go; both have reached the compositor when this returns."""
        for state in (DOWN, UP):
            self.connection.request(self.input, FAKE_KEY, code, state)
        self.connection.wait_for_server()
