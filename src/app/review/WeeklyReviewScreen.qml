pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The review plan of the week: as cards that ask for the meaning or for the spelling, or as a list; and its
/// export.
FocusScope {
    id: screen

    /// In the order of the header's choices.
    enum Mode {
        Cards,
        List,
        Spelling
    }

    property int mode: WeeklyReviewScreen.Cards
    readonly property bool isList: mode === WeeklyReviewScreen.List

    /// Begins the practice that another screen has asked for.
    function takePractice(): void {
        const ids = ContentView.takePractice();
        if (ids.length === 0)
            return;
        if (screen.isList)
            screen.mode = WeeklyReviewScreen.Cards;
        cards.practise(ids);
        cards.focus = true;
    }

    focus: true
    Component.onCompleted: takePractice()

    onVisibleChanged: if (visible)
        (isList ? list : cards).focus = true

    Connections {
        target: ContentView

        function onPracticeRequested(): void {
            screen.takePractice();
        }
    }
    WeeklyReview {
        id: review

        active: screen.visible
        onExported: (file, error) => {
            const path = decodeURIComponent(`${file}`.replace(/^file:\/\//, ""));
            toast.show(error === "" ? "已导出到 " + path : error, "", null);
        }
    }
    ReviewHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 3 * Theme.unit
        anchors.topMargin: screen.height < 480 ? Theme.px(12) : 2.5 * Theme.unit
        review: review
        mode: screen.mode
        onModeChosen: mode => {
            screen.mode = mode;
            (screen.isList ? list : cards).forceActiveFocus();
        }
        onExportPressed: saveDialog.show(dialog => dialog.openWith(review.suggestedFile()))
    }
    FlashCards {
        id: cards

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        visible: !screen.isList
        focus: true
        isActive: screen.visible && !screen.isList
        asksSpelling: screen.mode === WeeklyReviewScreen.Spelling
        toast: toast
    }
    PlanList {
        id: list

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        visible: screen.isList
        isActive: screen.visible && screen.isList
        onWordChosen: word => ContentView.handleExternalWordLookup(word)
    }
    DialogLoader {
        id: saveDialog

        source: "PlanSaveDialog.qml"
        onFailed: missing => toast.show("导出失败：无法打开文件对话框，可能缺少 " + missing, "", null)
    }
    Connections {
        target: saveDialog.item
        ignoreUnknownSignals: true

        function onFileChosen(file: url): void {
            review.exportTo(file);
        }
    }
    Toast {
        id: toast
    }
    Shortcut {
        enabled: screen.visible
        sequence: "Ctrl+E"
        onActivated: header.exportPressed()
    }
}
