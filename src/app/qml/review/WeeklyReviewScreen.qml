import QtQuick
import Lexiquill

FocusScope {
    ThemedText {
        anchors.centerIn: parent
        role: ThemedText.Title
        text: "每周复习"
    }
}
