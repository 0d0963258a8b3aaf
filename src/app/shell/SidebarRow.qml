import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A command of the sidebar: symbol and text, smaller than a tab.
T.AbstractButton {
    id: control

    required property string symbol
    /// What a dot beside the row says, for screen readers; no dot if empty.
    property string mark: ""
    property bool isCollapsed: false
    /// Has room for a second line of text.
    property bool isTall: false
    /// Work that the row started is in progress.
    property bool isBusy: false
    /// What the row names does not work.
    property bool isStruckOut: false
    property string help: ""
    /// A menu that belongs to the row is open.
    property bool isOpen: false

    implicitHeight: isTall ? Theme.px(44) : Theme.px(30)
    // A click must not take the focus from the screen.
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    Accessible.name: text
    Accessible.description: mark === "" ? help : mark + "。" + help
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
        isTall: control.isTall
        isStruckOut: control.isStruckOut
        iconSize: Theme.px(16)
        iconColor: Theme.secondaryText
        textColor: Theme.secondaryText
        textSize: Theme.captionSize

        Rectangle {
            x: control.isCollapsed ? face.icon.x + face.icon.width - width / 2 : parent.width - width - Theme.unit
            y: control.isCollapsed ? face.icon.y - height / 2 : (parent.height - height) / 2
            width: Theme.px(8)
            height: Theme.px(8)
            radius: Theme.px(4)
            visible: control.mark !== ""
            color: Theme.red
        }
        ProgressBar {
            x: face.icon.x
            width: control.isCollapsed ? face.icon.width : parent.width - 2 * x
            anchors.bottom: parent.bottom
            implicitHeight: Theme.px(2)
            visible: control.isBusy
            indeterminate: true
        }
    }
    background: SidebarGround {
        row: control
        isOpen: control.isOpen
    }

    HelpText {
        text: control.help !== "" ? control.Accessible.description : control.isCollapsed ? control.text : ""
        shown: control.hovered && !control.down && !control.isOpen
    }
}
