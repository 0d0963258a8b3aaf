"""GNOME Shell, by its own interfaces."""

import json
import os
import shutil
import subprocess

from trial.bus import pause, wait_until
from trial.desktop import APPLICATION, SIZE, Desktop, Window
from trial.x11 import XInput, start_server

SHELL = "org.gnome.Shell"
KEYSYMS = {
    "Return": 0xFF0D, "Escape": 0xFF1B, "Tab": 0xFF09, "space": 0x20, "Super": 0xFFEB, "Control": 0xFFE3,
    "Alt": 0xFFE9, "Shift": 0xFFE1, "F2": 0xFFBF, "Down": 0xFF54, "comma": 0x2C, "End": 0xFF57,
}


class RemoteInput:
    """Keys and pointer by a remote desktop session, which stays open, or its devices vanish."""

    def __init__(self, bus):
        self.bus = bus
        name = "org.gnome.Mutter.RemoteDesktop"
        (self.session,) = bus.call(name, "/org/gnome/Mutter/RemoteDesktop", name, "CreateSession")
        self._notify("Start")

    def _notify(self, method, signature=None, *arguments):
        self.bus.call(
            "org.gnome.Mutter.RemoteDesktop",
            self.session,
            "org.gnome.Mutter.RemoteDesktop.Session",
            method,
            signature,
            *arguments,
        )

    def key(self, *names):
        """Presses the keys together."""
        codes = [KEYSYMS.get(name) or ord(name) for name in names]
        for code in codes:
            self._notify("NotifyKeyboardKeysym", "(ub)", code, True)
        for code in reversed(codes):
            self._notify("NotifyKeyboardKeysym", "(ub)", code, False)
        pause(0.1)

    def type(self, text):
        for character in text:
            self.key(character)

    def click(self, x, y):
        self._notify("NotifyPointerMotionRelative", "(dd)", -5000.0, -5000.0)
        self._notify("NotifyPointerMotionRelative", "(dd)", float(x), float(y))
        pause(0.3)
        left = 0x110
        self._notify("NotifyPointerButton", "(ib)", left, True)
        pause(0.05)
        self._notify("NotifyPointerButton", "(ib)", left, False)
        pause(0.2)


