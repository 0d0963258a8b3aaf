import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// One word: first its spelling and phonetic, or its meaning if the spelling is asked for; then all of it.
T.Control {
    id: card

    required property ReviewSession session
    required property SpellingAttempt attempt
    /// Whether the meaning is shown and the word is to be typed.
    required property bool asksSpelling
    required property Pronunciation pronunciation
    /// The key that pronounces the word, for the help text.
    required property string pronunciationKey
    readonly property bool isRevealed: session.state === ReviewSession.State.Revealed
    readonly property bool hidesWord: asksSpelling && !isRevealed

    signal pronounced

    /// Scrolls a long card; false for a key that does not scroll.
    function scrollByKey(key: int): bool {
        return content.scrollByKey(key);
    }

    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Grouping
    Accessible.focusable: true
    Accessible.name: hidesWord ? "拼写：" + content.summary : isRevealed ? session.word + "，" + content.summary : session.word
    Accessible.description: hidesWord ? "听发音、看释义，写出单词" : isRevealed ? record.memoryText : record.phonetic + " 按空格显示释义"
    onIsRevealedChanged: content.contentY = 0

    WordCard {
        id: record

        wordId: card.session.wordId
        onWordIdChanged: content.contentY = 0
    }
    TapHandler {
        enabled: !card.asksSpelling
        onTapped: card.session.reveal()
    }

    background: Rectangle {
        color: Theme.card
        radius: Theme.radius

        FocusRing {
            radius: Theme.radius + 2
            shown: card.visualFocus
        }
    }
    CardContent {
        id: content

        anchors.fill: parent
        anchors.margins: Theme.unit
        session: card.session
        record: record
        attempt: card.attempt
        asksSpelling: card.asksSpelling
        pronunciation: card.pronunciation
        pronunciationKey: card.pronunciationKey
        onPronounced: card.pronounced()
    }
}
