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
    property bool showsDelete: true
    /// Shows the results of actions and offers to undo a deletion; null shows nothing.
    property Toast toast: null
    readonly property alias word: record.headword
    readonly property alias record: record
    readonly property alias exists: record.exists
    readonly property bool isShown: visible && Window.visibility !== Window.Hidden && Window.visibility !== Window.Minimized

    /// The user deleted the word.
    signal deleted(word: string)
    /// The user wants the deleted word back.
    signal undone

    function pronounce(): void {
        pronunciation.play(record.headword);
    }

    function pronounceIfShown(): void {
        if (card.isShown)
            card.pronounce();
    }

    function say(message: string): void {
        if (card.toast)
            card.toast.show(message, "", null);
    }

    function undoRemoval(): void {
        record.undoRemoval();
    }

    function remove(): void {
        note.finish();
        const word = record.headword;
        const message = record.remove();
        if (card.toast)
            card.toast.show(message, "撤销", () => card.undone());
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
    onIsShownChanged: if (!isShown)
        pronunciation.cancel()
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
                spacing: Theme.px(4)

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
                Flow {
                    width: parent.width
                    spacing: Theme.unit

                    ThemedText {
                        height: Theme.controlHeight
                        visible: text !== ""
                        width: Math.min(implicitWidth, titles.width - speakers.width - Theme.unit)
                        text: record.phonetic
                        color: Theme.secondaryText
                        verticalAlignment: Text.AlignVCenter
                        elide: Text.ElideRight
                    }
                    Row {
                        id: speakers

                        SpeakerButton {
                            accent: Preferences.British
                            player: pronunciation
                            word: record.headword
                        }
                        SpeakerButton {
                            accent: Preferences.American
                            player: pronunciation
                            word: record.headword
                        }
                    }
                    ThemedText {
                        height: Theme.controlHeight
                        visible: text !== ""
                        width: Math.min(implicitWidth, titles.width)
                        role: ThemedText.Small
                        text: pronunciation.isSynthetic ? "由系统语音朗读" : card.sourceText
                        color: Theme.tertiaryText
                        verticalAlignment: Text.AlignVCenter
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
