import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// The commands for the whole application. Their shortcuts are defined by the window.
T.Menu {
    id: menu

    signal updateCheckRequested
    signal closeRequested

    width: 220
    implicitHeight: contentHeight + 2 * padding
    padding: 5
    onAboutToShow: ContentView.setIsMenuOpen(true)
    onClosed: ContentView.setIsMenuOpen(false)
    margins: Theme.unit
    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        currentIndex: menu.currentIndex
        interactive: false
        Accessible.role: Accessible.PopupMenu
        Accessible.name: "菜单"
    }
    background: Rectangle {
        radius: 10
        color: Theme.sheet
        border.width: 1
        border.color: Theme.fieldBorder
    }

    MenuCommand {
        text: "关于 Lexiquill"
        onTriggered: ContentView.showAbout = true
    }
    T.MenuSeparator {
        verticalPadding: 4
        contentItem: Separator {}
        implicitHeight: 9
    }
    MenuCommand {
        text: "检查更新..."
        keys: "Ctrl+U"
        onTriggered: menu.updateCheckRequested()
    }
    T.MenuSeparator {
        verticalPadding: 4
        contentItem: Separator {}
        implicitHeight: 9
    }
    MenuCommand {
        text: "快捷键设置..."
        keys: "Ctrl+,"
        onTriggered: HotKeyManager.showSettingsSheet = true
    }
    T.MenuSeparator {
        verticalPadding: 4
        contentItem: Separator {}
        implicitHeight: 9
    }
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
