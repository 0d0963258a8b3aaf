pragma ComponentBehavior: Bound

import QtQuick

/// The dialogs for dictionaries on disk, which are created when they are first used.
Item {
    id: dialogs

    /// The component of the dialogs is not installed.
    signal unavailable

    function openFiles(): void {
        files.active = true;
        (files.item as DictionaryFileDialog)?.open();
    }
    function openFolder(): void {
        folder.active = true;
        (folder.item as DictionaryFolderDialog)?.open();
    }

    Loader {
        id: files

        active: false
        source: "DictionaryFileDialog.qml"
        onStatusChanged: if (status === Loader.Error)
            dialogs.unavailable()
    }
    Loader {
        id: folder

        active: false
        source: "DictionaryFolderDialog.qml"
        onStatusChanged: if (status === Loader.Error)
            dialogs.unavailable()
    }
}
