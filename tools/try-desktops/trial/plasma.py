"""KWin, KRunner and the portals of Plasma, by their own interfaces."""

import json
import os
import signal
import subprocess
import tempfile

from gi.repository import Gio, GLib
from PIL import Image, ImageGrab

from trial.bus import pause, wait_until
from trial.desktop import SIZE, Desktop, Window
from trial.fake_input import FakeInput
from trial.x11 import DISPLAY, XInput, start_server

KWIN = "org.kde.KWin"
ANSWERS = """
<node><interface name='trial.Answers'><method name='Take'><arg type='s' direction='in'/></method></interface></node>
"""
SETTINGS_PROGRAMS = ("systemsettings", "systemsettings5", "kcmshell5")


def settings_processes():
    """The processes of System Settings."""
    found = []
    for process in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{process}/comm", encoding="utf-8") as file:
                name = file.read().strip()
        except OSError:
            continue
        if name in SETTINGS_PROGRAMS:
            found.append(int(process))
    return found


def end_settings():
    for process in settings_processes():
        os.kill(process, signal.SIGKILL)


class KWinScripts:
    """Runs scripts in KWin. They pass their result to the function `answer`, as a value for JSON."""

    def __init__(self, bus):
        self.bus = bus
        self.answers = []
        bus.connection.register_object(
            "/trial", Gio.DBusNodeInfo.new_for_xml(ANSWERS).interfaces[0], self._take, None, None
        )

    def _take(self, _connection, _sender, _path, _interface, _method, parameters, invocation):
        self.answers.append(json.loads(parameters.unpack()[0]))
        invocation.return_value(None)

    def run(self, script):
        name = self.bus.connection.get_unique_name()
        with tempfile.NamedTemporaryFile("w", suffix=".js") as file:
            file.write(
                "const answer = value => callDBus("
                f"'{name}', '/trial', 'trial.Answers', 'Take', JSON.stringify(value));\n{script}"
            )
            file.flush()
            scripting = (KWIN, "/Scripting", "org.kde.kwin.Scripting")
            (number,) = self.bus.call(*scripting, "loadScript", "(ss)", file.name, "trial")
            self.answers.clear()
            self.bus.call(KWIN, f"/{number}", "org.kde.kwin.Script", "run")
            wait_until(lambda: self.answers, 10)
            self.bus.call(*scripting, "unloadScript", "(s)", "trial")
        if not self.answers:
            raise RuntimeError("KWin does not answer")
        return self.answers[0]


