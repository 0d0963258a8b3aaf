"""An X server without a screen, and its keys and pointer."""

import os
import subprocess

from trial.bus import pause, wait_until
from trial.desktop import SIZE

DISPLAY = ":9"


def start_server(desktop):
    desktop.spawn(
        "Xvfb", DISPLAY, "-screen", "0", f"{SIZE[0]}x{SIZE[1]}x24", "-nolisten", "tcp",
        "+extension", "GLX", "+extension", "RANDR",
    )
    if not wait_until(lambda: os.path.exists("/tmp/.X11-unix/X" + DISPLAY[1:]), 15):
        raise RuntimeError("Xvfb does not start")
    desktop.share_environment(DISPLAY=DISPLAY, XDG_SESSION_TYPE="x11", GDK_BACKEND="x11")


class XInput:
    NAMES = {"Super": "super", "Control": "ctrl", "Alt": "alt", "Shift": "shift"}

    def key(self, *names):
        subprocess.run(["xdotool", "key", "+".join(self.NAMES.get(name, name) for name in names)], check=True)
        pause(0.1)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "60", text], check=True)
        pause(0.1)

    def click(self, x, y):
        subprocess.run(["xdotool", "mousemove", str(round(x)), str(round(y))], check=True)
        pause(0.3)
        subprocess.run(["xdotool", "click", "1"], check=True)
        pause(0.2)


def window_property(window, name):
    """The text that xprop prints for a property; empty if the window does not have it."""
    answer = subprocess.run(
        ["xprop", "-notype", "-id", window, name], capture_output=True, text=True, check=False
    ).stdout
    return answer.partition("=")[2].strip() if "=" in answer else ""
