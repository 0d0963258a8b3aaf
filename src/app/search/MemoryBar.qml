import QtQuick
import Lexiquill

/// When a word is to be reviewed, and the two answers. Always visible, however long the definition above it is.
Rectangle {
    id: bar

    required property WordCard record
    readonly property bool isNarrow: width < Theme.px(420)

    implicitHeight: 6 * Theme.unit
    color: Theme.ground
    visible: record.exists
    Accessible.role: Accessible.Grouping
    Accessible.name: "记忆状态"

    Separator {
        width: parent.width
    }
    Tag {
        id: status

        anchors.left: parent.left
        anchors.leftMargin: 3 * Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        text: bar.record.statusText
        tint: Theme.badgeColor(bar.record.statusColorName)
    }
    ThemedText {
        anchors.left: status.right
        anchors.leftMargin: Theme.unit
        anchors.right: answers.left
        anchors.rightMargin: Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        role: ThemedText.Caption
        text: bar.record.memoryText
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
    }
    Row {
        id: answers

        anchors.right: parent.right
        anchors.rightMargin: 3 * Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.unit

        PlainButton {
            symbol: bar.isNarrow ? "" : "checkmark"
            tint: Theme.onTint(Theme.green)
            ground: Theme.tint(Theme.green)
            text: "记住了"
            onClicked: bar.record.answer(true)
        }
        PlainButton {
            symbol: bar.isNarrow ? "" : "xmark"
            tint: Theme.onTint(Theme.red)
            ground: Theme.tint(Theme.red)
            text: "没记住"
            onClicked: bar.record.answer(false)
        }
    }
}
