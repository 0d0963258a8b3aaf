import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A tab of the sidebar: symbol, text, and a badge. The owner sets `checked`.
T.TabButton {
    id: control

    required property string symbol
    property string badge: ""
    property bool isCollapsed: false

    implicitHeight: Theme.px(36)
    checkable: false
    autoExclusive: false
    // A click must not take the focus from the screen that it selects.
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.name: badge === "" ? text : text + " " + badge
    Accessible.selected: checked
    Accessible.onPressAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()
    Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
    Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)

    contentItem: SidebarFace {
        id: face

        symbol: control.symbol
        text: control.text
        isCollapsed: control.isCollapsed
        iconSize: Theme.px(19)
        iconColor: control.checked ? "#FFFFFF" : Contrast.readable(Theme.accent, Qt.tint(Theme.sidebarGround, Theme.pressed), 3)
        textColor: control.checked ? "#FFFFFF" : Theme.text
        textMargin: badgeItem.visible ? badgeItem.width + 2 * Theme.unit : Theme.unit

        Badge {
            id: badgeItem

            // On the corner of the symbol, but within the row.
            x: control.isCollapsed ? Math.min(face.icon.x + face.icon.width - Theme.unit, parent.width - width - 2) : parent.width - width - Theme.unit
            y: control.isCollapsed ? 2 : (parent.height - height) / 2
            visible: control.badge !== ""
            maximumWidth: control.isCollapsed ? parent.width - 4 : Infinity
            text: control.badge

            // An outline that separates the badge from the symbol below it.
            Rectangle {
                z: -1
                anchors.fill: parent
                anchors.margins: -1.5
                radius: height / 2
                visible: control.isCollapsed
                color: control.checked ? Theme.selected : Theme.sidebarGround
            }
        }
    }
    background: SidebarGround {
        row: control
    }

    HelpText {
        text: control.isCollapsed ? control.text : ""
        shown: control.hovered && !control.down
    }
}
