pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// A word of the wordbook: its definition, its review state, and the actions on it. Set its width; its height
/// follows from the content, so put it into a ScrollArea.
Card {
    id: card

    /// The id of the record in the wordbook; the card is empty without one.
    property string wordId: ""
    /// The source of the definition, for display; empty hides it.
    property string sourceText: ""
    /// The form of the word that was looked up; empty hides it.
    property string askedForm: ""
    property bool showsAnswers: true
    property bool showsDelete: true
    /// Shows the results of actions and offers to undo a deletion; null shows nothing.
    property Toast toast: null
    readonly property alias word: record.headword
    readonly property alias exists: record.exists

    /// The user deleted the word.
    signal deleted(word: string)

    function pronounce(): void {
        pronunciation.play(record.headword);
    }

    function say(message: string): void {
        if (card.toast)
            card.toast.show(message, "", null);
    }

    function remove(): void {
        note.finish();
        const word = record.headword;
        const message = record.remove();
        if (card.toast)
            card.toast.show(message, "撤销", () => record.undoRemoval());
        card.deleted(word);
    }

    padding: 3 * Theme.unit
    visible: exists
    implicitHeight: column.implicitHeight + 2 * padding
    Accessible.role: Accessible.Grouping
    Accessible.name: word
    // Save the typed note for the word shown so far, before switching to the new word.
    onWordIdChanged: {
        note.finish();
        pronunciation.cancel();
        record.wordId = wordId;
    }
    Component.onCompleted: record.wordId = wordId

    WordCard {
        id: record
    }
    Pronunciation {
        id: pronunciation

        onFailed: message => card.say(message)
    }

    Column {
        id: column

        width: parent.width
        spacing: 2 * Theme.unit

        Item {
            width: parent.width
            height: Math.max(titles.height, actions.height)

            Column {
                id: titles

                anchors.left: parent.left
                anchors.right: actions.left
                anchors.rightMargin: Theme.unit
                spacing: 4

                ThemedText {
                    width: parent.width
                    visible: card.askedForm !== ""
                    role: ThemedText.Small
                    text: card.askedForm + " → " + record.headword
                    elide: Text.ElideMiddle
                }
                ThemedText {
                    width: parent.width
                    role: ThemedText.Headword
                    text: record.headword
                    wrapMode: Text.Wrap
                    maximumLineCount: 4
                    elide: Text.ElideRight
                    Accessible.role: Accessible.Heading
                }
                Row {
                    spacing: Theme.unit

                    ThemedText {
                        anchors.verticalCenter: parent.verticalCenter
                        visible: text !== ""
                        width: Math.min(implicitWidth, titles.width - 40 - source.width)
                        text: record.phonetic
                        color: Theme.secondaryText
                        elide: Text.ElideRight
                    }
                    IconButton {
                        symbol: "speaker.wave.2"
                        text: pronunciation.isFetching ? "正在获取发音" : "朗读"
                        tint: Theme.accent
                        opacity: pronunciation.isFetching ? 0.5 : 1
                        onClicked: card.pronounce()
                    }
                    ThemedText {
                        id: source

                        anchors.verticalCenter: parent.verticalCenter
                        visible: text !== ""
                        width: Math.min(implicitWidth, titles.width / 2)
                        role: ThemedText.Small
                        text: card.sourceText
                        color: Theme.tertiaryText
                        elide: Text.ElideRight
                    }
                }
            }
            Row {
                id: actions

                anchors.right: parent.right
                anchors.top: parent.top

                IconButton {
                    symbol: "doc.on.doc"
                    text: "复制释义"
                    onClicked: {
                        record.copy();
                        card.say("已复制到剪贴板");
                    }
                }
                IconButton {
                    visible: card.showsDelete
                    symbol: "trash"
                    text: "从生词本删除"
                    onClicked: card.remove()
                }
            }
        }

        DefinitionBody {
            width: parent.width
            record: record
        }
        DictionaryAnswers {
            width: parent.width
            card: record
        }
        Separator {
            width: parent.width
        }
        Flow {
            width: parent.width
            spacing: Theme.unit

            Item {
                width: status.width
                height: Theme.controlHeight

                Tag {
                    id: status

                    anchors.verticalCenter: parent.verticalCenter
                    text: record.statusText
                    tint: Theme.badgeColor(record.statusColorName)
                }
            }
            ThemedText {
                height: Theme.controlHeight
                role: ThemedText.Caption
                text: record.memoryText
                verticalAlignment: Text.AlignVCenter
            }
            Row {
                visible: card.showsAnswers
                spacing: Theme.unit

                PlainButton {
                    symbol: "checkmark"
                    tint: Theme.onTint(Theme.green)
                    ground: Theme.tint(Theme.green)
                    text: "记住了"
                    onClicked: record.answer(true)
                }
                PlainButton {
                    symbol: "xmark"
                    tint: Theme.onTint(Theme.red)
                    ground: Theme.tint(Theme.red)
                    text: "没记住"
                    onClicked: record.answer(false)
                }
            }
        }
        NoteEditor {
            id: note

            width: parent.width
            stored: record.userNotes
            onEdited: notes => record.saveNotes(notes)
        }
        TagChips {
            width: parent.width
            tags: record.tags
        }
    }
}
