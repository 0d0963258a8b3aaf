import QtQuick
import Lexiquill

/// A search field with a button that clears it.
TextInputField {
    id: control

    symbol: "magnifyingglass"
    rightPadding: length > 0 ? 34 : 10

    IconButton {
        anchors.right: parent.right
        anchors.rightMargin: 3
        anchors.verticalCenter: parent.verticalCenter
        width: 26
        height: 26
        iconSize: 15
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
