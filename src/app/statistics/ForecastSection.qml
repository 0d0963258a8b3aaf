import QtQuick
import Lexiquill

/// How many words fall due on each of the next seven days.
Card {
    id: section

    required property list<var> days
    required property color secondary
    /// The height of the visible page. The section fits into it as long as that is possible.
    required property real pageHeight

    readonly property real tallest: chart.largestCount * pointsPerWord
    readonly property real pointsPerWord: 14
    /// The room for the bars alone.
    readonly property real room: Math.max(84, pageHeight - 2 * padding - title.height - note.height - 2 * column.spacing - 2 * chart.labelHeight)
    readonly property var bars: {
        const bars = [];
        for (let i = 0; i < days.length; ++i) {
            const text = days[i].label + "：" + days[i].count + " 词";
            bars.push({
                label: days[i].label,
                count: days[i].count,
                top: days[i].count.toFixed(0),
                text: text
            });
        }
        return bars;
    }
    readonly property string summary: {
        const texts = [];
        for (let i = 0; i < days.length; ++i)
            texts.push(days[i].label + " " + days[i].count + " 词");
        return texts.join("，");
    }

    Column {
        id: column

        width: section.width - 2 * section.padding
        spacing: Theme.px(12)

        ThemedText {
            id: title

            font.pixelSize: Theme.px(14)
            font.weight: Font.DemiBold
            text: "📅 未来 7 天复习负载预测"
        }
        BarChart {
            id: chart

            width: parent.width
            height: Math.max(Theme.px(84), Math.min(section.room, section.tallest)) + 2 * labelHeight
            name: title.text
            summary: section.summary
            pointsPerCount: section.pointsPerWord * Math.min(1, section.room / Math.max(1, section.tallest))
            emptyColor: Qt.rgba(section.secondary.r, section.secondary.g, section.secondary.b, 0.2)
            bars: section.bars
        }
        ThemedText {
            id: note

            width: parent.width
            role: ThemedText.Caption
            text: chart.markedText === "" ? "各天到期、需要复习的单词数" : chart.markedText
            elide: Text.ElideRight
        }
    }
}
