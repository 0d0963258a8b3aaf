pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The context menu of a definition's text, its parent: for the selected text, or for the word under the pointer.
ContextMenu {
    id: context

    required property WordPicker picker
    readonly property TextEdit text: parent as TextEdit
    property string meant: ""

    onAboutToOpen: (x, y) => {
        const selected = text.selectedText.trim();
        context.meant = selected !== "" ? selected : context.picker.wordAt(Qt.point(x, y));
    }
    menu: StyledMenu {
        name: "释义"
        implicitWidth: Theme.px(200)

        MenuCommand {
            // A longer selection is no word.
            enabled: context.meant !== "" && context.meant.length <= 64
            text: enabled ? "查询“" + (context.meant.length > 12 ? context.meant.substring(0, 11) + "…" : context.meant) + "”" : "查询"
            onTriggered: ContentView.handleExternalWordLookup(context.meant)
        }
        MenuDivider {}
        MenuCommand {
            text: "复制"
            keys: "Ctrl+C"
            enabled: context.text.selectedText !== ""
            onTriggered: context.text.copy()
        }
        MenuCommand {
            text: "全选"
            keys: "Ctrl+A"
            onTriggered: {
                context.text.forceActiveFocus(Qt.PopupFocusReason);
                context.text.selectAll();
            }
        }
    }
}
