import QtQuick
import Lexiquill

/// A bold number on a solid ground.
Rectangle {
    id: badge

    required property string text
    property color tint: Theme.red

    implicitWidth: Math.max(label.implicitWidth + 12, implicitHeight)
    implicitHeight: 18
    radius: implicitHeight / 2
    color: tint

    Text {
        id: label

        anchors.centerIn: parent
        text: badge.text
        color: "#FFFFFF"
        font.pixelSize: 11
        font.bold: true
        textFormat: Text.PlainText
    }
}
