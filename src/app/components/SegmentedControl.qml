pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A few choices side by side, one of them selected.
T.Control {
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
    Accessible.role: Accessible.PageTabList
    Accessible.name: name

    background: Rectangle {
        radius: Theme.controlRadius
        color: Theme.fill
    }
    contentItem: Item {
        Row {
            id: row

            x: 2
            y: 2
            height: parent.height - 4

            Repeater {
                model: control.choices

                T.RadioButton {
                    id: segment

                    required property int index
                    required property string modelData

                    width: control.width > 0 ? Math.max(implicitWidth, (control.width - 4) / control.choices.length) : implicitWidth
                    implicitWidth: label.implicitWidth + 24
                    height: row.height
                    text: modelData
                    checkable: false
                    checked: index === control.currentIndex
                    focusPolicy: Qt.StrongFocus
                    Accessible.name: text
                    Accessible.checked: checked
                    Accessible.onPressAction: segment.clicked()
                    Accessible.onToggleAction: segment.clicked()
                    onClicked: control.chosen(index)
                    Keys.onLeftPressed: if (index > 0)
                        nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
                    Keys.onRightPressed: if (index < control.choices.length - 1)
                        nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                    Keys.onReturnPressed: segment.clicked()

                    background: Rectangle {
                        radius: Theme.controlRadius - 2
                        color: segment.checked ? (Theme.isDark ? "#636368" : "#FFFFFF") : segment.hovered ? Theme.hover : "transparent"

                        FocusRing {
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
}
