pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// Rounds of cards. Space shows the meaning, or Return compares the typed spelling; 1 and 2 answer, P
/// pronounces the word, Ctrl+Z undoes the last answer.
FocusScope {
    id: cards

    /// Whether the cards are visible.
    required property bool isActive
    /// Whether the cards ask for the spelling.
    required property bool asksSpelling
    /// Shows messages.
    required property Toast toast

    readonly property bool isAsking: session.state === ReviewSession.State.Asking
    readonly property bool isRevealed: session.state === ReviewSession.State.Revealed
    readonly property bool isRunning: isAsking || isRevealed
    readonly property bool isTyping: isAsking && asksSpelling
    /// The item that gets the keyboard when the next card or the result appears.
    readonly property Item mainItem: {
        if (!cards.isRunning)
            return summary;
        if (cards.isTyping)
            return controls.field;
        if (!attempt.isMade)
            return card;
        return attempt.isRight ? controls.remembered : controls.forgotten;
    }
    /// Changes with every card and every turn of a card.
    readonly property string turn: session.state + "/" + session.position
    readonly property int position: session.position

    /// Whether the user has asked for the sound, and so wants to know why there is none.
    property bool tellsFailure: false

    /// Begins a practice of these records.
    function practise(ids: list<string>): void {
        session.practise(ids);
        cards.takeKeyboard();
    }

    // The item that had the keyboard may be hidden now. The answer that a spelling suggests is marked.
    function takeKeyboard(): void {
        if (cards.activeFocus && attempt.isMade)
            cards.mainItem.forceActiveFocus(Qt.TabFocusReason);
        else
            cards.mainItem.focus = true;
    }

    function pronounce(isWanted: bool): void {
        cards.tellsFailure = isWanted;
        pronunciation.play(session.word);
    }

    /// Forgets what was typed for another card.
    function clearSpelling(): void {
        attempt.clear();
        controls.field.clear();
    }

    onMainItemChanged: takeKeyboard()
    onTurnChanged: takeKeyboard()
    onPositionChanged: clearSpelling()
    onAsksSpellingChanged: if (asksSpelling && isAsking && isActive)
        pronounce(false)
    onIsActiveChanged: if (!isActive)
        pronunciation.cancel()
    Keys.onPressed: event => {
        if (!cards.isRunning || event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
            return;
        if (card.scrollByKey(event.key)) {
            event.accepted = true;
            return;
        }
        if (cards.isTyping)
            return;
        if (event.key === Qt.Key_Space && cards.isAsking)
            session.reveal();
        else if (event.key === Qt.Key_1 && cards.isRevealed && !event.isAutoRepeat)
            session.answer(true);
        else if (event.key === Qt.Key_2 && cards.isRevealed && !event.isAutoRepeat)
            session.answer(false);
        else if (event.key === Qt.Key_P && !event.isAutoRepeat)
            cards.pronounce(true);
        else if (event.key === Qt.Key_Backspace && session.canUndo)
            session.undo();
        else
            return;
        event.accepted = true;
    }

    ReviewSession {
        id: session

        active: cards.isActive
        roundSize: Preferences.roundSize
        onOpened: {
            pronunciation.cancel();
            cards.clearSpelling();
            if (cards.isActive && (cards.asksSpelling || Preferences.pronouncesCards))
                cards.pronounce(false);
        }
    }
    Connections {
        target: ContentView

        // Time passes, and the number of due words is shown beside the screen.
        function onDueCountChanged(): void {
            session.follow();
        }
    }
    SpellingAttempt {
        id: attempt
    }
    Pronunciation {
        id: pronunciation

        onFailed: message => {
            if (cards.tellsFailure)
                cards.toast.show(message, "", null);
        }
    }
    Shortcut {
        enabled: cards.isActive && session.canUndo
        sequences: ["Ctrl+Z"]
        onActivated: session.undo()
    }
    Shortcut {
        enabled: cards.isActive && cards.isRunning
        sequences: ["Ctrl+P"]
        onActivated: cards.pronounce(true)
    }
    ReviewProgress {
        id: progress

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.leftMargin: 3 * Theme.unit
        anchors.rightMargin: 3 * Theme.unit
        anchors.topMargin: Theme.unit
        visible: cards.isRunning || session.state === ReviewSession.State.Finished
        session: session
        isRunning: cards.isRunning
    }
    FlashCard {
        id: card

        anchors.top: progress.bottom
        anchors.topMargin: Theme.unit
        anchors.bottom: controls.top
        anchors.bottomMargin: 1.5 * Theme.unit
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(Theme.px(680), parent.width - 6 * Theme.unit)
        visible: cards.isRunning
        focus: true
        session: session
        attempt: attempt
        asksSpelling: cards.asksSpelling
        pronunciation: pronunciation
        pronunciationKey: cards.isTyping ? "Ctrl+P" : "P"
        onPronounced: cards.pronounce(true)
    }
    CardControls {
        id: controls

        anchors.left: card.left
        anchors.right: card.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 2 * Theme.unit
        visible: cards.isRunning
        session: session
        attempt: attempt
        asksSpelling: cards.asksSpelling
        onSpelled: text => {
            attempt.make(text, session.word);
            session.reveal();
        }
    }
    ReviewSummary {
        id: summary

        anchors.fill: parent
        anchors.topMargin: progress.visible ? progress.height + 2 * Theme.unit : Theme.unit
        visible: !cards.isRunning
        session: session
    }
}
