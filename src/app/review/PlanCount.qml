import QtQuick
import Lexiquill

/// A number of words with its name.
Row {
    id: count

    required property string title
    required property int value
    required property color tint

    spacing: Theme.px(6)
    Accessible.role: Accessible.StaticText
    Accessible.name: title + " " + value + " 词"

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.px(8)
        height: Theme.px(8)
        radius: Theme.px(4)
        color: count.tint
    }
    ThemedText {
        anchors.verticalCenter: parent.verticalCenter
        role: ThemedText.Caption
        text: count.title
        Accessible.ignored: true
    }
    ThemedText {
        anchors.verticalCenter: parent.verticalCenter
        font.weight: Font.DemiBold
        text: count.value
        Accessible.ignored: true
    }
}
