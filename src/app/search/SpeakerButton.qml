import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// Pronounces a word in one accent.
T.AbstractButton {
    id: control

    required property int accent
    required property Pronunciation player
    required property string word
    readonly property bool isBritish: accent === Preferences.British

    implicitWidth: row.implicitWidth + Theme.unit
    implicitHeight: Theme.controlHeight
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: player.isFetching ? 0.5 : 1
    text: isBritish ? "英式发音" : "美式发音"
    Accessible.name: text
    Accessible.description: player.isFetching ? "正在获取发音" : ""
    Accessible.onPressAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()
    onClicked: player.play(word, accent)

    contentItem: Item {
        Row {
            id: row

            anchors.centerIn: parent
            spacing: Theme.px(2)

            ThemedText {
                anchors.verticalCenter: parent.verticalCenter
                role: ThemedText.Caption
                text: control.isBritish ? "英" : "美"
                color: Theme.onTint(Theme.accent)
                Accessible.ignored: true
            }
            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.px(16)
                height: Theme.px(16)
                symbol: "speaker.wave.2"
                color: Theme.accent
            }
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: control.down ? Theme.pressed : control.hovered ? Theme.hover : "transparent"

        FocusRing {
            shown: control.visualFocus
        }
    }

    HelpText {
        text: control.player.isFetching ? "正在获取发音" : control.text
        shown: control.hovered && !control.down
    }
}
