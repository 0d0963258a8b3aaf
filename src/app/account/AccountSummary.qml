import QtQuick
import Lexiquill

/// The logged-in account and the actions on it.
Column {
    id: summary

    required property AccountView account
    /// The line with the outcome of the last sync.
    readonly property Item outcomeLine: outcome

    spacing: 2 * Theme.unit

    InsetPanel {
        width: parent.width
        height: row.implicitHeight + 4 * Theme.unit

        Row {
            id: row

            x: 2 * Theme.unit
            y: 2 * Theme.unit
            width: parent.width - 4 * Theme.unit
            spacing: 2 * Theme.unit

            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.px(44)
                height: Theme.px(44)
                symbol: "cloud.sun.fill"
                color: Theme.accent
            }
            Column {
                width: parent.width - Theme.px(44) - parent.spacing
                spacing: Theme.px(6)

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
                    visible: summary.account.lastSyncText !== ""
                    role: ThemedText.Caption
                    text: "上次云端同步: " + summary.account.lastSyncText
                    elide: Text.ElideRight
                }
            }
        }
    }
    PrimaryButton {
        width: parent.width
        focus: summary.visible
        symbol: SyncManager.isSyncing ? "arrow.triangle.2.circlepath" : "arrow.up.arrow.down.circle"
        text: SyncManager.isSyncing ? "正在同步..." : "立即双向同步"
        enabled: !SyncManager.isSyncing
        onClicked: SyncManager.syncWithCloud()
    }
    MessageLine {
        id: outcome

        width: parent.width
        kind: SyncManager.hasSyncFailed ? MessageLine.Failure : MessageLine.Neutral
        // A message that appears is announced by screen readers, one that changes is not.
        text: SyncManager.isSyncing ? "" : SyncManager.syncStatusMessage
    }
    PlainButton {
        width: parent.width
        symbol: "rectangle.portrait.and.arrow.right"
        tint: Theme.red
        text: "退出登录"
        onClicked: SyncManager.logout()
    }
}
