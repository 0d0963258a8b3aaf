import QtQuick.Dialogs

/// Asks where to save the plan, with the desktop's own dialog if it has one.
FileDialog {
    id: dialog

    /// The user chose a file.
    signal fileChosen(file: url)

    /// Opens with a suggested file.
    function openWith(suggestion: url): void {
        const text = `${suggestion}`;
        dialog.currentFolder = text.substring(0, text.lastIndexOf("/"));
        dialog.selectedFile = suggestion;
        dialog.open();
    }

    title: "导出每周复习清单"
    acceptLabel: "导出"
    rejectLabel: "取消"
    fileMode: FileDialog.SaveFile
    defaultSuffix: "md"
    nameFilters: ["Markdown 文档 (*.md)", "所有文件 (*)"]
    onAccepted: dialog.fileChosen(selectedFile)
}
