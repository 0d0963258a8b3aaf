import QtQuick
import Lexiquill

/// A hint for an empty area, with up to two buttons.
Column {
    id: hint

    property alias symbol: icon.symbol
    property alias title: titleText.text
    property alias text: body.text
    /// The text of a button; empty for none.
    property string action: ""

    /// The text of another button before it; empty for none.
    property string otherAction: ""

    signal taken
    signal otherTaken

    spacing: Theme.unit

    SymbolIcon {
        id: icon

        anchors.horizontalCenter: parent.horizontalCenter
        width: Theme.px(40)
        height: Theme.px(40)
        color: Theme.tertiaryText
    }
    ThemedText {
        id: titleText

        width: parent.width
        role: ThemedText.Heading
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
    ThemedText {
        id: body

        width: parent.width
        role: ThemedText.Caption
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        lineHeight: Theme.lineHeight
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: Theme.unit

        PlainButton {
            visible: hint.otherAction !== ""
            text: hint.otherAction
            onClicked: hint.otherTaken()
        }
        PlainButton {
            visible: hint.action !== ""
            text: hint.action
            onClicked: hint.taken()
        }
    }
}
