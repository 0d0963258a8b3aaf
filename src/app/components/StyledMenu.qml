import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A menu of MenuCommand and MenuDivider items. While it is open it has the keyboard.
T.Menu {
    id: menu

    /// The name for assistive tools.
    property string name: "菜单"

    implicitWidth: Theme.px(220)
    implicitHeight: contentHeight + 2 * padding
    padding: Theme.px(5)
    margins: Theme.unit
    onAboutToShow: {
        // The item that the template makes for the menu.
        contentItem.parent.Accessible.name = menu.name;
        ContentView.setIsMenuOpen(true);
    }
    onClosed: ContentView.setIsMenuOpen(false)
    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        currentIndex: menu.currentIndex
        interactive: false
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: Theme.px(10)
        color: Theme.sheet
        border.width: 1
        border.color: Theme.fieldBorder
    }
}
