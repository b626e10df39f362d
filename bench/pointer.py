"""A person at the mouse and the keyboard, through the XTEST extension."""

from Xlib import X, XK, display
from Xlib.ext import xtest

LEFT_BUTTON = 1


class Person:
    """Moves, presses and types on `screen`, a display's name. Each act has reached the server when it returns."""

    def __init__(self, screen):
        self.connection = display.Display(screen)
        self.root = self.connection.screen().root

    def close(self):
        self.connection.close()

    def move(self, x, y):
        xtest.fake_input(self.connection, X.MotionNotify, x=x, y=y)
        self.connection.flush()

    def press(self):
        xtest.fake_input(self.connection, X.ButtonPress, LEFT_BUTTON)
        self.connection.sync()

    def release(self):
        xtest.fake_input(self.connection, X.ButtonRelease, LEFT_BUTTON)
        self.connection.sync()

    def begin_drag(self, *places):
        """Presses at the first place and goes through the others."""
        self.move(*places[0])
        self.press()
        for place in places[1:]:
            self.move(*place)
            self.connection.sync()

    def drag(self, *places):
        """Drags from the first place to the last."""
        self.begin_drag(*places)
        self.release()

    def type(self, *names):
        """Presses the keys of these names one after the other, then lets them go: ("Control_L", "a")."""
        codes = [self.connection.keysym_to_keycode(XK.string_to_keysym(name)) for name in names]
        for code in codes:
            xtest.fake_input(self.connection, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self.connection, X.KeyRelease, code)
        self.connection.flush()

    def topmost_window(self):
        """What a user sees on top: the highest viewable child of the root window that is not tiny, or None."""
        for window in reversed(self.root.query_tree().children):
            if window.get_attributes().map_state == X.IsViewable and window.get_geometry().width > 1:
                return window
        return None

    def process_of(self, window):
        """The process identifier of the client that made `window`, as the server knows it."""
        answer = self.connection.res_query_client_ids([{"client": window.id, "mask": 2}])
        return answer.ids[0].value[0]
