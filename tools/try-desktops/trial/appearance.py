"""Rows on what the window looks like, and how the desktop knows it."""

import configparser
import glob
import os
import re
import subprocess

from gi.repository import Gio
from PIL import Image

from trial import home
from trial.bus import pause
from trial.desktop import APPLICATION
from trial.rows import Failed, expect, row
from trial.x11 import window_property

DARKEST_LIGHT = 110  # of 255


def luminance(pixel):
    red, green, blue = pixel[:3]
    return 0.3 * red + 0.59 * green + 0.11 * blue


def median(values):
    return sorted(values)[len(values) // 2]


@row("7.1", "深色桌面：标题栏和边框是深色的", ("gnome-wayland", "plasma-wayland"))
def dark(desktop):
    desktop.set_dark(True)
    try:
        window = expect(desktop.show_program(), "程序没有显示窗口")
        desktop.focus(window)
        pause(3)
        window = desktop.program_window()
        path = desktop.save_picture("7.1")
    finally:
        desktop.set_dark(False)
    picture = Image.open(path).convert("RGB")
    left, top = max(window.x, 0), max(window.y, 0)
    right = min(window.x + window.width, picture.width) - 1
    bottom = min(window.y + window.height, picture.height) - 1
    middle = (top + bottom) // 2
    # The title may be written in the middle of the bar, its buttons are at the ends.
    bar = range(left + window.width // 8, left + window.width // 3)
    side = range(middle - 50, middle + 50)
    parts = {
        "标题栏": [(x, top + 12) for x in bar],
        "上边框": [(x, top + 1) for x in bar],
        "左边框": [(left + 1, y) for y in side],
        "右边框": [(right - 1, y) for y in side],
        "下边框": [(x, bottom - 1) for x in bar],
        "内容": [(x, middle) for x in range(left + window.width // 2, right - 20)],
    }
    parts = {name: median([luminance(picture.getpixel(at)) for at in places]) for name, places in parts.items()}
    seen = "、".join(f"{part}亮度 {round(value)}" for part, value in parts.items())
    light = [part for part, value in parts.items() if value > DARKEST_LIGHT]
    if light:
        raise Failed("浅色的有" + "、".join(light) + f"（{seen}）")
    return seen


@row("5.1", "X11：WM_CLASS 与桌面文件一致", ("gnome-x11", "plasma-x11"))
def window_class(desktop):
    expect(desktop.show_program(), "程序没有显示窗口")
    names = re.findall(r'"([^"]*)"', window_property(x_window(desktop), "WM_CLASS"))
    expect(APPLICATION in names, "WM_CLASS 是 " + "、".join(names))
    return "WM_CLASS 是 " + "、".join(names)


@row("5.2", "X11：窗口有图标", ("gnome-x11", "plasma-x11"))
def window_icon(desktop):
    expect(desktop.show_program(), "程序没有显示窗口")
    icon = subprocess.run(
        ["xprop", "-id", x_window(desktop), "_NET_WM_ICON"],
        capture_output=True, text=True, check=False,
    ).stdout
    has_own = bool(re.search(r"Icon \(\d+ x \d+\)|= \d+", icon))
    by_file = desktop.file_of_window()
    expect(
        has_own or by_file == APPLICATION,
        "没有 _NET_WM_ICON，桌面也没有把窗口归于桌面文件" + (f"（而是 {by_file}）" if by_file else ""),
    )
    return "、".join(
        ([("有 _NET_WM_ICON")] if has_own else ["没有 _NET_WM_ICON"])
        + (["桌面按桌面文件显示图标"] if by_file == APPLICATION else [])
    )


@row("5.3", "KRunner 的图标存在", ("plasma-wayland", "plasma-x11"))
def runner_icons(desktop):
    home.look_up("lighthouse")
    file = configparser.ConfigParser(interpolation=None)
    file.read("/usr/share/krunner/dbusplugins/com.lexiquill.Lexiquill.desktop", encoding="utf-8")
    names = {file["Desktop Entry"].get("Icon", "")}
    name = APPLICATION + ".SearchProvider"
    (matches,) = desktop.bus.call(
        name, "/" + name.replace(".", "/"), "org.kde.krunner1", "Match", "(s)", "lighthouse"
    )
    expect(matches, "KRunner 没有结果")
    names |= {match[2] for match in matches}
    missing = [name for name in names if not theme_has(name)]
    if missing:
        raise Failed("breeze 和 hicolor 中没有：" + "、".join(repr(name) for name in missing))
    return "有：" + "、".join(sorted(names))


def theme_has(icon):
    return bool(icon) and any(
        glob.glob(f"/usr/share/icons/{theme}/**/{glob.escape(icon)}.*", recursive=True)
        for theme in ("breeze", "hicolor")
    )


def x_window(desktop):
    """The X11 id of the program's main window."""
    answer = subprocess.run(
        ["xdotool", "search", "--onlyvisible", "--pid", str(desktop.program_pid()), "--name", "."],
        capture_output=True, text=True, check=False,
    ).stdout.split()
    return expect(answer, "在 X 服务器上找不到窗口")[-1]


@row("9.1", "桌面列出程序")
def listed(desktop):
    try:
        info = Gio.DesktopAppInfo.new(APPLICATION + ".desktop")
    except TypeError:
        info = None
    expect(info is not None and info.should_show(), "没有桌面文件，或它不应显示")
    icon = info.get_string("Icon")
    expect(theme_has(icon), f"没有图标 {icon}")
    return f"{info.get_name()}，图标 {icon}"


@row("9.2", "原生 Wayland，而不是 XWayland", ("gnome-wayland", "plasma-wayland"))
def native(desktop):
    expect(desktop.show_program(), "程序没有显示窗口")
    with open(f"/proc/{desktop.program_pid()}/maps", encoding="utf-8") as file:
        libraries = {os.path.basename(line.split()[-1]) for line in file if ".so" in line}
    wayland = sorted(name for name in libraries if name.startswith("libqwayland"))
    expect(wayland, "窗口经由 XWayland（进程没有载入 Qt 的 Wayland 插件）")
    return wayland[0]
