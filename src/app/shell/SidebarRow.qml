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
    /// Has room for a second line of text.
    property bool isTall: false
    /// Work that the row started is in progress.
    property bool isBusy: false
    /// What the row names does not work.
    property bool isStruckOut: false
    property string help: ""
    /// A menu that belongs to the row is open.
    property bool isOpen: false

    implicitHeight: isTall ? 44 : isQuiet ? 30 : 36
    // A click must not take the focus from the screen that it selects.
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    Accessible.role: isQuiet ? Accessible.Button : Accessible.PageTab
    Accessible.name: text + (badge === "" ? "" : " " + badge) + (isStruckOut ? " 未生效" : "")
    Accessible.description: help
    Accessible.selected: checked
    Accessible.onPressAction: control.clicked()
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
            // Break the line before the bracket, not inside it.
            text: control.isTall ? control.text.replace(" (", "\n(") : control.text
            color: control.checked ? "#FFFFFF" : control.isQuiet ? Theme.secondaryText : Theme.text
            font.strikeout: control.isStruckOut
            font.pixelSize: control.isQuiet ? Theme.captionSize : Theme.bodySize
            elide: Text.ElideRight
            wrapMode: control.isTall ? Text.Wrap : Text.NoWrap
            maximumLineCount: control.isTall ? 2 : 1
            textFormat: Text.PlainText
        }
        ProgressBar {
            x: icon.x
            width: control.isCollapsed ? icon.width : parent.width - 2 * icon.x
            anchors.bottom: parent.bottom
            implicitHeight: 2
            visible: control.isBusy
            indeterminate: true
        }
        Badge {
            id: badgeItem

            x: control.isCollapsed ? icon.x + icon.width - Theme.unit : parent.width - width - Theme.unit
            y: control.isCollapsed ? icon.y - 6 : (parent.height - height) / 2
            visible: control.badge !== ""
            isSmall: control.isCollapsed
            text: control.badge

            // An outline that separates the badge from the symbol below it.
            Rectangle {
                z: -1
                anchors.fill: parent
                anchors.margins: -1.5
                radius: height / 2
                visible: control.isCollapsed
                color: control.checked ? Theme.accent : Theme.sidebarGround
            }
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: control.checked ? Theme.accent : control.down || control.isOpen ? Theme.pressed : control.hovered ? Theme.hover : "transparent"

        FocusRing {
            shown: control.visualFocus
        }
    }

    HelpText {
        text: control.help !== "" ? control.help : control.isCollapsed ? control.text : ""
        shown: control.hovered && !control.down && !control.isOpen
    }
}
