import QtQuick
import Lexiquill

Sheet {
    id: alert

    title: "Spotlight 索引同步完成"
    width: Math.min(Theme.px(400), parent ? parent.width - 4 * Theme.unit : Theme.px(400))

    Column {
        width: parent?.width ?? 0
        spacing: 2 * Theme.unit

        ThemedText {
            width: parent.width
            text: ContentView.spotlightAlertMessage
            wrapMode: Text.Wrap
            lineHeight: Theme.lineHeight
        }
        PrimaryButton {
            anchors.right: parent.right
            text: "好"
            focus: true
            onClicked: alert.dismissed()
        }
    }
}
