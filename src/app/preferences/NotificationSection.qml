import QtQuick
import Lexiquill

/// The daily reminder, and the icon in the tray where the desktop has one.
PreferenceSection {
    id: section

    title: "提醒"
    note: "有单词待复习时，程序在后台运行期间每天通知一次。"

    Toggle {
        text: "每天提醒待复习的单词"
        checked: Preferences.remindsDaily
        onToggled: Preferences.remindsDaily = checked
    }
    Toggle {
        visible: Tray.isAvailable
        text: "在托盘中显示图标"
        checked: Preferences.showsTrayIcon
        onToggled: Preferences.showsTrayIcon = checked
    }
}
