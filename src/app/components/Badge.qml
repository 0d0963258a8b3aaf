import QtQuick
import Lexiquill

/// A number on a solid background.
Rectangle {
    id: badge

    required property string text
    property color tint: Theme.red
    /// The most room there is. A longer number becomes "99+".
    property real maximumWidth: Infinity

    implicitWidth: Math.max(label.implicitWidth + Theme.px(12), implicitHeight)
    implicitHeight: Theme.px(18)
    radius: implicitHeight / 2
    color: Theme.strong(tint)

    TextMetrics {
        id: whole

        text: badge.text
        font: label.font
    }
    Text {
        id: label

        anchors.centerIn: parent
        text: whole.advanceWidth + 12 > badge.maximumWidth ? "99+" : badge.text
        color: "#FFFFFF"
        font.pixelSize: Theme.px(11)
        font.bold: true
        textFormat: Text.PlainText
    }
}
