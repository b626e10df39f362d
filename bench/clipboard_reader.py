"""Another program that waits for the clipboard and reads a PNG from it, as a program does in which one pastes."""

import select
import time

from Xlib import X, display
from Xlib.ext import xfixes


class ClipboardReader:
    """A client of the X server with one window, which is never shown."""

    def __init__(self, screen):
        self.connection = display.Display(screen)
        self.connection.xfixes_query_version()
        self.window = self.connection.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent,
                                                                  event_mask=X.PropertyChangeMask)
        atom = self.connection.intern_atom
        self.clipboard, self.png, self.incremental = atom("CLIPBOARD"), atom("image/png"), atom("INCR")
        self.place = atom("LUMACAP_BENCH")
        self.connection.xfixes_select_selection_input(self.window, self.clipboard,
                                                      xfixes.XFixesSetSelectionOwnerNotifyMask)
        self.connection.sync()

    def close(self):
        self.connection.close()

    def forget(self):
        """Drops what has happened so far."""
        self.connection.sync()
        while self.connection.pending_events():
            self.connection.next_event()

    def _next(self, deadline):
        while not self.connection.pending_events():
            left = deadline - time.perf_counter()
            if left <= 0 or not select.select([self.connection.fileno()], [], [], left)[0]:
                raise TimeoutError("waited in vain for the clipboard")
        return self.connection.next_event()

    def wait_for_owner(self, seconds):
        """The time (perf_counter) at which somebody has taken the clipboard since `forget`."""
        deadline = time.perf_counter() + seconds
        while True:
            event = self._next(deadline)
            if isinstance(event, xfixes.SelectionNotify) and event.owner.id != X.NONE:
                return time.perf_counter()

    def read_png(self, seconds):
        """The PNG on the clipboard, whole."""
        deadline = time.perf_counter() + seconds
        self.window.convert_selection(self.clipboard, self.png, self.place, X.CurrentTime)
        event = self._next(deadline)
        while event.type != X.SelectionNotify:
            event = self._next(deadline)
        if event.property == X.NONE:
            raise RuntimeError("the owner of the clipboard has no PNG")
        kind, content = self._take()
        if kind != self.incremental:
            return content
        return self._pieces(deadline)

    def _pieces(self, deadline):
        """What an owner sends piece by piece, the last one empty."""
        pieces = []
        while True:
            event = self._next(deadline)
            if event.type == X.PropertyNotify and event.atom == self.place and event.state == X.PropertyNewValue:
                _, piece = self._take()
                if not piece:
                    return b"".join(pieces)
                pieces.append(piece)

    def _take(self):
        """Type and bytes of the property, which is deleted: the owner waits for that."""
        answer = self.window.get_property(self.place, X.AnyPropertyType, 0, 1 << 26, delete=True)
        if answer is None:
            return X.NONE, b""
        value = answer.value
        return answer.property_type, value.encode("latin-1") if isinstance(value, str) else bytes(value)
