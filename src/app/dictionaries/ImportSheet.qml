import QtQuick
import Lexiquill

/// Dictionaries that were opened outside the preferences: the question, the progress and the results.
Sheet {
    id: sheet

    readonly property bool isAsking: DictionaryImports.state === DictionaryImports.State.Asking
    readonly property bool isDone: DictionaryImports.state === DictionaryImports.State.Idle

    /// The user wants to see all dictionaries.
    signal managed

    // The button that had the focus is gone.
    onIsDoneChanged: if (isDone)
        done.forceActiveFocus()

    title: isAsking ? "打开词典" : "添加词典"
    width: Math.min(Theme.px(440), parent ? parent.width - 4 * Theme.unit : Theme.px(440))

    Column {
        width: parent?.width ?? 0
        spacing: 2 * Theme.unit

        ThemedText {
            width: parent.width
            visible: sheet.isAsking
            text: "添加词典" + DictionaryImports.names + "？"
            wrapMode: Text.Wrap
            lineHeight: Theme.lineHeight
        }
        ImportProgress {
            width: parent.width
            visible: !sheet.isAsking && hasContent
        }
        Row {
            anchors.right: parent.right
            visible: sheet.isAsking
            spacing: Theme.unit

            PlainButton {
                text: "取消"
                focus: sheet.isAsking
                onClicked: DictionaryImports.dismiss()
            }
            PrimaryButton {
                text: "添加"
                onClicked: DictionaryImports.confirm()
            }
        }
        Row {
            anchors.right: parent.right
            visible: sheet.isDone
            spacing: Theme.unit

            PlainButton {
                text: "管理词典…"
                onClicked: sheet.managed()
            }
            PrimaryButton {
                id: done

                text: "好"
                onClicked: DictionaryImports.dismiss()
            }
        }
    }
}
