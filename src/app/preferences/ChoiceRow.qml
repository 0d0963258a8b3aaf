import QtQuick
import Lexiquill

/// One row of a vertical list of choices; the list is a ChoiceGroup.
RadioChoice {
    id: control

    /// A symbol before the text; empty for none.
    property string symbol: ""
    /// A text at the end of the row.
    property string trailing: ""
    /// A smaller text below `text`.
    property string detail: ""

    implicitHeight: Math.max(Theme.px(32), texts.implicitHeight + Theme.px(10))
    hoverEnabled: true
    Accessible.description: detail === "" ? trailing : detail

    background: Rectangle {
        radius: Theme.controlRadius
        color: control.down ? Theme.pressed : control.hovered ? Theme.hover : "transparent"

        FocusRing {
            shown: control.visualFocus
        }
    }
    contentItem: Item {
        Rectangle {
            id: mark

            x: Theme.px(6)
            y: texts.y + (label.height - height) / 2
            width: Theme.px(18)
            height: Theme.px(18)
            radius: Theme.px(9)
            color: control.checked ? Theme.accent : "transparent"
            border.width: control.checked ? 0 : 1.5
            border.color: Theme.tertiaryText

            Rectangle {
                anchors.centerIn: parent
                width: Theme.px(7)
                height: Theme.px(7)
                radius: 3.5
                visible: control.checked
                color: "#FFFFFF"
            }
        }
        SymbolIcon {
            id: icon

            anchors.left: mark.right
            anchors.leftMargin: Theme.unit
            y: mark.y
            width: control.symbol === "" ? 0 : Theme.px(18)
            height: Theme.px(18)
            visible: control.symbol !== ""
            symbol: control.symbol
            color: Theme.sign(Theme.accent)
        }
        Column {
            id: texts

            anchors.left: icon.right
            anchors.leftMargin: control.symbol === "" ? 2 : Theme.unit
            anchors.right: shortText.left
            anchors.rightMargin: Theme.unit
            y: Theme.px(7)
            spacing: Theme.px(2)

            ThemedText {
                id: label

                width: parent.width
                text: control.text
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            ThemedText {
                width: parent.width
                visible: control.detail !== ""
                role: ThemedText.Caption
                text: control.detail
                wrapMode: Text.Wrap
                lineHeight: Theme.lineHeight
                Accessible.ignored: true
            }
        }
        ThemedText {
            id: shortText

            anchors.right: parent.right
            anchors.rightMargin: Theme.unit
            y: Theme.px(7)
            text: control.trailing
            color: Theme.secondaryText
            Accessible.ignored: true
        }
    }
}
