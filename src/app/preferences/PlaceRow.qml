import QtQuick
import Lexiquill

/// A path, and a button that shows it in the file manager.
Item {
    id: row

    required property string label
    required property string path

    /// The user wants to see the directory.
    signal opened

    implicitHeight: Theme.px(48)

    Column {
        anchors.left: parent.left
        anchors.right: button.left
        anchors.rightMargin: Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.px(2)

        ThemedText {
            text: row.label
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: row.path
            elide: Text.ElideMiddle

            HelpText {
                text: row.path
                shown: pathArea.hovered
            }
            HoverHandler {
                id: pathArea
            }
        }
    }
    IconButton {
        id: button

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        symbol: "folder"
        text: "打开" + row.label + "所在的文件夹"
        onClicked: row.opened()
    }
}
