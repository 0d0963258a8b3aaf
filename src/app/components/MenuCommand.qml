import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A command of a menu, with its keyboard shortcut.
T.MenuItem {
    id: control

    property string keys: ""

    implicitWidth: label.implicitWidth + keysText.implicitWidth + Theme.px(48)
    implicitHeight: Theme.px(30)
    opacity: enabled ? 1 : 0.45
    Accessible.name: text
    Accessible.description: keys
    Accessible.onPressAction: control.triggered()

    contentItem: Item {
        ThemedText {
            id: label

            x: Theme.px(10)
            anchors.verticalCenter: parent.verticalCenter
            text: control.text
            color: control.highlighted ? "#FFFFFF" : Theme.text
            Accessible.ignored: true
        }
        ThemedText {
            id: keysText

            anchors.right: parent.right
            anchors.rightMargin: Theme.px(10)
            anchors.verticalCenter: parent.verticalCenter
            role: ThemedText.Caption
            text: control.keys
            color: control.highlighted ? "#FFFFFF" : Theme.secondaryText
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.px(6)
        color: control.highlighted ? Theme.selected : "transparent"
    }
}
