import QtQuick.Dialogs
import Lexiquill

/// Asks for a folder with dictionaries.
FolderDialog {
    id: dialog

    title: "打开词典所在的文件夹"
    acceptLabel: "打开"
    rejectLabel: "取消"
    onAccepted: DictionaryImports.open([dialog.selectedFolder], false)
}
