import QtQuick
import Lexiquill

/// The symbol and the text of a row of the sidebar; only the symbol while the sidebar is collapsed.
Item {
    id: face

    required property string symbol
    required property string text
    required property bool isCollapsed
    required property int iconSize
    required property color iconColor
    required property color textColor
    property int textSize: Theme.bodySize
    /// Has room for a second line of text.
    property bool isTall: false
    /// Tells that what the text names does not work.
    property bool isStruckOut: false
    /// The room at the end that the text leaves free.
    property real textMargin: Theme.unit
    readonly property alias icon: icon

    SymbolIcon {
        id: icon

        x: face.isCollapsed ? (parent.width - width) / 2 : Theme.px(10)
        anchors.verticalCenter: parent.verticalCenter
        width: face.iconSize
        height: width
        symbol: face.symbol
        color: face.iconColor
    }
    Text {
        anchors.left: icon.right
        anchors.leftMargin: Theme.unit
        anchors.right: parent.right
        anchors.rightMargin: face.textMargin
        anchors.verticalCenter: parent.verticalCenter
        visible: !face.isCollapsed
        // Break the line before the bracket, not inside it.
        text: face.isTall ? face.text.replace(" (", "\n(") : face.text
        color: face.textColor
        font.pixelSize: face.textSize
        font.strikeout: face.isStruckOut
        elide: Text.ElideRight
        wrapMode: face.isTall ? Text.Wrap : Text.NoWrap
        maximumLineCount: face.isTall ? 2 : 1
        textFormat: Text.PlainText
    }
    Rectangle {
        anchors.centerIn: icon
        width: icon.width + 4
        height: Theme.px(2)
        rotation: -45
        visible: face.isStruckOut && face.isCollapsed
        color: face.iconColor
    }
}
