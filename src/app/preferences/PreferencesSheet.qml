pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The settings, the locations of the data, and the backups.
Sheet {
    id: sheet

    function showDictionaries(): void {
        scrolling.part = dictionaries;
        scrolling.start();
    }

    function showServers(): void {
        scrolling.part = servers;
        scrolling.start();
        serverRow.takeKeyboard();
    }

    title: "偏好设置"
    width: Math.min(Theme.px(600), parent ? parent.width - 4 * Theme.unit : Theme.px(600))

    Timer {
        id: scrolling

        property Item part: null

        // After the move of the focus by opening, which scrolls, too.
        interval: 0
        onTriggered: sheet.scrollTo(part)
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
            id: sources

            width: parent.width
            title: "词典数据源"

            ChoiceGroup {
                width: parent.width
                name: sources.title
                spacing: Theme.px(4)

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
        ReviewSection {
            width: parent.width
        }
        SoundSection {
            width: parent.width
        }
        DictionarySection {
            id: dictionaries

            width: parent.width
            toast: messages
        }
        PreferenceSection {
            id: servers

            width: parent.width
            title: "服务器地址"
            note: "留空即使用内置地址，改动立即生效。更换服务器后需要重新登录。"

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
                id: serverRow

                width: parent.width
                editor: addresses
                label: "同步与更新服务器"
                storedText: addresses.serverText
                builtIn: addresses.builtInServer
                onStored: text => {
                    const user = SyncManager.currentUser;
                    addresses.storeServer(text);
                    if (user !== "" && !SyncManager.isLoggedIn)
                        messages.show("已更换服务器，需要重新登录", "", null);
                }
            }
        }
        DataPlaceList {
            width: parent.width
            toast: messages
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
