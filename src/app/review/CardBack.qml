import QtQuick
import Lexiquill

/// The back of a card below the word: the result of the spelling, the review state, the definition, the note.
Column {
    id: back

    required property WordCard record
    required property SpellingAttempt attempt

    readonly property alias summary: definition.summary

    spacing: 1.5 * Theme.unit

    SpellingResult {
        width: back.width
        visible: back.attempt.isMade
        attempt: back.attempt
    }
    Flow {
        width: back.width
        spacing: Theme.unit

        Tag {
            text: back.record.statusText
            tint: Theme.badgeColor(back.record.statusColorName)
        }
        ThemedText {
            role: ThemedText.Caption
            text: back.record.memoryText
        }
    }
    DefinitionBody {
        id: definition

        width: back.width
        record: back.record
    }
    ThemedText {
        visible: back.record.groups.length === 0 && back.record.rawText === "" && back.record.article === ""
        color: Theme.secondaryText
        text: "（没有保存释义）"
    }
    ThemedText {
        width: back.width
        visible: back.record.userNotes !== ""
        color: Theme.secondaryText
        text: "笔记：" + back.record.userNotes
        wrapMode: Text.Wrap
        lineHeight: Theme.lineHeight
    }
}
