import QtQuick
import Lexiquill

FocusScope {
    ThemedText {
        anchors.centerIn: parent
        role: ThemedText.Title
        text: "生词本与历史"
    }
}
