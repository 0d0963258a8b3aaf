pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// The tags in the note of a word. A click shows the words of the wordbook that carry the tag.
Flow {
    id: chips

    /// The tags without "#", a list of strings.
    required property var tags

    spacing: Theme.px(6)
    visible: tags.length > 0

    Repeater {
        model: chips.tags

        T.Button {
            id: chip

            required property string modelData

            implicitWidth: Math.min(label.implicitWidth + Theme.px(20), chips.width)
            implicitHeight: Theme.px(26)
            focusPolicy: Qt.StrongFocus
            text: "#" + modelData
            Accessible.name: "标签 " + modelData
            Accessible.onPressAction: chip.clicked()
            Keys.onReturnPressed: chip.clicked()
            Keys.onEnterPressed: chip.clicked()
            onClicked: ContentView.showTaggedWords(modelData)

            contentItem: Text {
                id: label

                text: chip.text
                color: Theme.onTint(Theme.accent)
                font.pixelSize: Theme.captionSize
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                textFormat: Text.PlainText
            }
            background: Rectangle {
                radius: height / 2
                color: chip.down ? Theme.pressed : Theme.tint(Theme.accent)
                border.width: chip.hovered ? 1 : 0
                border.color: Theme.accent

                FocusRing {
                    radius: height / 2
                    shown: chip.visualFocus
                }
            }
            HelpText {
                text: "在生词本中查看带此标签的单词"
                shown: chip.hovered && !chip.pressed
            }
        }
    }
}
