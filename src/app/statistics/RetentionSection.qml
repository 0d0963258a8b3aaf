import QtQuick
import Lexiquill

/// The share of words that are in long-term memory.
Card {
    id: section

    required property real rate
    required property string rateText
    required property color secondary

    Column {
        width: section.width - 2 * section.padding
        spacing: Theme.px(10)

        Item {
            width: parent.width
            height: title.implicitHeight

            ThemedText {
                id: title

                anchors.left: parent.left
                anchors.right: percent.left
                font.pixelSize: Theme.px(14)
                font.weight: Font.DemiBold
                text: "稳固记忆保持率 (Retention Rate)"
                elide: Text.ElideRight
            }
            ThemedText {
                id: percent

                anchors.right: parent.right
                font.pixelSize: Theme.px(14)
                font.weight: Font.DemiBold
                color: Theme.onTint(Theme.blue)
                text: section.rateText
            }
        }
        Rectangle {
            width: parent.width
            height: Theme.px(12)
            radius: Theme.px(6)
            color: Qt.rgba(section.secondary.r, section.secondary.g, section.secondary.b, 0.15)
            Accessible.role: Accessible.ProgressBar
            Accessible.name: title.text + " " + section.rateText

            Rectangle {
                width: parent.width * section.rate / 100
                height: parent.height
                radius: Math.min(6, width / 2)
                visible: width > 0
                gradient: Gradient {
                    orientation: Gradient.Horizontal

                    GradientStop {
                        position: 0
                        color: Theme.blue
                    }
                    GradientStop {
                        position: 1
                        color: Theme.green
                    }
                }
            }
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: "反映进入中长期记忆（巩固阶段与完全掌握）的词汇占总收录词汇的比例。"
            wrapMode: Text.Wrap
        }
    }
}
