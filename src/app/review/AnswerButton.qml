import QtQuick
import Lexiquill

/// An answer to a card, with the time until the word's next review.
PrimaryButton {
    id: button

    required property string answer
    /// Such as "6 天后"; empty for none.
    required property string nextReview
    /// The key that gives the same answer.
    required property string key
    /// How the spelling compared, which assistive tools read with the suggested answer; empty for none.
    required property string result

    focusPolicy: Qt.TabFocus
    horizontalPadding: Theme.unit
    text: (nextReview === "" ? answer : answer + " · " + nextReview) + "（" + key + "）"
    Accessible.name: nextReview === "" ? answer : answer + " · " + nextReview
    Accessible.description: (result === "" ? "" : result + "。") + "按键 " + key
    // A key that is held down must not answer the next card, too.
    Keys.onReturnPressed: event => {
        if (!event.isAutoRepeat)
            button.clicked();
    }
    Keys.onEnterPressed: event => {
        if (!event.isAutoRepeat)
            button.clicked();
    }
}
