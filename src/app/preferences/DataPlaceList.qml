pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// Where the program keeps the user's data.
PreferenceSection {
    id: section

    /// Shows why a folder cannot be opened.
    property Toast toast: null

    title: "数据位置"
    spacingOfRows: 0

    DataPlaces {
        id: places

        onFailed: message => section.toast?.show(message, "", null)
    }
    Repeater {
        model: [
            {
                label: "生词本",
                path: places.wordbook
            },
            {
                label: "备份",
                path: places.backups
            },
            {
                label: "词典",
                path: places.dictionaries
            },
            {
                label: "设置",
                path: places.settings
            },
            {
                label: "缓存",
                path: places.caches
            }
        ]

        PlaceRow {
            required property var modelData

            width: parent?.width ?? 0
            label: modelData.label
            path: modelData.path
            onOpened: places.openFolder(path)
        }
    }
}
