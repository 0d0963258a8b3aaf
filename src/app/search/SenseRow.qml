pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// One numbered sense: its context and meaning, and its examples below.
Item {
    id: row

    required property string number
    required property string context
    required property string meaning
    required property list<string> examples
    /// A short context such as "[U]" stands before the meaning, a longer one above it.
    readonly property bool isContextInline: row.context.length <= 16

    function escaped(text: string): string {
        return text.replace(/&/g, "&amp;").replace(/</g, "&lt;");
    }

    implicitHeight: body.implicitHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: ((number === "" ? "" : number + ". ") + (context === "" ? "" : context + " ") + meaning).trim()

    ThemedText {
        id: numberText

        width: 22
        visible: row.number !== ""
        text: row.number + "."
        color: Theme.secondaryText
        lineHeight: Theme.lineHeight
    }
    Column {
        id: body

        anchors.left: parent.left
        anchors.leftMargin: row.number === "" ? 0 : numberText.width
        anchors.right: parent.right
        spacing: 3

        ThemedText {
            width: parent.width
            visible: row.context !== "" && (!row.isContextInline || row.meaning === "")
            role: ThemedText.Caption
            text: row.context
            wrapMode: Text.Wrap
        }
        ThemedText {
            width: parent.width
            visible: row.meaning !== ""
            text: row.isContextInline && row.context !== "" ? '<font color="' + Theme.secondaryText + '">' + row.escaped(row.context) + "</font> " + row.escaped(row.meaning) : row.escaped(row.meaning)
            textFormat: Text.StyledText
            Accessible.name: row.isContextInline && row.context !== "" ? row.context + " " + row.meaning : row.meaning
            wrapMode: Text.Wrap
            lineHeight: Theme.lineHeight
        }
        Repeater {
            model: row.examples

            ThemedText {
                required property string modelData

                width: body.width
                leftPadding: 10
                text: modelData
                textFormat: Text.StyledText
                color: Theme.secondaryText
                font.pixelSize: Theme.bodySize - 1
                wrapMode: Text.Wrap
                lineHeight: 1.25
                Accessible.name: modelData.replace(/<[^>]*>/g, "")

                Rectangle {
                    y: 3
                    width: 2
                    height: parent.height - 6
                    radius: 1
                    color: Theme.separator
                }
            }
        }
    }
}
