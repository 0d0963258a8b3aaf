"""What the trial needs from a desktop, whichever it is."""

import os
import signal
import subprocess
import sys
from dataclasses import dataclass

from gi.repository import GLib

from trial.accessible import objects_of
from trial.bus import Bus, pause, wait_until

SIZE = (1280, 800)
APPLICATION = "com.lexiquill.Lexiquill"


@dataclass
class Window:
    """A mapped window that is not minimized, as the window manager describes it."""

    id: str
    title: str
    name: str  # application id or class
    pid: int
    focused: bool
    on_top: bool
    attention: bool
    xwayland: bool
    x: int
    y: int
    width: int
    height: int

    def center(self):
        return self.x + self.width // 2, self.y + self.height // 2


class Desktop:
    """A running desktop. `input` has key(*names) and click(x, y)."""

    name = ""
    is_wayland = False
    is_gnome = False
    environment = {}

    def __init__(self, results):
        self.results = results
        self.children = []
        self.bus = None
        self.input = None

    # Implemented by each desktop.
    def start(self):
        raise NotImplementedError

    def windows(self):
        raise NotImplementedError

    def activate(self, window):
        raise NotImplementedError

    def take_picture(self, path):
        raise NotImplementedError

    def click_icon(self):
        """Starts the program as a user does with the desktop's menu or dash."""
        raise NotImplementedError

    def search(self, text):
        """Opens the desktop's search with the text. Returns whether the program's result is shown."""
        raise NotImplementedError

    def choose_result(self):
        """Chooses the program's result of the search that is shown."""
        raise NotImplementedError

    def close_search(self):
        raise NotImplementedError

    def set_dark(self, is_dark):
        raise NotImplementedError

    def file_of_window(self):
        """The desktop file, without its suffix, that the desktop ascribes the program's window to."""
        raise NotImplementedError

    # Common parts.
    def save_picture(self, name):
        """Saves a picture of the whole desktop and returns its path."""
        path = os.path.join(self.results, f"{self.name}-{name}.png")
        self.take_picture(path)
        return path

    def has_picture(self, name):
        return os.path.exists(os.path.join(self.results, f"{self.name}-{name}.png"))

    def shell_time(self):
        """The time of the user's last action, as the shell tells it to search providers."""
        return 0

    def shows_word(self, word):
        """Whether the program shows the definition of the word."""
        return ("heading", word) in objects_of(self.program_pid())

    def spawn(self, *command, **options):
        log = open(os.path.join(self.results, f"{self.name}-{os.path.basename(command[0])}.log"), "ab")
        child = subprocess.Popen(command, stdout=options.pop("stdout", log), stderr=log, **options)
        self.children.append(child)
        return child

    def share_environment(self, **variables):
        """Makes the variables known to this process and to whatever the bus starts."""
        os.environ.update(variables)
        subprocess.run(["dbus-update-activation-environment", *variables], check=True)

    def restart_portals(self):
        """Ends portals that were started before the display was known, and starts them as they should be."""
        for _ in range(5):
            for name in ("portal.Desktop", "impl.portal.desktop.gnome", "impl.portal.desktop.gtk"):
                pid = self.bus.process_of("org.freedesktop." + name)
                if pid:
                    os.kill(pid, signal.SIGKILL)
            pause(1)
            # The call starts them, or waits for those that are just being started, perhaps in vain.
            if wait_until(self.has_color_scheme, 8):
                return
        raise RuntimeError("the desktop's portal does not answer")

    def has_color_scheme(self):
        portal = "org.freedesktop.portal"
        try:
            self.bus.call(
                portal + ".Desktop", "/org/freedesktop/portal/desktop", portal + ".Settings",
                "Read", "(ss)", "org.freedesktop.appearance", "color-scheme",
            )
            return True
        except GLib.Error:
            return False

    def connect(self):
        self.bus = Bus()

    def stop(self):
        for child in reversed(self.children):
            if child.poll() is None:
                child.terminate()
        for child in self.children:
            try:
                child.wait(5)
            except subprocess.TimeoutExpired:
                child.kill()

    def program_pid(self):
        return self.bus.process_of(APPLICATION)

    def program_window(self):
        """The main window if it is shown."""
        pid = self.program_pid()
        candidates = [window for window in self.windows() if pid and window.pid == pid]
        candidates += [window for window in self.windows() if APPLICATION.lower() in window.name.lower()]
        return candidates[0] if candidates else None

    def program_is_in_front(self):
        """Whether the main window is above all others and has the keyboard."""
        window = self.program_window()
        return window is not None and window.focused and window.on_top

    def focused_window(self):
        return next((window for window in self.windows() if window.focused), None)

    def focus(self, window, seconds=10):
        self.activate(window)

        def is_focused():
            focused = self.focused_window()
            return focused is not None and focused.id == window.id

        if not wait_until(is_focused, seconds):
            return False
        pause(1)
        return True

    def press_until(self, condition, *keys):
        """Presses keys together, again if nothing happens, as a person does. Returns the condition's value."""
        for _ in range(3):
            self.input.key(*keys)
            value = wait_until(condition, 6)
            if value:
                break
        return value

    def close_program_window(self):
        """Closes the main window with the keyboard. Returns whether it is closed."""
        self.focus(self.program_window())
        return self.press_until(lambda: not self.program_window(), "Control", "w")

    def end_program(self):
        """Ends the program, and what it may have opened."""
        for name in (APPLICATION, APPLICATION + ".SearchProvider"):
            pid = self.bus.process_of(name)
            if pid:
                os.kill(pid, signal.SIGTERM)
                if not wait_until(lambda: not self.bus.process_of(name), 10):
                    os.kill(pid, signal.SIGKILL)
                    wait_until(lambda: not self.bus.process_of(name), 5)
        pause(0.3)

    def application_method(self, method, signature, *arguments):
        self.bus.send(
            APPLICATION,
            "/" + APPLICATION.replace(".", "/"),
            "org.freedesktop.Application",
            method,
            signature,
            *arguments,
        )

    def show_program(self, seconds=30):
        """The main window, of a program that is started if it is not running."""
        if not self.program_window():
            subprocess.Popen(["Lexiquill"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if not wait_until(self.program_window, seconds):
            return None
        # The first frame is empty, and keys are lost until the screens are there.
        wait_until(lambda: len(objects_of(self.program_pid())) > 2, seconds)
        return self.program_window()


def say(text):
    print(text, file=sys.stderr, flush=True)
