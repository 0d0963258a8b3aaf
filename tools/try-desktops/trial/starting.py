"""Rows on starting the program: what the shell asks for is shown at the first click."""

from gi.repository import GLib

from trial import home
from trial.bus import pause, wait_until
from trial.other_program import OtherProgram
from trial.rows import Failed, expect, row

PATIENCE = 25


def expect_window(desktop, what):
    """The window that must be shown now, of a program that was not running."""
    window = wait_until(desktop.program_window, PATIENCE)
    if not window:
        state = "进程在运行，但没有窗口" if desktop.program_pid() else "没有进程"
        raise Failed(f"{what}后{PATIENCE}秒内{state}")
    return window


@row("1.1", "总线启动：只调用 Activate")
def bare_activate(desktop):
    desktop.application_method("Activate", "(a{sv})", {})
    expect_window(desktop, "调用")
    return "第一次调用即显示窗口"


@row("1.2", "总线启动：只调用 Open（lexiquill:lantern）")
def bare_open(desktop):
    desktop.application_method("Open", "(asa{sv})", ["lexiquill:lantern"], {})
    expect_window(desktop, "调用")
    expect(wait_until(lambda: desktop.shows_word("lantern"), 15), "窗口已显示，但没有查 lantern")
    return "第一次调用即显示窗口并查词"


@row("1.3", "总线启动：只调用 ActivateAction（查询选中的文字）")
def bare_action(desktop):
    desktop.application_method("ActivateAction", "(sava{sv})", "lookup-selection", [], {})
    expect_window(desktop, "调用")
    return "第一次调用即显示窗口"


@row("1.4", "点图标（程序坞；KDE 为 KRunner 中的应用程序）")
def icon(desktop):
    expect(desktop.click_icon(), "桌面没有列出图标")
    expect_window(desktop, "点击")
    return "点一次即显示窗口"


@row("1.5", "关闭窗口后再点图标")
def icon_again(desktop):
    expect(desktop.show_program(), "程序没有显示窗口")
    expect(desktop.close_program_window(), "Ctrl+W 没有关闭窗口")
    expect(desktop.program_pid(), "关闭窗口后进程已结束")
    expect(desktop.click_icon(), "桌面没有列出图标")
    expect_window(desktop, "点击")
    expect(wait_until(desktop.program_is_in_front, 10), "窗口已显示，但不在最前")
    return "窗口再次显示，并在最前"


@row("1.6", "在系统搜索中选择结果（GNOME 概览、KRunner），程序未运行")
def search_result(desktop):
    home.look_up("lighthouse")
    expect(desktop.search("lighthouse"), "系统搜索没有列出生词本中的单词")
    desktop.save_picture("1.6-results")
    expect(desktop.choose_result(), "结果无法选择")
    window = expect_window(desktop, "选择")
    expect(wait_until(lambda: desktop.shows_word("lighthouse"), 10), "窗口已显示，但不是所选的单词")
    return "列出结果，选择后显示该单词" + ("" if window.focused else "（窗口不在最前）")


@row("9.7", "系统搜索列出生词本中的单词")
def listed(desktop):
    home.look_up("lighthouse")
    expect(desktop.search("lighthouse"), "没有列出")
    desktop.save_picture("9.7")
    return "列出 lighthouse"


@row("3.1", "带 desktop-startup-id 令牌的 Activate 使窗口到最前", ("gnome-wayland", "plasma-wayland"))
def token(desktop):
    expect(desktop.show_program(), "程序没有显示窗口")
    with OtherProgram(desktop) as other:
        text = expect(other.token(), "另一程序没有得到令牌")
        expect(not desktop.program_window().focused, "窗口事先就在最前")
        desktop.application_method("Activate", "(a{sv})", {"desktop-startup-id": GLib.Variant("s", text)})
        came = wait_until(desktop.program_is_in_front, 10)
        pause(0.5)
        desktop.save_picture("3.1")
        expect(came, "窗口仍在后面" + ("，只提示需要注意" if desktop.program_window().attention else "，也没有提示"))
    return "窗口到最前"


@row("3.2", "没有令牌的搜索结果：被遮住的窗口到最前或提示")
def no_token(desktop):
    home.look_up("lighthouse")
    expect(desktop.show_program(), "程序没有显示窗口")
    with OtherProgram(desktop):
        name = "com.lexiquill.Lexiquill.SearchProvider"
        path = "/" + name.replace(".", "/")
        provider = "org.gnome.Shell.SearchProvider2"
        (found,) = desktop.bus.call(name, path, provider, "GetInitialResultSet", "(as)", ["lighthouse"])
        expect(found, "搜索没有结果")
        desktop.bus.call(
            name, path, provider, "ActivateResult", "(sasu)", found[0], ["lighthouse"], desktop.shell_time()
        )

        def reacts():
            return desktop.program_is_in_front() or desktop.program_window().attention

        came = wait_until(reacts, 10)
        pause(0.5)
        desktop.save_picture("3.2")
        expect(came, "窗口仍在后面，也没有提示")
        pause(0.5)
        return "窗口到最前" if desktop.program_is_in_front() else "桌面提示窗口需要注意"
