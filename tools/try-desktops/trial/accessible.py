"""What a program's windows show to assistive tools."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

MOST_OBJECTS = 3000


def objects_of(pid):
    """Pairs (role, text) of everything a program shows: names, and the contents of text fields."""
    Atspi.set_timeout(4000, 8000)
    root = Atspi.get_desktop(0)
    try:
        programs = [root.get_child_at_index(index) for index in range(root.get_child_count())]
        pending = [program for program in programs if program and program.get_process_id() == pid]
    except GLib.Error:
        return []
    found = []
    while pending and len(found) < MOST_OBJECTS:
        item = pending.pop()
        try:
            if item.get_role() != Atspi.Role.APPLICATION and not item.get_state_set().contains(
                Atspi.StateType.SHOWING
            ):
                continue
            role = item.get_role_name()
            found.append((role, item.get_name() or ""))
            text = item.get_text_iface()
            if text is not None:
                found.append((role, Atspi.Text.get_text(text, 0, -1) or ""))
            pending += [item.get_child_at_index(index) for index in range(item.get_child_count())]
            pending = [child for child in pending if child]
        except GLib.Error:
            continue
    return found


def texts_of(pid):
    return [text for _, text in objects_of(pid) if text]
