pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// The words of the plan as a list, all or those of one kind.
FocusScope {
    id: list

    required property bool isActive

    /// The user wants to see the word's definition.
    signal wordChosen(string word)

    SegmentedControl {
        id: filters

        anchors.left: parent.left
        anchors.leftMargin: 3 * Theme.unit
        anchors.top: parent.top
        anchors.topMargin: Theme.unit
        name: "筛选"
        choices: ["全部", "到期", "困难", "新词"]
        currentIndex: words.filter
        onChosen: index => {
            words.filter = index;
            view.positionViewAtBeginning();
        }
        Keys.onDownPressed: view.forceActiveFocus()
    }
    ThemedText {
        anchors.right: parent.right
        anchors.rightMargin: 3 * Theme.unit
        anchors.verticalCenter: filters.verticalCenter
        role: ThemedText.Caption
        text: words.count + " 词"
    }
    ListView {
        id: view

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: filters.bottom
        anchors.topMargin: 1.5 * Theme.unit
        anchors.bottom: parent.bottom
        leftMargin: 3 * Theme.unit
        rightMargin: 3 * Theme.unit
        bottomMargin: 2 * Theme.unit
        clip: true
        focus: true
        activeFocusOnTab: true
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        spacing: Theme.px(4)
        currentIndex: 0
        highlightMoveDuration: 0
        T.ScrollBar.vertical: ThinScrollBar {}
        Accessible.role: Accessible.List
        Accessible.name: "本周复习单词"
        Keys.onReturnPressed: (currentItem as PlanRow)?.chosen()
        Keys.onEnterPressed: (currentItem as PlanRow)?.chosen()

        model: WeeklyPlanModel {
            id: words

            active: list.isActive
        }
        delegate: PlanRow {
            width: view.width - view.leftMargin - view.rightMargin
            isCurrent: ListView.isCurrentItem && view.activeFocus
            ListView.onPooled: visible = false
            ListView.onReused: visible = true
            onChosen: list.wordChosen(word)
            onPressed: {
                view.currentIndex = index;
                view.forceActiveFocus();
            }
        }
    }
    ThemedText {
        anchors.centerIn: view
        visible: words.count === 0
        color: Theme.secondaryText
        text: words.filter === WeeklyPlanModel.Filter.All ? "本周没有需要复习的单词" : "没有这一类单词"
    }
}
