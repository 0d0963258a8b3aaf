pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// A few choices side by side, one of them selected.
Rectangle {
    id: control

    /// The texts of the choices.
    property list<string> choices
    property int currentIndex: 0
    /// The name of the choice, for assistive tools.
    property string name: ""

    /// The user chose a segment. The owner must change `currentIndex`.
    signal chosen(int index)

    implicitWidth: row.implicitWidth + 4
    implicitHeight: Theme.controlHeight
    radius: Theme.controlRadius
    color: Theme.fill

    Row {
        id: row

        x: Theme.px(2)
        y: Theme.px(2)
        height: parent.height - 4
        Accessible.role: Accessible.Grouping
        Accessible.name: control.name

        Repeater {
            model: control.choices

            RadioChoice {
                id: segment

                required property int index
                required property string modelData

                width: control.width > 0 ? Math.max(implicitWidth, (control.width - 4) / control.choices.length) : implicitWidth
                implicitWidth: label.implicitWidth + Theme.px(24)
                height: row.height
                isHorizontal: true
                text: modelData
                checked: index === control.currentIndex
                onClicked: control.chosen(index)

                background: Rectangle {
                    radius: Theme.controlRadius - 2
                    color: segment.checked ? (Theme.isDark ? "#636368" : "#FFFFFF") : segment.hovered ? Theme.hover : "transparent"
                    border.width: segment.checked ? 1 : 0
                    border.color: Theme.controlBorder

                    FocusRing {
                        radius: parent.radius
                        shown: segment.visualFocus
                    }
                }
                contentItem: Text {
                    id: label

                    text: segment.text
                    color: Theme.text
                    font.pixelSize: Theme.bodySize - 1
                    font.weight: segment.checked ? Font.DemiBold : Font.Normal
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                    textFormat: Text.PlainText
                }
            }
        }
    }
}
