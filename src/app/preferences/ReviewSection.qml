import QtQuick
import Lexiquill

/// The choices for the cards.
PreferenceSection {
    id: section

    /// The usual sizes of a round, and the stored one if it is none of them.
    readonly property var sizes: [...new Set([10, 20, 30, 50, 100, 200, Preferences.roundSize])].sort((a, b) => a - b)

    title: "复习"
    note: "到期的单词超过一轮时，做完一轮可以接着做下一轮。"

    Item {
        width: parent.width
        height: sizeBox.height

        ThemedText {
            anchors.left: parent.left
            anchors.right: sizeBox.left
            anchors.rightMargin: Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            text: "每轮的卡片数"
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        ChoiceBox {
            id: sizeBox

            anchors.right: parent.right
            name: "每轮的卡片数"
            model: section.sizes.map(size => size + " 张")
            currentIndex: section.sizes.indexOf(Preferences.roundSize)
            onActivated: index => Preferences.roundSize = section.sizes[index]
        }
    }
}
