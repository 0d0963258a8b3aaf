pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The context menu of the wordbook's list, its parent. It concerns the selected words; a word that is not selected
/// becomes so.
ContextMenu {
    id: context

    required property WordListModel words
    readonly property ListView list: parent as ListView

    signal lookUpRequested
    signal deleteRequested

    onAboutToOpen: (x, y) => {
        list.forceActiveFocus();
        const row = list.indexAt(x, y + list.contentY);
        if (row >= 0 && !(list.itemAtIndex(row) as WordRowItem)?.selected)
            words.choose(row, WordListModel.Replace);
    }
    menu: StyledMenu {
        name: "单词"
        implicitWidth: Theme.px(200)

        MenuCommand {
            text: "在查词页打开"
            keys: "Enter"
            enabled: context.words.selectedCount === 1
            onTriggered: context.lookUpRequested()
        }
        MenuCommand {
            text: "练习"
            enabled: context.words.selectedCount > 0
            onTriggered: ContentView.practice(context.words.selectedIds())
        }
        MenuDivider {}
        MenuCommand {
            text: "删除"
            keys: "Delete"
            enabled: context.words.selectedCount > 0
            onTriggered: context.deleteRequested()
        }
    }
}
