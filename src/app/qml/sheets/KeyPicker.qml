pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A key to choose from a list. Typing the start of a name goes to it.
T.ComboBox {
    id: control

    implicitWidth: 140
    implicitHeight: Theme.controlHeight
    leftPadding: 12
    rightPadding: 30
    font.pixelSize: Theme.bodySize
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.ComboBox
    Accessible.name: "按键"
    Accessible.description: displayText

    contentItem: Text {
        text: control.displayText
        font.pixelSize: control.font.pixelSize
        color: Theme.text
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: control.down ? Theme.pressed : Theme.fill

        FocusRing {
            shown: control.visualFocus
        }
    }
    indicator: SymbolIcon {
        x: control.width - width - 10
        anchors.verticalCenter: parent?.verticalCenter
        width: 14
        height: 14
        symbol: "chevron.up.chevron.down"
        color: Theme.secondaryText
    }
    delegate: T.ItemDelegate {
        id: row

        required property int index
        required property string modelData

        width: ListView.view?.width ?? 0
        height: 28
        text: modelData
        highlighted: control.highlightedIndex === index
        Accessible.role: Accessible.ListItem
        Accessible.name: text

        contentItem: Text {
            leftPadding: 10
            text: row.text
            font.pixelSize: Theme.bodySize
            color: row.highlighted ? "#FFFFFF" : Theme.text
            verticalAlignment: Text.AlignVCenter
            textFormat: Text.PlainText
        }
        background: Rectangle {
            radius: 6
            color: row.highlighted ? Theme.accent : "transparent"
        }
    }
    popup: T.Popup {
        y: control.height + 4
        width: control.width
        height: Math.min(contentItem.implicitHeight + 8, 240)
        margins: Theme.unit
        padding: 4

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: control.popup.visible ? control.delegateModel : null
            currentIndex: control.highlightedIndex
            highlightMoveDuration: 0
            T.ScrollBar.vertical: ThinScrollBar {}
        }
        background: Rectangle {
            radius: Theme.controlRadius
            color: Theme.sheet
            border.width: 1
            border.color: Theme.fieldBorder
        }
    }
}
