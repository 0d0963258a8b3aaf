pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The typed spelling beside the word: letters too many are struck out, missing ones are underlined.
Rectangle {
    id: result

    required property SpellingAttempt attempt
    /// What the marks of the letters mean.
    readonly property string legend: {
        if (attempt.isRight)
            return "拼写正确";
        const texts = [];
        if (attempt.pieces.some(piece => piece.isExtra))
            texts.push("删除线：写错或多写");
        if (attempt.pieces.some(piece => piece.isMissing))
            texts.push("下划线：漏写");
        return texts.join("；");
    }
    readonly property color tint: attempt.isRight ? Theme.green : Theme.orange

    implicitHeight: content.implicitHeight + 2 * Theme.unit
    radius: Theme.controlRadius
    color: Theme.tint(tint)
    Accessible.role: Accessible.StaticText
    Accessible.name: attempt.spoken

    SymbolIcon {
        id: icon

        x: 1.5 * Theme.unit
        y: Theme.unit + 5
        width: Theme.px(18)
        height: Theme.px(18)
        symbol: result.attempt.isRight ? "checkmark.circle" : "exclamationmark.circle"
        color: Theme.onTint(result.tint)
    }
    Column {
        id: content

        anchors.left: icon.right
        anchors.leftMargin: Theme.unit
        anchors.right: parent.right
        anchors.rightMargin: 1.5 * Theme.unit
        y: Theme.unit
        spacing: Theme.px(2)

        Flow {
            width: parent.width

            Repeater {
                model: result.attempt.pieces

                Text {
                    required property var modelData

                    text: modelData.text.replace(/ /g, "\u00a0")
                    color: modelData.isExtra ? Theme.onTint(Theme.red) : modelData.isMissing ? Theme.onTint(Theme.orange) : Theme.text
                    font.pixelSize: Theme.px(20)
                    font.strikeout: modelData.isExtra
                    font.underline: modelData.isMissing
                    font.weight: modelData.isMissing ? Font.Bold : Font.Normal
                    textFormat: Text.PlainText
                    Accessible.ignored: true
                }
            }
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: result.legend
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }
}