class Gnome(Desktop):
    is_gnome = True
    environment = {
        "XDG_CURRENT_DESKTOP": "GNOME",
        "XDG_SESSION_DESKTOP": "gnome",
        "DESKTOP_SESSION": "gnome",
    }

    def set_up(self):
        for schema, key, value in (
            ("org.gnome.shell", "welcome-dialog-last-shown-version", "'99'"),
            ("org.gnome.shell", "favorite-apps", f"['{APPLICATION}.desktop']"),
            ("org.gnome.desktop.interface", "enable-animations", "false"),
            ("org.gnome.desktop.interface", "enable-hot-corners", "false"),
            ("org.gnome.desktop.session", "idle-delay", "0"),
            ("org.gnome.desktop.screensaver", "lock-enabled", "false"),
            ("org.gnome.desktop.lockdown", "disable-lock-screen", "true"),
        ):
            subprocess.run(["gsettings", "set", schema, key, value], check=True)

    def wait_for_shell(self):
        if not wait_until(lambda: self.bus.has_owner(SHELL) and self.evaluates(), 90):
            raise RuntimeError("gnome-shell does not answer")
        wait_until(lambda: self.evaluate("Main.layoutManager._startingUp === false"), 30)
        self.hide_overview()

    def evaluates(self):
        try:
            return self.evaluate("1 + 1") == 2
        except Exception:  # the shell is not ready
            return False

    def evaluate(self, script):
        is_good, answer = self.bus.call(SHELL, "/org/gnome/Shell", SHELL, "Eval", "(s)", script)
        if not is_good:
            raise RuntimeError(f"gnome-shell: {answer}")
        return json.loads(answer) if answer else None

    def windows(self):
        found = self.evaluate(
            """
            global.get_window_actors().map(a => a.meta_window)
                .filter(w => !w.minimized && !w.is_override_redirect() && w.get_window_type() !== 1)
                .map((w, i, all) => { const r = w.get_frame_rect(); return {
                    id: String(w.get_id()), title: w.get_title() || '',
                    name: [w.get_wm_class(), w.get_gtk_application_id(), w.get_sandboxed_app_id()].join(' '),
                    pid: w.get_pid(), focused: w.has_focus(), on_top: i === all.length - 1,
                    attention: w.demands_attention || w.urgent,
                    xwayland: w.get_client_type() === 1, x: r.x, y: r.y, width: r.width, height: r.height };
                })
            """
        )
        return [Window(**window) for window in found]

    def activate(self, window):
        self.hide_overview()
        self.evaluate(
            "global.get_window_actors().map(a => a.meta_window)"
            f".find(w => String(w.get_id()) === '{window.id}').activate(global.get_current_time())"
        )

    def hide_overview(self):
        self.evaluate("Main.overview.hide()")
        wait_until(lambda: not self.evaluate("Main.overview.visible"), 10)

    def take_picture(self, path):
        temporary = f"/tmp/{os.path.basename(path)}"
        self.bus.call(
            "org.gnome.Shell.Screenshot",
            "/org/gnome/Shell/Screenshot",
            "org.gnome.Shell.Screenshot",
            "Screenshot",
            "(bbs)",
            False,
            False,
            temporary,
        )
        wait_until(lambda: os.path.exists(temporary) and os.path.getsize(temporary) > 0, 10)
        shutil.move(temporary, path)

    def click_actor(self, actor):
        """Clicks the middle of an actor, given as an expression that is null until the actor is there."""
        script = (
            f"(() => {{ const a = {actor}; if (!a || !a.mapped) return null;"
            " const [x, y] = a.get_transformed_position(); const [w, h] = a.get_transformed_size();"
            " return w > 0 ? [x + w / 2, y + h / 2] : null; })()"
        )
        wait_until(lambda: self.evaluate(script), 15)
        # It may move, or be made again, while the screen is being filled.
        pause(0.5)
        place = wait_until(lambda: self.evaluate(script), 5)
        if not place:
            return False
        self.input.click(*place)
        return True

    def click_icon(self):
        self.evaluate("Main.overview.show()")
        wait_until(lambda: self.evaluate("Main.overview.visible && !Main.overview.animationInProgress"), 10)
        return self.click_actor(
            "Main.overview.dash._box.get_children().map(c => c.child)"
            f".find(c => c && c.app && c.app.id === '{APPLICATION}.desktop')"
        )

    provider = (
        "Main.overview._overview.controls._searchController._searchResults._providers"
        f".find(p => p.appInfo && p.appInfo.get_id() === '{APPLICATION}.desktop')"
    )

    def search(self, text):
        self.evaluate("Main.overview.show()")
        wait_until(lambda: self.evaluate("Main.overview.visible && !Main.overview.animationInProgress"), 10)
        self.input.type(text)

        def is_listed():
            return self.evaluate(
                f"(() => {{ const p = {self.provider};"
                " return Boolean(p && p.display && p.display.visible && p.display.getFirstResult()); })()"
            )

        wait_until(is_listed, 20)
        # The results of the first letters come before those of the text.
        pause(1.5)
        return wait_until(is_listed, 10)

    def choose_result(self):
        return self.click_actor(
            f"(() => {{ const p = {self.provider}; return p ? p.display.getFirstResult() : null; }})()"
        )

    def close_search(self):
        self.hide_overview()

    def set_dark(self, is_dark):
        scheme = "prefer-dark" if is_dark else "default"
        subprocess.run(
            ["gsettings", "set", "org.gnome.desktop.interface", "color-scheme", scheme], check=True
        )
        pause(1)

    def file_of_window(self):
        identifier = self.evaluate(
            "(() => { const w = global.get_window_actors().map(a => a.meta_window)"
            f".find(w => w.get_pid() === {self.program_pid()});"
            " const a = w && imports.gi.Shell.WindowTracker.get_default().get_window_app(w);"
            " return a ? a.get_id() : ''; })()"
        )
        return identifier.removesuffix(".desktop")

    def shell_time(self):
        return self.evaluate("global.get_current_time()")


class GnomeWayland(Gnome):
    name = "gnome-wayland"
    is_wayland = True

    def start(self):
        self.set_up()
        self.connect()
        self.spawn(
            "gnome-shell", "--headless", "--wayland", "--unsafe-mode",
            "--wayland-display", "wayland-trial", "--virtual-monitor", f"{SIZE[0]}x{SIZE[1]}",
        )
        self.wait_for_shell()
        self.share_environment(
            WAYLAND_DISPLAY="wayland-trial",
            DISPLAY=self.evaluate("imports.gi.GLib.getenv('DISPLAY') || ''"),
            XAUTHORITY=self.evaluate("imports.gi.GLib.getenv('XAUTHORITY') || ''"),
            XDG_SESSION_TYPE="wayland",
        )
        self.restart_portals()
        self.input = RemoteInput(self.bus)


class GnomeX11(Gnome):
    name = "gnome-x11"

    def start(self):
        start_server(self)
        self.set_up()
        self.connect()
        self.spawn("gnome-shell", "--x11", "--unsafe-mode")
        self.wait_for_shell()
        self.restart_portals()
        self.input = XInput()
