import QtQuick
import Lexiquill

/// The reviews of the last year, day by day.
Card {
    id: section

    required property Statistics statistics

    Column {
        width: section.width - 2 * section.padding
        spacing: Theme.px(10)

        ThemedText {
            font.pixelSize: Theme.px(14)
            font.weight: Font.DemiBold
            text: "🗓️ 过去一年复习日历"
        }
        ReviewCalendar {
            id: calendar

            width: parent.width
            height: implicitHeight
            statistics: section.statistics
            color: Theme.green
            faintColor: Theme.fill
            textColor: Theme.secondaryText
            groundColor: Theme.card
            Accessible.role: Accessible.Chart
            Accessible.name: "过去一年复习日历"
            Accessible.description: markedText === "" ? section.statistics.reviewSummary : markedText
            Accessible.focusable: true

            FocusRing {
                anchors.margins: -Theme.px(4)
                shown: calendar.activeFocus
            }
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: calendar.markedText === "" ? section.statistics.reviewSummary : calendar.markedText
            elide: Text.ElideRight
        }
    }
}
