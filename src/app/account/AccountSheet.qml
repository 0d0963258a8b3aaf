import QtQuick
import Lexiquill

/// Logs in to the program's server, or registers; once logged in, syncs and logs out.
Sheet {
    id: sheet

    title: "Lexiquill 云同步与多端背词"
    width: Math.min(440, parent ? parent.width - 4 * Theme.unit : 440)

    AccountView {
        id: view
    }
    Column {
        width: parent?.width ?? 0
        spacing: 2 * Theme.unit

        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: "登录/注册以在手机浏览器 (" + view.serverAddress + "/app) 继续在线背诵"
            wrapMode: Text.Wrap
            lineHeight: Theme.lineHeight
        }
        MessageLine {
            width: parent.width
            text: view.hasServer ? "" : "尚未配置服务器：请先在偏好设置中填写服务器地址，再重新启动程序。"
        }
        AccountSummary {
            width: parent.width
            visible: SyncManager.isLoggedIn
            account: view
        }
        AccountFields {
            width: parent.width
            visible: !SyncManager.isLoggedIn
            focus: visible
            account: view
            onAccepted: if (submit.enabled)
                view.submitAuth()
        }
        MessageLine {
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
            visible: !SyncManager.isLoggedIn
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
