import QtQuick
import Lexiquill

/// The hours of the day at which the user reviews.
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
            text: "🕘 一天中的复习时间"
        }
        BarChart {
            id: chart

            width: parent.width
            height: Theme.px(72) + 2 * labelHeight
            visible: bars.length > 0
            name: title.text
            summary: section.statistics.hourSummary
            pointsPerCount: 72 / Math.max(1, chart.largestCount)
            labelEvery: 3
            barColor: Theme.purple
            bars: section.statistics.hours
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: chart.markedText === "" ? section.statistics.hourSummary : chart.markedText
            elide: Text.ElideRight
        }
    }
}
