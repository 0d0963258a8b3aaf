import QtQuick
import Lexiquill

/// Shows a newer release and the progress of its download.
Sheet {
    id: sheet

    readonly property var update: UpdateManager.availableUpdate
    readonly property bool hasUpdate: update !== undefined && update !== null

    title: "软件更新"
    closable: !UpdateManager.isInstalling
    asksBeforeClosing: UpdateManager.isDownloading
    onCloseAsked: question.open()
    Component.onCompleted: if (UpdateManager.isDownloading)
        cancel.focus = true

    Connections {
        target: UpdateManager

        // The buttons change, and a hidden one must not keep the keyboard.
        function onIsDownloadingChanged(): void {
            if (UpdateManager.isDownloading) {
                cancel.forceActiveFocus();
            } else {
                question.close();
                later.forceActiveFocus();
            }
        }
    }

    Column {
        width: parent?.width ?? 0
        spacing: 2 * Theme.unit

        ThemedText {
            width: parent.width
            visible: !sheet.hasUpdate
            text: "暂无可用更新"
            horizontalAlignment: Text.AlignHCenter
        }
        Row {
            width: parent.width
            visible: sheet.hasUpdate
            spacing: 2 * Theme.unit

            SymbolIcon {
                id: icon

                width: Theme.px(48)
                height: Theme.px(48)
                symbol: "arrow.triangle.2.circlepath.circle.fill"
                color: Theme.accent
            }
            Column {
                anchors.verticalCenter: icon.verticalCenter
                width: parent.width - icon.width - parent.spacing
                spacing: Theme.px(4)

                ThemedText {
                    width: parent.width
                    role: ThemedText.Heading
                    text: "发现新版本 Lexiquill"
                    elide: Text.ElideRight
                }
                Row {
                    spacing: Theme.px(6)

                    ThemedText {
                        role: ThemedText.Caption
                        text: "v" + UpdateManager.currentVersion
                    }
                    SymbolIcon {
                        anchors.verticalCenter: parent.verticalCenter
                        width: Theme.px(12)
                        height: Theme.px(12)
                        symbol: "arrow.right"
                        color: Theme.secondaryText
                    }
                    ThemedText {
                        width: Math.min(implicitWidth, Theme.px(240))
                        role: ThemedText.Caption
                        color: Theme.accent
                        font.weight: Font.DemiBold
                        text: sheet.hasUpdate ? "v" + sheet.update.version : ""
                        elide: Text.ElideRight
                    }
                }
            }
        }
        Column {
            width: parent.width
            visible: sheet.hasUpdate
            spacing: Theme.unit

            ThemedText {
                text: "更新内容说明："
                font.weight: Font.Medium
            }
            InsetPanel {
                width: parent.width
                height: Math.min(notes.implicitHeight, Theme.px(160)) + 3 * Theme.unit

                ScrollArea {
                    id: notesArea

                    anchors.fill: parent
                    anchors.margins: 1.5 * Theme.unit
                    contentHeight: notes.implicitHeight
                    activeFocusOnTab: contentHeight > height
                    Keys.onUpPressed: contentY = Math.max(0, contentY - 40)
                    Keys.onDownPressed: contentY = Math.min(contentHeight - height, contentY + 40)

                    ThemedText {
                        id: notes

                        width: notesArea.contentWidth - Theme.unit
                        text: sheet.hasUpdate ? sheet.update.releaseNotes : ""
                        wrapMode: Text.Wrap
                        lineHeight: Theme.lineHeight
                    }
                }
                FocusRing {
                    shown: notesArea.activeFocus
                }
            }
        }
        MessageLine {
            width: parent.width
            kind: MessageLine.Failure
            text: sheet.hasUpdate && !UpdateManager.isDownloading ? UpdateManager.errorMessage : ""
        }
        Column {
            width: parent.width
            visible: sheet.hasUpdate && UpdateManager.isDownloading
            spacing: Theme.unit

            Item {
                width: parent.width
                height: status.implicitHeight

                ThemedText {
                    id: status

                    width: parent.width - percentage.width - Theme.unit
                    role: ThemedText.Caption
                    text: UpdateManager.statusMessage
                    elide: Text.ElideRight
                }
                ThemedText {
                    id: percentage

                    anchors.right: parent.right
                    role: ThemedText.Caption
                    text: Math.trunc(UpdateManager.downloadProgress * 100) + "%"
                }
            }
            ProgressBar {
                width: parent.width
                value: UpdateManager.downloadProgress
                Accessible.name: UpdateManager.statusMessage
            }
        }
        MessageLine {
            width: parent.width
            text: sheet.hasUpdate && !UpdateManager.canInstall ? UpdateManager.installActionText : ""
        }
        Row {
            anchors.right: parent.right
            visible: sheet.hasUpdate
            spacing: Theme.unit

            PlainButton {
                id: cancel

                visible: UpdateManager.isDownloading
                enabled: !UpdateManager.isInstalling
                text: "取消"
                onClicked: UpdateManager.cancelDownload()
            }
            PlainButton {
                id: later

                visible: !UpdateManager.isDownloading
                text: "稍后再说"
                focus: true
                onClicked: {
                    UpdateManager.showUpdateSheet = false;
                    sheet.dismissed();
                }
            }
            PrimaryButton {
                visible: UpdateManager.canInstall && !UpdateManager.isDownloading
                text: UpdateManager.installActionText
                onClicked: UpdateManager.startDownloadAndInstall(sheet.update)
            }
        }
        PrimaryButton {
            anchors.right: parent.right
            visible: !sheet.hasUpdate
            text: "好"
            onClicked: sheet.dismissed()
        }
    }
    Sheet {
        id: question

        title: "正在下载更新。取消下载？"
        width: Math.min(Theme.px(400), parent ? parent.width - 4 * Theme.unit : Theme.px(400))
        onDismissed: close()

        Column {
            width: parent?.width ?? 0
            spacing: 2 * Theme.unit

            ThemedText {
                width: parent.width
                text: "取消以后可以随时重新开始，已经下载的部分会保留到退出程序。"
                wrapMode: Text.Wrap
                lineHeight: Theme.lineHeight
            }
            Row {
                anchors.right: parent.right
                spacing: Theme.unit

                PlainButton {
                    text: "继续下载"
                    focus: true
                    onClicked: question.close()
                }
                PrimaryButton {
                    text: "取消下载"
                    accent: Theme.red
                    onClicked: {
                        UpdateManager.cancelDownload();
                        sheet.dismissed();
                    }
                }
            }
        }
    }
}
