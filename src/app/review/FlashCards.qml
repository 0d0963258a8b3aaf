pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// A round of flash cards: Space shows the meaning, 1 and 2 answer, Ctrl+Z undoes the last answer.
FocusScope {
    id: cards

    /// Whether the cards are visible.
    required property bool isActive

    readonly property bool isRunning: session.state === ReviewSession.State.Asking || session.state === ReviewSession.State.Revealed

    // The visible item gets the focus within this scope.
    onIsRunningChanged: (isRunning ? card : summary).focus = true
    Keys.onPressed: event => {
        if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
            return;
        const isRevealed = session.state === ReviewSession.State.Revealed;
        if (event.key === Qt.Key_Space && session.state === ReviewSession.State.Asking)
            session.reveal();
        else if (event.key === Qt.Key_1 && isRevealed && !event.isAutoRepeat)
            session.answer(true);
        else if (event.key === Qt.Key_2 && isRevealed && !event.isAutoRepeat)
            session.answer(false);
        else if (event.key === Qt.Key_Backspace && session.canUndo)
            session.undo();
        else if (event.key === Qt.Key_Up)
            card.scrollBy(-6 * Theme.unit);
        else if (event.key === Qt.Key_Down)
            card.scrollBy(6 * Theme.unit);
        else
            return;
        event.accepted = true;
    }

    ReviewSession {
        id: session

        active: cards.isActive
    }
    Shortcut {
        enabled: cards.isActive && session.canUndo
        sequences: ["Ctrl+Z"]
        onActivated: session.undo()
    }
    Item {
        id: progress

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.leftMargin: 3 * Theme.unit
        anchors.rightMargin: 3 * Theme.unit
        anchors.topMargin: Theme.unit
        height: Theme.controlHeight
        visible: cards.isRunning || session.state === ReviewSession.State.Finished

        ProgressBar {
            anchors.left: parent.left
            anchors.right: numbers.left
            anchors.rightMargin: 1.5 * Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            to: Math.max(1, session.count)
            value: session.position
            Accessible.name: "复习进度"
        }
        ThemedText {
            id: numbers

            anchors.right: undo.left
            anchors.rightMargin: Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            role: ThemedText.Caption
            text: session.position + " / " + session.count
        }
        IconButton {
            id: undo

            anchors.right: stop.left
            anchors.verticalCenter: parent.verticalCenter
            enabled: session.canUndo
            symbol: "arrow.uturn.backward"
            text: "撤销上一次回答"
            help: "撤销上一次回答 (Ctrl+Z)"
            onClicked: {
                session.undo();
                card.forceActiveFocus();
            }
        }
        IconButton {
            id: stop

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            enabled: session.canUndo && cards.isRunning
            symbol: "checkmark.circle"
            text: "结束本轮"
            onClicked: {
                session.finish();
                summary.forceActiveFocus();
            }
        }
    }
    FlashCard {
        id: card

        anchors.top: progress.bottom
        anchors.topMargin: Theme.unit
        anchors.bottom: buttons.top
        anchors.bottomMargin: 1.5 * Theme.unit
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(680, parent.width - 6 * Theme.unit)
        visible: cards.isRunning
        focus: true
        session: session
    }
    Row {
        id: buttons

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 2 * Theme.unit
        height: 5 * Theme.unit
        spacing: 1.5 * Theme.unit
        visible: cards.isRunning

        PrimaryButton {
            height: parent.height
            width: 200
            visible: session.state === ReviewSession.State.Asking
            focusPolicy: Qt.TabFocus
            text: "显示释义（空格）"
            onClicked: {
                session.reveal();
                card.forceActiveFocus();
            }
        }
        PrimaryButton {
            height: parent.height
            width: 150
            visible: session.state === ReviewSession.State.Revealed
            focusPolicy: Qt.TabFocus
            accent: Theme.isDark ? "#248A3D" : "#1F8A3B"
            text: "记住了（1）"
            Accessible.name: "记住了"
            onClicked: session.answer(true)
        }
        PrimaryButton {
            height: parent.height
            width: 150
            visible: session.state === ReviewSession.State.Revealed
            focusPolicy: Qt.TabFocus
            accent: Theme.isDark ? "#C2410C" : "#C93400"
            text: "没记住（2）"
            Accessible.name: "没记住"
            onClicked: session.answer(false)
        }
    }
    ReviewSummary {
        id: summary

        anchors.fill: parent
        anchors.topMargin: progress.visible ? progress.height + 2 * Theme.unit : Theme.unit
        visible: !cards.isRunning
        session: session
        onStarted: card.forceActiveFocus()
    }
}
