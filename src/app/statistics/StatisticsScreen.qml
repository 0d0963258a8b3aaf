pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The statistics of the wordbook: counts, retention, forecast, past reviews, hard words, and the
/// forgetting curve.
FocusScope {
    id: screen

    readonly property color secondary: Theme.gray

    focus: true

    Statistics {
        id: statistics

        active: screen.visible
    }
    ScrollArea {
        id: area

        anchors.fill: parent
        focus: true
        Keys.onPressed: event => event.accepted = area.scrollByKey(event.key)
        onFocusItemChanged: revealCard(focusItem)

        /// Scrolls to the whole card of an item, because a text beside the chart tells the marked value.
        function revealCard(item: Item): void {
            let card = item;
            while (card && card.parent !== column)
                card = card.parent;
            if (card && card.height <= height)
                reveal(card);
        }

        Column {
            id: column

            width: area.contentWidth
            padding: 3 * Theme.unit
            spacing: 2 * Theme.unit

            readonly property real availableWidth: width - 2 * padding

            ThemedText {
                width: column.availableWidth
                role: ThemedText.Title
                text: "📊 艾宾浩斯记忆与复习状态分析"
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
            }
            Grid {
                id: grid

                columns: column.availableWidth >= 620 ? 4 : 2
                spacing: 2 * Theme.unit

                readonly property real cardWidth: (column.availableWidth - (columns - 1) * spacing) / columns

                MetricCard {
                    width: grid.cardWidth
                    title: "总词汇量"
                    value: statistics.total
                    subtitle: "搜索与收录"
                    tint: Theme.blue
                    symbol: "books.vertical.fill"
                }
                MetricCard {
                    width: grid.cardWidth
                    title: "已完全掌握"
                    value: statistics.masteredCount
                    subtitle: "间隔 ≥ 60天"
                    tint: Theme.green
                    symbol: "checkmark.seal.fill"
                }
                MetricCard {
                    width: grid.cardWidth
                    title: "曲线巩固中"
                    value: statistics.reviewingCount
                    subtitle: "进行性延期间隔"
                    tint: Theme.purple
                    symbol: "arrow.triangle.2.circlepath"
                }
                MetricCard {
                    width: grid.cardWidth
                    title: "今日需复习"
                    value: statistics.dueCount
                    subtitle: "待打卡"
                    tint: statistics.dueCount > 0 ? Theme.orange : screen.secondary
                    symbol: "bell.badge.fill"
                }
            }
            RetentionSection {
                width: column.availableWidth
                rate: statistics.retentionRate
                rateText: statistics.retentionText
                secondary: screen.secondary
            }
            ForecastSection {
                width: column.availableWidth
                days: statistics.nextSevenDaysForecast
                secondary: screen.secondary
                pageHeight: area.height
            }
            ReviewCalendarSection {
                width: column.availableWidth
                statistics: statistics
            }
            ReviewMonthsSection {
                width: column.availableWidth
                statistics: statistics
            }
            ReviewHoursSection {
                width: column.availableWidth
                statistics: statistics
            }
            HardestWordsSection {
                width: column.availableWidth
                words: statistics.hardestWords
                onChosen: word => ContentView.handleExternalWordLookup(word)
            }
            ForgettingCurveSection {
                width: column.availableWidth
                statistics: statistics
            }
        }
    }
}
