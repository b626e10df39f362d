"""Finds the program's controls by their names, as assistive technology does."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402 (needs the line above)


def _showing(parent):
    for index in range(parent.get_child_count()):
        child = parent.get_child_at_index(index)
        if child is None:
            continue
        if child.get_state_set().contains(Atspi.StateType.SHOWING):
            yield child
        yield from _showing(child)


def middle_of(name):
    """Where to click on the first control of that name, in root pixels; None while none shows."""
    for control in _showing(Atspi.get_desktop(0)):
        if control.get_name() == name:
            place = control.get_extents(Atspi.CoordType.SCREEN)
            return place.x + place.width // 2, place.y + place.height // 2
    return None


if __name__ == "__main__":
    import sys
    print(*(middle_of(sys.argv[1]) or ()))
