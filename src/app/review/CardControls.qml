import QtQuick
import Lexiquill

/// The controls below a card: first the button that shows the meaning, or the field for the spelling; then the
/// two answers.
Item {
    id: controls

    required property ReviewSession session
    required property SpellingAttempt attempt
    required property bool asksSpelling
    readonly property bool isAsking: session.state === ReviewSession.State.Asking
    readonly property bool isRevealed: session.state === ReviewSession.State.Revealed
    readonly property alias field: spelling
    readonly property alias remembered: rememberedAnswer
    readonly property alias forgotten: forgottenAnswer

    /// The user has typed a spelling, perhaps an empty one.
    signal spelled(text: string)

    function submit(): void {
        if (spelling.preeditText !== "")
            (Qt.inputMethod as InputMethod).commit();
        controls.spelled(spelling.text);
    }

    implicitHeight: 5 * Theme.unit

    PrimaryButton {
        anchors.centerIn: parent
        width: Math.min(Theme.px(200), parent.width)
        height: parent.height
        visible: controls.isAsking && !controls.asksSpelling
        focusPolicy: Qt.TabFocus
        text: "显示释义（空格）"
        onClicked: controls.session.reveal()
    }
    Row {
        anchors.centerIn: parent
        height: parent.height
        spacing: Theme.unit
        visible: controls.isAsking && controls.asksSpelling

        TextInputField {
            id: spelling

            width: Math.min(Theme.px(320), controls.width - check.width - parent.spacing)
            height: parent.height
            font.pixelSize: Theme.headingSize
            maximumLength: 256
            placeholderText: "输入单词"
            Accessible.name: "单词的拼写"
            inputMethodHints: Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText | Qt.ImhPreferLatin
            Keys.onPressed: event => {
                if (event.matches(StandardKey.Undo) && spelling.length === 0 && controls.session.canUndo) {
                    controls.session.undo();
                    event.accepted = true;
                }
            }
            Keys.onReturnPressed: event => {
                if (!event.isAutoRepeat)
                    controls.submit();
            }
            Keys.onEnterPressed: event => {
                if (!event.isAutoRepeat)
                    controls.submit();
            }
        }
        PrimaryButton {
            id: check

            height: parent.height
            focusPolicy: Qt.TabFocus
            text: "核对（回车）"
            Accessible.name: "核对"
            onClicked: controls.submit()
        }
    }
    Row {
        anchors.centerIn: parent
        height: parent.height
        spacing: 1.5 * Theme.unit
        visible: controls.isRevealed

        AnswerButton {
            id: rememberedAnswer

            width: Math.min(Theme.px(200), (controls.width - parent.spacing) / 2)
            height: parent.height
            accent: Theme.isDark ? "#248A3D" : "#1F8A3B"
            answer: "记住了"
            nextReview: controls.session.ifRemembered
            key: "1"
            result: controls.attempt.spoken
            onClicked: controls.session.answer(true)
        }
        AnswerButton {
            id: forgottenAnswer

            width: rememberedAnswer.width
            height: parent.height
            accent: Theme.isDark ? "#C2410C" : "#C93400"
            answer: "没记住"
            nextReview: controls.session.ifForgotten
            key: "2"
            result: controls.attempt.spoken
            onClicked: controls.session.answer(false)
        }
    }
}
