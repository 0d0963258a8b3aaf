import QtQuick.Dialogs
import Lexiquill

/// Asks for files of dictionaries, with the desktop's own dialog if it has one.
FileDialog {
    id: dialog

    title: "打开词典"
    acceptLabel: "打开"
    rejectLabel: "取消"
    fileMode: FileDialog.OpenFiles
    nameFilters: ["词典和压缩包 (*.ifo *.mdx *.index *.idx *.idx.gz *.dict *.dict.dz *.mdd *.zip *.7z *.tar *.tar.gz *.tgz *.tar.bz2 *.tbz2 *.tar.xz *.txz *.tar.zst *.tzst)", "所有文件 (*)"]
    onAccepted: DictionaryImports.open(dialog.selectedFiles, false)
}
