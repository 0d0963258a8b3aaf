"""Rows on text from elsewhere: the selection, and input methods."""

import os
import subprocess

from gi.repository import GLib

from trial import home
from trial.accessible import objects_of
from trial.bus import pause, wait_until
from trial.other_program import OtherProgram
from trial.rows import Failed, expect, row

WORD = "harbour"


def look_up_selection(desktop):
    with OtherProgram(desktop, WORD) as other:
        other.select_all()
        data = {}
        if desktop.is_wayland:
            data["desktop-startup-id"] = GLib.Variant(
                "s", expect(other.token(), "另一程序没有得到令牌")
            )
        desktop.application_method("ActivateAction", "(sava{sv})", "lookup-selection", [], data)
        found = wait_until(lambda: home.has_word(WORD), 20)
        pause(1)
        window = desktop.program_window()
        desktop.save_picture("selection")
        expect(window, "没有显示窗口")
        expect(found, "窗口已显示，但没有查另一窗口中选中的文字")


@row("6.1", "查询另一窗口中选中的文字，程序在运行")
def while_running(desktop):
    expect(desktop.show_program(), "程序没有显示窗口")
    look_up_selection(desktop)
    return "查到选中的文字"


@row("6.2", "查询另一窗口中选中的文字，程序未运行")
def not_running(desktop):
    look_up_selection(desktop)
    return "查到选中的文字"


def field_text(desktop):
    return "".join(
        text for role, text in objects_of(desktop.program_pid()) if role in ("text", "entry") and text != "查词"
    )


def type_chinese(desktop):
    window = expect(desktop.show_program(), "程序没有显示窗口")
    desktop.focus(window)
    pause(2)
    desktop.input.type("nihao")
    pause(2)
    desktop.save_picture("input-method")
    desktop.input.key("space")
    found = wait_until(lambda: "你好" in field_text(desktop), 8)
    expect(found, f"查词框中是“{field_text(desktop)}”")
    return "输入 nihao，得到“你好”"


@row("9.4", "ibus 在查词框中输入中文", ("gnome-wayland", "gnome-x11"))
def ibus(desktop):
    sources = ["gsettings", "set", "org.gnome.desktop.input-sources", "sources"]
    desktop.share_environment(QT_IM_MODULE="ibus", XMODIFIERS="@im=ibus")
    subprocess.run([*sources, "[('ibus', 'libpinyin')]"], check=True)
    pause(6)
    try:
        return type_chinese(desktop)
    finally:
        subprocess.run([*sources, "[('xkb', 'us')]"], check=True)
        desktop.share_environment(QT_IM_MODULE="", XMODIFIERS="")
        pause(1)


@row("9.5", "fcitx5 在查词框中输入中文", ("plasma-wayland", "plasma-x11"))
def fcitx(desktop):
    os.makedirs(f"{home.HOME}/.config/fcitx5", exist_ok=True)
    with open(f"{home.HOME}/.config/fcitx5/profile", "w", encoding="utf-8") as file:
        file.write(
            "[Groups/0]\nName=Default\nDefault Layout=us\nDefaultIM=pinyin\n"
            "[Groups/0/Items/0]\nName=pinyin\nLayout=\n[GroupOrder]\n0=Default\n"
        )
    desktop.share_environment(QT_IM_MODULE="fcitx", XMODIFIERS="@im=fcitx")
    daemon = desktop.spawn("fcitx5", "--replace")
    try:
        expect(wait_until(lambda: desktop.bus.has_owner("org.fcitx.Fcitx5"), 20), "fcitx5 没有启动")
        pause(2)
        return type_chinese(desktop)
    except Failed as failure:
        if desktop.is_wayland and "nihao" in str(failure):
            raise Failed(f"{failure}（未经 KWin 的虚拟键盘启动 fcitx5）") from failure
        raise
    finally:
        daemon.terminate()
        desktop.share_environment(QT_IM_MODULE="", XMODIFIERS="")
