pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// Three lines for a new user.
Card {
    id: card

    implicitHeight: column.implicitHeight + 2 * padding
    Accessible.role: Accessible.Grouping
    Accessible.name: "欢迎使用 Lexiquill"

    Column {
        id: column

        width: parent.width
        spacing: 1.5 * Theme.unit

        Item {
            width: parent.width
            height: Theme.controlHeight

            ThemedText {
                anchors.verticalCenter: parent.verticalCenter
                role: ThemedText.Heading
                text: "欢迎使用 Lexiquill"
                Accessible.role: Accessible.Heading
            }
            IconButton {
                anchors.right: parent.right
                focusPolicy: Qt.TabFocus
                symbol: "xmark"
                iconSize: Theme.px(15)
                text: "不再显示"
                onClicked: Greeting.dismiss()
            }
        }
        Repeater {
            model: [
                {
                    "symbol": "magnifyingglass",
                    "text": "输入单词后按回车键查词；查过的词会自动收进生词本。"
                },
                {
                    "symbol": "calendar.badge.clock",
                    "text": "每天打开“每周复习”（Ctrl+2），用“记住了”或“没记住”安排下次复习。"
                },
                {
                    "symbol": "keyboard",
                    "text": "在任何程序中按 " + HotKeyManager.currentShortcut.symbolString + " 回到这里；词典、快捷键等设置按 Ctrl+, 打开。"
                }
            ]

            Item {
                id: line

                required property var modelData

                width: column.width
                height: Math.max(icon.height, lineText.implicitHeight)

                SymbolIcon {
                    id: icon

                    y: 1
                    width: Theme.px(18)
                    height: Theme.px(18)
                    symbol: line.modelData.symbol
                    color: Theme.accent
                }
                ThemedText {
                    id: lineText

                    anchors.left: icon.right
                    anchors.leftMargin: 1.5 * Theme.unit
                    anchors.right: parent.right
                    text: line.modelData.text
                    wrapMode: Text.Wrap
                    lineHeight: Theme.lineHeight
                }
            }
        }
    }
}
