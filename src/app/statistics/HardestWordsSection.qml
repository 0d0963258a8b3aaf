pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// The words that are hardest to remember. A click opens one.
Card {
    id: section

    /// Objects with `word` and `text`.
    required property list<var> words

    signal chosen(word: string)

    Column {
        width: section.width - 2 * section.padding
        spacing: Theme.px(6)

        ThemedText {
            font.pixelSize: Theme.px(14)
            font.weight: Font.DemiBold
            text: "🧗 最难记的单词"
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            visible: section.words.length === 0
            text: "还没有忘记过的单词"
        }
        Repeater {
            model: section.words

            T.Button {
                id: row

                required property var modelData

                width: parent.width
                height: Theme.controlHeight
                focusPolicy: Qt.StrongFocus
                text: modelData.word
                Accessible.name: modelData.word + "，" + modelData.text
                Accessible.onPressAction: row.clicked()
                Keys.onReturnPressed: row.clicked()
                Keys.onEnterPressed: row.clicked()
                onClicked: section.chosen(modelData.word)

                contentItem: Item {
                    ThemedText {
                        x: Theme.unit
                        anchors.verticalCenter: parent.verticalCenter
                        width: reason.x - x - Theme.unit
                        text: row.text
                        elide: Text.ElideRight
                        Accessible.ignored: true
                    }
                    ThemedText {
                        id: reason

                        anchors.right: parent.right
                        anchors.rightMargin: Theme.unit
                        anchors.verticalCenter: parent.verticalCenter
                        role: ThemedText.Caption
                        text: row.modelData.text
                        Accessible.ignored: true
                    }
                }
                background: Rectangle {
                    radius: Theme.controlRadius
                    color: row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"

                    FocusRing {
                        shown: row.visualFocus
                    }
                }
            }
        }
    }
}
