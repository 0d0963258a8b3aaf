import QtQuick
import Lexiquill

/// One number with its name, in its own colour.
Card {
    id: card

    required property string title
    required property string subtitle
    required property string symbol
    required property color tint
    required property real value

    Accessible.role: Accessible.StaticText
    Accessible.name: title + " " + value + "，" + subtitle

    Column {
        width: card.width - 2 * card.padding
        spacing: Theme.px(6)

        Row {
            spacing: Theme.px(6)

            SymbolIcon {
                width: Theme.px(18)
                height: Theme.px(18)
                symbol: card.symbol
                color: Theme.sign(card.tint)
            }
            ThemedText {
                anchors.verticalCenter: parent.verticalCenter
                role: ThemedText.Caption
                text: card.title
                Accessible.ignored: true
            }
        }
        ThemedText {
            width: parent.width
            text: card.value.toFixed(0)
            color: Theme.onTint(card.tint)
            font.pixelSize: Theme.px(26)
            font.weight: Font.Bold
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Small
            text: card.subtitle
            color: Theme.onTint(card.tint)
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
}
