import QtQuick
import Lexiquill

/// The result of an action: a symbol and a short text. Takes no space while the text is empty.
Row {
    id: line

    enum Kind {
        Neutral,
        Success,
        Failure
    }

    required property string text
    property int kind: MessageLine.Neutral
    readonly property color tint: kind === MessageLine.Failure ? Theme.red : kind === MessageLine.Success ? Theme.green : Theme.gray

    visible: text !== ""
    spacing: 6
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    SymbolIcon {
        y: 1
        width: 16
        height: 16
        symbol: line.kind === MessageLine.Failure ? "exclamationmark.circle" : line.kind === MessageLine.Success ? "checkmark.circle" : "info.circle"
        color: line.tint
    }
    ThemedText {
        width: line.width - 22
        role: ThemedText.Caption
        text: line.text
        color: line.kind === MessageLine.Neutral ? Theme.secondaryText : Theme.onTint(line.tint)
        wrapMode: Text.Wrap
        lineHeight: Theme.lineHeight
        Accessible.ignored: true
    }
}
