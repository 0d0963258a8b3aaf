import QtQuick
import Lexiquill

/// The dialogs for dictionaries on disk, which are created when they are first used.
Item {
    id: dialogs

    /// A dialog cannot be shown; `missing` is the package that is likely to be missing.
    signal unavailable(missing: string)

    function openFiles(): void {
        files.show(dialog => dialog.open());
    }
    function openFolder(): void {
        folder.show(dialog => dialog.open());
    }

    DialogLoader {
        id: files

        source: "DictionaryFileDialog.qml"
        onFailed: missing => dialogs.unavailable(missing)
    }
    DialogLoader {
        id: folder

        source: "DictionaryFolderDialog.qml"
        onFailed: missing => dialogs.unavailable(missing)
    }
}
