import QtQuick
import Lexiquill

/// How far the round is, and the actions on the round.
Item {
    id: progress

    required property ReviewSession session
    required property bool isRunning

    height: Theme.controlHeight

    ProgressBar {
        anchors.left: parent.left
        anchors.right: practice.left
        anchors.rightMargin: 1.5 * Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        to: Math.max(1, progress.session.count)
        value: progress.session.position
        Accessible.name: "复习进度"
    }
    ThemedText {
        id: practice

        anchors.right: numbers.left
        anchors.rightMargin: text === "" ? 0 : 1.5 * Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        role: ThemedText.Caption
        text: progress.session.isPractice ? "练习，不影响复习安排" : ""
    }
    ThemedText {
        id: numbers

        anchors.right: undo.left
        anchors.rightMargin: Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        role: ThemedText.Caption
        text: progress.session.position + " / " + progress.session.count
    }
    IconButton {
        id: undo

        anchors.right: stop.left
        anchors.verticalCenter: parent.verticalCenter
        enabled: progress.session.canUndo
        symbol: "arrow.uturn.backward"
        text: "撤销上一次回答"
        help: "撤销上一次回答 (Ctrl+Z)"
        onClicked: progress.session.undo()
    }
    IconButton {
        id: stop

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        enabled: progress.session.canUndo && progress.isRunning
        symbol: "checkmark.circle"
        text: "结束本轮"
        onClicked: progress.session.finish()
    }
}
