import QtQuick
import Lexiquill

/// The forgetting curve of a word, or of the average word.
Card {
    id: section

    required property Statistics statistics
    property bool isUnknown: false

    Column {
        width: section.width - 2 * section.padding
        spacing: Theme.px(10)

        Item {
            width: parent.width
            height: Theme.controlHeight

            ThemedText {
                anchors.left: parent.left
                anchors.right: field.left
                anchors.rightMargin: Theme.unit
                anchors.verticalCenter: parent.verticalCenter
                font.pixelSize: Theme.px(14)
                font.weight: Font.DemiBold
                text: "📉 遗忘曲线"
                elide: Text.ElideRight
            }
            SearchField {
                id: field

                anchors.right: parent.right
                width: Math.min(Theme.px(220), parent.width - Theme.px(120))
                placeholderText: "平均单词（输入单词查看）"
                Accessible.name: "遗忘曲线的单词"
                onTextChanged: section.isUnknown = !section.statistics.selectWord(text)
            }
        }
        ThemedText {
            width: parent.width
            text: chart.markedText !== "" ? chart.markedText : section.isUnknown ? "生词本里没有这个单词，显示平均单词" : section.statistics.curveSummary
            elide: Text.ElideRight
        }
        ForgettingCurveChart {
            id: chart

            width: parent.width
            height: Theme.px(180)
            statistics: section.statistics
            color: Theme.accent
            faintColor: Theme.fill
            textColor: Theme.secondaryText
            groundColor: Theme.card
            Accessible.role: Accessible.Chart
            Accessible.name: "遗忘曲线"
            Accessible.description: markedText === "" ? section.statistics.curveSummary + "。" + section.statistics.curveOutlook : markedText
            Accessible.focusable: true

            FocusRing {
                anchors.margins: -Theme.px(4)
                shown: chart.activeFocus
            }
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: "按指数遗忘模型估算：保持率 = 0.9 ^ (距上次复习的天数 ÷ 复习间隔)，即到期时约为 90%。每次记住后间隔延长：1天 → 6天 → 15天 → 38天 → 95天..."
            wrapMode: Text.Wrap
        }
    }
}
