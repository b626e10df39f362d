"""Another program that takes the clipboard, so that whoever owned it may forget what was on it."""

from Xlib import X, display


class ClipboardTaker:
    """A client of the X server with one window, which is never shown; what it owns, nobody can read."""

    def __init__(self, screen):
        self.connection = display.Display(screen)
        self.window = self.connection.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self.clipboard = self.connection.intern_atom("CLIPBOARD")

    def take(self):
        """Owns the clipboard when it returns."""
        self.window.set_selection_owner(self.clipboard, X.CurrentTime)
        owner = self.connection.get_selection_owner(self.clipboard)
        if owner == X.NONE or owner.id != self.window.id:
            raise RuntimeError("the clipboard could not be taken")

    def close(self):
        self.connection.close()