class Plasma(Desktop):
    environment = {
        "XDG_CURRENT_DESKTOP": "KDE",
        "XDG_SESSION_DESKTOP": "KDE",
        "DESKTOP_SESSION": "plasma",
        "KDE_FULL_SESSION": "true",
        "KDE_SESSION_VERSION": "5",
        "XDG_MENU_PREFIX": "plasma-",
    }

    def start_parts(self):
        if not wait_until(lambda: self.bus.has_owner(KWIN), 60):
            raise RuntimeError("KWin does not start")
        self.scripts = KWinScripts(self.bus)
        subprocess.run(
            ["kbuildsycoca5", "--noincremental"], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
        )
        self.restart_portals()
        self.spawn("krunner", "--daemon")
        if not wait_until(lambda: self.bus.has_owner("org.kde.krunner"), 60):
            raise RuntimeError("KRunner does not start")

    def windows(self):
        found = self.scripts.run(
            """
            const all = workspace.clientList().filter(c => !c.minimized && c.normalWindow);
            const top = Math.max(...all.map(c => c.stackingOrder));
            answer(all.map(c => ({
                id: String(c.internalId), title: c.caption,
                name: [c.resourceName, c.resourceClass, c.desktopFileName].join(' '), pid: c.pid,
                focused: workspace.activeClient === c, on_top: c.stackingOrder === top,
                attention: c.demandsAttention, xwayland: false,
                x: c.frameGeometry.x, y: c.frameGeometry.y,
                width: c.frameGeometry.width, height: c.frameGeometry.height })));
            """
        )
        windows = [Window(**window) for window in found]
        for window in windows:
            window.x, window.y = round(window.x), round(window.y)
            window.width, window.height = round(window.width), round(window.height)
        return windows

    def activate(self, window):
        self.scripts.run(
            f"workspace.activeClient = workspace.clientList().find(c => String(c.internalId) === '{window.id}');"
            "answer(true);"
        )

    def end_program(self):
        super().end_program()
        end_settings()

    def query(self, text):
        self.bus.call("org.kde.krunner", "/App", "org.kde.krunner.App", "query", "(s)", text)
        pause(4)

    def click_icon(self):
        # The entry of the application is the first result for its name. KRunner starts it as the menu does.
        self.query("Lexiquill")
        self.input.key("Return")
        return True

    def search(self, text):
        # KRunner does not tell what it shows; the runner's answer and the picture do.
        self.query(text)
        name = "com.lexiquill.Lexiquill.SearchProvider"
        try:
            (matches,) = self.bus.call(
                name, "/" + name.replace(".", "/"), "org.kde.krunner1", "Match", "(s)", text
            )
        except GLib.Error:
            return False
        return bool(matches)

    def choose_result(self):
        self.input.key("Return")
        return True

    def close_search(self):
        self.input.key("Escape")
        self.input.key("Escape")

    def set_dark(self, is_dark):
        subprocess.run(
            ["plasma-apply-colorscheme", "BreezeDark" if is_dark else "BreezeLight"],
            check=True,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        pause(2)

    def file_of_window(self):
        return self.scripts.run(
            f"const c = workspace.clientList().find(c => c.pid === {self.program_pid()});"
            "answer(c ? String(c.desktopFileName) : '');"
        ).removesuffix(".desktop")


class PlasmaWayland(Plasma):
    name = "plasma-wayland"
    is_wayland = True

    def start(self):
        self.connect()
        before = set(os.listdir("/tmp/.X11-unix"))
        self.spawn(
            "kwin_wayland", "--virtual", "--width", str(SIZE[0]), "--height", str(SIZE[1]),
            "--xwayland", "--socket", "wayland-trial", "--no-lockscreen",
            env=os.environ
            | {
                "XDG_SESSION_TYPE": "wayland",
                "KWIN_WAYLAND_NO_PERMISSION_CHECKS": "1",
                "KWIN_SCREENSHOT_NO_PERMISSION_CHECKS": "1",
            },
        )
        wait_until(lambda: set(os.listdir("/tmp/.X11-unix")) - before, 30)
        server = next(iter(sorted(set(os.listdir("/tmp/.X11-unix")) - before)), "")
        self.share_environment(
            WAYLAND_DISPLAY="wayland-trial",
            DISPLAY=f":{server[1:]}" if server else "",
            XDG_SESSION_TYPE="wayland",
        )
        self.start_parts()
        self.input = FakeInput()

    def take_picture(self, path):
        reader, writer = os.pipe()
        files = Gio.UnixFDList.new()
        files.append(writer)
        os.close(writer)
        reply, _ = self.bus.connection.call_with_unix_fd_list_sync(
            KWIN, "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2", "CaptureArea",
            GLib.Variant("(iiuua{sv}h)", (0, 0, *SIZE, {}, 0)), None, Gio.DBusCallFlags.NONE, 20000, files, None,
        )
        # The pipe ends when KWin and this process have closed their ends.
        del files
        answer = reply.unpack()[0]
        with os.fdopen(reader, "rb") as pipe:
            size = answer["stride"] * answer["height"]
            data = pipe.read(size)
        Image.frombuffer(
            "RGB", (answer["width"], answer["height"]), data, "raw", "BGRX", answer["stride"], 1
        ).save(path)


class PlasmaX11(Plasma):
    name = "plasma-x11"

    def start(self):
        start_server(self)
        self.connect()
        self.spawn("kwin_x11")
        self.start_parts()
        self.input = XInput()

    def take_picture(self, path):
        ImageGrab.grab(xdisplay=DISPLAY).save(path)
