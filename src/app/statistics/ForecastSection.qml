pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// How many words fall due on each of the next seven days.
Card {
    id: section

    required property list<var> days
    required property color secondary

    /// Height of the number above a bar, and of the day below it.
    readonly property int labelHeight: 18
    /// How far the tallest bar extends above the row. The card makes room for it, up to a limit.
    readonly property real overhang: {
        let tallest = 0;
        for (let i = 0; i < days.length; ++i)
            tallest = Math.max(tallest, barHeight(days[i].count));
        return Math.min(240, Math.max(0, tallest + 2 * labelHeight - row.height));
    }

    function barHeight(count: real): real {
        return Math.max(count * 14, 6);
    }

    Column {
        width: section.width - 2 * section.padding
        spacing: 12 + section.overhang

        ThemedText {
            font.pixelSize: 14
            font.weight: Font.DemiBold
            text: "📅 未来 7 天复习负载预测"
        }
        Row {
            id: row

            width: parent.width
            height: 120

            Repeater {
                model: section.days

                Item {
                    id: day

                    required property var modelData
                    readonly property real count: modelData.count
                    readonly property bool isEmpty: count === 0

                    width: row.width / Math.max(1, section.days.length)
                    height: row.height
                    Accessible.role: Accessible.StaticText
                    Accessible.name: modelData.label + "：" + count + " 词"

                    Item {
                        y: -section.overhang
                        width: parent.width
                        height: parent.height + section.overhang - section.labelHeight
                        clip: true

                        Rectangle {
                            anchors.horizontalCenter: parent.horizontalCenter
                            anchors.bottom: parent.bottom
                            width: 32
                            height: section.barHeight(day.count)
                            radius: 4
                            color: day.isEmpty ? Qt.rgba(section.secondary.r, section.secondary.g, section.secondary.b, 0.2) : Theme.accent
                        }
                    }
                    ThemedText {
                        // If the bar is taller than the card, its number is drawn on the bar.
                        readonly property real free: parent.height - section.labelHeight - section.barHeight(day.count) - section.labelHeight
                        readonly property bool isOnBar: free < -section.overhang

                        anchors.horizontalCenter: parent.horizontalCenter
                        y: Math.max(-section.overhang, free)
                        height: section.labelHeight
                        role: ThemedText.Caption
                        color: isOnBar ? "#FFFFFF" : day.isEmpty ? Theme.secondaryText : Theme.text
                        text: day.count.toFixed(0)
                        verticalAlignment: Text.AlignVCenter
                        Accessible.ignored: true
                    }
                    ThemedText {
                        anchors.horizontalCenter: parent.horizontalCenter
                        anchors.bottom: parent.bottom
                        role: ThemedText.Small
                        text: day.modelData.label
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
