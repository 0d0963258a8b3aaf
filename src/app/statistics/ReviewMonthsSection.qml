import QtQuick
import Lexiquill

/// The reviews of the last twelve months, and how many of them were remembered.
Card {
    id: section

    required property Statistics statistics

    Column {
        width: section.width - 2 * section.padding
        spacing: Theme.px(10)

        ThemedText {
            id: title

            font.pixelSize: Theme.px(14)
            font.weight: Font.DemiBold
            text: "📈 每月复习与记住率"
        }
        BarChart {
            id: chart

            width: parent.width
            height: Theme.px(110) + 2 * labelHeight
            visible: bars.length > 0
            name: title.text
            summary: section.statistics.monthSummary
            pointsPerCount: 110 / Math.max(1, chart.largestCount)
            barColor: Theme.tint(Theme.red)
            bars: section.statistics.months
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: chart.markedText === "" ? section.statistics.monthSummary : chart.markedText
            elide: Text.ElideRight
        }
    }
}
