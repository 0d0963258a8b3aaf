import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A button that shows only a symbol. `text` is its name for assistive tools and its default help text.
T.AbstractButton {
    id: control

    required property string symbol
    property color tint: Theme.secondaryText
    property int iconSize: Theme.px(18)
    /// Help text; by default the name.
    property string help: text

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.4
    Accessible.name: text
    Accessible.description: help
    Accessible.onPressAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            width: control.iconSize
            height: control.iconSize
            symbol: control.symbol
            color: Contrast.readable(control.tint, Qt.tint(Theme.worstGround, Theme.pressed), 3)
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: control.down ? Theme.pressed : control.hovered || control.checked ? Theme.hover : "transparent"

        FocusRing {
            shown: control.visualFocus
        }
    }

    HelpText {
        text: control.help
        shown: control.hovered && !control.down
    }
}
