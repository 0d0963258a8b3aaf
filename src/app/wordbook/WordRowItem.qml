import QtQuick
import Lexiquill

/// A row of the wordbook: the word, its meaning, its status, and the value that the list is sorted by.
Item {
    id: row

    required property int index
    required property string word
    required property string summary
    required property string status
    required property string badge
    required property string detail
    required property bool selected
    required property string spoken
    required property string tags

    readonly property bool hasKeyboard: ListView.view.activeFocus
    readonly property color foreground: selected && hasKeyboard ? "#FFFFFF" : Theme.text
    readonly property color quietForeground: selected && hasKeyboard ? "#FFFFFF" : Theme.secondaryText

    signal pressed(modifiers: int)
    signal doubleClicked

    width: ListView.view.width
    height: Theme.px(56)
    Accessible.role: Accessible.ListItem
    Accessible.name: spoken
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.onPressAction: pressed(Qt.NoModifier)

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: Theme.unit
        anchors.rightMargin: Theme.unit
        anchors.topMargin: 1
        anchors.bottomMargin: 1
        radius: Theme.controlRadius
        color: row.selected ? (row.hasKeyboard ? Theme.selected : Theme.fill) : mouse.containsMouse ? Theme.hover : "transparent"
    }
    Text {
        id: title

        x: 2.5 * Theme.unit
        y: Theme.px(9)
        width: Math.min(implicitWidth, detailText.x - x - Theme.unit)
        text: row.word
        color: row.foreground
        font.pixelSize: Theme.bodySize + 1
        font.weight: Font.DemiBold
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    Text {
        // Only where the word leaves room.
        readonly property real room: detailText.x - x - Theme.unit

        x: title.x + title.width + Theme.unit
        visible: text !== "" && room >= Math.min(implicitWidth, 48)
        width: Math.max(0, room)
        anchors.baseline: title.baseline
        text: row.tags
        color: row.selected && row.hasKeyboard ? row.quietForeground : Theme.accent
        font.pixelSize: Theme.smallSize
        elide: Text.ElideRight
        maximumLineCount: 1
        textFormat: Text.PlainText
    }
    Text {
        id: detailText

        anchors.right: parent.right
        anchors.rightMargin: 2.5 * Theme.unit
        anchors.baseline: title.baseline
        text: row.detail
        color: row.quietForeground
        font.pixelSize: Theme.smallSize
        textFormat: Text.PlainText
    }
    Text {
        id: meaning

        x: title.x
        y: Theme.px(31)
        width: dot.x - x - Theme.unit
        text: row.summary
        color: row.quietForeground
        font.pixelSize: Theme.captionSize
        elide: Text.ElideRight
        maximumLineCount: 1
        textFormat: Text.PlainText
    }
    Rectangle {
        id: dot

        anchors.right: statusText.left
        anchors.rightMargin: Theme.px(5)
        anchors.verticalCenter: statusText.verticalCenter
        width: Theme.px(7)
        height: Theme.px(7)
        radius: 3.5
        color: Theme.badgeColor(row.badge)
        border.width: row.selected && row.hasKeyboard ? 1 : 0
        border.color: "#FFFFFF"
    }
    Text {
        id: statusText

        anchors.right: detailText.right
        anchors.baseline: meaning.baseline
        text: row.status
        color: row.quietForeground
        font.pixelSize: Theme.smallSize
        textFormat: Text.PlainText
    }
    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton
        onClicked: event => row.pressed(event.modifiers)
        onDoubleClicked: row.doubleClicked()
    }
}
