pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// Logs in to the program's server, or registers; once logged in, syncs and logs out.
Sheet {
    id: sheet

    title: "Lexiquill 云同步与多端背词"
    width: Math.min(440, parent ? parent.width - 4 * Theme.unit : 440)

    AccountView {
        id: account
    }
    Column {
        width: parent?.width ?? 0
        spacing: 2 * Theme.unit

        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: "登录/注册以在手机浏览器 (" + account.serverAddress + "/app) 继续在线背诵"
            wrapMode: Text.Wrap
            lineHeight: Theme.lineHeight
        }
        MessageLine {
            width: parent.width
            text: account.hasServer ? "" : "尚未配置服务器：请先在偏好设置中填写服务器地址，再重新启动程序。"
        }
        Loader {
            width: parent.width
            focus: true
            sourceComponent: SyncManager.isLoggedIn ? loggedIn : loggedOut
        }
        MessageLine {
            width: parent.width
            kind: MessageLine.Failure
            text: account.errorMessage
        }
        MessageLine {
            width: parent.width
            kind: MessageLine.Success
            text: account.successMessage
        }
        Row {
            anchors.right: parent.right
            visible: !SyncManager.isLoggedIn
            spacing: Theme.unit

            PlainButton {
                text: "取消"
                onClicked: sheet.dismissed()
            }
            PrimaryButton {
                text: account.isRegisterMode ? "注册并同步" : "登录"
                enabled: !account.isSubmitting && account.username !== "" && account.password !== ""
                onClicked: account.submitAuth()
            }
        }
    }

    Component {
        id: loggedIn

        Column {
            spacing: 2 * Theme.unit

            InsetPanel {
                width: parent.width
                height: summary.implicitHeight + 4 * Theme.unit

                Row {
                    id: summary

                    x: 2 * Theme.unit
                    y: 2 * Theme.unit
                    width: parent.width - 4 * Theme.unit
                    spacing: 2 * Theme.unit

                    SymbolIcon {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 44
                        height: 44
                        symbol: "cloud.sun.fill"
                        color: Theme.accent
                    }
                    Column {
                        width: parent.width - 44 - parent.spacing
                        spacing: 6

                        Tag {
                            text: "云端在线"
                            tint: Theme.green
                        }
                        ThemedText {
                            width: parent.width
                            text: "已登录账号: " + SyncManager.currentUser
                            elide: Text.ElideRight
                        }
                        ThemedText {
                            width: parent.width
                            visible: account.lastSyncText !== ""
                            role: ThemedText.Caption
                            text: "上次云端同步: " + account.lastSyncText
                            elide: Text.ElideRight
                        }
                    }
                }
            }
            PrimaryButton {
                width: parent.width
                focus: true
                symbol: SyncManager.isSyncing ? "arrow.triangle.2.circlepath" : "arrow.up.arrow.down.circle"
                text: SyncManager.isSyncing ? "正在同步..." : "立即双向同步"
                enabled: !SyncManager.isSyncing
                onClicked: SyncManager.syncWithCloud()
            }
            MessageLine {
                width: parent.width
                text: SyncManager.syncStatusMessage
            }
            PlainButton {
                width: parent.width
                symbol: "rectangle.portrait.and.arrow.right"
                tint: Theme.red
                text: "退出登录"
                onClicked: SyncManager.logout()
            }
        }
    }
    Component {
        id: loggedOut

        FocusScope {
            implicitHeight: fields.implicitHeight

            Column {
                id: fields

                width: parent.width
                spacing: 1.5 * Theme.unit

                SegmentedControl {
                    width: parent.width
                    name: "登录或注册"
                    choices: ["登录已有账号", "注册新账号"]
                    currentIndex: account.isRegisterMode ? 1 : 0
                    onChosen: index => account.isRegisterMode = index === 1
                }
                TextInputField {
                    id: nameField

                    width: parent.width
                    focus: true
                    symbol: "person.crop.circle"
                    placeholderText: "用户名"
                    text: account.username
                    onTextEdited: account.username = text
                    onAccepted: passwordField.forceActiveFocus(Qt.TabFocusReason)
                }
                TextInputField {
                    id: passwordField

                    width: parent.width
                    symbol: "lock"
                    placeholderText: "密码"
                    echoMode: TextInput.Password
                    inputMethodHints: Qt.ImhHiddenText | Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
                    text: account.password
                    onTextEdited: account.password = text
                    onAccepted: if (!account.isSubmitting && account.username !== "" && text !== "")
                        account.submitAuth()
                }
            }
        }
    }
}
