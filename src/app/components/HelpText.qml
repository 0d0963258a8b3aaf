pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// The tooltip of its parent. Created when it is first shown, because there are many.
Item {
    id: help

    property string text: ""
    property bool shown: false
    readonly property bool isWanted: shown && text !== ""
    property T.ToolTip tip: null

    onIsWantedChanged: if (isWanted && !tip)
        tip = toolTip.createObject(parent) as T.ToolTip

    Component {
        id: toolTip

        T.ToolTip {
            id: control

            visible: help.isWanted
            text: help.text
            delay: 600
            timeout: 8000
            margins: Theme.unit
            x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
            y: parent ? parent.height + 4 : 0
            implicitWidth: Math.min(Theme.px(280), metrics.implicitWidth) + leftPadding + rightPadding
            implicitHeight: implicitContentHeight + topPadding + bottomPadding
            horizontalPadding: Theme.px(10)
            verticalPadding: Theme.px(6)
            closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

            contentItem: Text {
                text: control.text
                wrapMode: Text.Wrap
                color: Theme.text
                font.pixelSize: Theme.captionSize
                textFormat: Text.PlainText

                Text {
                    id: metrics

                    visible: false
                    text: control.text
                    font.pixelSize: Theme.captionSize
                    textFormat: Text.PlainText
                }
            }
            background: Rectangle {
                radius: Theme.px(6)
                color: Theme.sheet
                border.width: 1
                border.color: Theme.fieldBorder
            }
        }
    }
}
