pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// What the dictionary says about a word: its senses by part of speech, or its article or text, and examples.
Column {
    id: body

    required property WordCard record

    spacing: 2 * Theme.unit

    Repeater {
        model: body.record.groups

        Column {
            id: group

            required property var modelData

            width: body.width
            spacing: Theme.unit

            Row {
                spacing: Theme.unit

                Tag {
                    text: group.modelData.abbreviation
                    tint: Theme.badgeColor(group.modelData.colorName)
                }
                ThemedText {
                    anchors.verticalCenter: parent.verticalCenter
                    role: ThemedText.Caption
                    text: group.modelData.name
                }
            }
            Column {
                width: parent.width
                spacing: Theme.unit
                Accessible.role: Accessible.List
                Accessible.name: group.modelData.name

                Repeater {
                    model: group.modelData.senses

                    SenseRow {
                        required property var modelData

                        width: group.width
                        number: modelData.number
                        context: modelData.context
                        meaning: modelData.meaning
                        examples: modelData.examples
                    }
                }
            }
        }
    }
    PlainButton {
        visible: body.record.hiddenSenses > 0
        text: "显示其余 " + body.record.hiddenSenses + " 个义项"
        onClicked: body.record.showMore()
    }
    ThemedText {
        width: parent.width
        visible: text !== ""
        text: body.record.rawText
        wrapMode: Text.Wrap
        lineHeight: Theme.lineHeight
    }
    DictionaryArticle {
        width: parent.width
        visible: text !== ""
        text: body.record.article
    }
    Column {
        width: parent.width
        visible: body.record.examples.length > 0
        spacing: Theme.unit

        ThemedText {
            role: ThemedText.Caption
            font.weight: Font.DemiBold
            text: "双语例句"
        }
        Repeater {
            model: body.record.examples

            Column {
                id: example

                required property var modelData

                width: body.width
                spacing: 2

                ThemedText {
                    width: parent.width
                    text: example.modelData.en
                    textFormat: Text.StyledText
                    wrapMode: Text.Wrap
                    lineHeight: 1.25
                    Accessible.name: example.modelData.en.replace(/<[^>]*>/g, "")
                }
                ThemedText {
                    width: parent.width
                    text: example.modelData.cn
                    color: Theme.secondaryText
                    font.pixelSize: Theme.bodySize - 1
                    wrapMode: Text.Wrap
                    lineHeight: 1.25
                }
            }
        }
    }
}
