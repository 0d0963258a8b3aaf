import QtQuick
import Lexiquill

/// The week, its counts, and the actions on the plan.
Item {
    id: header

    required property WeeklyReview review
    /// The way of reviewing: 0 cards, 1 list, 2 spelling.
    required property int mode

    signal modeChosen(mode: int)
    signal exportPressed

    implicitHeight: titles.height + 1.5 * Theme.unit + counts.height

    Column {
        id: titles

        anchors.left: parent.left
        anchors.right: actions.left
        anchors.rightMargin: Theme.unit
        spacing: Theme.px(2)

        ThemedText {
            width: parent.width
            role: ThemedText.Title
            text: "每周复习"
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: header.review.week + " · " + header.review.period
            elide: Text.ElideRight
        }
    }
    Row {
        id: actions

        anchors.right: parent.right
        anchors.verticalCenter: titles.verticalCenter
        spacing: Theme.unit

        SegmentedControl {
            name: "复习方式"
            choices: ["闪卡", "列表", "拼写"]
            currentIndex: header.mode
            onChosen: index => header.modeChosen(index)
        }
        PlainButton {
            text: "导出"
            symbol: "square.and.arrow.up"
            Accessible.description: "导出本周复习清单为 Markdown 文件"
            onClicked: header.exportPressed()
        }
    }
    Row {
        id: counts

        anchors.left: parent.left
        anchors.bottom: parent.bottom
        spacing: 3 * Theme.unit

        PlanCount {
            title: "待复习总数"
            value: header.review.totalCount
            tint: Theme.blue
        }
        PlanCount {
            title: "重点攻坚"
            value: header.review.difficultCount
            tint: Theme.orange
        }
        PlanCount {
            title: "新词录入"
            value: header.review.newCount
            tint: Theme.purple
        }
    }
}
