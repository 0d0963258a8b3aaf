pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The settings, the locations of the data, and the backups.
Sheet {
    id: sheet

    function showDictionaries(): void {
        scrolling.start();
    }

    title: "偏好设置"
    width: Math.min(600, parent ? parent.width - 4 * Theme.unit : 600)

    Timer {
        id: scrolling

        // After the move of the focus by opening, which scrolls, too.
        interval: 0
        onTriggered: sheet.scrollTo(dictionaries)
    }
    Toast {
        id: messages

        parent: sheet.contentItem
    }
    Column {
        width: parent?.width ?? 0
        spacing: 2.5 * Theme.unit

        HotKeySection {
            width: parent.width
        }
        NotificationSection {
            width: parent.width
        }
        PreferenceSection {
            width: parent.width
            title: "词典数据源"

            Column {
                width: parent.width
                spacing: 4

                Repeater {
                    model: [Lexiquill.YoudaoOnline, Lexiquill.AppleOffline]

                    ChoiceRow {
                        required property int modelData

                        width: parent?.width ?? 0
                        symbol: DictionarySources.iconName(modelData)
                        text: DictionarySources.title(modelData)
                        detail: DictionarySources.descriptionText(modelData)
                        checked: DictionaryService.currentMode === modelData
                        onClicked: DictionaryService.currentMode = modelData
                    }
                }
            }
        }
        DictionarySection {
            id: dictionaries

            width: parent.width
            toast: messages
        }
        PreferenceSection {
            width: parent.width
            title: "服务器地址"
            note: addresses.isChanged ? "新地址在下次启动时生效。" : "留空即使用内置地址。"

            ServerAddressEditor {
                id: addresses
            }
            ServerAddressRow {
                width: parent.width
                editor: addresses
                label: "有道词典"
                storedText: addresses.youdaoText
                builtIn: addresses.builtInYoudao
                onStored: text => addresses.storeYoudao(text)
            }
            ServerAddressRow {
                width: parent.width
                editor: addresses
                label: "同步与更新服务器"
                storedText: addresses.serverText
                builtIn: addresses.builtInServer
                onStored: text => addresses.storeServer(text)
            }
        }
        PreferenceSection {
            width: parent.width
            title: "数据位置"
            spacingOfRows: 0

            DataPlaces {
                id: places
            }
            PlaceRow {
                width: parent.width
                label: "生词本"
                path: places.wordbook
                onOpened: places.openFolder(path)
            }
            PlaceRow {
                width: parent.width
                label: "备份"
                path: places.backups
                onOpened: places.openFolder(path)
            }
            PlaceRow {
                width: parent.width
                label: "设置"
                path: places.settings
                onOpened: places.openFolder(path)
            }
            PlaceRow {
                width: parent.width
                label: "缓存"
                path: places.caches
                onOpened: places.openFolder(path)
            }
        }
        BackupSection {
            width: parent.width
        }
        PreferenceSection {
            width: parent.width
            title: "软件更新"

            Item {
                width: parent.width
                height: check.height

                ThemedText {
                    anchors.verticalCenter: parent.verticalCenter
                    text: "Lexiquill " + UpdateManager.currentVersion + " (" + UpdateManager.currentBuild + ")"
                }
                PlainButton {
                    id: check

                    anchors.right: parent.right
                    text: UpdateManager.isChecking ? "正在检查..." : "检查更新..."
                    enabled: !UpdateManager.isChecking
                    onClicked: UpdateManager.checkForUpdates(true)
                }
            }
            MessageLine {
                width: parent.width
                kind: UpdateManager.errorMessage === "" ? MessageLine.Neutral : MessageLine.Failure
                text: UpdateManager.errorMessage === "" ? UpdateManager.statusMessage : UpdateManager.errorMessage
            }
        }
    }
}
