import QtQuick
import Lexiquill

FocusScope {
    ThemedText {
        anchors.centerIn: parent
        role: ThemedText.Title
        text: "查词词典"
    }
}
