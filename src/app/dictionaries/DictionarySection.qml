pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The offline dictionaries: their order, which of them are asked, and adding and removing them.
PreferenceSection {
    id: section

    property string chosenPath: ""
    property string chosenName: ""
    /// Shows the results of actions.
    property Toast toast: null

    /// Scrolls to a row that has been moved.
    function reveal(row: Item): void {
        let ancestor = section.parent;
        while (ancestor && !(ancestor as ScrollArea))
            ancestor = ancestor.parent;
        (ancestor as ScrollArea)?.reveal(row);
    }

    title: "词典"
    note: "按以上顺序查找，第一部查到的词典给出释义。拖动左边的横线，或按 Ctrl 加上下方向键调整顺序。也可以把词典文件直接拖到窗口中。"
    spacingOfRows: 0

    Shortcut {
        sequence: "Ctrl+Z"
        enabled: dictionaries.undoableName !== ""
        onActivated: dictionaries.undoRemoval()
    }
    DictionaryDialogs {
        id: dialogs

        onUnavailable: missing => section.toast?.show("无法打开文件对话框，可能缺少 " + missing + "；可以把文件拖到窗口中", "", null)
    }

    ThemedText {
        visible: rows.count === 0
        height: 4 * Theme.unit
        leftPadding: Theme.px(4)
        verticalAlignment: Text.AlignVCenter
        role: ThemedText.Caption
        text: dictionaries.isLoading ? "正在查找词典…" : "没有找到离线词典"
    }
    Column {
        id: list

        /// The row at a height; the first or last one outside the list.
        function rowAt(y: real): int {
            for (let i = 0; i < rows.count; ++i) {
                const row = rows.itemAt(i);
                if (row && y < row.y + row.height)
                    return i;
            }
            return rows.count - 1;
        }

        width: parent.width
        Accessible.role: Accessible.List
        Accessible.name: "词典"
        move: Transition {
            NumberAnimation {
                property: "y"
                duration: Theme.motion
                easing.type: Easing.OutCubic
            }
        }

        Repeater {
            id: rows

            model: DictionaryListModel {
                id: dictionaries

                onSaid: (message, isUndoable) => section.toast?.show(message, isUndoable ? "撤销" : "", isUndoable ? () => dictionaries.undoRemoval() : null)
            }

            DictionaryItem {
                id: row

                width: parent?.width ?? 0
                height: implicitHeight
                count: rows.count
                // While it moves to another place in the list.
                onYChanged: if (activeFocus && !isDragged)
                    section.reveal(row)
                onMovedTo: target => {
                    dictionaries.moveTo(index, target);
                    dictionaries.storeOrder();
                }
                onDraggedTo: y => {
                    const target = list.rowAt(y);
                    const other = rows.itemAt(target);
                    // A tall row would jump back and forth over a low one otherwise.
                    const isPast = target > index ? y > other.y + other.height - row.height : y < other.y + row.height;
                    if (target !== index && isPast)
                        dictionaries.moveTo(index, target);
                }
                onDropped: dictionaries.storeOrder()
                onSwitched: isOn => dictionaries.setOn(index, isOn)
                onRemovalRequested: {
                    section.chosenPath = path;
                    section.chosenName = name;
                    confirmation.open();
                }
            }
        }
    }
    Separator {
        width: parent.width
        visible: rows.count > 0
    }
    Item {
        width: 1
        height: Theme.unit
    }
    Flow {
        width: parent.width
        spacing: Theme.unit

        PlainButton {
            text: "打开词典…"
            onClicked: dialogs.openFiles()
        }
        PlainButton {
            text: "打开文件夹…"
            onClicked: dialogs.openFolder()
        }
        PlainButton {
            text: "从网址添加…"
            onClicked: address.open()
        }
        PlainButton {
            visible: dictionaries.undoableName !== ""
            symbol: "arrow.uturn.backward"
            text: "撤销移除"
            Accessible.name: "撤销移除 " + dictionaries.undoableName
            onClicked: dictionaries.undoRemoval()
        }
    }
    ImportProgress {
        width: parent.width
        topPadding: 1.5 * Theme.unit
        visible: !DictionaryImports.showSheet && hasContent
    }

    AddressSheet {
        id: address

        onDismissed: close()
    }
    Sheet {
        id: confirmation

        title: "移除“" + section.chosenName + "”？"
        width: Math.min(Theme.px(400), parent ? parent.width - 4 * Theme.unit : Theme.px(400))
        onDismissed: close()

        Column {
            width: parent?.width ?? 0
            spacing: 2 * Theme.unit

            ThemedText {
                width: parent.width
                text: "退出程序以前可以撤销，之后将删除词典文件。生词本不受影响。"
                wrapMode: Text.Wrap
                lineHeight: Theme.lineHeight
            }
            Row {
                anchors.right: parent.right
                spacing: Theme.unit

                PlainButton {
                    text: "取消"
                    focus: true
                    onClicked: confirmation.close()
                }
                PrimaryButton {
                    text: "移除"
                    accent: Theme.red
                    onClicked: {
                        confirmation.close();
                        dictionaries.remove(section.chosenPath);
                    }
                }
            }
        }
    }
}
