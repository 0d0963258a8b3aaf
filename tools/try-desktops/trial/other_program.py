"""Another program beside the one on trial; see client.py."""

import os
import queue
import subprocess
import sys
import threading

from trial.bus import pause, wait_until


class OtherProgram:
    """Its window is shown, maximized and in front while the object is used in a `with` statement."""

    def __init__(self, desktop, text="notes"):
        self.desktop = desktop
        self.text = text
        self.lines = queue.Queue()

    def __enter__(self):
        script = os.path.join(os.path.dirname(__file__), "client.py")
        self.process = subprocess.Popen(
            [sys.executable, script, self.text], stdout=subprocess.PIPE, text=True
        )
        threading.Thread(target=self._read, daemon=True).start()
        if not wait_until(lambda: self.window() is not None, 20):
            raise RuntimeError("the other program's window is not shown")
        if not self.desktop.focus(self.window()):
            raise RuntimeError("the other program's window does not become active")
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()
        wait_until(lambda: self.window() is None, 5)

    def _read(self):
        for line in self.process.stdout:
            self.lines.put(line.strip())

    def window(self):
        return next((window for window in self.desktop.windows() if window.pid == self.process.pid), None)

    def select_all(self):
        self.desktop.input.click(*self.window().center())
        self.desktop.input.key("Control", "a")
        pause(0.5)

    def token(self):
        """A token for the start of another program by the user, from this program's window."""
        while not self.lines.empty():
            self.lines.get()
        self.desktop.input.key("F2")

        def take():
            while not self.lines.empty():
                line = self.lines.get()
                if line.startswith("token:"):
                    return line
            return None

        line = wait_until(take, 5)
        return line.partition(":")[2].strip() if line else ""
