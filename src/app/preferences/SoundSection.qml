import QtQuick
import Lexiquill

/// The accent that is heard first, and whether cards pronounce their words.
PreferenceSection {
    id: section

    title: "发音"
    note: "释义卡片上总有英、美两个按钮；没有录音时由系统语音朗读。"

    ChoiceGroup {
        width: parent.width
        name: "发音"

        ChoiceRow {
            width: parent.width
            text: "英式发音"
            checked: Preferences.accent === Preferences.British
            onClicked: Preferences.accent = Preferences.British
        }
        ChoiceRow {
            width: parent.width
            text: "美式发音"
            checked: Preferences.accent === Preferences.American
            onClicked: Preferences.accent = Preferences.American
        }
    }
    Toggle {
        text: "打开释义卡片或闪卡时自动朗读"
        checked: Preferences.pronouncesCards
        onToggled: Preferences.pronouncesCards = checked
    }
}
