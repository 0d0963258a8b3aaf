pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The context menu of a text field or a text area, its parent.
ContextMenu {
    id: context

    /// The parent, which has the operations of a text field.
    readonly property var field: parent
    /// Passwords are not copied.
    readonly property bool isSecret: (field.echoMode ?? TextInput.Normal) !== TextInput.Normal

    /// The field must have the keyboard while it changes.
    function edit(change: var): void {
        context.field.forceActiveFocus(Qt.PopupFocusReason);
        change();
    }

    onAboutToOpen: if (!field.activeFocus)
        field.forceActiveFocus(Qt.MouseFocusReason)
    place: Qt.point(field.cursorRectangle.x, field.cursorRectangle.y + field.cursorRectangle.height)
    menu: StyledMenu {
        name: "编辑"
        implicitWidth: Theme.px(180)

        MenuCommand {
            text: "撤销"
            keys: "Ctrl+Z"
            enabled: context.field.canUndo
            onTriggered: context.edit(() => context.field.undo())
        }
        MenuDivider {}
        MenuCommand {
            text: "剪切"
            keys: "Ctrl+X"
            enabled: context.field.selectedText !== "" && !context.isSecret && !context.field.readOnly
            onTriggered: context.edit(() => context.field.cut())
        }
        MenuCommand {
            text: "复制"
            keys: "Ctrl+C"
            enabled: context.field.selectedText !== "" && !context.isSecret
            onTriggered: context.edit(() => context.field.copy())
        }
        MenuCommand {
            text: "粘贴"
            keys: "Ctrl+V"
            enabled: context.field.canPaste
            onTriggered: context.edit(() => context.field.paste())
        }
        MenuDivider {}
        MenuCommand {
            text: "全选"
            keys: "Ctrl+A"
            enabled: context.field.length > 0
            onTriggered: context.edit(() => context.field.selectAll())
        }
    }
}
