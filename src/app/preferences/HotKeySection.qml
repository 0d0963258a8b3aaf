pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The system-wide hotkey: presets, a custom combination, and the result of the registration.
PreferenceSection {
    id: section

    readonly property bool isUnsupported: HotKeyManager.isUnsupported
    readonly property hotKeyShortcut offer: HotKeyManager.offeredShortcut

    title: "全局快捷键"
    note: isUnsupported ? "例如在 GNOME 中：设置 → 键盘 → 查看及自定义快捷键 → 自定义快捷键。" : "在任何程序中按下快捷键，都会打开查词窗口。Option 即 Alt 键，Command 即 Super（Windows 徽标）键。"

    ShortcutEditor {
        id: editor
    }
    MessageLine {
        width: parent.width
        visible: section.isUnsupported
        text: "这个桌面不支持程序自己设置全局快捷键。请在桌面的键盘设置中添加一个快捷键，命令填写："
    }
    Item {
        width: parent.width
        height: copy.height
        visible: section.isUnsupported

        ThemedText {
            anchors.left: parent.left
            anchors.right: copy.left
            anchors.rightMargin: Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            text: editor.launchCommand
            elide: Text.ElideMiddle
        }
        PlainButton {
            id: copy

            property bool isDone: false

            anchors.right: parent.right
            text: isDone ? "已复制" : "复制命令"
            onClicked: {
                editor.copyLaunchCommand();
                copy.isDone = true;
            }
        }
    }
    Item {
        width: parent.width
        height: reset.height
        visible: !section.isUnsupported

        MessageLine {
            anchors.left: parent.left
            anchors.right: reset.left
            anchors.rightMargin: Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            kind: HotKeyManager.hasFailed ? MessageLine.Failure : MessageLine.Success
            text: HotKeyManager.registerStatusDescription
        }
        PlainButton {
            id: reset

            anchors.right: parent.right
            text: "恢复默认"
            Accessible.description: "恢复默认的全局快捷键"
            onClicked: HotKeyManager.resetToDefault()
        }
    }
    PrimaryButton {
        visible: section.offer.id !== ""
        text: "改用 " + section.offer.symbolString
        Accessible.description: "这个组合没有被占用"
        onClicked: HotKeyManager.updateShortcut(section.offer)
    }
    ChoiceGroup {
        width: parent.width
        name: section.title
        visible: !section.isUnsupported

        Repeater {
            model: editor.presetNames

            ChoiceRow {
                required property int index
                required property string modelData

                width: parent?.width ?? 0
                text: modelData
                trailing: editor.presetSymbols[index]
                checked: editor.currentPreset === index
                onClicked: editor.choosePreset(index)
            }
        }
        ChoiceRow {
            width: parent.width
            text: "自定义"
            trailing: editor.currentPreset < 0 ? HotKeyManager.currentShortcut.symbolString : ""
            checked: editor.currentPreset < 0
            onClicked: editor.useCustom()
        }
    }
    Separator {
        width: parent.width
        visible: !section.isUnsupported
    }
    Flow {
        width: parent.width
        visible: !section.isUnsupported
        spacing: 1.5 * Theme.unit

        Toggle {
            text: "⌃ Control"
            checked: editor.control
            onToggled: editor.control = checked
        }
        Toggle {
            text: "⌥ Option"
            checked: editor.option
            onToggled: editor.option = checked
        }
        Toggle {
            text: "⇧ Shift"
            checked: editor.shift
            onToggled: editor.shift = checked
        }
        Toggle {
            text: "⌘ Command"
            checked: editor.command
            onToggled: editor.command = checked
        }
    }
    Item {
        width: parent.width
        height: Theme.controlHeight
        visible: !section.isUnsupported

        ChoiceBox {
            id: picker

            implicitWidth: Theme.px(140)
            name: "按键"
            model: editor.keyNames
            currentIndex: editor.keyIndex
            onActivated: index => editor.keyIndex = index
        }
        ThemedText {
            anchors.left: picker.right
            anchors.leftMargin: 2 * Theme.unit
            anchors.right: use.left
            anchors.rightMargin: Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            role: ThemedText.Heading
            text: editor.symbolString
            elide: Text.ElideRight
        }
        PrimaryButton {
            id: use

            anchors.right: parent.right
            text: "使用此组合"
            enabled: editor.hasModifier
            onClicked: editor.useCustom()
        }
    }
    MessageLine {
        width: parent.width
        text: editor.hasModifier || section.isUnsupported ? "" : "请至少打开一个修饰键，否则这个按键在其他程序中将无法使用。"
    }
}
