import QtQuick
import Lexiquill

FocusScope {
    ThemedText {
        anchors.centerIn: parent
        role: ThemedText.Title
        text: "记忆曲线"
    }
}
