import QtQuick
import Lexiquill

/// The commands for the whole application. Their shortcuts are defined by the window.
StyledMenu {
    id: menu

    signal updateCheckRequested
    signal closeRequested

    MenuCommand {
        text: "关于 Lexiquill"
        onTriggered: ContentView.showAbout = true
    }
    MenuDivider {}
    MenuCommand {
        text: "检查更新..."
        keys: "Ctrl+U"
        onTriggered: menu.updateCheckRequested()
    }
    MenuDivider {}
    MenuCommand {
        text: "快捷键设置..."
        keys: "Ctrl+,"
        onTriggered: HotKeyManager.showSettingsSheet = true
    }
    MenuDivider {}
    MenuCommand {
        text: "关闭窗口"
        keys: "Ctrl+W"
        onTriggered: menu.closeRequested()
    }
    MenuCommand {
        text: "退出 Lexiquill"
        keys: "Ctrl+Q"
        onTriggered: AppDelegate.terminate()
    }
}
