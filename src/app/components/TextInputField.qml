import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A one-line text field.
T.TextField {
    id: control

    /// A symbol inside the field, before the text; empty for none.
    property string symbol: ""

    implicitWidth: Theme.px(200)
    implicitHeight: Math.max(contentHeight + topPadding + bottomPadding, Theme.controlHeight)
    leftPadding: symbol === "" ? Theme.px(10) : Theme.px(34)
    rightPadding: Theme.px(10)
    topPadding: Theme.px(5)
    bottomPadding: Theme.px(5)
    color: Theme.text
    placeholderTextColor: Theme.tertiaryText
    selectionColor: Theme.selected
    selectedTextColor: "#FFFFFF"
    font.pixelSize: Theme.bodySize
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    opacity: enabled ? 1 : 0.5
    maximumLength: 1024
    Accessible.name: placeholderText

    background: Rectangle {
        radius: Theme.controlRadius
        color: Theme.field
        border.width: control.activeFocus ? 2 : 1
        border.color: control.activeFocus ? Theme.focus : Theme.controlBorder
    }

    FieldMenu {}
    Text {
        x: control.leftPadding
        width: control.width - control.leftPadding - control.rightPadding
        height: control.height
        visible: control.length === 0 && control.preeditText === ""
        text: control.placeholderText
        color: control.placeholderTextColor
        font: control.font
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
    }
    SymbolIcon {
        x: Theme.px(10)
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.px(17)
        height: Theme.px(17)
        visible: control.symbol !== ""
        symbol: control.symbol
        color: Theme.secondaryText
    }
}
