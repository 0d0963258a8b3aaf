pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The backups of the wordbook; each can be restored after a confirmation.
PreferenceSection {
    id: section

    property int chosenRow: -1
    property string chosenLabel: ""

    title: "每日备份"
    note: "每天第一次改动前自动保留一份，共保留最近十个使用日。恢复前，当前的生词本也会另存为备份，因此随时可以再换回来。"
    spacingOfRows: 0

    BackupListModel {
        id: backups
    }
    ThemedText {
        visible: backupRows.count === 0
        height: Theme.px(28)
        verticalAlignment: Text.AlignVCenter
        role: ThemedText.Caption
        text: backups.isBusy ? "正在读取备份..." : "还没有备份"
    }
    Repeater {
        id: backupRows

        model: backups

        Item {
            id: backup

            required property int index
            required property string label
            required property string detail
            required property bool isUsable
            required property bool isOfMoment

            width: parent?.width ?? 0
            height: Theme.px(48)

            SymbolIcon {
                id: icon

                anchors.verticalCenter: parent.verticalCenter
                x: Theme.px(4)
                width: Theme.px(18)
                height: Theme.px(18)
                symbol: backup.isUsable ? backup.isOfMoment ? "clock.arrow.circlepath" : "calendar" : "exclamationmark.triangle"
                color: backup.isUsable ? Theme.secondaryText : Theme.red
            }
            Column {
                anchors.left: icon.right
                anchors.leftMargin: 1.5 * Theme.unit
                anchors.right: restore.left
                anchors.verticalCenter: parent.verticalCenter
                spacing: Theme.px(2)

                ThemedText {
                    width: parent.width
                    text: backup.isOfMoment ? backup.label + " 恢复前" : backup.label
                    elide: Text.ElideRight
                }
                ThemedText {
                    width: parent.width
                    role: ThemedText.Caption
                    text: backup.detail
                    elide: Text.ElideRight
                }
            }
            PlainButton {
                id: restore

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: "恢复..."
                Accessible.name: "恢复 " + backup.label + " 的备份"
                enabled: backup.isUsable && !backups.isBusy
                onClicked: {
                    section.chosenRow = backup.index;
                    section.chosenLabel = backup.label;
                    confirmation.open();
                }
            }
        }
    }
    MessageLine {
        width: parent.width
        bottomPadding: Theme.px(6)
        kind: MessageLine.Failure
        text: backups.errorMessage
    }
    MessageLine {
        width: parent.width
        bottomPadding: Theme.px(6)
        kind: MessageLine.Success
        text: backups.successMessage
    }

    Sheet {
        id: confirmation

        title: "恢复 " + section.chosenLabel + " 的备份？"
        width: Math.min(Theme.px(400), parent ? parent.width - 4 * Theme.unit : Theme.px(400))
        onDismissed: close()

        Column {
            width: parent?.width ?? 0
            spacing: 2 * Theme.unit

            ThemedText {
                width: parent.width
                text: "生词本将回到备份时的样子，之后新增的单词和复习记录会被替换。当前的生词本会先另存为备份。"
                wrapMode: Text.Wrap
                lineHeight: Theme.lineHeight
            }
            Row {
                anchors.right: parent.right
                spacing: Theme.unit

                PlainButton {
                    text: "取消"
                    focus: true
                    onClicked: confirmation.close()
                }
                PrimaryButton {
                    text: "恢复"
                    accent: Theme.red
                    onClicked: {
                        confirmation.close();
                        backups.restore(section.chosenRow);
                    }
                }
            }
        }
    }
}
