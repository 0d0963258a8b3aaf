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

    /// The text that assistive tools know.
    property string toldText: ""

    /// Tells assistive tools of a changed message, and shows it if it is a failure in a scroll area.
    function tell(): void {
        if (!line.visible)
            return;
        if (line.toldText !== "")
            Announcer.announce(line);
        line.toldText = line.text;
        if (line.kind !== MessageLine.Failure)
            return;
        // The line, and the columns around it that make room for it, have not been laid out yet.
        line.forceLayout();
        let ancestor = line.parent;
        while (ancestor && !(ancestor as ScrollArea)) {
            (ancestor as Column)?.forceLayout();
            ancestor = ancestor.parent;
        }
        (ancestor as ScrollArea)?.reveal(line);
    }

    visible: text !== ""
    onTextChanged: {
        if (text === "")
            toldText = "";
        else
            telling.restart();
    }
    spacing: Theme.px(6)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    Timer {
        id: telling

        // Later, when the line has its size and its kind.
        interval: 0
        onTriggered: line.tell()
    }
    SymbolIcon {
        y: 1
        width: Theme.px(16)
        height: Theme.px(16)
        symbol: line.kind === MessageLine.Failure ? "exclamationmark.circle" : line.kind === MessageLine.Success ? "checkmark.circle" : "info.circle"
        color: Theme.sign(line.tint)
    }
    ThemedText {
        width: line.width - Theme.px(22)
        role: ThemedText.Caption
        text: line.text
        color: line.kind === MessageLine.Neutral ? Theme.secondaryText : Theme.onTint(line.tint)
        wrapMode: Text.Wrap
        lineHeight: Theme.lineHeight
        Accessible.ignored: true
    }
}
