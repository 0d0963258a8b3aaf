pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The progress and the results of adding dictionaries.
Column {
    id: view

    readonly property bool isBusy: DictionaryImports.state === DictionaryImports.State.Importing || DictionaryImports.state === DictionaryImports.State.Downloading
    readonly property bool hasContent: isBusy || DictionaryImports.results.length > 0

    spacing: Theme.unit

    Item {
        width: parent.width
        height: Theme.controlHeight
        visible: view.isBusy

        Column {
            anchors.left: parent.left
            anchors.right: cancel.left
            anchors.rightMargin: 2 * Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.px(6)

            ThemedText {
                width: parent.width
                role: ThemedText.Caption
                text: DictionaryImports.stageText
                elide: Text.ElideMiddle
                Accessible.role: Accessible.AlertMessage
            }
            ProgressBar {
                width: parent.width
                indeterminate: DictionaryImports.progress < 0
                value: Math.max(0, DictionaryImports.progress)
                Accessible.name: DictionaryImports.stageText
            }
        }
        PlainButton {
            id: cancel

            anchors.right: parent.right
            text: "取消"
            Accessible.name: "取消添加词典"
            onClicked: DictionaryImports.cancel()
        }
    }
    Repeater {
        model: DictionaryImports.results

        MessageLine {
            required property var modelData

            width: view.width
            kind: modelData.isSuccess ? MessageLine.Success : MessageLine.Failure
            text: modelData.name + "：" + modelData.text
        }
    }
}
