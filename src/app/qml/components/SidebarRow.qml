import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A row of the sidebar: symbol, text, and a badge.
T.AbstractButton {
    id: control

    required property string symbol
    property string badge: ""
    property bool isCollapsed: false
    /// Smaller and in the secondary colour.
    property bool isQuiet: false
    property string help: ""

    implicitHeight: isQuiet ? 30 : 36
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    Accessible.role: isQuiet ? Accessible.Button : Accessible.PageTab
    Accessible.name: badge === "" ? text : text + " " + badge
    Accessible.description: help
    Accessible.selected: checked
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()
    Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
    Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)

    contentItem: Item {
        SymbolIcon {
            id: icon

            x: control.isCollapsed ? (parent.width - width) / 2 : 10
            anchors.verticalCenter: parent.verticalCenter
            width: control.isQuiet ? 16 : 19
            height: width
            symbol: control.symbol
            color: control.checked ? "#FFFFFF" : control.isQuiet ? Theme.secondaryText : Theme.accent
        }
        Text {
            anchors.left: icon.right
            anchors.leftMargin: Theme.unit
            anchors.right: badgeItem.visible ? badgeItem.left : parent.right
            anchors.rightMargin: Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            visible: !control.isCollapsed
            text: control.text
            color: control.checked ? "#FFFFFF" : control.isQuiet ? Theme.secondaryText : Theme.text
            font.pixelSize: control.isQuiet ? Theme.captionSize : Theme.bodySize
            elide: Text.ElideRight
            textFormat: Text.PlainText
        }
        Badge {
            id: badgeItem

            anchors.right: parent.right
            anchors.rightMargin: control.isCollapsed ? -2 : Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            anchors.verticalCenterOffset: control.isCollapsed ? -10 : 0
            scale: control.isCollapsed ? 0.8 : 1
            visible: control.badge !== ""
            text: control.badge
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: control.checked ? Theme.accent : control.down ? Theme.pressed : control.hovered ? Theme.hover : "transparent"

        FocusRing {
            shown: control.visualFocus
        }
    }

    HelpText {
        text: control.help !== "" ? control.help : control.isCollapsed ? control.text : ""
        shown: control.hovered && !control.down
    }
}
