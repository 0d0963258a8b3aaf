pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The meaning of the word on a flash card.
Column {
    id: meaning

    required property ReviewSession session
    /// While this is false, no items are created.
    required property bool isShown
    readonly property var groups: isShown ? session.groups : []

    topPadding: Theme.unit
    spacing: 1.5 * Theme.unit

    Repeater {
        model: meaning.groups

        Column {
            id: group

            required property var modelData

            width: meaning.width
            spacing: 4

            Tag {
                text: group.modelData.pos
                visible: text !== ""
            }
            Repeater {
                model: group.modelData.senses

                ThemedText {
                    required property string modelData

                    width: group.width
                    text: modelData
                    font.pixelSize: 15
                    wrapMode: Text.Wrap
                    lineHeight: Theme.lineHeight
                }
            }
        }
    }
    ThemedText {
        width: meaning.width
        visible: meaning.groups.length === 0
        text: meaning.session.rawDefinition === "" ? "（没有保存释义）" : meaning.session.rawDefinition
        wrapMode: Text.Wrap
        lineHeight: Theme.lineHeight
        maximumLineCount: 200
        elide: Text.ElideRight
    }
    Repeater {
        model: meaning.isShown ? meaning.session.examples : []

        Column {
            id: example

            required property var modelData

            width: meaning.width
            spacing: 2

            ThemedText {
                width: parent.width
                text: example.modelData.en
                wrapMode: Text.Wrap
            }
            ThemedText {
                width: parent.width
                role: ThemedText.Caption
                visible: text !== ""
                text: example.modelData.cn
                wrapMode: Text.Wrap
            }
        }
    }
    ThemedText {
        width: meaning.width
        visible: meaning.session.notes !== ""
        color: Theme.secondaryText
        text: "笔记：" + meaning.session.notes
        wrapMode: Text.Wrap
    }
}
