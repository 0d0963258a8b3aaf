import QtQuick
import Lexiquill

/// Logs in to the program's server, or registers; once logged in, syncs and logs out.
Sheet {
    id: sheet

    /// The user wants to set the address of the server.
    signal serverWanted

    function showFailure(line: Item): void {
        revealing.line = line;
        revealing.start();
    }

    title: "Lexiquill 云同步与多端背词"
    width: Math.min(Theme.px(440), parent ? parent.width - 4 * Theme.unit : Theme.px(440))

    AccountView {
        id: view

        onErrorMessageChanged: if (errorMessage !== "")
            sheet.showFailure(failure)
    }
    Timer {
        id: revealing

        property Item line: null

        // When the line has its text.
        interval: 0
        onTriggered: {
            summary.forceLayout();
            column.forceLayout();
            sheet.reveal(line);
        }
    }
    Connections {
        target: SyncManager

        function onSyncStatusMessageChanged(): void {
            if (SyncManager.hasSyncFailed)
                sheet.showFailure(summary.outcomeLine);
        }
    }
    Column {
        id: column

        width: parent?.width ?? 0
        spacing: 2 * Theme.unit

        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            visible: SyncManager.hasServer
            text: "登录/注册以在手机浏览器 (" + view.serverAddress + "/app) 继续在线背诵"
            wrapMode: Text.Wrap
            lineHeight: Theme.lineHeight
        }
        MessageLine {
            width: parent.width
            text: SyncManager.hasServer ? "" : "尚未设置服务器，无法登录和同步。请先填写服务器地址。"
        }
        PrimaryButton {
            anchors.right: parent.right
            visible: !SyncManager.hasServer
            focus: visible
            text: "设置服务器地址…"
            onClicked: sheet.serverWanted()
        }
        AccountSummary {
            id: summary

            width: parent.width
            visible: SyncManager.isLoggedIn
            account: view
        }
        AccountFields {
            width: parent.width
            visible: SyncManager.hasServer && !SyncManager.isLoggedIn
            focus: visible
            account: view
            onAccepted: if (submit.enabled)
                view.submitAuth()
        }
        MessageLine {
            id: failure

            width: parent.width
            kind: MessageLine.Failure
            text: view.errorMessage
        }
        MessageLine {
            width: parent.width
            kind: MessageLine.Success
            text: view.successMessage
        }
        Row {
            anchors.right: parent.right
            visible: SyncManager.hasServer && !SyncManager.isLoggedIn
            spacing: Theme.unit

            ThemedText {
                anchors.verticalCenter: parent.verticalCenter
                visible: view.isSubmitting
                role: ThemedText.Caption
                text: "正在联系服务器…"
            }
            PlainButton {
                text: "取消"
                onClicked: sheet.dismissed()
            }
            PrimaryButton {
                id: submit

                text: view.isRegisterMode ? "注册并同步" : "登录"
                enabled: !view.isSubmitting && view.username !== "" && view.password !== ""
                onClicked: view.submitAuth()
            }
        }
    }
}
