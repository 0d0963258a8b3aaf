"""Rows on the global hotkey."""

from trial import home
from trial.accessible import texts_of
from trial.bus import pause, wait_until
from trial.other_program import OtherProgram
from trial.plasma import end_settings, settings_processes
from trial.rows import Failed, NotApplicable, expect, row

SHIFT, META, D = 0x02000000, 0x10000000, 0x44
ACCELERATORS = "org.kde.kglobalaccel"


def component_with(bus, key):
    """The component of kglobalaccel with a shortcut of this Qt key code; empty if there is none."""
    (paths,) = bus.call(ACCELERATORS, "/kglobalaccel", "org.kde.KGlobalAccel", "allComponents")
    for path in paths:
        (shortcuts,) = bus.call(
            ACCELERATORS, path, "org.kde.kglobalaccel.Component", "allShortcutInfos"
        )
        for shortcut in shortcuts:
            if key in shortcut[6]:
                return shortcut[2]
    return ""


def press_shows_window(desktop):
    with OtherProgram(desktop):
        expect(not desktop.program_window().focused, "窗口事先就在最前")
        desktop.input.key(*home.HOT_KEY_NAMES)
        came = wait_until(desktop.program_is_in_front, 10)
        pause(0.5)
        desktop.save_picture("hotkey")
        expect(came, "按下后窗口没有到最前")
    expect(desktop.close_program_window(), "Ctrl+W 没有关闭窗口")
    desktop.input.key(*home.HOT_KEY_NAMES)
    expect(wait_until(desktop.program_window, 10), "关闭窗口后按下，窗口没有显示")


@row("2.1", "快捷键由门户登记，kglobalaccel 知道它", ("plasma-wayland",))
def registered(desktop):
    home.reset(home.HOT_KEY)
    expect(desktop.show_program(), "程序没有显示窗口")
    component = wait_until(lambda: component_with(desktop.bus, META | SHIFT | D), 15)
    return "kglobalaccel 的组件：" + expect(component, "kglobalaccel 中没有 Super+Shift+D")


@row("2.2", "按下快捷键显示窗口", ("plasma-wayland",))
def pressed_by_portal(desktop):
    home.reset(home.HOT_KEY)
    expect(desktop.show_program(), "程序没有显示窗口")
    wait_until(lambda: component_with(desktop.bus, META | SHIFT | D), 15)
    end_settings()
    press_shows_window(desktop)
    return "被遮住和已关闭的窗口都显示"


@row("2.3", "启动两次，都不打开系统设置", ("plasma-wayland",))
def no_settings(desktop):
    opened = []
    for turn in ("第一次", "第二次"):
        expect(desktop.show_program(), "程序没有显示窗口")
        if wait_until(settings_processes, 12):
            pause(3)
            desktop.save_picture("2.3-settings")
            opened.append(turn)
        desktop.end_program()
    if opened:
        raise Failed("、".join(opened) + "启动打开了系统设置")
    return "没有打开"


@row("2.4", "X11：按下快捷键显示窗口", ("gnome-x11", "plasma-x11"))
def pressed_on_x11(desktop):
    home.reset(home.HOT_KEY)
    expect(desktop.show_program(), "程序没有显示窗口")
    pause(2)
    press_shows_window(desktop)
    return "被遮住和已关闭的窗口都显示"


@row("7.2", "GNOME 43 的 Wayland：偏好设置说明没有全局快捷键，并给出命令", ("gnome-wayland", "plasma-wayland"))
def explained(desktop):
    if not desktop.is_gnome:
        raise NotApplicable("这里有快捷键门户")
    window = expect(desktop.show_program(), "程序没有显示窗口")
    desktop.focus(window)
    pid = desktop.program_pid()
    expect(
        desktop.press_until(lambda: "全局快捷键" in texts_of(pid), "Control", "comma"), "偏好设置没有打开"
    )
    pause(2)
    texts = texts_of(pid)
    desktop.save_picture("7.2")
    status = [text for text in texts if "注册" in text or "快捷键" in text or "Wayland" in text]
    expect(
        any("--desktop-action" in text for text in texts),
        "没有显示命令；显示的是：" + "｜".join(dict.fromkeys(status))[:160],
    )
    expect(
        any(word in text for text in status for word in ("不支持", "不能", "无法", "没有")),
        "显示了命令，但没有说明不能使用全局快捷键",
    )
    return "说明了原因，并显示命令"
