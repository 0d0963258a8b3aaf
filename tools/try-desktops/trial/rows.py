"""The table's rows: each is a function that uses the desktop and returns what was seen."""

ALL = ("gnome-wayland", "gnome-x11", "plasma-wayland", "plasma-x11")
WAYLAND = ("gnome-wayland", "plasma-wayland")
X11 = ("gnome-x11", "plasma-x11")
ROWS = []


class Failed(Exception):
    """The program does not do what the row asks; the text says what was seen."""


class NotApplicable(Exception):
    """The row asks for something that this desktop cannot do; the text says why."""


def row(number, title, sessions=ALL):
    def register(function):
        ROWS.append((number, title, sessions, function))
        return function

    return register


def expect(condition, failure):
    if not condition:
        raise Failed(failure)
    return condition
