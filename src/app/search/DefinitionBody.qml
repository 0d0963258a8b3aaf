pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// What the dictionary says about a word: its senses by part of speech, or its article or text, and examples.
Column {
    id: body

    required property WordCard record
    /// The beginning of the meaning in one line, for assistive tools.
    readonly property string summary: {
        const groups = record.groups.slice(0, 3).map(group => group.abbreviation + " " + group.meanings.slice(0, 3).join("；"));
        return (groups.length > 0 ? groups.join("；") : record.rawText).substring(0, 300).replace(/\s+/g, " ");
    }

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
            DefinitionText {
                width: group.width
                paragraphs: group.modelData.paragraphs
                Accessible.ignored: true
            }
            // The senses for assistive tools; the text above has them all in one.
            Item {
                width: group.width
                height: 0
                Accessible.role: Accessible.List
                Accessible.name: group.modelData.name === "" ? group.modelData.abbreviation : group.modelData.name

                Repeater {
                    model: group.modelData.spoken

                    Item {
                        required property var modelData

                        Accessible.role: Accessible.ListItem
                        Accessible.name: modelData.name
                        Accessible.description: modelData.examples
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
    SelectableText {
        width: parent.width
        visible: text !== ""
        text: body.record.rawText
        textFormat: TextEdit.PlainText
    }
    DictionaryArticle {
        width: parent.width
        visible: body.record.article !== ""
        text: body.record.article
    }
    Column {
        width: parent.width
        visible: body.record.hasExamples
        spacing: Theme.unit

        ThemedText {
            role: ThemedText.Caption
            font.weight: Font.DemiBold
            text: "双语例句"
        }
        DefinitionText {
            width: parent.width
            paragraphs: body.record.examples
        }
    }
}
