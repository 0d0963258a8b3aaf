import QtQuick
import Lexiquill

/// Tells what a line or a dot of a chart means.
Row {
    id: entry

    property alias text: label.text
    property color tint: Theme.accent
    property bool isDot: false

    spacing: Theme.px(5)

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: entry.isDot ? 7 : Theme.px(14)
        height: entry.isDot ? 7 : 3
        radius: height / 2
        color: entry.tint
    }
    ThemedText {
        id: label

        role: ThemedText.Small
    }
}
