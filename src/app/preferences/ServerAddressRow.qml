import QtQuick
import Lexiquill

/// A field for a server address; empty means the built-in address.
Column {
    id: row

    required property ServerAddressEditor editor
    required property string label
    /// The stored address; empty while the built-in one is used.
    required property string storedText
    required property string builtIn
    readonly property string problem: editor.problem(field.text)

    /// The user wants to store an acceptable address.
    signal stored(string text)

    function takeKeyboard(): void {
        field.forceActiveFocus(Qt.TabFocusReason);
    }

    function store(): void {
        if (problem === "")
            stored(field.text);
    }

    spacing: Theme.px(6)
    onStoredTextChanged: field.text = storedText

    ThemedText {
        text: row.label
    }
    Item {
        width: parent.width
        height: field.height

        TextInputField {
            id: field

            anchors.left: parent.left
            anchors.right: save.left
            anchors.rightMargin: Theme.unit
            placeholderText: row.builtIn === "" ? "尚未设置" : row.builtIn
            Accessible.name: row.label
            inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
            text: row.storedText
            onAccepted: row.store()
        }
        PlainButton {
            id: save

            anchors.right: parent.right
            text: "保存"
            Accessible.name: "保存" + row.label
            enabled: row.problem === "" && field.text.trim() !== row.storedText
            onClicked: row.store()
        }
    }
    MessageLine {
        width: parent.width
        kind: MessageLine.Failure
        text: row.problem
    }
}
