import QtQuick
import Lexiquill

/// A short word on a tinted background, for a status or a part of speech.
Rectangle {
    id: tag

    required property string text
    property color tint: Theme.blue

    implicitWidth: label.implicitWidth + Theme.px(12)
    implicitHeight: label.implicitHeight + 4
    radius: Theme.px(5)
    color: Theme.tint(tint)

    Text {
        id: label

        anchors.centerIn: parent
        text: tag.text
        color: Theme.onTint(tag.tint)
        font.pixelSize: Theme.smallSize
        font.weight: Font.DemiBold
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
