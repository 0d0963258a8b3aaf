"""Usage: client.py TEXT
Another program: a window with a text. F2 prints a token, which lets a program that is started come to the
front, as "token: TOKEN"; the line "ready" tells that the window is shown."""

import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gio, GLib, Gtk


def on_key(_window, event):
    if event.keyval != Gdk.KEY_F2:
        return False
    info = Gio.DesktopAppInfo.new("com.lexiquill.Lexiquill.desktop")
    context = Gdk.Display.get_default().get_app_launch_context()
    context.set_timestamp(event.time)
    print("token:", context.get_startup_notify_id(info, []) or "", flush=True)
    return True


def main():
    GLib.set_prgname("trial-client")
    window = Gtk.Window(title="Trial notes")
    view = Gtk.TextView()
    view.get_buffer().set_text(sys.argv[1])
    window.add(view)
    window.connect("key-press-event", on_key)
    window.connect("destroy", Gtk.main_quit)
    window.connect("map-event", lambda *_: print("ready", flush=True))
    window.maximize()
    window.show_all()
    Gtk.main()


main()
