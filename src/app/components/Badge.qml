import QtQuick
import Lexiquill

/// A number on a solid background.
Rectangle {
    id: badge

    required property string text
    property color tint: Theme.red
    /// For the corner of a symbol: smaller, and no longer than three characters.
    property bool isSmall: false

    implicitWidth: Math.max(label.implicitWidth + (isSmall ? 7 : 12), implicitHeight)
    implicitHeight: isSmall ? 15 : 18
    radius: implicitHeight / 2
    color: tint

    Text {
        id: label

        anchors.centerIn: parent
        text: badge.isSmall && badge.text.length > 2 ? "99+" : badge.text
        color: "#FFFFFF"
        font.pixelSize: badge.isSmall ? 9 : 11
        textFormat: Text.PlainText
    }
}
