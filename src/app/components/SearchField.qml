import QtQuick
import Lexiquill

/// A search field with a button that clears it.
TextInputField {
    id: control

    symbol: "magnifyingglass"
    rightPadding: length > 0 ? Theme.px(34) : Theme.px(10)

    IconButton {
        anchors.right: parent.right
        anchors.rightMargin: Theme.px(3)
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.px(26)
        height: Theme.px(26)
        iconSize: Theme.px(15)
        visible: control.length > 0
        focusPolicy: Qt.NoFocus
        symbol: "xmark.circle.fill"
        text: "清空"
        onClicked: {
            control.clear();
            control.forceActiveFocus();
        }
    }
}
