pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A drop-down list. Typing the start of an entry moves to that entry.
T.ComboBox {
    id: control

    /// The name of the choice, for assistive tools and the help text.
    property string name: ""

    implicitWidth: Theme.px(124)
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.px(10)
    rightPadding: Theme.px(28)
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: name
    Accessible.description: displayText
    Accessible.onPressAction: popup.open()
    Keys.onReturnPressed: popup.open()

    contentItem: ThemedText {
        text: control.displayText
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    indicator: SymbolIcon {
        x: control.width - width - 8
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.px(15)
        height: Theme.px(15)
        symbol: "chevron.up.chevron.down"
        color: Theme.secondaryText
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: control.down ? Theme.pressed : Theme.fill

        FocusRing {
            shown: control.visualFocus
        }
    }
    delegate: T.ItemDelegate {
        id: item

        required property int index
        required property string modelData

        width: ListView.view?.width ?? 0
        implicitHeight: Theme.px(32)
        text: modelData
        highlighted: control.highlightedIndex === index
        Accessible.name: modelData
        Accessible.onPressAction: item.clicked()

        contentItem: Item {
            SymbolIcon {
                x: Theme.px(8)
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.px(13)
                height: Theme.px(13)
                visible: control.currentIndex === item.index
                symbol: "checkmark"
                color: item.highlighted ? "#FFFFFF" : Theme.text
            }
            Text {
                x: Theme.px(28)
                width: parent.width - x
                height: parent.height
                text: item.text
                color: item.highlighted ? "#FFFFFF" : Theme.text
                font.pixelSize: Theme.bodySize
                verticalAlignment: Text.AlignVCenter
                textFormat: Text.PlainText
            }
        }
        background: Rectangle {
            radius: Theme.px(6)
            color: item.highlighted ? Theme.selected : "transparent"
        }
    }
    popup: T.Popup {
        y: control.height + 4
        x: control.width - width
        width: Math.max(Theme.px(140), control.width)
        height: Math.min(contentItem.implicitHeight + Theme.px(10), Theme.px(240))
        margins: Theme.unit
        padding: Theme.px(5)

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: control.popup.visible ? control.delegateModel : null
            currentIndex: control.highlightedIndex
            highlightMoveDuration: 0
            Accessible.role: Accessible.List
            Accessible.name: control.name
            T.ScrollBar.vertical: ThinScrollBar {}
        }
        background: Rectangle {
            radius: Theme.px(10)
            color: Theme.sheet
            border.width: 1
            border.color: Theme.fieldBorder
        }
    }

    HelpText {
        text: control.name
        shown: control.hovered && !control.pressed && !control.popup.visible
    }
}
