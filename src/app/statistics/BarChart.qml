pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// Bars side by side, with a text above and below each. The pointer, or the arrow keys while the chart has the
/// keyboard, mark a bar, which `markedText` describes.
Item {
    id: chart

    /// Objects with `count`, `label` (below the bar) and `text` (the whole value in words); optionally `top`
    /// (above the bar) and `share` (a part of the bar in `shareColor`, 0 to 1).
    required property list<var> bars
    property real pointsPerCount: 1
    property real widestBar: Theme.px(32)
    /// Only every n-th bar has its label.
    property int labelEvery: 1
    property color barColor: Theme.accent
    property color shareColor: Theme.green
    property color emptyColor: Theme.fill
    property string name: ""
    property string summary: ""
    property int mark: -1
    readonly property string markedText: mark >= 0 && mark < bars.length ? bars[mark].text : ""

    readonly property real largestCount: {
        let most = 0;
        for (let i = 0; i < bars.length; ++i)
            most = Math.max(most, bars[i].count);
        return most;
    }
    /// Height of the text above a bar, and of the one below it.
    readonly property int labelHeight: Theme.px(18)
    readonly property int stub: Theme.px(6)
    readonly property real columnWidth: width / Math.max(1, bars.length)

    function barHeight(count: real): real {
        return Math.max(count * chart.pointsPerCount, chart.stub);
    }

    activeFocusOnTab: true
    Accessible.role: Accessible.Chart
    Accessible.name: name
    Accessible.description: markedText === "" ? summary : markedText
    Accessible.focusable: true
    onActiveFocusChanged: mark = activeFocus ? Math.max(0, mark) : -1
    Keys.onLeftPressed: mark = Math.max(0, mark - 1)
    Keys.onRightPressed: mark = Math.min(bars.length - 1, mark + 1)

    HoverHandler {
        onPointChanged: if (hovered)
            chart.mark = Math.max(0, Math.min(chart.bars.length - 1, Math.floor(point.position.x / chart.columnWidth)))
        onHoveredChanged: if (!hovered && !chart.activeFocus)
            chart.mark = -1
    }
    FocusRing {
        anchors.margins: -Theme.px(4)
        shown: chart.activeFocus
    }
    Repeater {
        model: chart.bars

        Item {
            id: column

            required property int index
            required property var modelData
            readonly property real count: modelData.count
            readonly property real share: modelData.share ?? 0

            x: index * chart.columnWidth
            width: chart.columnWidth
            height: chart.height
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData.text

            Rectangle {
                anchors.fill: parent
                visible: chart.mark === column.index
                radius: Theme.px(4)
                color: Theme.hover
            }
            Rectangle {
                id: bar

                anchors.horizontalCenter: parent.horizontalCenter
                anchors.bottom: label.top
                width: Math.min(chart.widestBar, chart.columnWidth * 0.7)
                height: chart.barHeight(column.count)
                radius: Math.min(4, width / 2)
                color: column.count === 0 ? chart.emptyColor : chart.barColor

                Rectangle {
                    anchors.bottom: parent.bottom
                    width: parent.width
                    height: parent.height * column.share
                    radius: parent.radius
                    color: chart.shareColor
                }
            }
            ThemedText {
                anchors.horizontalCenter: parent.horizontalCenter
                anchors.bottom: bar.top
                height: chart.labelHeight
                role: chart.columnWidth < 40 ? ThemedText.Small : ThemedText.Caption
                color: column.count === 0 ? Theme.secondaryText : Theme.text
                text: column.modelData.top ?? ""
                verticalAlignment: Text.AlignVCenter
                Accessible.ignored: true
            }
            ThemedText {
                id: label

                anchors.horizontalCenter: parent.horizontalCenter
                anchors.bottom: parent.bottom
                height: chart.labelHeight
                role: ThemedText.Small
                text: column.index % chart.labelEvery === 0 ? column.modelData.label : ""
                verticalAlignment: Text.AlignBottom
                Accessible.ignored: true
            }
        }
    }
}
