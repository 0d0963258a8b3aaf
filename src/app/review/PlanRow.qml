import QtQuick
import Lexiquill

/// A word of the plan.
Rectangle {
    id: row

    required property int index
    required property string word
    required property string phonetic
    required property string summary
    required property string status
    required property string badge
    required property string nextReview
    required property var searchCount
    required property bool isCurrent

    /// The user wants to see its definition.
    signal chosen
    signal pressed

    height: Theme.px(56)
    radius: Theme.controlRadius
    color: isCurrent ? Theme.selection : Theme.card
    Accessible.role: Accessible.ListItem
    Accessible.name: summary === "" ? word : word + "，" + summary
    Accessible.description: status + "，" + nextReview
    Accessible.onPressAction: chosen()

    TapHandler {
        onTapped: row.pressed()
        onDoubleTapped: row.chosen()
    }
    Column {
        anchors.left: parent.left
        anchors.leftMargin: 1.5 * Theme.unit
        anchors.right: side.left
        anchors.rightMargin: 1.5 * Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.px(3)

        Row {
            width: parent.width
            spacing: Theme.unit

            ThemedText {
                id: spelling

                width: Math.min(implicitWidth, parent.width)
                text: row.word
                font.pixelSize: Theme.px(15)
                font.weight: Font.DemiBold
                elide: Text.ElideRight
                maximumLineCount: 1
                Accessible.ignored: true
            }
            ThemedText {
                width: Math.max(0, Math.min(implicitWidth, parent.width - spelling.width - Theme.unit))
                visible: width > 20
                anchors.baseline: spelling.baseline
                role: ThemedText.Caption
                text: row.phonetic
                elide: Text.ElideRight
                maximumLineCount: 1
                Accessible.ignored: true
            }
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: row.summary.substring(0, 200).replace(/\s+/g, " ")
            elide: Text.ElideRight
            maximumLineCount: 1
            Accessible.ignored: true
        }
    }
    Column {
        id: side

        anchors.right: parent.right
        anchors.rightMargin: 1.5 * Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.px(4)

        Tag {
            anchors.right: parent.right
            text: row.status
            tint: Theme.badgeColor(row.badge)
        }
        ThemedText {
            anchors.right: parent.right
            role: ThemedText.Small
            text: row.nextReview + " · " + row.searchCount + " 次"
            Accessible.ignored: true
        }
    }
}
