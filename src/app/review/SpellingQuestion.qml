import QtQuick
import Lexiquill

/// The meaning of a word that is to be spelled, with blanks in place of the word.
Column {
    id: question

    required property string wordId
    readonly property alias summary: definition.summary

    spacing: 1.5 * Theme.unit

    WordCard {
        id: meaning

        hidesWord: true
        wordId: question.wordId
    }
    DefinitionBody {
        id: definition

        width: question.width
        record: meaning
    }
    ThemedText {
        visible: meaning.groups.length === 0 && meaning.rawText === ""
        color: Theme.secondaryText
        text: "（没有保存释义）"
    }
}
