import QtQuick
import Lexiquill

/// A hint for an empty area, with an optional button.
Column {
    id: hint

    property alias symbol: icon.symbol
    property alias title: titleText.text
    property alias text: body.text
    /// The text of a button; empty for none.
    property string action: ""

    signal taken

    spacing: Theme.unit

    SymbolIcon {
        id: icon

        anchors.horizontalCenter: parent.horizontalCenter
        width: 40
        height: 40
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
    PlainButton {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: hint.action !== ""
        text: hint.action
        onClicked: hint.taken()
    }
}
